#pragma once
// The identification dialog `frmVersion`: what the module said about itself, the raw reply, and
// a blinking notice when it is not the module this program configures.

#include <QDialog>
#include <QTimer>
#include <functional>

#include "link/identity.h"
#include "project/user_dialog.h"

class QLabel;
class QPushButton;

namespace quillon::app::device {

inline constexpr const char* kVersionDialogTitle = "Version of device-firmware";
inline constexpr const char* kDiscardVersionQuestion = "Wirklich Versions-Daten l\xF6schen ?";
inline constexpr const char* kDiscardVersionTitle = "Versionsanzeige";
inline constexpr int kBlinkInterval = 500;  // ms

class VersionDialog : public QDialog {
  Q_OBJECT

 public:
  // Shows `identity` (the session's) and clears it when the user agrees to discard it on
  // closing. `readVersion` is cmdVersion: it starts the query, which fills `identity`, and calls
  // its argument once the query has ended.
  using ReadVersion = std::function<void(std::function<void()> ended)>;
  VersionDialog(DeviceIdentity& identity, UserDialog& dialog, ReadVersion readVersion,
                QWidget* parent = nullptr);

  // Fills the labels from the identity and starts the blinking for its conflicts.
  void refresh();

 public Q_SLOTS:
  void reject() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void blink();
  void stopBlinking();

  DeviceIdentity& m_identity;
  UserDialog& m_dialog;
  ReadVersion m_readVersion;
  QLabel* m_version = nullptr;
  QLabel* m_bus = nullptr;
  QLabel* m_unit = nullptr;
  QLabel* m_firmware = nullptr;
  QLabel* m_messages = nullptr;
  QLabel* m_phones = nullptr;
  QLabel* m_raw = nullptr;
  QLabel* m_unitCaption = nullptr;
  QLabel* m_phonesCaption = nullptr;
  QLabel* m_correct = nullptr;
  QLabel* m_picture = nullptr;
  QTimer m_blink;
};

}  // namespace quillon::app::device
