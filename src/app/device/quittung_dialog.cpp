#include "app/device/quittung_dialog.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/qt_text.h"

namespace quillon::app::device {

std::string quittungHelpText() {
  // Windows-1252: \xFC ü, \xE4 ä, \xDC Ü; literals are split where a letter would extend the code.
  return std::string(
             "Um vom SMSC eine Quittung f\xFC"
             "r eine abgegangene SMS zu erhalten, ") +
         "muss eine Quittungsanforderung vor den SMS-Text gestellt werden. " +
         "(Bei T-Online z.B. '*T#'). " +
         "Der Netzbetreiber antwortet dann mit einem Standardtext. (Vielen Dank! ??? xxxxxxxx "
         "???? angekommen)." +
         "\r\r" +
         "Diese Quittierung sind unterschiedlich und werden oft ge\xE4"
         "ndert. " +
         "In diesem Fall kann es zu Problemen bei der passiven Quittierung kommen. " + "\r" +
         "Mit diesem Tool kann man nun jede beliebige Anforderung eingeben. Kestrix setzt die "
         "entsprechenden Daten zusammen. " +
         "Dabei wird nur eine 5-Ziffern Kennung der Telefon-Nummer verglichen. " +
         "Der empfangene Text wird dann auf eine entsprechende \xDC"
         "bereinstimmung mit dem "
         "vorgegebenen Text gepr\xFC"
         "ft. " +
         "\r" +
         "Dabei sind zwei Merkmale wichtig: Am Anfang und Ende muss eine 1-1 \xDC"
         "bereinstimmung "
         "mit einem Text vorhanden sein " +
         "und in der Mitte muss die Zeitstempel-Information der quittierten SMS angegeben sein." +
         "\r" + "Ein ? erlaubt beliebigen Text. " +
         "Bei einem x wird der Zeitstempel erwartet. Die Anzahl der ?/x ist ohne Bedeutung.";
}

QuittungDialog::QuittungDialog(AppState& state, UserDialog& dialog, QWidget* parent)
    : QDialog(parent), m_state(state), m_dialog(dialog) {
  setObjectName("frmQuittung");

  m_request = new QLineEdit(this);
  m_request->setObjectName("txtAnforderung");
  m_pattern = new QLineEdit(this);
  m_pattern->setObjectName("txtMuster");
  m_requestCaption = new QLabel(this);
  m_patternCaption = new QLabel(this);
  m_done = new QLabel(this);
  m_done->setObjectName("lblQuittung");
  connect(m_request, &QLineEdit::textEdited, this, [this](const QString& text) {
    m_state.project.ack.first = fromQString(text);
    m_state.project.changed = true;
  });
  connect(m_pattern, &QLineEdit::textEdited, this, [this](const QString& text) {
    m_state.project.ack.second = fromQString(text);
    m_state.project.changed = true;
  });

  auto* form = new QFormLayout;
  form->addRow(m_requestCaption, m_request);
  form->addRow(m_patternCaption, m_pattern);

  auto* info = new QPushButton(this);
  info->setObjectName("cmdInfo");
  auto* ok = new QPushButton(this);
  ok->setObjectName("cmdOK");
  ok->setDefault(true);
  auto* cancel = new QPushButton(this);
  cancel->setObjectName("CancelButton");
  info->setAutoDefault(false);
  cancel->setAutoDefault(false);
  connect(info, &QPushButton::clicked, this,
          [this] { m_dialog.tell(kQuittungHelpTitle, quittungHelpText(), BoxIcon::Information); });
  connect(ok, &QPushButton::clicked, this, [this] {
    m_done->setText(QStringLiteral("MQ"));
    accept();
  });
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

  auto* buttons = new QHBoxLayout;
  buttons->addWidget(info);
  buttons->addWidget(m_done);
  buttons->addStretch(1);
  buttons->addWidget(ok);
  buttons->addWidget(cancel);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addLayout(buttons);
  resize(460, sizeHint().height());
  applyCaptions();
}

void QuittungDialog::applyCaptions() {
  setWindowTitle(m_state.text(slot::kAcknowledgementRequest));
  m_requestCaption->setText(m_state.text(slot::kAcknowledgementRequestLabel));
  m_patternCaption->setText(m_state.text(slot::kAnswerPattern));
  findChild<QPushButton*>("cmdInfo")->setText(m_state.text(slot::kAcknowledgementInfo));
  findChild<QPushButton*>("cmdOK")->setText(m_state.text(slot::kOk));
  findChild<QPushButton*>("CancelButton")->setText(m_state.text(slot::kCancel));
}

void QuittungDialog::showRequest() {
  applyCaptions();
  m_request->setText(toQString(m_state.project.ack.first));
  m_pattern->setText(toQString(m_state.project.ack.second));
  (void)exec();
}

}  // namespace quillon::app::device
