#pragma once
// A telvane-sim process for a test: started with its own link name in its own directory, ended
// by closing its standard input.

#include <QDir>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace quillon::testing {

class SimModule {
 public:
  SimModule(const QString& linkName, const QStringList& options = {}) {
    m_link = m_dir.path() + QLatin1Char('/') + linkName;
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QStringLiteral(TELVANE_SIM),
                    QStringList{QStringLiteral("--link"), m_link} + options);
    // The first line is the terminal's path; the link exists once it has been printed.
    while (m_process.state() != QProcess::NotRunning && !m_process.canReadLine())
      m_process.waitForReadyRead(5000);
    m_pty = QString::fromLocal8Bit(m_process.readLine()).trimmed();
  }
  ~SimModule() { stop(); }

  [[nodiscard]] const QString& link() const { return m_link; }
  [[nodiscard]] const QString& pty() const { return m_pty; }
  [[nodiscard]] bool running() const { return m_process.state() == QProcess::Running; }

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
};

}  // namespace quillon::testing
