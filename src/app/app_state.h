#pragma once
// The program-wide state that the main window owns for the whole run and every command reads and
// writes through it.

#include <QString>
#include <QStringList>

#include "app/transfer_report.h"
#include "link/sign_in.h"
#include "link/traffic_log.h"
#include "project/project.h"
#include "text/ui_texts.h"

namespace quillon::app {

inline constexpr const char* kNewProjectFile = "NEW.EAY";

struct AppState {
  ModuleLimits limits;
  Project project{limits};
  UiTexts texts;
  int language = kEnglish;  // 0 English, 1 German, 2 French (no texts)
  QString currentFile = kNewProjectFile;
  QString startDir;  // the process's directory before start-up changed it
  QString workDir;   // "MyDir"
  int portNumber = 1;
  LinkSession session;
  // Open from "tbLog" until the program ends; every port write and read goes into it.
  TrafficLog trafficLog;
  QStringList recentFiles;      // most recent first, at most four
  TransferReport lastTransfer;  // status-bar panel 3

  // A text of the current language by slot, converted for Qt.
  [[nodiscard]] QString text(int slot) const;
};

}  // namespace quillon::app
