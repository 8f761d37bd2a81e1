#pragma once
// Every message box and question of the program goes through UserDialog, so the core decides
// which boxes appear and in which order, and each front end answers in its own way (QMessageBox,
// the terminal, or a scripted list in the tests). All texts are Windows-1252 bytes.

#include <string>

namespace quillon {

enum class BoxIcon { None, Information, Exclamation, Critical, Question };
enum class BoxButtons { Ok, OkCancel, YesNo, YesNoCancel };
enum class BoxAnswer { Ok, Cancel, Yes, No };

inline constexpr const char* kMainTitle = "Kestrix";

struct Box {
  std::string title;
  std::string text;
  BoxIcon icon = BoxIcon::None;
  BoxButtons buttons = BoxButtons::Ok;
  BoxAnswer defaultAnswer = BoxAnswer::Ok;

  friend bool operator==(const Box&, const Box&) = default;
};

class UserDialog {
 public:
  virtual ~UserDialog() = default;
  // Shows the box modally and returns the button that closed it.
  [[nodiscard]] virtual BoxAnswer ask(const Box& box) = 0;

  // A box with only an OK button, whose answer carries no information.
  void tell(std::string title, std::string text, BoxIcon icon = BoxIcon::None) {
    (void)ask(Box{std::move(title), std::move(text), icon, BoxButtons::Ok, BoxAnswer::Ok});
  }
};

}  // namespace quillon

namespace quillon {

// The main window's status bar: panel 1 the port status, 2 the transfer status, 3 the outcome of
// the last transfer in plain words (the window's own, set by the GUI alone), 4 the clock.
enum class StatusPanel { Port = 1, Transfer = 2, LastTransfer = 3, Clock = 4 };

class StatusDisplay {
 public:
  virtual ~StatusDisplay() = default;
  virtual void setStatus(StatusPanel panel, const std::string& text) = 0;
};

}  // namespace quillon
