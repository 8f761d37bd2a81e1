// The file commands of the main window: New, Open, Save, Save as, Previous versions, the recent
// files, the save prompt and loading from the file list.

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <filesystem>

#include "app/flag_page_widget.h"
#include "app/left_pane.h"
#include "app/main_window.h"
#include "app/qt_text.h"
#include "app/shell_text.h"
#include "app/versions_dialog.h"
#include "app/window_settings.h"
#include "project/file_commands.h"
#include "project/file_history.h"
#include "project/project_file.h"

namespace quillon::app {
namespace {

std::filesystem::path fsPath(const QString& path) {
  return std::filesystem::path(path.toStdU16String());
}

}  // namespace

void Anfang::askChanged() {
  (void)AskChanged(m_state.project, m_state.texts, *m_dialog, [this] { fileSaveAs(); });
}

void Anfang::fileNew() {
  askChanged();
  clearAll(m_state.project);
  initMerkerArray(m_state.project);
  projectReplaced();
}

void Anfang::fileOpen() {
  askChanged();
  const QString path = m_files->openFile(m_state.text(slot::kOpenMessageFile),
                                         fileDialogFilter(m_state.text(slot::kMessageFilesFilter)),
                                         m_leftPane->directory());
  if (path.isEmpty()) return;
  // The prompt has just run; the load must not ask a second time.
  if (loadFile(path, false) == 0) m_leftPane->setDirectory(QFileInfo(path).absolutePath());
}

int Anfang::loadProject(const QString& path) { return loadFile(path, true); }

int Anfang::loadFile(const QString& path, bool askFirst) {
  std::function<void()> ask;
  if (askFirst) ask = [this] { askChanged(); };
  QApplication::setOverrideCursor(Qt::WaitCursor);
  const LoadResult result =
      ProjectFileLoad(fsPath(path), m_state.project, m_state.texts, *m_dialog, ask);
  QApplication::restoreOverrideCursor();
  if (result.status == LoadStatus::Ok) {
    m_state.currentFile = QFileInfo(path).absoluteFilePath();
    recordRecent(m_state.currentFile);
  }
  projectReplaced();
  return static_cast<int>(result.status);
}

bool Anfang::saveTo(const QString& path) {
  QApplication::setOverrideCursor(Qt::WaitCursor);
  const WriteResult result = ProjectFileSave(fsPath(path), m_state.project, *m_dialog);
  QApplication::restoreOverrideCursor();
  // Saving cleans the phone numbers in the table as well.
  projectReplaced();
  if (!result.ok) {
    m_dialog->tell(kMainTitle, result.error, BoxIcon::Exclamation);
    return false;
  }
  return true;
}

void Anfang::fileSave() {
  if (saveTo(m_state.currentFile)) m_state.project.changed = false;
}

void Anfang::fileSaveAs() {
  QString path;
  for (;;) {
    path = m_files->saveFile(m_state.text(slot::kSaveMessageFile),
                             fileDialogFilter(m_state.text(slot::kMessageFilesFilter)),
                             m_leftPane->directory());
    if (path.isEmpty()) return;
    if (!QFileInfo::exists(path)) break;
    // Yes and Cancel both end in the old file being replaced. The save does that in one rename
    // once the new file is complete, and keeps the old one among the previous versions, instead
    // of deleting it first and losing it when the save then fails.
    if (AskReplaceExisting(fromQString(QDir::toNativeSeparators(path)), m_state.texts, *m_dialog) ==
        ReplaceChoice::ChooseAgain) {
      continue;
    }
    break;
  }
  m_state.currentFile = QFileInfo(path).absoluteFilePath();
  if (!saveTo(m_state.currentFile)) return;
  recordRecent(m_state.currentFile);
  refreshTitle();
  m_state.project.changed = false;
}

void Anfang::previousVersions() {
  // The save prompt below may choose another current file: the versions are those of this one.
  const std::filesystem::path file = fsPath(m_state.currentFile);
  const std::vector<FileVersion> versions = ListVersions(file);
  const bool german = m_state.texts.german();
  if (versions.empty()) {
    m_dialog->tell(kMainTitle,
                   (german ? "Keine fr\xFCheren Versionen von " : "No previous versions of ") +
                       fromQString(QDir::toNativeSeparators(m_state.currentFile)));
    return;
  }
  VersionsDialog list(versions, german, this);
  if (list.exec() != QDialog::Accepted || list.chosen().empty()) return;

  askChanged();
  const VersionBytes version = ReadVersion(file, list.chosen());
  if (!version.error.empty()) {
    m_dialog->tell(kMainTitle, version.error, BoxIcon::Exclamation);
    return;
  }
  ProjectFileLoadBytes(version.bytes, m_state.project, m_state.texts, *m_dialog);
  // The file itself still holds the newer version: until the restored one is saved, the save
  // prompt stands between it and being lost.
  m_state.project.changed = true;
  projectReplaced();
}

void Anfang::openRecent(int entry) {
  if (entry < 0 || entry >= m_state.recentFiles.size()) return;
  const QString path = m_state.recentFiles[entry];
  const QString previous = QDir::currentPath();
  QDir::setCurrent(m_state.startDir);
  if (loadFile(path, true) == static_cast<int>(LoadStatus::FileNotFound)) {
    m_state.recentFiles.removeAll(path);
    writeRecentFiles(*m_settings, m_state.recentFiles);
    refreshRecentMenu();
  }
  QDir::setCurrent(previous);
}

void Anfang::recordRecent(const QString& path) {
  m_state.recentFiles.removeAll(path);
  m_state.recentFiles.prepend(path);
  while (m_state.recentFiles.size() > kRecentFileCount) m_state.recentFiles.removeLast();
  writeRecentFiles(*m_settings, m_state.recentFiles);
  refreshRecentMenu();
}

void Anfang::refreshRecentMenu() {
  for (int i = 0; i < kRecentFileCount; ++i) {
    QAction* action = m_recentActions[static_cast<std::size_t>(i)];
    const bool used = i < m_state.recentFiles.size();
    action->setVisible(used);
    if (used) {
      action->setText(QStringLiteral("&%1 %2").arg(i + 1).arg(
          QDir::toNativeSeparators(m_state.recentFiles[i])));
    }
  }
}

}  // namespace quillon::app
