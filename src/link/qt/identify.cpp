#include "link/qt/identify.h"

namespace quillon {
namespace {

std::string withoutLeadingBlank(const std::string& text) {
  return !text.empty() && text.front() == ' ' ? text.substr(1) : text;
}

}  // namespace

Task<int> IdentifyModule(LinkContext& context) {
  if (const int opened = OpenAndConfirmReady(context); opened != kResultOk) co_return opened;
  co_return ResultOf(co_await ReadIdentity(context));
}

std::vector<std::pair<std::string, std::string>> IdentityFields(const DeviceIdentity& identity) {
  return {
      {"Version", withoutLeadingBlank(identity.version)},
      {"Bus type", withoutLeadingBlank(identity.bus)},
      {"Device", withoutLeadingBlank(identity.unit)},
      {"Firmware", withoutLeadingBlank(identity.firmware)},
      {"Nuber of messages", withoutLeadingBlank(identity.messageCount)},
      {"Number of phone nrs.", withoutLeadingBlank(identity.phoneCount)},
      {"Reply", identity.raw},
  };
}

}  // namespace quillon
