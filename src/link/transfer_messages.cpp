#include "link/transfer_messages.h"

namespace quillon {

namespace {

// Kept byte for byte, blanks at the ends and the spelling included: users and their scripts know
// these texts.
constexpr std::array<const char*, kTransferMessageCount> kEnglish = {
    "Telvane not ready",
    "Aborted",
    "Interface not active",
    "> is not implemented",
    "No data to transfer",
    "Transfer ok, but no final confirmation ",
    "Please, choose the proper port in menu 'Configuration'! ",
    " Aborted after 5 triials ",
    "Download done",
};

constexpr std::array<const char*, kTransferMessageCount> kGerman = {
    "Telvane nicht bereit",
    "abgebrochen",
    "Schnittstelle nicht aktiv",
    "> ist nicht implementiert",
    "Keine Daten zu \xFC"
    "bertragen",
    "Daten\xFC"
    "bertragung ok, aber keine Endbest\xE4tigung ",
    "Die richtige Com-Nr. im Menu Konfiguration w\xE4hlen ",
    " Nach 5 Versuchen abgebrochen ",
    "Download fertig",
};

}  // namespace

TransferMessages::TransferMessages(int language) {
  if (language != 0 && language != 1) return;
  const auto& table = language == 0 ? kEnglish : kGerman;
  for (std::size_t i = 0; i < m_texts.size(); ++i) m_texts[i] = table[i];
}

const std::string& TransferMessages::operator[](int index) const {
  static const std::string kNone;
  if (index < 0 || index >= kTransferMessageCount) return kNone;
  return m_texts[static_cast<std::size_t>(index)];
}

}  // namespace quillon
