#include "app/device/term_dialog.h"

#include "link/transfer_presenter.h"

#include <QApplication>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTabWidget>
#include <QTextCursor>
#include <QVBoxLayout>

#include "app/qt_text.h"
#include "app/window_settings.h"

namespace quillon::app::device {
namespace {

constexpr double kShortHeight = 1960;  // twips: the status only
constexpr double kLongHeight = 7980;   // twips: with the data and reply boxes
constexpr double kWidth = 7200;        // twips
constexpr const char* kIdentifierDigitsShown = "4";

QLabel* valueLabel(QWidget* parent, const char* name) {
  auto* label = new QLabel(parent);
  label->setObjectName(name);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  label->setMinimumWidth(60);
  return label;
}

QPlainTextEdit* dataBox(QWidget* parent, const char* name) {
  auto* box = new QPlainTextEdit(parent);
  box->setObjectName(name);
  box->setReadOnly(true);
  box->setLineWrapMode(QPlainTextEdit::WidgetWidth);
  box->setWordWrapMode(QTextOption::WrapAnywhere);
  return box;
}

}  // namespace

Term::Term(StatusDisplay& status, QWidget* parent) : QDialog(parent), m_status(status) {
  setObjectName("Term");
  setWindowTitle(toQString(StatusTitle(TransferStatus::Active, TransferDirection::Download)));
  setWindowModality(Qt::ApplicationModal);

  m_comment = new QLabel(this);
  m_comment->setObjectName("Kommentar");
  m_progress = new QProgressBar(this);
  m_progress->setObjectName("Laufzeit");
  m_progress->setRange(0, 100);
  m_progress->setValue(0);

  m_more = new QPushButton(QStringLiteral(">>"), this);
  m_more->setObjectName("Command1");
  m_less = new QPushButton(QStringLiteral("<<"), this);
  m_less->setObjectName("Command2");
  m_cancel = new QPushButton(this);
  m_cancel->setObjectName("cmdAbbruch");
  m_cancel->setAutoDefault(false);
  m_more->setAutoDefault(false);
  m_less->setAutoDefault(false);
  connect(m_more, &QPushButton::clicked, this, [this] { showLongForm(true); });
  connect(m_less, &QPushButton::clicked, this, [this] { showLongForm(false); });
  connect(m_cancel, &QPushButton::clicked, this, &Term::cancelRequested);

  m_details = new QWidget(this);
  m_details->setObjectName("picDetails");

  auto* sending = new QGroupBox(QStringLiteral("Download - Transfer"), m_details);
  sending->setObjectName("RahmenS");
  m_startSend = valueLabel(sending, "lblStartKSend");
  m_digits = valueLabel(sending, "lblLang");
  m_block = valueLabel(sending, "Bez2");
  m_block->setWordWrap(true);
  m_blockChecksum = valueLabel(sending, "Bez3");
  m_reply = valueLabel(sending, "lblAntwort");
  m_send = dataBox(sending, "Sendetext");
  m_send2 = dataBox(sending, "Sendetext2");
  auto* sendForm = new QFormLayout;
  sendForm->addRow(QStringLiteral("Start:"), m_startSend);
  sendForm->addRow(QStringLiteral("Digits:"), m_digits);
  sendForm->addRow(QStringLiteral("Block:"), m_block);
  sendForm->addRow(QStringLiteral("Checksum:"), m_blockChecksum);
  sendForm->addRow(QStringLiteral("Reply:"), m_reply);
  auto* sendTexts = new QTabWidget(sending);
  sendTexts->addTab(m_send, QStringLiteral("Sendetext"));
  sendTexts->addTab(m_send2, QStringLiteral("Sendetext2"));
  auto* sendLayout = new QVBoxLayout(sending);
  sendLayout->addLayout(sendForm);
  sendLayout->addWidget(sendTexts, 1);

  auto* reading = new QGroupBox(QStringLiteral("Upload - Transfer"), m_details);
  reading->setObjectName("Frame1");
  m_startReceive = valueLabel(reading, "lblStartKEmpf");
  m_content = valueLabel(reading, "lblInhalt");
  m_count = valueLabel(reading, "lblAnzahl");
  m_blockRead = valueLabel(reading, "lblBlockLes");
  m_blockRead->setWordWrap(true);
  m_blockReadChecksum = valueLabel(reading, "lblBlockChk");
  auto* readForm = new QFormLayout;
  readForm->addRow(QStringLiteral("Request:"), m_startReceive);
  readForm->addRow(QStringLiteral("Content:"), m_content);
  readForm->addRow(QStringLiteral("Count:"), m_count);
  readForm->addRow(QStringLiteral("Block:"), m_blockRead);
  readForm->addRow(QStringLiteral("Checksum:"), m_blockReadChecksum);
  auto* receiveTexts = new QTabWidget(reading);
  static constexpr std::array<const char*, kReceiveBoxes> kReceiveNames = {
      "Empfang", "Empfang2", "Empfang3", "Empfang4", "Empfang5"};
  for (std::size_t i = 0; i < m_received.size(); ++i) {
    m_received[i] = dataBox(reading, kReceiveNames[i]);
    receiveTexts->addTab(m_received[i], QString::fromLatin1(kReceiveNames[i]));
  }
  auto* readLayout = new QVBoxLayout(reading);
  readLayout->addLayout(readForm);
  readLayout->addWidget(receiveTexts, 1);

  auto* detailsLayout = new QHBoxLayout(m_details);
  detailsLayout->setContentsMargins(0, 0, 0, 0);
  detailsLayout->addWidget(sending, 1);
  detailsLayout->addWidget(reading, 1);

  auto* buttons = new QHBoxLayout;
  buttons->addWidget(m_more);
  buttons->addWidget(m_less);
  buttons->addStretch(1);
  buttons->addWidget(m_cancel);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(m_comment);
  layout->addWidget(m_progress);
  layout->addLayout(buttons);
  layout->addWidget(m_details, 1);

  m_digits->setText(kIdentifierDigitsShown);
  setCancelCaption(QStringLiteral("Cancel transfer"));
  resize(twipsToPixels(kWidth, screenDpi(this)), 10);
  showLongForm(false);
}

Term::~Term() { setBusy(false); }

void Term::setCancelCaption(const QString& caption) { m_cancel->setText(caption); }

void Term::showLongForm(bool longForm) {
  m_longForm = longForm;
  m_details->setVisible(longForm);
  m_more->setEnabled(!longForm);
  m_less->setEnabled(longForm);
  applyHeight();
}

void Term::applyHeight() {
  const double dpi = screenDpi(this);
  const int height = twipsToPixels(m_longForm ? kLongHeight : kShortHeight, dpi);
  // The layout's minimum wins where the frame takes more than the old window's title bar did.
  if (layout()) layout()->activate();
  resize(width(), std::max(height, minimumSizeHint().height()));
}

void Term::clearAllSend() {
  m_send->clear();
  m_send2->clear();
  m_startSend->clear();
  m_block->clear();
  m_blockChecksum->clear();
  m_reply->clear();
}

void Term::clearAllRec() {
  for (QPlainTextEdit* box : m_received) box->clear();
  m_startReceive->clear();
  m_content->clear();
  m_count->clear();
  m_blockRead->clear();
  m_blockReadChecksum->clear();
}

void Term::transferStarted(const TransferJob& job) {
  // Every transfer opens in the short form, whatever the last one was left in.
  showLongForm(false);
  clearAllSend();
  clearAllRec();
  setWindowTitle(toQString(StatusTitle(TransferStatus::Active, job.direction)));
  m_send->setPlainText(toQString(job.sendText));
  m_send2->setPlainText(toQString(job.sendText2));
  m_startSend->setText(toQString(job.startIdentifier));
  if (job.requestLetter != '\0')
    m_startReceive->setText(toQString(std::string(1, job.requestLetter)));
  m_content->setText(toQString(job.contentLabel));
  m_comment->clear();
  m_progress->setValue(0);
  m_running = true;
  m_cancel->setEnabled(true);
  // Shown, not executed: the transfer's own event loop keeps running underneath.
  show();
  raise();
  activateWindow();
}

void Term::appendReceived(int box, const std::string& text) {
  if (box < 0 || box >= kReceiveBoxes) return;
  QPlainTextEdit* edit = m_received[static_cast<std::size_t>(box)];
  QTextCursor end(edit->document());
  end.movePosition(QTextCursor::End);
  end.insertText(toQString(text));
}

void Term::setBusy(bool busy) {
  if (busy == m_busy) return;
  m_busy = busy;
  if (busy)
    QApplication::setOverrideCursor(Qt::WaitCursor);
  else
    QApplication::restoreOverrideCursor();
}

void Term::transferEvent(const TransferEvent& event) {
  using Kind = TransferEvent::Kind;
  switch (event.kind) {
    case Kind::Comment:
      m_comment->setText(toQString(event.text));
      break;
    case Kind::Progress:
      m_progress->setValue(event.value);
      break;
    case Kind::Block:
      m_block->setText(toQString(event.text));
      m_blockChecksum->setText(toQString(event.text2));
      break;
    case Kind::Reply:
      m_reply->setText(toQString(event.text));
      break;
    case Kind::Received:
      appendReceived(event.value, event.text);
      break;
    case Kind::Count:
      m_count->setText(QString::number(event.value));
      break;
    case Kind::Title:
      setWindowTitle(toQString(event.text));
      break;
    case Kind::Busy:
      setBusy(event.value != 0);
      break;
    case Kind::StatusText:
      m_status.setStatus(StatusPanel::Transfer, event.text);
      break;
    case Kind::BlockRead:
      m_blockRead->setText(toQString(event.text));
      m_blockReadChecksum->setText(toQString(event.text2));
      break;
    case Kind::Finished:
      m_running = false;
      m_cancel->setEnabled(false);
      setBusy(false);
      hide();
      break;
    case Kind::Box:  // SerialLink shows it through the UserDialog right after this
    case Kind::Log:  // SerialLink writes the traffic log
      break;
  }
}

void Term::reject() {
  // While a transfer runs the window only goes away when the transfer has ended.
  if (m_running) {
    Q_EMIT cancelRequested();
    return;
  }
  QDialog::reject();
}

}  // namespace quillon::app::device
