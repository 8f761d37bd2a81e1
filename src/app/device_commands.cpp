#include "app/device_commands.h"

#include "app/shell_text.h"

namespace quillon::app {

std::string UnavailableDeviceCommands::portStatusText() const {
  return portStatusBeforeLink(m_shell.state().portNumber);
}

void UnavailableDeviceCommands::unavailable() {
  m_shell.dialog().tell(kMainTitle,
                        m_shell.state().texts.german()
                            ? "Dieser Befehl ist in dieser Ausgabe noch nicht verf\xFCgbar."
                            : "This command is not available in this build yet.",
                        BoxIcon::Information);
}

}  // namespace quillon::app
