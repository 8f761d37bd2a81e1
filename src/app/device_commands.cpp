#include "app/device_commands.h"

#include "link/qt/port_settings.h"

namespace quillon::app {

std::string UnavailableDeviceCommands::portStatusText() const {
  return PortStatusText(PortNumberText(m_shell.state().portNumber), kDefaultSettingsString, 0,
                        false);
}

void UnavailableDeviceCommands::unavailable() {
  m_shell.dialog().tell(kMainTitle,
                        m_shell.state().texts.german()
                            ? "Dieser Befehl ist in dieser Ausgabe noch nicht verf\xFCgbar."
                            : "This command is not available in this build yet.",
                        BoxIcon::Information);
}

}  // namespace quillon::app
