#include "app/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QMenu>
#include <QMenuBar>
#include <QProcess>
#include <QScreen>
#include <QToolButton>
#include <QVBoxLayout>
#include <filesystem>

#include "app/about_dialog.h"
#include "app/flag_page_widget.h"
#include "app/help_window.h"
#include "app/icons.h"
#include "app/keyboard.h"
#include "app/left_pane.h"
#include "app/message_box_dialog.h"
#include "app/qt_text.h"
#include "app/shell_text.h"
#include "app/table_editor.h"
#include "app/text_memory.h"
#include "app/window_placement.h"
#include "app/window_settings.h"

namespace quillon::app {
namespace {

constexpr int kClockInterval = 999;  // ms

}  // namespace

Anfang::Anfang(AnfangServices services, QWidget* parent)
    : QMainWindow(parent), m_services(std::move(services)) {
  setObjectName("Anfang");
  m_settings = m_services.settings;
  if (!m_settings) {
    m_ownSettings = std::make_unique<QSettings>(kSettingsOrganisation, kSettingsApplication);
    m_settings = m_ownSettings.get();
  }
  m_dialog = m_services.dialog;
  if (!m_dialog) {
    m_ownDialog = std::make_unique<MessageBoxDialog>(this);
    m_dialog = m_ownDialog.get();
  }
  m_files = m_services.files;
  if (!m_files) {
    m_ownFiles = std::make_unique<QtFilePicker>(this);
    m_files = m_ownFiles.get();
  }
  if (!m_services.startProgram) {
    m_services.startProgram = [](const QString& program, const QStringList& arguments) {
      return QProcess::startDetached(program, arguments);
    };
  }

  m_status = std::make_unique<StatusPanels>(statusBar());
  m_print = std::make_unique<PrintService>(*m_dialog);
  buildMenus();
  addStandardShortcuts(this);
  buildToolbar();
  buildPages();
  keepTransfersOffTheKeyboard();
  new FocusMarker(this);
  m_devices = m_services.devices ? m_services.devices(*this)
                                 : std::make_unique<UnavailableDeviceCommands>(*this);
  connect(&m_clock, &QTimer::timeout, this, &Anfang::tick);
  startUp();
}

Anfang::~Anfang() = default;

void Anfang::startUp() {
  QApplication::setOverrideCursor(Qt::WaitCursor);
  const StartSettings settings = readStartSettings(*m_settings);
  const double dpi = screenDpi(this);
  QList<QRect> screens;
  for (const QScreen* screen : QGuiApplication::screens()) screens << screen->availableGeometry();
  const QRect placed = placeOnScreens(
      QRect(twipsToPixels(settings.placement.left, dpi), twipsToPixels(settings.placement.top, dpi),
            twipsToPixels(settings.placement.width, dpi),
            twipsToPixels(settings.placement.height, dpi)),
      screens);
  move(placed.topLeft());
  resize(placed.size());
  m_state.language = settings.language;
  m_state.workDir = settings.workDir;
  m_state.portNumber = settings.portNumber;
  m_state.recentFiles = settings.recentFiles;

  m_state.startDir = QDir::currentPath();
  m_state.currentFile = kNewProjectFile;
  m_state.limits = ModuleLimits{};

  if (!m_state.workDir.isEmpty() && QDir(m_state.workDir).exists()) {
    QDir::setCurrent(m_state.workDir);
  }
  m_leftPane->setDirectory(QDir::currentPath());

  m_state.project.changed = false;
  refreshTitle();

  applyMessageLimit(m_state.project, m_state.limits);
  for (ProjectTableModel* model : m_models) model->tableReplaced();

  m_state.texts.fill(m_state.language);
  applyCaptions();

  m_status->setStatus(StatusPanel::Port, m_devices->portStatusText());

  m_pages->setCurrentIndex(0);
  QTableView* messages = m_views[tableIndex(TableKind::Messages)];
  messages->setCurrentIndex(m_models[0]->index(0, kMessageTextColumn - 1));

  m_clock.start(kClockInterval);
  tick();
  QApplication::restoreOverrideCursor();

  const int leftWidth = twipsToPixels(2800, dpi);
  m_splitter->setSizes({leftWidth, std::max(width() - leftWidth, 1)});

  initMerkerArray(m_state.project);
  m_flagPage->projectReplaced();
  refreshSingleValues();
  refreshGauge();
  refreshRecentMenu();
}

void Anfang::closeEvent(QCloseEvent* event) {
  const Box question{kMainTitle, m_state.texts[slot::kReallyTerminate], BoxIcon::Question,
                     BoxButtons::OkCancel, BoxAnswer::Ok};
  if (m_dialog->ask(question) != BoxAnswer::Ok) {
    event->ignore();
    return;
  }
  m_devices->closePort();
  askChanged();
  m_state.trafficLog.close();
  if (!(windowState() & (Qt::WindowMinimized | Qt::WindowMaximized | Qt::WindowFullScreen))) {
    const double dpi = screenDpi(this);
    writePlacement(*m_settings, {pixelsToTwips(x(), dpi), pixelsToTwips(y(), dpi),
                                 pixelsToTwips(width(), dpi), pixelsToTwips(height(), dpi)});
  }
  writeCloseSettings(*m_settings, m_status->text(StatusPanel::Clock), m_leftPane->directory(),
                     m_state.language);
  m_settings->sync();
  m_clock.stop();
  event->accept();
}

void Anfang::tick() {
  m_status->setStatus(StatusPanel::Clock, fromQString(clockText(QDateTime::currentDateTime())));
}

QString Anfang::panelText(StatusPanel panel) const { return m_status->text(panel); }

ProjectTableModel* Anfang::model(TableKind kind) const { return m_models[tableIndex(kind)]; }

void Anfang::buildMenus() {
  QMenuBar* bar = menuBar();
  auto named = [](QMenu* menu, const char* name) {
    menu->setObjectName(name);
    return menu;
  };
  auto addAction = [this](QMenu* menu, const char* name, auto slotFunction) {
    QAction* action = menu->addAction(QString());
    action->setObjectName(name);
    connect(action, &QAction::triggered, this, slotFunction);
    return action;
  };

  QMenu* file = named(bar->addMenu(QString()), "MenuFile");
  addAction(file, "MenuFileNew", &Anfang::fileNew);
  addAction(file, "MenuFileOpen", &Anfang::fileOpen);
  addAction(file, "MenuFileSave", &Anfang::fileSave);
  addAction(file, "MenuFileSaveAs", &Anfang::fileSaveAs);
  addAction(file, "MenuFileVersions", &Anfang::previousVersions);
  file->addSeparator();
  addAction(file, "MenuFilePrint", &Anfang::print);
  addAction(file, "MenuFileIns5", [this] { m_print->showPrinterSetup(this); });
  file->addSeparator();
  for (int i = 0; i < kRecentFileCount; ++i) {
    QAction* recent = file->addAction(QString());
    recent->setObjectName(QStringLiteral("MenuFileIns%1").arg(8 + i));
    connect(recent, &QAction::triggered, this, [this, i] { openRecent(i); });
    m_recentActions[static_cast<std::size_t>(i)] = recent;
  }
  file->addSeparator();
  addAction(file, "MenuFileIns13", [this] { close(); });

  QMenu* connection = named(bar->addMenu(QString()), "MenuConnect");
  addAction(connection, "MenuConnDownAll", [this] { m_devices->downloadAll(); });
  addAction(connection, "MenuConnUpAll", [this] { m_devices->uploadAll(); });

  QMenu* config = named(bar->addMenu(QString()), "MenuConfig");
  addAction(config, "MenuConfigCom", [this] { m_devices->portSettings(); });
  addAction(config, "MenuConfigSMSC", [this] { m_devices->smsCentreList(); });
  addAction(config, "mnuConfigVersion", [this] { m_devices->identifyDevice(); });
  addAction(config, "mnuConfigUmlaut", [this] { m_devices->substitutionTable(); });

  QMenu* options = named(bar->addMenu(QString()), "mnuOptions");
  QMenu* language = named(options->addMenu(QString()), "mnuSprache");
  addAction(language, "mnuLangEnglish", [this] { chooseLanguage(kEnglish); });
  addAction(language, "mnuLangGerman", [this] { chooseLanguage(kGerman); });
  addAction(language, "mnuLangFrench", [this] { chooseLanguage(kFrench); });

  QMenu* help = named(bar->addMenu(QString()), "MenuHelp");
  addAction(help, "MenuHelpFirst", [this] { runHelp("FIRSTSTEP.hlp"); });
  addAction(help, "MenuHelpManual", [this] { runHelp("HXB27.hlp"); });
  addAction(help, "MenuHelpMonitor", [this] { m_devices->readLogger(); });
  help->addSeparator();
  addAction(help, "MenuHelpAbout", &Anfang::showAbout);
}

void Anfang::buildToolbar() {
  m_toolbar = addToolBar(QString());
  m_toolbar->setObjectName("Toolbar1");
  m_toolbar->setMovable(false);
  m_toolbar->setIconSize(QSize(24, 24));
  const std::array<const char*, 10> keys = {"tbNew", "tbOpen",  "tbSave", "tbPrint", "tbDown",
                                            "tbUp",  "tbClear", "tbHelp", "tbEnd",   "tbLog"};
  for (const char* key : keys) {
    const QString name = QString::fromLatin1(key);
    if (name == "tbDown" || name == "tbClear" || name == "tbHelp") m_toolbar->addSeparator();
    QAction* action = m_toolbar->addAction(toolbarIcon(name), QString());
    action->setObjectName(name);
    action->setData(name);
    if (QWidget* button = m_toolbar->widgetForAction(action)) button->setObjectName(name);
  }
  connect(m_toolbar, &QToolBar::actionTriggered, this,
          [this](QAction* action) { toolbarClicked(action->data().toString()); });
  // The spacer pushes the language flag to the right edge.
  auto* spacer = new QWidget(m_toolbar);
  spacer->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  m_toolbar->addWidget(spacer);
  m_flagPicture = new QLabel(m_toolbar);
  m_flagPicture->setObjectName("picSprache");
  m_flagPicture->setContentsMargins(4, 0, 8, 0);
  m_toolbar->addWidget(m_flagPicture);
}

void Anfang::toolbarClicked(const QString& key) {
  // Every key is compared; exactly the matching one runs.
  if (key == "tbNew") fileNew();
  if (key == "tbOpen") fileOpen();
  if (key == "tbSave") fileSave();
  if (key == "tbPrint") print();
  if (key == "tbDown") m_devices->downloadAll();
  if (key == "tbUp") m_devices->uploadAll();
  if (key == "tbClear") clearCurrentTable();
  if (key == "tbHelp") runHelp("HXB27.hlp");
  if (key == "tbEnd") close();
  if (key == "tbLog") openTrafficLog();
}

void Anfang::openTrafficLog() {
  const QDateTime now = QDateTime::currentDateTime();
  const std::string name =
      TrafficLogFileName(now.date().year(), now.date().month(), now.date().day(),
                         now.time().msecsSinceStartOfDay() / 1000);
  const QString directory = QDir::currentPath();
  if (!m_state.trafficLog.open(std::filesystem::path(directory.toStdU16String()), name)) {
    m_dialog->tell(kMainTitle,
                   (m_state.texts.german() ? "Die Logdatei kann nicht angelegt werden: "
                                           : "The log file cannot be created: ") +
                       fromQString(QDir(directory).filePath(toQString(name))),
                   BoxIcon::Exclamation);
    return;
  }
  // Logging lasts until the program ends, so the button that started it goes away.
  if (QAction* log = m_toolbar->findChild<QAction*>("tbLog")) log->setVisible(false);
  m_dialog->tell("", TrafficLogOpenedText(name, fromQString(QDir::toNativeSeparators(directory))));
}

void Anfang::refreshTitle() { setWindowTitle(titleFor(m_state.currentFile)); }

void Anfang::refreshSingleValues() {
  m_smsCentre->setText(toQString(m_state.project.smsCentre));
  m_pin->setText(toQString(m_state.project.pin));
  m_station->setText(toQString(m_state.project.station));
}

void Anfang::refreshGauge() {
  const int used = messagesImageLength(m_state.project, m_state.texts);
  m_status->setTextMemory(used, m_state.limits.textMemory,
                          m_state.text(slot::kMessages) + " / " + m_state.text(slot::kFilterTexts));
}

void Anfang::edited() { refreshGauge(); }

void Anfang::projectReplaced() {
  applyMessageLimit(m_state.project, m_state.limits);
  for (ProjectTableModel* model : m_models) model->tableReplaced();
  refreshSingleValues();
  m_flagPage->projectReplaced();
  refreshGauge();
  refreshTitle();
}

void Anfang::clearCurrentTable() {
  const int page = m_pages->currentIndex();
  if (page < 0 || page > 2) return;
  const Box question{kMainTitle, m_state.texts[slot::kClearTableQuestion], BoxIcon::Question,
                     BoxButtons::YesNo, BoxAnswer::No};
  if (m_dialog->ask(question) != BoxAnswer::Yes) return;
  const auto kind = static_cast<TableKind>(page);
  TableOf(m_state.project, kind).clear();
  m_state.project.changed = true;
  m_models[static_cast<std::size_t>(page)]->tableReplaced();
  refreshGauge();
}

void Anfang::runHelp(const QString& file) {
  if (m_services.startProgram(QStringLiteral("winhelp"), {file})) return;
  // No help viewer on this system: the manual inside the program stands in for both files.
  if (!m_help) {
    m_help = new HelpWindow(this);
    m_help->setAttribute(Qt::WA_DeleteOnClose, false);
  }
  m_help->showManual(m_state.language,
                     file == QStringLiteral("FIRSTSTEP.hlp") ? kManualFirstSteps : kManualContents);
}

void Anfang::showAbout() {
  AboutDialog about(m_state, *m_dialog, this);
  about.exec();
}

void Anfang::print() {
  m_print->showPrintDialog(this, m_state.project, m_state.texts, m_state.currentFile);
}

}  // namespace quillon::app
