#include "app/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QMenu>
#include <QMenuBar>
#include <QPageSetupDialog>
#include <QPrinter>
#include <QProcess>
#include <QScreen>
#include <QToolButton>
#include <QVBoxLayout>
#include <filesystem>

#include "app/about_dialog.h"
#include "app/flag_page_widget.h"
#include "app/icons.h"
#include "app/left_pane.h"
#include "app/message_box_dialog.h"
#include "app/qt_text.h"
#include "app/shell_text.h"
#include "app/table_editor.h"
#include "app/text_memory.h"
#include "app/window_settings.h"

namespace quillon::app {
namespace {

constexpr int kClockInterval = 999;  // ms
// The splitters keep both sides at least this wide (twips).
constexpr double kMinimumPaneTwips = 1500;

double screenDpi(const QWidget* widget) {
  const QScreen* screen = widget->screen() ? widget->screen() : QGuiApplication::primaryScreen();
  return screen ? screen->logicalDotsPerInch() : 96.0;
}

std::size_t tableIndex(TableKind kind) { return static_cast<std::size_t>(kind); }

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
  buildMenus();
  buildToolbar();
  buildPages();
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
  move(twipsToPixels(settings.placement.left, dpi), twipsToPixels(settings.placement.top, dpi));
  resize(twipsToPixels(settings.placement.width, dpi),
         twipsToPixels(settings.placement.height, dpi));
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
  auto addMenu = [this](QMenu* parentMenu, QMenuBar* parentBar, const char* name) {
    QMenu* menu = parentMenu ? parentMenu->addMenu(QString()) : parentBar->addMenu(QString());
    menu->setObjectName(name);
    menu->menuAction()->setObjectName(QString(name) + "Action");
    return menu;
  };
  auto addAction = [this](QMenu* menu, const char* name, auto slotFunction) {
    QAction* action = menu->addAction(QString());
    action->setObjectName(name);
    connect(action, &QAction::triggered, this, slotFunction);
    return action;
  };

  QMenu* file = addMenu(nullptr, bar, "MenuFile");
  addAction(file, "MenuFileNew", &Anfang::fileNew);
  addAction(file, "MenuFileOpen", &Anfang::fileOpen);
  addAction(file, "MenuFileSave", &Anfang::fileSave);
  addAction(file, "MenuFileSaveAs", &Anfang::fileSaveAs);
  file->addSeparator();
  addAction(file, "MenuFilePrint", [this] { m_devices->printTables(); });
  addAction(file, "MenuFileIns5", &Anfang::printerSetUp);
  file->addSeparator();
  for (int i = 0; i < kRecentFileCount; ++i) {
    QAction* recent = file->addAction(QString());
    recent->setObjectName(QStringLiteral("MenuFileIns%1").arg(8 + i));
    connect(recent, &QAction::triggered, this, [this, i] { openRecent(i); });
    m_recentActions[static_cast<std::size_t>(i)] = recent;
  }
  file->addSeparator();
  addAction(file, "MenuFileIns13", [this] { close(); });

  QMenu* connection = addMenu(nullptr, bar, "MenuConnect");
  addAction(connection, "MenuConnDownAll", [this] { m_devices->downloadAll(); });
  addAction(connection, "MenuConnUpAll", [this] { m_devices->uploadAll(); });

  QMenu* config = addMenu(nullptr, bar, "MenuConfig");
  addAction(config, "MenuConfigCom", [this] { m_devices->portSettings(); });
  addAction(config, "MenuConfigSMSC", [this] { m_devices->smsCentreList(); });
  addAction(config, "mnuConfigVersion", [this] { m_devices->identifyDevice(); });

  QMenu* options = addMenu(nullptr, bar, "mnuOptions");
  QMenu* language = addMenu(options, nullptr, "mnuSprache");
  addAction(language, "mnuLangEnglish", [this] { chooseLanguage(kEnglish); });
  addAction(language, "mnuLangGerman", [this] { chooseLanguage(kGerman); });
  addAction(language, "mnuLangFrench", [this] { chooseLanguage(kFrench); });

  QMenu* help = addMenu(nullptr, bar, "MenuHelp");
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
  if (key == "tbPrint") m_devices->printTables();
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

QTableView* Anfang::buildTable(TableKind kind, ProjectTableModel* model, const char* name) {
  auto* view = new QTableView(this);
  view->setObjectName(name);
  view->setModel(model);
  view->setSelectionMode(QAbstractItemView::SingleSelection);
  view->setSelectionBehavior(QAbstractItemView::SelectItems);
  view->setAlternatingRowColors(true);
  view->verticalHeader()->setDefaultSectionSize(view->fontMetrics().height() + 6);
  view->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  view->horizontalHeader()->setStretchLastSection(true);
  view->setWordWrap(false);
  m_views[tableIndex(kind)] = view;
  auto* editor = new TableEditor(view, model, kind, m_state);
  connect(editor, &TableEditor::edited, this, &Anfang::edited);
  return view;
}

void Anfang::buildPages() {
  m_models[tableIndex(TableKind::Messages)] = new ProjectTableModel(
      m_state.project.messages, m_state.texts,
      {slot::kAcknowledgement, slot::kCallBack, slot::kRing, slot::kMessages, slot::kComment}, 3,
      this);
  m_models[tableIndex(TableKind::Filters)] = new ProjectTableModel(
      m_state.project.filters, m_state.texts, {slot::kFilterTexts, slot::kComment}, 0, this);
  m_models[tableIndex(TableKind::Phones)] = new ProjectTableModel(
      m_state.project.phones, m_state.texts, {slot::kPhoneNumber, slot::kName}, 0, this);

  m_pages = new QTabWidget(this);
  m_pages->setObjectName("Eingabe");
  m_pages->addTab(buildMessagesPage(), QString());
  m_pages->addTab(buildFiltersPage(), QString());
  m_pages->addTab(buildPhonesPage(), QString());
  m_flagPage = new FlagPageWidget(m_state, *m_dialog, this);
  m_pages->addTab(m_flagPage, QString());
  connect(m_flagPage->downloadButton(), &QPushButton::clicked, this,
          [this] { m_devices->downloadFlags(); });
  connect(m_flagPage->uploadButton(), &QPushButton::clicked, this,
          [this] { m_devices->uploadFlags(); });
  connect(m_flagPage, &FlagPageWidget::showMessageRow, this, [this](int row) {
    m_views[0]->setCurrentIndex(m_models[0]->index(row - 1, kMessageTextColumn - 1));
  });
  connect(m_flagPage, &FlagPageWidget::showPhoneRow, this, [this](int row) {
    m_views[2]->setCurrentIndex(m_models[2]->index(row - 1, kPhoneNumberColumn - 1));
  });

  m_leftPane = new LeftPane(this);
  connect(m_leftPane, &LeftPane::fileActivated, this,
          [this](const QString& path) { (void)loadProject(path); });

  m_splitter = new QSplitter(Qt::Horizontal, this);
  m_splitter->setObjectName("imgSplitter");
  m_splitter->addWidget(m_leftPane);
  m_splitter->addWidget(m_pages);
  m_splitter->setChildrenCollapsible(false);
  m_splitter->setStretchFactor(1, 1);
  const int minimum = twipsToPixels(kMinimumPaneTwips, screenDpi(this));
  m_leftPane->setMinimumWidth(minimum);
  m_pages->setMinimumWidth(minimum);
  setCentralWidget(m_splitter);
}

namespace {

QPushButton* button(QWidget* parent, const char* name) {
  auto* b = new QPushButton(parent);
  b->setObjectName(name);
  return b;
}

QLabel* label(QWidget* parent, const char* name, bool wrap = true) {
  auto* l = new QLabel(parent);
  l->setObjectName(name);
  l->setWordWrap(wrap);
  return l;
}

}  // namespace

QWidget* Anfang::buildMessagesPage() {
  auto* page = new QWidget(this);
  auto* layout = new QVBoxLayout(page);
  layout->addWidget(label(page, "Label1Meld"));
  layout->addWidget(label(page, "Label3"));
  QTableView* view =
      buildTable(TableKind::Messages, m_models[tableIndex(TableKind::Messages)], "MeldTabelle");
  for (int column = 0; column < 3; ++column) view->setColumnWidth(column, 34);
  view->setColumnWidth(3, 420);
  layout->addWidget(view, 1);
  auto* buttons = new QHBoxLayout;
  connect(button(page, "cmdMeldDown"), &QPushButton::clicked, this,
          [this] { m_devices->downloadMessages(); });
  connect(button(page, "cmdMeldUp"), &QPushButton::clicked, this,
          [this] { m_devices->uploadMessages(); });
  connect(button(page, "cmdQuittung"), &QPushButton::clicked, this,
          [this] { m_devices->acknowledgementRequest(); });
  for (const char* name : {"cmdMeldDown", "cmdMeldUp"}) {
    buttons->addWidget(page->findChild<QPushButton*>(name));
  }
  buttons->addStretch();
  buttons->addWidget(page->findChild<QPushButton*>("cmdQuittung"));
  layout->addLayout(buttons);
  return page;
}

QWidget* Anfang::buildFiltersPage() {
  auto* page = new QWidget(this);
  auto* layout = new QVBoxLayout(page);
  layout->addWidget(label(page, "Label1Filter"));
  layout->addWidget(label(page, "lblFilterInfo"));
  QTableView* view =
      buildTable(TableKind::Filters, m_models[tableIndex(TableKind::Filters)], "FilterTabelle");
  view->setColumnWidth(0, 420);
  layout->addWidget(view, 1);
  return page;
}

QWidget* Anfang::buildPhonesPage() {
  auto* page = new QWidget(this);
  auto* tableSide = new QVBoxLayout;
  tableSide->addWidget(label(page, "Label6"));
  QTableView* view =
      buildTable(TableKind::Phones, m_models[tableIndex(TableKind::Phones)], "TelTabelle");
  view->setColumnWidth(0, 180);
  tableSide->addWidget(view, 1);
  auto* phoneButtons = new QHBoxLayout;
  QPushButton* telDown = button(page, "cmdTelDown");
  QPushButton* telUp = button(page, "cmdTelUp");
  connect(telDown, &QPushButton::clicked, this, [this] { m_devices->downloadPhones(); });
  connect(telUp, &QPushButton::clicked, this, [this] { m_devices->uploadPhones(); });
  phoneButtons->addWidget(telDown);
  phoneButtons->addWidget(telUp);
  phoneButtons->addStretch();
  tableSide->addLayout(phoneButtons);

  auto* frame = new QGroupBox(page);
  frame->setObjectName("Frame1");
  auto* form = new QVBoxLayout(frame);
  m_smsCentre = new QLineEdit(frame);
  m_smsCentre->setObjectName("txtSMSC");
  m_smsCentre->setMaxLength(kMaxPhoneLength);
  QPushButton* list = button(frame, "cmdSMSCList");
  connect(list, &QPushButton::clicked, this, [this] { m_devices->smsCentreList(); });
  auto* smscRow = new QHBoxLayout;
  smscRow->addWidget(m_smsCentre, 1);
  smscRow->addWidget(list);
  m_pin = new QLineEdit(frame);
  m_pin->setObjectName("PinNummer");
  // Four digits; an empty box reads "____", the form the project keeps for "no PIN".
  m_pin->setInputMask(QStringLiteral("9999;_"));
  m_pin->setMaximumWidth(90);
  m_station = new QLineEdit(frame);
  m_station->setObjectName("edStation");
  form->addWidget(label(frame, "lblSMSC"));
  form->addLayout(smscRow);
  form->addSpacing(8);
  form->addWidget(label(frame, "lblPin"));
  form->addWidget(m_pin);
  form->addWidget(label(frame, "lblPinInfo"));
  form->addSpacing(8);
  form->addWidget(label(frame, "lblStation"));
  form->addWidget(m_station);
  form->addWidget(label(frame, "Label1Tel"));
  form->addWidget(label(frame, "lblPcOnly"));
  auto* configButtons = new QHBoxLayout;
  QPushButton* down = button(frame, "cmdDown");
  QPushButton* up = button(frame, "cmdUp");
  connect(down, &QPushButton::clicked, this, [this] { m_devices->downloadConfiguration(); });
  connect(up, &QPushButton::clicked, this, [this] { m_devices->uploadConfiguration(); });
  configButtons->addWidget(down);
  configButtons->addWidget(up);
  configButtons->addStretch();
  form->addStretch();
  form->addLayout(configButtons);

  connect(m_smsCentre, &QLineEdit::textEdited, this,
          [this](const QString& text) { m_state.project.smsCentre = fromQString(text); });
  connect(m_station, &QLineEdit::textEdited, this,
          [this](const QString& text) { m_state.project.station = fromQString(text); });
  connect(m_pin, &QLineEdit::textEdited, this, [this] {
    m_state.project.pin = fromQString(m_pin->displayText());
    m_state.project.changed = true;
  });

  auto* layout = new QHBoxLayout(page);
  layout->addLayout(tableSide, 3);
  layout->addWidget(frame, 2);
  return page;
}

void Anfang::applyCaptions() {
  enum class Part { Text, ToolTip };
  struct Caption {
    const char* name;
    int slot;
    Part part;
  };
  static constexpr Caption kCaptions[] = {
      {"MenuFile", slot::kFileMenu, Part::Text},
      {"MenuFileNew", slot::kNew, Part::Text},
      {"MenuFileOpen", slot::kOpen, Part::Text},
      {"MenuFileSave", slot::kSave, Part::Text},
      {"MenuFileSaveAs", slot::kSaveAs, Part::Text},
      {"MenuFilePrint", slot::kPrint, Part::Text},
      {"MenuFileIns5", slot::kPrinterSetting, Part::Text},
      {"MenuFileIns13", slot::kExit, Part::Text},
      {"MenuConnect", slot::kConnection, Part::Text},
      {"MenuConnDownAll", slot::kDownloadAll, Part::Text},
      {"MenuConnUpAll", slot::kReadAll, Part::Text},
      {"MenuConfig", slot::kConfiguration, Part::Text},
      {"MenuConfigCom", slot::kSerialPort, Part::Text},
      {"MenuConfigSMSC", slot::kSmscListMenu, Part::Text},
      {"mnuConfigVersion", slot::kFirmwareVersion, Part::Text},
      {"mnuOptions", slot::kOptions, Part::Text},
      {"mnuSprache", slot::kLanguage, Part::Text},
      {"mnuLangEnglish", slot::kEnglish, Part::Text},
      {"mnuLangGerman", slot::kGerman, Part::Text},
      {"mnuLangFrench", slot::kFrench, Part::Text},
      {"MenuHelp", slot::kHelp, Part::Text},
      {"MenuHelpManual", slot::kDescription, Part::Text},
      {"MenuHelpFirst", slot::kFirstSteps, Part::Text},
      {"MenuHelpMonitor", slot::kReadLogger, Part::Text},
      {"MenuHelpAbout", slot::kAbout, Part::Text},
      {"tbNew", slot::kNew, Part::ToolTip},
      {"tbOpen", slot::kOpen, Part::ToolTip},
      {"tbSave", slot::kSave, Part::ToolTip},
      {"tbPrint", slot::kPrintTable, Part::ToolTip},
      {"tbDown", slot::kDownloadAll, Part::ToolTip},
      {"tbUp", slot::kReadAll, Part::ToolTip},
      {"tbClear", slot::kClearTable, Part::ToolTip},
      {"tbHelp", slot::kManual, Part::ToolTip},
      {"tbEnd", slot::kExit, Part::ToolTip},
      {"tbLog", slot::kLogFileRecord, Part::ToolTip},
      {"Label1Meld", slot::kEditMessage, Part::Text},
      {"Label3", slot::kMessageListInfo, Part::Text},
      {"Label1Filter", slot::kEditFilterText, Part::Text},
      {"lblFilterInfo", slot::kFilterListInfo, Part::Text},
      {"Label6", slot::kPhoneListInfo, Part::Text},
      {"Frame1", slot::kConfigurationPage, Part::Text},
      {"lblSMSC", slot::kSmscPhoneNumber, Part::Text},
      {"cmdSMSCList", slot::kSmscList, Part::Text},
      {"lblPin", slot::kEnterPin, Part::Text},
      {"lblPinInfo", slot::kPinInfo, Part::Text},
      {"lblStation", slot::kStationName, Part::Text},
      {"Label1Tel", slot::kPcOnly, Part::Text},
      {"lblPcOnly", slot::kPinAndStationSaved, Part::Text},
      {"cmdMeldDown", slot::kDownloadMessagesButton, Part::Text},
      {"cmdMeldUp", slot::kUploadMessagesButton, Part::Text},
      {"cmdQuittung", slot::kAcknowledgementRequest, Part::Text},
      {"cmdDown", slot::kDownloadPin, Part::Text},
      {"cmdUp", slot::kReadPin, Part::Text},
      {"cmdTelDown", slot::kDownloadPhones, Part::Text},
      {"cmdTelUp", slot::kReadPhonesButton, Part::Text},
  };
  for (const Caption& caption : kCaptions) {
    const QString text = m_state.text(caption.slot);
    QObject* target = findChild<QObject*>(caption.name);
    if (auto* menu = qobject_cast<QMenu*>(target)) {
      menu->setTitle(text);
    } else if (auto* action = qobject_cast<QAction*>(target)) {
      if (caption.part == Part::ToolTip) {
        action->setText(text);
        action->setToolTip(text);
      } else {
        action->setText(text);
      }
    } else if (auto* box = qobject_cast<QGroupBox*>(target)) {
      box->setTitle(text);
    } else if (auto* labelWidget = qobject_cast<QLabel*>(target)) {
      labelWidget->setText(text);
    } else if (auto* pushButton = qobject_cast<QPushButton*>(target)) {
      pushButton->setText(text);
    }
  }
  const std::array<int, 4> pageSlots = {slot::kMessages, slot::kFilterTexts, slot::kPhoneNumbers,
                                        slot::kMarkerSetting};
  for (int i = 0; i < m_pages->count(); ++i) {
    m_pages->setTabText(i, m_state.text(pageSlots[static_cast<std::size_t>(i)]));
  }
  for (ProjectTableModel* model : m_models) model->headersChanged();
  m_leftPane->setCaptions(m_state.text(slot::kDrive), m_state.text(slot::kDirectory),
                          m_state.text(slot::kFiles));
  m_flagPage->applyTexts();
  m_flagPicture->setPixmap(languageFlag(m_state.language, 18));
  for (const char* name : {"mnuLangEnglish", "mnuLangGerman"}) {
    if (QAction* action = findChild<QAction*>(name)) {
      action->setCheckable(true);
      action->setChecked((m_state.language == kEnglish) == (name[7] == 'E'));
    }
  }
  refreshRecentMenu();
  refreshGauge();
}

void Anfang::chooseLanguage(int language) {
  if (language != kEnglish && language != kGerman) return;
  m_state.language = language;
  m_state.texts.fill(language);
  applyCaptions();
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
  const std::string command = "winhelp " + fromQString(file);
  m_dialog->tell(kMainTitle,
                 m_state.texts.german()
                     ? "Der Hilfe-Betrachter konnte nicht gestartet werden: " + command
                     : "The help viewer could not be started: " + command,
                 BoxIcon::Exclamation);
}

void Anfang::showAbout() {
  AboutDialog about(m_state, *m_dialog, this);
  about.exec();
}

void Anfang::printerSetUp() {
  QPrinter printer;
  QPageSetupDialog setUp(&printer, this);
  setUp.exec();
}

}  // namespace quillon::app
