#include "app/transfer_report.h"

namespace quillon::app {
namespace {

constexpr const char* kDash = " \x96 ";  // an en dash in Windows-1252

struct Wording {
  const char* english;
  const char* german;
};

// Indexed by the result. The ones that concern the line are said of the device.
constexpr Wording kResults[] = {
    {"done", "erledigt"},
    {"cannot be opened",
     "l\xE4sst sich nicht \xF6"
     "ffnen"},
    {"\"Telvane ready ?\" was not confirmed", "\"Telvane ready ?\" wurde nicht best\xE4tigt"},
    {"cancelled", "abgebrochen"},
    {"time-out, the module stopped answering",
     "Zeit\xFC"
     "berschreitung, das Modul antwortet nicht mehr"},
    {"no answer", "keine Antwort"},
    {"no response from the module",
     "keine R\xFC"
     "ckmeldung vom Modul"},
    {"wrong module, see the firmware version",
     "falsches Ger\xE4t, siehe Version Ger\xE4tesoftware"},
    {"refused by the module", "vom Modul abgelehnt"},
};

bool concernsTheLine(int result) { return result == 1 || (result >= 4 && result <= 6); }

}  // namespace

std::string PortDescription(int number, const std::string& device) {
  if (number <= 0) return device;
  std::string text = "COM " + std::to_string(number);
  if (!device.empty()) text += " = " + device;
  return text;
}

std::string LastTransferText(const TransferReport& report, const UiTexts& texts) {
  const bool german = texts.german();
  if (report.commandSlot < 0)
    return german ? "Noch keine \xDC"
                    "bertragung"
                  : "No transfer yet";
  std::string text = german ? "Letzte \xDC"
                              "bertragung: "
                            : "Last transfer: ";
  text += texts[report.commandSlot];
  if (report.stepSlot >= 0) text += " (" + texts[report.stepSlot] + ")";
  text += (german ? " um " : " at ") + report.time + kDash;
  const int result =
      report.result >= 0 && report.result <= kResultRefusedByModule ? report.result : 0;
  if (concernsTheLine(result) && !report.port.empty()) text += report.port + ": ";
  text += german ? kResults[result].german : kResults[result].english;
  if (result == 1 && !report.portError.empty()) text += " (" + report.portError + ")";
  return text;
}

}  // namespace quillon::app
