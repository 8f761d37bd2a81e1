#include "app/device/monitor_dialog.h"

#include <QDir>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>
#include <filesystem>

#include "app/qt_text.h"
#include "transfer/logger.h"

namespace quillon::app::device {

MonitorDialog::MonitorDialog(const AppState& state, UserDialog& dialog, FilePicker& files,
                             ReadLogger readLogger, QWidget* parent)
    : QDialog(parent), m_dialog(dialog), m_files(files), m_readLogger(std::move(readLogger)) {
  setObjectName("frmMonitor");
  setWindowTitle(state.text(slot::kMonitorTitle));

  m_text = new QPlainTextEdit(this);
  m_text->setObjectName("txtMonitor");
  m_text->setReadOnly(true);
  m_text->setLineWrapMode(QPlainTextEdit::NoWrap);
  QFont fixed(QStringLiteral("Monospace"));
  fixed.setStyleHint(QFont::TypeWriter);
  m_text->setFont(fixed);

  auto* upload = new QPushButton(state.text(slot::kRead), this);
  upload->setObjectName("cmdUpload");
  auto* save = new QPushButton(state.text(slot::kSave), this);
  save->setObjectName("cmdSave");
  auto* close = new QPushButton(state.text(slot::kClose), this);
  close->setObjectName("cmdEsc");
  for (QPushButton* button : {upload, save, close}) button->setAutoDefault(false);
  connect(upload, &QPushButton::clicked, this, &MonitorDialog::upload);
  connect(save, &QPushButton::clicked, this, &MonitorDialog::save);
  connect(close, &QPushButton::clicked, this, &MonitorDialog::reject);

  auto* buttons = new QHBoxLayout;
  buttons->addWidget(upload);
  buttons->addWidget(save);
  buttons->addStretch(1);
  buttons->addWidget(close);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(m_text, 1);
  layout->addLayout(buttons);
  resize(640, 420);
}

void MonitorDialog::upload() {
  if (!m_readLogger) return;
  m_readLogger(m_monitor, [dialog = QPointer<MonitorDialog>(this)](std::string monitor) {
    if (dialog) dialog->showMonitor(std::move(monitor));
  });
}

void MonitorDialog::showMonitor(std::string monitor) {
  m_monitor = std::move(monitor);
  // The box shows lines; the saved text keeps the module's carriage returns.
  QString shown = toQString(m_monitor);
  shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  shown.replace(QLatin1Char('\r'), QLatin1Char('\n'));
  m_text->setPlainText(shown);
}

void MonitorDialog::save() {
  const QString path = m_files.saveFile(QString::fromLatin1(kLoggerSaveTitle),
                                        QStringLiteral("Text (*.txt);;* (*)"), QDir::currentPath());
  if (path.isEmpty()) return;
  (void)SaveLoggerText(std::filesystem::path(path.toStdU16String()), m_monitor, m_dialog);
}

}  // namespace quillon::app::device
