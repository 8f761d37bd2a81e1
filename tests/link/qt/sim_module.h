#pragma once
// A telvane-sim process for a test: started with its own link name in its own directory, ended
// by closing its standard input. With `trace` its error output (every byte both ways) can be
// waited on, so a test acts at a chosen point of a transfer without sleeping.

#include <QByteArray>
#include <QDir>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace quillon::testing {

class SimModule {
 public:
  SimModule(const QString& linkName, const QStringList& options = {}, bool trace = false) {
    m_link = m_dir.path() + QLatin1Char('/') + linkName;
    if (!trace) m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QStringLiteral(TELVANE_SIM),
                    QStringList{QStringLiteral("--link"), m_link} + options +
                        (trace ? QStringList{QStringLiteral("--trace")} : QStringList{}));
    // The first line is the terminal's path; the link exists once it has been printed.
    while (m_process.state() != QProcess::NotRunning && !m_process.canReadLine())
      m_process.waitForReadyRead(5000);
    m_pty = QString::fromLocal8Bit(m_process.readLine()).trimmed();
  }
  ~SimModule() { stop(); }

  [[nodiscard]] const QString& link() const { return m_link; }
  [[nodiscard]] const QString& pty() const { return m_pty; }
  [[nodiscard]] bool running() const { return m_process.state() == QProcess::Running; }
  [[nodiscard]] QString file(const QString& name) const { return m_dir.filePath(name); }

  // Waits until the trace holds `text`; false when it never comes within `ms`.
  [[nodiscard]] bool waitForTrace(const QByteArray& text, int ms) {
    m_process.setReadChannel(QProcess::StandardError);
    while (!m_trace.contains(text)) {
      if (!m_process.waitForReadyRead(ms)) return false;
      m_trace += m_process.readAllStandardError();
    }
    return true;
  }

  // Pulls the plug: no clean-up, the terminal vanishes.
  void kill() {
    m_process.kill();
    m_process.waitForFinished(5000);
  }
  // Closing standard input ends the simulator; returns its exit code.
  int stop() {
    if (m_process.state() != QProcess::NotRunning) {
      m_process.closeWriteChannel();
      if (!m_process.waitForFinished(5000)) kill();
    }
    return m_process.exitCode();
  }

 private:
  QTemporaryDir m_dir;
  QProcess m_process;
  QString m_link;
  QString m_pty;
  QByteArray m_trace;
};

}  // namespace quillon::testing
