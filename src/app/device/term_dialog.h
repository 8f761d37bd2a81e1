#pragma once
// The transfer window `Term`. It watches a transfer that SerialLink drives: it shows itself,
// application-modal but without an event loop of its own, when the transfer starts, follows every
// event of the engine, and hides when the transfer is over. The one event loop of a transfer is
// SerialLink's, so nothing here ever waits.

#include <QDialog>
#include <array>

#include "link/qt/transfer_observer.h"
#include "link/transfer.h"
#include "project/user_dialog.h"

class QLabel;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;
class QWidget;

namespace quillon::app::device {

class Term : public QDialog, public TransferObserver {
  Q_OBJECT

 public:
  // `status` receives the texts the transfer leaves for status-bar panel 2.
  Term(StatusDisplay& status, QWidget* parent = nullptr);
  ~Term() override;

  void transferStarted(const TransferJob& job) override;
  void transferEvent(const TransferEvent& event) override;

  // The caption of cmdAbbruch in the current language.
  void setCancelCaption(const QString& caption);
  // Command1 shows the data and reply boxes, Command2 hides them again.
  void showLongForm(bool longForm);
  [[nodiscard]] bool longForm() const { return m_longForm; }

 Q_SIGNALS:
  // cmdAbbruch, Escape or the window's close button while a transfer runs.
  void cancelRequested();

 public Q_SLOTS:
  void reject() override;

 private:
  void clearAllSend();
  void clearAllRec();
  void appendReceived(int box, const std::string& text);
  void setBusy(bool busy);
  void applyHeight();

  StatusDisplay& m_status;
  QLabel* m_comment = nullptr;
  QProgressBar* m_progress = nullptr;
  QWidget* m_details = nullptr;
  QLabel* m_startSend = nullptr;
  QLabel* m_startReceive = nullptr;
  QLabel* m_content = nullptr;
  QLabel* m_digits = nullptr;
  QLabel* m_count = nullptr;
  QLabel* m_block = nullptr;
  QLabel* m_blockChecksum = nullptr;
  QLabel* m_blockRead = nullptr;
  QLabel* m_blockReadChecksum = nullptr;
  QLabel* m_reply = nullptr;
  QPlainTextEdit* m_send = nullptr;
  QPlainTextEdit* m_send2 = nullptr;
  std::array<QPlainTextEdit*, kReceiveBoxes> m_received{};
  QPushButton* m_more = nullptr;
  QPushButton* m_less = nullptr;
  QPushButton* m_cancel = nullptr;
  bool m_longForm = false;
  bool m_running = false;
  bool m_busy = false;
};

}  // namespace quillon::app::device
