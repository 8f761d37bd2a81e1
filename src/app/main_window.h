#pragma once
// The main window `Anfang`: owns the program-wide state for the whole run, starts up and shuts
// down in a fixed order, and dispatches every menu entry, toolbar button and page button. The
// rules behind the commands live in the core; device commands go through DeviceCommands.

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPointer>
#include <QPushButton>
#include <QSettings>
#include <QSplitter>
#include <QTabWidget>
#include <QTableView>
#include <QTimer>
#include <QToolBar>
#include <array>
#include <functional>
#include <memory>

#include "app/app_state.h"
#include "app/device_commands.h"
#include "app/file_picker.h"
#include "app/help_window.h"
#include "app/qt_translations.h"
#include "app/status_panels.h"
#include "app/table_model.h"
#include "print/qt/print_service.h"
#include "project/validation.h"

namespace quillon::app {

class FlagPageWidget;
class LeftPane;
class TableEditor;

// What the window uses from the outside world; anything left empty gets the real thing.
struct AnfangServices {
  QSettings* settings = nullptr;  // the per-user store "Kestrix"
  UserDialog* dialog = nullptr;   // message boxes
  FilePicker* files = nullptr;    // file dialogs
  DeviceCommandsFactory devices;  // commands that talk to the module
  // Starts a program without waiting for it; false when it could not be started.
  std::function<bool(const QString& program, const QStringList& arguments)> startProgram;
};

// Index of a table's model and view in the window's arrays.
[[nodiscard]] inline std::size_t tableIndex(TableKind kind) {
  return static_cast<std::size_t>(kind);
}

// The tab pages of `Eingabe`.
enum class InputPage { Messages = 0, Filters = 1, Phones = 2, Flags = 3 };

class Anfang : public QMainWindow, public AppShell {
  Q_OBJECT

 public:
  explicit Anfang(AnfangServices services = {}, QWidget* parent = nullptr);
  ~Anfang() override;

  // AppShell
  [[nodiscard]] AppState& state() override { return m_state; }
  [[nodiscard]] UserDialog& dialog() override { return *m_dialog; }
  [[nodiscard]] StatusDisplay& status() override { return *m_status; }
  [[nodiscard]] QWidget* window() override { return this; }
  void askChanged() override;
  void projectReplaced() override;

  // File commands.
  void fileNew();
  void fileOpen();
  void fileSave();
  void fileSaveAs();
  // File → Previous versions…: the kept versions of the open file; the chosen one is loaded and
  // counts as a change until it is saved.
  void previousVersions();
  // Recent-file entry 0..3 (file menu items 8..11).
  void openRecent(int entry);
  // Loads a project file; the load's status (0, or 9 when the file does not exist).
  int loadProject(const QString& path);

  // 0 English, 1 German; 2 (French) does nothing at all.
  void chooseLanguage(int language);
  // Toolbar dispatch by button key.
  void toolbarClicked(const QString& key);
  // "tbClear": the current page's table, after a question.
  void clearCurrentTable();

  [[nodiscard]] QString panelText(StatusPanel panel) const;
  [[nodiscard]] ProjectTableModel* model(TableKind kind) const;
  // The built-in manual, once a help command has opened it.
  [[nodiscard]] HelpWindow* helpWindow() const { return m_help; }

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void buildMenus();
  void buildToolbar();
  void buildPages();
  QWidget* buildMessagesPage();
  QWidget* buildFiltersPage();
  QWidget* buildPhonesPage();
  QTableView* buildTable(TableKind kind, ProjectTableModel* model, const char* name);
  void startUp();
  void applyCaptions();
  void refreshTitle();
  void refreshSingleValues();
  void refreshGauge();
  void tick();
  int loadFile(const QString& path, bool askFirst);
  bool saveTo(const QString& path);
  void recordRecent(const QString& path);
  void refreshRecentMenu();
  void runHelp(const QString& file);
  void keepTransfersOffTheKeyboard();
  void openTrafficLog();
  void showAbout();
  void print();
  void edited();

  AnfangServices m_services;
  std::unique_ptr<QSettings> m_ownSettings;
  std::unique_ptr<UserDialog> m_ownDialog;
  std::unique_ptr<FilePicker> m_ownFiles;
  QSettings* m_settings = nullptr;
  UserDialog* m_dialog = nullptr;
  FilePicker* m_files = nullptr;
  AppState m_state;
  std::unique_ptr<DeviceCommands> m_devices;
  std::unique_ptr<StatusPanels> m_status;
  std::unique_ptr<PrintService> m_print;

  QToolBar* m_toolbar = nullptr;
  QLabel* m_flagPicture = nullptr;
  QSplitter* m_splitter = nullptr;
  LeftPane* m_leftPane = nullptr;
  QTabWidget* m_pages = nullptr;
  std::array<ProjectTableModel*, 3> m_models{};
  std::array<QTableView*, 3> m_views{};
  FlagPageWidget* m_flagPage = nullptr;
  QLineEdit* m_smsCentre = nullptr;
  QLineEdit* m_pin = nullptr;
  QLineEdit* m_station = nullptr;
  std::array<QAction*, 4> m_recentActions{};
  QTimer m_clock;
  QtTranslations m_qtTexts;
  QPointer<HelpWindow> m_help;
};

}  // namespace quillon::app
