#pragma once
// TransferMessages: the nine status and error texts of the transfer window, in Windows-1252.

#include <array>
#include <string>

namespace quillon {

enum TransferMessage : int {
  kMsgNotReady = 0,
  kMsgAborted = 1,
  kMsgInterfaceNotActive = 2,
  kMsgNotImplemented = 3,
  kMsgNoData = 4,
  kMsgNoFinalConfirmation = 5,
  kMsgChoosePort = 6,
  kMsgFiveTrials = 7,
  kMsgDownloadDone = 8,
};

inline constexpr int kTransferMessageCount = 9;

// Filled for English (0) or German (1); any other language leaves every text empty, as the
// window's table stays unfilled for a language without texts.
class TransferMessages {
 public:
  explicit TransferMessages(int language);
  [[nodiscard]] const std::string& operator[](int index) const;

 private:
  std::array<std::string, kTransferMessageCount> m_texts;
};

// The box title of every box of the transfer window.
inline constexpr const char* kTerminalTitle = "Terminal";

}  // namespace quillon
