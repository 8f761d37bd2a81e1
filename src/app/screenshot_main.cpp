// Renders every page and dialog of the program into PNG files for the documentation and the
// built-in manual, at the window's default size:
//   quillon-screenshot OUTPUT_DIR LANGUAGE PROJECT.EAY
// LANGUAGE 0 English, 1 German; the files end in "-en.png" or "-de.png". Uses a settings file of
// its own, so the user's settings are neither read nor changed. Meant to run under xvfb-run.

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QTemporaryDir>
#include <QTimer>
#include <cstdio>
#include <functional>

#include "app/device/module_commands.h"
#include "app/device/term_dialog.h"
#include "app/flag_page_widget.h"
#include "app/main_window.h"
#include "app/message_box_dialog.h"
#include "app/png_file.h"
#include "app/window_settings.h"

namespace {

// Answers every box with its default, so nothing waits for a click.
class DefaultAnswers : public quillon::UserDialog {
 public:
  quillon::BoxAnswer ask(const quillon::Box& box) override { return box.defaultAnswer; }
};

class NoStatus : public quillon::StatusDisplay {
 public:
  void setStatus(quillon::StatusPanel, const std::string&) override {}
};

QDir g_output;
QString g_suffix;
bool g_failed = false;

void save(QWidget* widget, const QString& name) {
  QApplication::processEvents();
  const QString path = g_output.filePath(name + g_suffix);
  if (!quillon::app::writePng(widget->grab(), path)) {
    std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
    g_failed = true;
  }
}

// Runs `open`, which shows a modal dialog and returns once it is closed; the dialog is pictured
// once it has settled and then closed by `close` (reject() when empty).
void shootModal(const QString& name, const std::function<void()>& open,
                const std::function<void(QWidget*)>& close = {}) {
  QTimer poll;
  bool shot = false;
  QObject::connect(&poll, &QTimer::timeout, [&] {
    QWidget* modal = QApplication::activeModalWidget();
    if (shot || !modal || !modal->isVisible()) return;
    shot = true;
    QTimer::singleShot(400, modal, [modal, name, close] {
      save(modal, name);
      if (close) {
        close(modal);
      } else if (auto* dialog = qobject_cast<QDialog*>(modal)) {
        dialog->reject();
      } else {
        modal->close();
      }
    });
  });
  poll.start(50);
  open();
  if (!shot) {
    std::fprintf(stderr, "no dialog for %s\n", qPrintable(name));
    g_failed = true;
  }
}

void press(QWidget* widget, int key) {
  QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier, key == Qt::Key_Return ? "\r" : "");
  QApplication::sendEvent(widget, &down);
}

void trigger(QWidget& window, const char* action) { window.findChild<QAction*>(action)->trigger(); }

void click(QWidget* dialog, const char* button) {
  if (auto* b = dialog->findChild<QPushButton*>(button)) b->click();
}

void renderAll(quillon::app::Anfang& window, quillon::app::device::ModuleCommands& commands) {
  auto* pages = window.findChild<QTabWidget*>("Eingabe");
  const char* pageNames[] = {"main-window", "filter-page", "phone-page", "flag-page"};
  for (int page = 0; page < 4; ++page) {
    pages->setCurrentIndex(page);
    if (page == 3) {
      // A chosen flag shows its message and phone number beside the numbers.
      auto* grid = window.findChild<quillon::app::FlagGrid*>("grdMerker");
      grid->setFocus();
      press(grid, Qt::Key_Return);
    }
    save(&window, pageNames[page]);
  }

  // The entry boxes, as Enter on a cell opens them.
  auto edit = [&](int page, const char* view, int row, int column) {
    pages->setCurrentIndex(page);
    auto* table = window.findChild<QTableView*>(view);
    table->setCurrentIndex(table->model()->index(row, column));
    table->setFocus();
    press(table, Qt::Key_Return);
  };
  shootModal("entry-message", [&] { edit(0, "MeldTabelle", 19, 3); });
  shootModal("entry-comment", [&] { edit(0, "MeldTabelle", 0, 4); });
  shootModal("entry-phone", [&] { edit(2, "TelTabelle", 0, 0); });
  pages->setCurrentIndex(0);

  // The transfer window in its short and its long form, half-way through the messages.
  quillon::app::device::Term& term = commands.term();
  quillon::TransferJob job;
  job.contentLabel = "Messages";
  job.sendText = std::string("A;\xB6") + "APumpe 1 St|rung: Motorschutz ausgel|st\xB6";
  job.startIdentifier = "M0A3C";
  term.setCancelCaption(window.state().text(quillon::slot::kCancelTransfer));
  term.transferStarted(job);
  using Kind = quillon::TransferEvent::Kind;
  term.transferEvent({Kind::Comment, "Sending data block by block...", {}, 0, {}});
  term.transferEvent({Kind::Progress, {}, {}, 40, {}});
  term.transferEvent({Kind::Block,
                      "APumpe 2 St|rung: Motorschutz ausgel|st\xB6"
                      "ASammelst",
                      "3B",
                      0,
                      {}});
  term.transferEvent({Kind::Reply, "[ACK]", {}, 0, {}});
  QApplication::processEvents();
  save(&term, "transfer-window");
  term.showLongForm(true);
  save(&term, "transfer-window-details");
  term.transferEvent({Kind::Finished, {}, {}, 0, {}});

  shootModal(
      "identification", [&] { trigger(window, "mnuConfigVersion"); },
      [](QWidget* dialog) { click(dialog, "cmdOK"); });
  shootModal(
      "port-settings", [&] { trigger(window, "MenuConfigCom"); },
      [](QWidget* dialog) { click(dialog, "cmdCancel"); });
  shootModal("smsc-list", [&] { trigger(window, "MenuConfigSMSC"); });
  shootModal(
      "acknowledgement", [&] { window.findChild<QPushButton*>("cmdQuittung")->click(); },
      [](QWidget* dialog) { click(dialog, "CancelButton"); });
  shootModal("logger", [&] { trigger(window, "MenuHelpMonitor"); });
  shootModal("special-characters", [&] { trigger(window, "mnuConfigUmlaut"); });
  shootModal("print", [&] { trigger(window, "MenuFilePrint"); });
  shootModal("about", [&] { trigger(window, "MenuHelpAbout"); });
  // The cancelled entry boxes count as changes; the open dialog is to come without the save prompt.
  window.state().project.changed = false;
  shootModal("file-open", [&] { trigger(window, "MenuFileOpen"); });

  // Two of the program's boxes, with Qt's buttons in the language of the window.
  quillon::app::MessageBoxDialog boxes(&window);
  shootModal("box-terminate", [&] {
    (void)boxes.ask({quillon::kMainTitle, window.state().texts[quillon::slot::kReallyTerminate],
                     quillon::BoxIcon::Question, quillon::BoxButtons::OkCancel,
                     quillon::BoxAnswer::Ok});
  });
  shootModal("box-clear-table", [&] {
    (void)boxes.ask({quillon::kMainTitle, window.state().texts[quillon::slot::kClearTableQuestion],
                     quillon::BoxIcon::Question, quillon::BoxButtons::YesNo,
                     quillon::BoxAnswer::No});
  });

  trigger(window, "MenuHelpFirst");
  if (quillon::app::HelpWindow* help = window.helpWindow()) {
    QApplication::processEvents();
    save(help, "manual");
    help->close();
  }
}

}  // namespace

int main(int argc, char* argv[]) {
  QApplication application(argc, argv);
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() < 4) {
    std::fprintf(stderr, "usage: quillon-screenshot OUTPUT_DIR LANGUAGE PROJECT.EAY\n");
    return 2;
  }
  // Start-up changes to the project's folder: every path is made absolute before that.
  g_output = QDir(QFileInfo(arguments[1]).absoluteFilePath());
  const int language = arguments[2].toInt();
  g_suffix = language == 1 ? "-de.png" : "-en.png";
  const QString project = QFileInfo(arguments[3]).absoluteFilePath();
  QTemporaryDir home;
  // The port names and the substitution file are looked up in a settings store of this run.
  qputenv("XDG_CONFIG_HOME", home.path().toLocal8Bit());
  QSettings settings(home.filePath("Kestrix.conf"), QSettings::IniFormat);
  settings.setValue("Language/MyLang", arguments[2]);
  settings.setValue("Settings/MyDir", QFileInfo(project).absolutePath());

  DefaultAnswers answers;
  quillon::app::device::ModuleCommands* commands = nullptr;
  quillon::app::device::ModuleCommandsOptions options;
  options.created = [&](quillon::app::device::ModuleCommands& created) { commands = &created; };
  quillon::app::AnfangServices services;
  services.settings = &settings;
  services.dialog = &answers;
  services.devices = quillon::app::device::moduleCommandsFactory(options);
  services.startProgram = [](const QString&, const QStringList&) { return false; };
  quillon::app::Anfang window(services);
  (void)window.loadProject(project);
  window.show();
  // Let the file lists fill and the layout settle before the first picture is taken.
  QTimer::singleShot(1500, &window, [&] {
    renderAll(window, *commands);
    QApplication::exit(g_failed ? 1 : 0);
  });
  const int status = QApplication::exec();
  return status;
}
