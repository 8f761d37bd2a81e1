#include <QApplication>

#include "app/main_window.h"
#include "app/window_settings.h"

int main(int argc, char* argv[]) {
  QApplication application(argc, argv);
  QApplication::setOrganizationName(quillon::app::kSettingsOrganisation);
  QApplication::setApplicationName(quillon::app::kSettingsApplication);
  quillon::app::Anfang window;
  window.show();
  return QApplication::exec();
}
