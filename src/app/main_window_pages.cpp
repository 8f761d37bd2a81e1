// The four pages of `Eingabe` and the left pane: building them and wiring their controls.

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QVBoxLayout>

#include "app/flag_page_widget.h"
#include "app/left_pane.h"
#include "app/main_window.h"
#include "app/qt_text.h"
#include "app/table_editor.h"
#include "app/window_settings.h"

namespace quillon::app {
namespace {

// The splitter keeps both sides at least this wide (twips).
constexpr double kMinimumPaneTwips = 1500;

// Room for a whole phone number: "+" and twenty digits.
QString longestPhoneNumber() { return QStringLiteral("+") + QString(kMaxPhoneLength, '8'); }

// Widths that follow the font, so that both languages and every screen show whole columns.
// The text column takes whatever the window leaves, never the comment.
void shapeColumns(QTableView* view, TableKind kind) {
  QHeaderView* header = view->horizontalHeader();
  header->setStretchLastSection(false);
  const QFontMetrics metrics = view->fontMetrics();
  const int comment = metrics.averageCharWidth() * 18;
  switch (kind) {
    case TableKind::Messages:
      for (int column = 0; column < 3; ++column) {
        header->setSectionResizeMode(column, QHeaderView::Fixed);
        view->setColumnWidth(column, 28);
      }
      header->setSectionResizeMode(3, QHeaderView::Stretch);
      header->setSectionResizeMode(4, QHeaderView::Interactive);
      view->setColumnWidth(4, comment);
      break;
    case TableKind::Filters:
      header->setSectionResizeMode(0, QHeaderView::Stretch);
      header->setSectionResizeMode(1, QHeaderView::Interactive);
      view->setColumnWidth(1, comment);
      break;
    case TableKind::Phones:
      header->setSectionResizeMode(0, QHeaderView::Interactive);
      view->setColumnWidth(0, metrics.horizontalAdvance(longestPhoneNumber()) + 12);
      header->setSectionResizeMode(1, QHeaderView::Stretch);
      break;
  }
}

}  // namespace

QTableView* Anfang::buildTable(TableKind kind, ProjectTableModel* model, const char* name) {
  auto* view = new QTableView(this);
  view->setObjectName(name);
  view->setModel(model);
  view->setSelectionMode(QAbstractItemView::SingleSelection);
  view->setSelectionBehavior(QAbstractItemView::SelectItems);
  view->setAlternatingRowColors(true);
  view->verticalHeader()->setDefaultSectionSize(view->fontMetrics().height() + 6);
  view->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  view->setWordWrap(false);
  // Tab leaves the table for the next control; the arrow keys move within it.
  view->setTabKeyNavigation(false);
  shapeColumns(view, kind);
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

void Anfang::keepTransfersOffTheKeyboard() {
  // A Space meant for a table must never start a transfer: the buttons that talk to the module
  // take no keyboard focus. The Connection menu and the mouse reach them.
  for (const char* name : {"cmdMeldDown", "cmdMeldUp", "cmdTelDown", "cmdTelUp", "cmdDown", "cmdUp",
                           "cmdEasy800Down", "cmdEasy800Up"}) {
    if (auto* transfer = findChild<QPushButton*>(name)) transfer->setFocusPolicy(Qt::NoFocus);
  }
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
  layout->addWidget(view, 1);
  QPushButton* download = button(page, "cmdMeldDown");
  QPushButton* upload = button(page, "cmdMeldUp");
  QPushButton* acknowledgement = button(page, "cmdQuittung");
  connect(download, &QPushButton::clicked, this, [this] { m_devices->downloadMessages(); });
  connect(upload, &QPushButton::clicked, this, [this] { m_devices->uploadMessages(); });
  connect(acknowledgement, &QPushButton::clicked, this,
          [this] { m_devices->acknowledgementRequest(); });
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(download);
  buttons->addWidget(upload);
  buttons->addStretch();
  buttons->addWidget(acknowledgement);
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
  layout->addWidget(view, 1);
  return page;
}

QWidget* Anfang::buildPhonesPage() {
  auto* page = new QWidget(this);
  auto* tableSide = new QVBoxLayout;
  tableSide->addWidget(label(page, "Label6"));
  QTableView* view =
      buildTable(TableKind::Phones, m_models[tableIndex(TableKind::Phones)], "TelTabelle");
  tableSide->addWidget(view, 1);
  auto* phoneButtons = new QHBoxLayout;
  QPushButton* telDown = button(page, "cmdTelDown");
  QPushButton* telUp = button(page, "cmdTelUp");
  connect(telDown, &QPushButton::clicked, this, [this] { m_devices->downloadPhones(); });
  connect(telUp, &QPushButton::clicked, this, [this] { m_devices->uploadPhones(); });
  phoneButtons->addWidget(telDown);
  phoneButtons->addWidget(telUp);
  phoneButtons->addStretch();

  auto* frame = new QGroupBox(page);
  frame->setObjectName("Frame1");
  auto* form = new QVBoxLayout(frame);
  m_smsCentre = new QLineEdit(frame);
  m_smsCentre->setObjectName("txtSMSC");
  m_smsCentre->setMaxLength(kMaxPhoneLength);
  // The whole number stays in sight, its leading "+" above all.
  m_smsCentre->setMinimumWidth(m_smsCentre->fontMetrics().horizontalAdvance(longestPhoneNumber()) +
                               16);
  QPushButton* list = button(frame, "cmdSMSCList");
  connect(list, &QPushButton::clicked, this, [this] { m_devices->smsCentreList(); });
  auto* smscRow = new QHBoxLayout;
  smscRow->addWidget(list);
  smscRow->addStretch();
  m_pin = new QLineEdit(frame);
  m_pin->setObjectName("PinNummer");
  // Four digits; an empty box reads "____", the form the project keeps for "no PIN".
  m_pin->setInputMask(QStringLiteral("9999;_"));
  m_pin->setMaximumWidth(90);
  m_station = new QLineEdit(frame);
  m_station->setObjectName("edStation");
  form->addWidget(label(frame, "lblSMSC"));
  form->addWidget(m_smsCentre);
  form->addLayout(smscRow);
  form->addWidget(label(frame, "lblPin"));
  form->addWidget(m_pin);
  form->addWidget(label(frame, "lblPinInfo"));
  form->addWidget(label(frame, "lblStation"));
  form->addWidget(m_station);
  form->addWidget(label(frame, "Label1Tel"));
  form->addWidget(label(frame, "lblPcOnly"));
  form->addStretch();
  // The PIN's buttons sit under the frame, beside the phone numbers' own, so that the frame
  // keeps its height for the texts.
  auto* configButtons = new QHBoxLayout;
  QPushButton* down = button(page, "cmdDown");
  QPushButton* up = button(page, "cmdUp");
  connect(down, &QPushButton::clicked, this, [this] { m_devices->downloadConfiguration(); });
  connect(up, &QPushButton::clicked, this, [this] { m_devices->uploadConfiguration(); });
  configButtons->addStretch();
  configButtons->addWidget(down);
  configButtons->addWidget(up);

  connect(m_smsCentre, &QLineEdit::textEdited, this,
          [this](const QString& text) { m_state.project.smsCentre = fromQString(text); });
  connect(m_station, &QLineEdit::textEdited, this,
          [this](const QString& text) { m_state.project.station = fromQString(text); });
  connect(m_pin, &QLineEdit::textEdited, this, [this] {
    m_state.project.pin = fromQString(m_pin->displayText());
    m_state.project.changed = true;
  });

  auto* layout = new QGridLayout(page);
  layout->addLayout(tableSide, 0, 0);
  layout->addWidget(frame, 0, 1);
  layout->addLayout(phoneButtons, 1, 0);
  layout->addLayout(configButtons, 1, 1);
  layout->setColumnStretch(0, 3);
  layout->setColumnStretch(1, 2);
  return page;
}

}  // namespace quillon::app
