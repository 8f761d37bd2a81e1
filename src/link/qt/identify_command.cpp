#include "link/qt/identify_command.h"

#include <unistd.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <charconv>
#include <cmath>
#include <iostream>
#include <memory>
#include <optional>
#include <ostream>

#include "link/qt/identify.h"
#include "link/qt/port_names.h"
#include "link/qt/serial_link.h"
#include "link/qt/transfer_observer.h"
#include "link/traffic_log.h"
#include "text/code_page.h"

namespace quillon {
namespace {

struct IdentifyOptions {
  std::string port;
  bool yes = false;
  TimeOfDay replyTimeout = 20000;
  bool log = false;
  int language = 0;
};

std::optional<TimeOfDay> parseSeconds(const std::string& text) {
  double seconds = 0;
  const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), seconds);
  if (ec != std::errc{} || end != text.data() + text.size() || !(seconds > 0) || seconds > 86'400) {
    return std::nullopt;
  }
  return static_cast<TimeOfDay>(std::llround(seconds * 1000));
}

// nullopt with `error` set when the command line is wrong.
std::optional<IdentifyOptions> parse(const std::vector<std::string>& arguments,
                                     std::string& error) {
  IdentifyOptions options;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    std::string name = arguments[i];
    std::optional<std::string> value;
    if (const auto eq = name.find('='); name.starts_with("--") && eq != std::string::npos) {
      value = name.substr(eq + 1);
      name.resize(eq);
    }
    if (name == "--yes" || name == "--log") {
      if (value) {
        error = name + " takes no value";
        return std::nullopt;
      }
      (name == "--yes" ? options.yes : options.log) = true;
      continue;
    }
    if (name != "--port" && name != "--reply-timeout" && name != "--lang") {
      error = "unknown option '" + name + "'";
      return std::nullopt;
    }
    if (!value) {
      if (i + 1 >= arguments.size()) {
        error = "option " + name + " needs a value";
        return std::nullopt;
      }
      value = arguments[++i];
    }
    if (name == "--port") {
      options.port = *value;
    } else if (name == "--reply-timeout") {
      const auto timeout = parseSeconds(*value);
      if (!timeout) {
        error = "--reply-timeout needs a number of seconds, not '" + *value + "'";
        return std::nullopt;
      }
      options.replyTimeout = *timeout;
    } else if (*value == "en" || *value == "de") {
      options.language = *value == "de" ? 1 : 0;
    } else {
      error = "unknown language '" + *value + "': use en or de";
      return std::nullopt;
    }
  }
  if (options.port.empty()) {
    error = "identify needs --port DEV";
    return std::nullopt;
  }
  return options;
}

std::string oneLine(const std::string& text) {
  std::string line = cp1252ToUtf8(text);
  for (char& c : line)
    if (c == '\r' || c == '\n') c = ' ';
  return line;
}

// Boxes become lines on the error stream. The readiness question is answered by --yes, asked
// when a person is there to answer, and declined otherwise.
class ConsoleDialog : public UserDialog {
 public:
  ConsoleDialog(Console& console, bool yes) : m_console(console), m_yes(yes) {}

  BoxAnswer ask(const Box& box) override {
    if (box.text != kReadyQuestion) {
      m_console.err << oneLine(box.text) << '\n';
      return box.defaultAnswer;
    }
    if (m_yes) return BoxAnswer::Ok;
    if (!m_console.interactive) {
      m_console.err << box.text << " - declined: no terminal to ask (use --yes)\n";
      return BoxAnswer::Cancel;
    }
    m_console.err << box.text << " [OK/cancel] " << std::flush;
    std::string answer;
    if (!std::getline(m_console.in, answer)) return BoxAnswer::Cancel;
    for (char& c : answer) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    const bool ok = answer.empty() || answer == "ok" || answer == "o" || answer == "y" ||
                    answer == "yes" || answer == "j" || answer == "ja";
    return ok ? BoxAnswer::Ok : BoxAnswer::Cancel;
  }

 private:
  Console& m_console;
  bool m_yes;
};

// The transfer window's state and progress on one line that rewrites itself.
class ProgressLine : public TransferObserver {
 public:
  explicit ProgressLine(std::ostream& err) : m_err(err) {}
  void transferEvent(const TransferEvent& event) override {
    using Kind = TransferEvent::Kind;
    if (event.kind == Kind::Comment) m_comment = oneLine(event.text);
    if (event.kind == Kind::Progress) m_progress = event.value;
    if (event.kind == Kind::Comment || event.kind == Kind::Progress) {
      m_err << "\r\x1b[K" << m_comment;
      if (m_progress > 0) m_err << ' ' << m_progress << " %";
      m_err << std::flush;
    }
    if (event.kind == Kind::Box || event.kind == Kind::Finished) {
      m_err << "\r\x1b[K" << std::flush;
      m_progress = 0;
    }
  }

 private:
  std::ostream& m_err;
  std::string m_comment;
  int m_progress = 0;
};

class NoStatus : public StatusDisplay {
 public:
  void setStatus(StatusPanel, const std::string&) override {}
};

}  // namespace

std::string IdentifyUsage() {
  return "Usage: quillon-cli identify --port DEV [--yes] [--reply-timeout SECONDS] [--log]\n"
         "                            [--lang en|de]\n"
         "\n"
         "Reads the identity of the module at DEV (a device path or a port number) and\n"
         "prints it, one \"label: value\" line each. Exits with the transfer result:\n"
         "0 ok, 1 port not opened, 2 declined, 3 cancelled, 4 time-out, 5 no connection,\n"
         "6 no response, 7 version conflict.\n"
         "\n"
         "  --yes                    answers \"Telvane ready ?\" (otherwise it is asked on\n"
         "                           the terminal, and declined without one)\n"
         "  --reply-timeout SECONDS  how long to wait for each reply (default 20)\n"
         "  --log                    logs the serial traffic to a file in this directory\n"
         "  --lang en|de             language of the messages (default en)\n";
}

Console ProcessConsole() {
  return Console{std::cin, std::cout, std::cerr, ::isatty(STDIN_FILENO) != 0,
                 ::isatty(STDERR_FILENO) != 0};
}

int RunIdentifyCommand(const std::vector<std::string>& arguments, Console& console) {
  std::string error;
  const auto options = parse(arguments, error);
  if (!options) {
    console.err << "quillon-cli identify: " << error << "\n" << IdentifyUsage();
    return kIdentifyUsageError;
  }

  // The driver runs an event loop, which needs an application object.
  static int argc = 1;
  static char name[] = "quillon-cli";
  static char* argv[] = {name, nullptr};
  std::unique_ptr<QCoreApplication> app;
  if (QCoreApplication::instance() == nullptr) app = std::make_unique<QCoreApplication>(argc, argv);

  ConsoleDialog dialog(console, options->yes);
  const auto port = resolvePort(QString::fromStdString(options->port));
  if (!port) {
    console.err << "No device for port " << options->port << "\n";
    return kResultPortNotOpened;
  }

  SerialLink link(dialog);
  link.setPort(*port);
  EngineSettings settings;
  settings.replyTimeout = options->replyTimeout;
  settings.language = options->language;
  link.setEngineSettings(settings);
  ProgressLine progress(console.err);
  if (console.progress) link.setObserver(&progress);

  TrafficLog log;
  if (options->log) {
    const QDateTime now = QDateTime::currentDateTime();
    const std::string fileName =
        TrafficLogFileName(now.date().year(), now.date().month(), now.date().day(),
                           now.time().msecsSinceStartOfDay() / 1000);
    const std::string directory = utf8ToCp1252(QDir::currentPath().toStdString());
    if (!log.open(std::filesystem::path(QDir::currentPath().toStdString()), fileName)) {
      console.err << "Cannot create the log file " << fileName << "\n";
    } else {
      dialog.tell("", TrafficLogOpenedText(fileName, directory));
      link.setTrafficLog(&log);
    }
  }

  ModuleLimits limits;
  LinkSession session;
  NoStatus status;
  LinkContext context{link, dialog, status, limits, session, options->language};
  const int result = IdentifyModule(context);
  if (result == kResultPortNotOpened)
    console.err << "Cannot open " << options->port << ": " << cp1252ToUtf8(link.portErrorText())
                << "\n";
  if (result == kResultOk || result == kResultVersionConflict) {
    for (const auto& [label, value] : IdentityFields(session.identity)) {
      const std::string shown = label == "Reply" ? EscapeForLog(value) : value;
      console.out << label << ": " << cp1252ToUtf8(shown) << "\n";
    }
  }
  return result;
}

}  // namespace quillon
