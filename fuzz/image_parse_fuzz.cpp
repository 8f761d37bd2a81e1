// libFuzzer target of the four parsers of received images. The first byte picks the parser,
// the language and the module size; the rest is the image (for the messages, spread over the
// five receive boxes at fuzzer-chosen lengths). Each parser must keep the tables at their size,
// write only its own part of the project, leave the comment and name columns alone and show
// its error box at most once.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz_support.h"
#include "link/transfer.h"
#include "project/project.h"
#include "transfer/image_parse.h"
#include "wire/wire_format.h"

namespace {

using quillon::Project;
using quillon::fuzz::require;

constexpr const char* kKept = "kept";

enum class Parser { Messages, PhoneNumbers, Configuration, ControllerData };

Project prefilled(const quillon::ModuleLimits& limits) {
  Project project(limits);
  for (int row = 1; row <= project.messages.rows(); ++row)
    project.messages.setCell(row, quillon::kMessageCommentColumn, kKept);
  for (int row = 1; row <= project.filters.rows(); ++row)
    project.filters.setCell(row, quillon::kFilterCommentColumn, kKept);
  for (int row = 1; row <= project.phones.rows(); ++row)
    project.phones.setCell(row, quillon::kPhoneNameColumn, kKept);
  project.smsCentre = kKept;
  project.pin = "1234";
  return project;
}

void requireColumn(const quillon::Table& table, int column, const char* text) {
  for (int row = 1; row <= table.rows(); ++row) require(table.cell(row, column) == text);
}

void requireShape(const Project& project, const quillon::ModuleLimits& limits) {
  require(project.messages.rows() == limits.messageRows() && project.messages.columns() == 5);
  require(project.filters.rows() == quillon::kFilterRows && project.filters.columns() == 2);
  require(project.phones.rows() == limits.phoneLimit && project.phones.columns() == 2);
  requireColumn(project.messages, quillon::kMessageCommentColumn, kKept);
  requireColumn(project.filters, quillon::kFilterCommentColumn, kKept);
  requireColumn(project.phones, quillon::kPhoneNameColumn, kKept);
}

bool isDecimal(std::string_view text, unsigned long limit) {
  if (text.empty() || text.size() > 10 ||
      text.find_first_not_of("0123456789") != std::string_view::npos)
    return false;
  return std::stoul(std::string(text)) <= limit;
}

void checkMessages(quillon::fuzz::Input& input, Project& project, quillon::ImageEnv& env,
                   const quillon::fuzz::RecordingDialog& dialog) {
  std::array<std::string, quillon::kReceiveBoxes> received;
  std::size_t lengths[quillon::kReceiveBoxes - 1];
  for (auto& length : lengths) length = input.word() % 1024;
  for (std::size_t box = 0; box + 1 < received.size(); ++box)
    received[box] = std::string(input.take(lengths[box]));
  received.back() = std::string(input.rest());
  std::string all;
  for (const auto& box : received) all += box;

  Project before = project;
  const quillon::MessagesParse parse = quillon::parseMessages(received, project, env);
  require(dialog.boxes.size() == (parse.malformed ? 1U : 0U));
  if (parse.endMarkSeen) require(all.find(quillon::wire::kEndMark) != std::string::npos);
  for (int row = 1; row <= project.messages.rows(); ++row) {
    for (int column : {quillon::kAckColumn, quillon::kCallBackColumn, quillon::kRingColumn}) {
      const std::string& mark = project.messages.cell(row, column);
      require(mark.empty() || mark == "x");
    }
  }
  // Records end at the pad character, so no cell holds one.
  for (int row = 1; row <= project.filters.rows(); ++row)
    require(project.filters.cell(row, quillon::kFilterTextColumn).find(quillon::wire::kPad) ==
            std::string::npos);
  // Only the messages, the filters and the acknowledgement request come from this image.
  before.messages = project.messages;
  before.filters = project.filters;
  before.ack = project.ack;
  require(before == project);
}

void checkPhoneNumbers(std::string_view image, Project& project, quillon::ImageEnv& env,
                       const quillon::fuzz::RecordingDialog& dialog) {
  Project before = project;
  quillon::parsePhoneNumbers(std::string(image), project, env);
  require(dialog.boxes.size() <= 1);
  // A number is what stands before the pad of its 21-character field.
  require(project.smsCentre == kKept || project.smsCentre.size() < 21);
  require(project.smsCentre.find(quillon::wire::kPad) == std::string::npos);
  for (int row = 1; row <= project.phones.rows(); ++row) {
    const std::string& number = project.phones.cell(row, quillon::kPhoneNumberColumn);
    require(number.size() < 21 && number.find(quillon::wire::kPad) == std::string::npos);
  }
  before.smsCentre = project.smsCentre;
  before.phones = project.phones;
  require(before == project);
}

void checkConfiguration(std::string_view image, Project& project, quillon::ImageEnv& env,
                        const quillon::fuzz::RecordingDialog& dialog) {
  Project before = project;
  quillon::parseConfiguration(std::string(image), project, env);
  require(dialog.boxes.size() <= 1);
  if (dialog.boxes.empty()) {
    // The PIN box shows four digits.
    require(project.pin.size() == 4 &&
            project.pin.find_first_not_of("0123456789") == std::string::npos);
  } else {
    require(project.pin == before.pin);
  }
  before.pin = project.pin;
  require(before == project);
}

void checkControllerData(std::string_view image, Project& project, quillon::ImageEnv& env,
                         const quillon::fuzz::RecordingDialog& dialog) {
  Project before = project;
  quillon::parseControllerData(std::string(image), project.flags, env);
  // One box for a flag number out of range, one for a broken reception field.
  require(dialog.boxes.size() <= 2);
  int receptionFlags = 0;
  for (std::size_t index = 0; index < project.flags.entries.size(); ++index) {
    const std::string& entry = project.flags.entries[index];
    if (entry == quillon::kUnusedFlag) {
      require(index > quillon::kFlagCount || !project.flags.used[index]);
      continue;
    }
    if (entry == quillon::kReceptionFlag) {
      ++receptionFlags;
      require(index <= quillon::kFlagCount);
      continue;
    }
    // A record: a message of four and a phone of two hexadecimal digits, shown in decimal.
    const auto semicolon = entry.find(';');
    require(semicolon != std::string::npos);
    require(isDecimal(std::string_view(entry).substr(0, semicolon), 0xFFFF));
    require(isDecimal(std::string_view(entry).substr(semicolon + 1), 0xFF));
  }
  require(receptionFlags <= 1);
  before.flags = project.flags;
  require(before == project);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  quillon::fuzz::Input input(data, size);
  const std::uint8_t choice = input.byte();
  const auto parser = static_cast<Parser>(choice & 3);
  const int language = (choice & 4) != 0 ? quillon::kGerman : quillon::kEnglish;
  quillon::ModuleLimits limits;
  if ((choice & 8) != 0) limits.lastMessageIndex = 399;

  Project project = prefilled(limits);
  quillon::fuzz::RecordingDialog dialog;
  quillon::fuzz::IgnoredStatus status;
  quillon::ImageEnv env{dialog, status, quillon::fuzz::textsFor(language), limits};
  switch (parser) {
    case Parser::Messages:
      checkMessages(input, project, env, dialog);
      break;
    case Parser::PhoneNumbers:
      checkPhoneNumbers(input.rest(), project, env, dialog);
      break;
    case Parser::Configuration:
      checkConfiguration(input.rest(), project, env, dialog);
      break;
    case Parser::ControllerData:
      checkControllerData(input.rest(), project, env, dialog);
      break;
  }
  requireShape(project, limits);
  return 0;
}
