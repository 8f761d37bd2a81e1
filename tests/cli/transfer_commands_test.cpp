// The terminal side of download, upload and logger without a module: the progress line, how the
// questions are answered, and command lines that must stop before any port is touched.

#include <gtest/gtest.h>

#include <sstream>

#include "cli/cli.h"
#include "cli/console_dialog.h"
#include "cli/progress_lines.h"
#include "row_name.h"

namespace quillon {
namespace {

using cli::ConsoleDialog;
using cli::DialogAnswers;
using cli::ProgressLines;
using Kind = TransferEvent::Kind;

TransferEvent event(Kind kind, std::string text, int value = 0) {
  return TransferEvent{kind, std::move(text), {}, value, {}};
}

TEST(ProgressLines, OneLinePerKindRedrawnInPlace) {
  std::ostringstream err;
  ProgressLines lines(err, true);
  TransferJob job;
  job.contentLabel = "Messages";

  lines.beginLine("Messages");
  lines.setStatus(StatusPanel::Transfer, "Download messages");
  lines.setStatus(StatusPanel::Port, "COM 1,9600, N ,8 ,1 active");
  lines.transferStarted(job);
  lines.transferEvent(event(Kind::Comment, "Sending data block by block..."));
  lines.transferEvent(event(Kind::Block, "ignored"));
  lines.transferEvent(event(Kind::Progress, "", 55));
  lines.breakLine();  // a box is shown
  lines.transferEvent(event(Kind::Comment, "done"));
  lines.setStatus(StatusPanel::Transfer, "Download erfolgreich");
  lines.endLine();
  lines.setStatus(StatusPanel::Transfer, "Tabellen beschreiben");  // no kind: not shown
  lines.beginLine("Phone numbers");
  lines.endLine();

  EXPECT_EQ(err.str(),
            "\r\x1b[KMessages       [....................]   0 % "
            "\r\x1b[KMessages       [....................]   0 % Download messages"
            "\r\x1b[KMessages       [....................]   0 % Download messages"
            "\r\x1b[KMessages       [....................]   0 % Sending data block by block..."
            "\r\x1b[KMessages       [###########.........]  55 % Sending data block by block..."
            "\n"
            "\r\x1b[KMessages       [###########.........]  55 % done"
            "\r\x1b[KMessages       [###########.........]  55 % Download erfolgreich"
            "\n"
            "\r\x1b[KPhone numbers  [....................]   0 % "
            "\n");

  std::ostringstream quiet;
  ProgressLines off(quiet, false);
  off.beginLine("Messages");
  off.transferStarted(job);
  off.transferEvent(event(Kind::Progress, "", 100));
  off.endLine();
  EXPECT_EQ(quiet.str(), "");
}

struct QuestionCase {
  const char* name;
  Box box;
  DialogAnswers answers;
  bool interactive;
  const char* input;
  BoxAnswer answer;
  const char* err;
};

const Box kReadyBox{"Kestrix", "Telvane ready ?", BoxIcon::Question, BoxButtons::OkCancel,
                    BoxAnswer::Ok};
const Box kFragmentsBox{"Option Alarmmodul",
                        "An error occurred while reading. Should be still processed the data "
                        "fragments?",
                        BoxIcon::Critical, BoxButtons::YesNo, BoxAnswer::No};
const Box kReplaceBox{"Kestrix", "Bestehende Datei ersetzen - log.txt?", BoxIcon::Question,
                      BoxButtons::YesNoCancel, BoxAnswer::Yes};

class ConsoleDialogTest : public ::testing::TestWithParam<QuestionCase> {};

TEST_P(ConsoleDialogTest, Answers) {
  const QuestionCase& c = GetParam();
  std::istringstream in(c.input);
  std::ostringstream out;
  std::ostringstream err;
  Console console{in, out, err, c.interactive, false};
  ProgressLines progress(err, false);
  ConsoleDialog dialog(console, progress, c.answers);
  EXPECT_EQ(dialog.ask(c.box), c.answer);
  EXPECT_EQ(err.str(), c.err);
  EXPECT_EQ(out.str(), "");
}

INSTANTIATE_TEST_SUITE_P(
    Questions, ConsoleDialogTest,
    ::testing::Values(
        QuestionCase{"readyDeclinedWithoutTerminal",
                     kReadyBox,
                     {},
                     false,
                     "",
                     BoxAnswer::Cancel,
                     "Telvane ready ? - declined: no terminal to ask (use --yes)\n"},
        QuestionCase{"readyAskedOnTheTerminal",
                     kReadyBox,
                     {},
                     true,
                     "\n",
                     BoxAnswer::Ok,
                     "Telvane ready ? [OK/cancel] "},
        QuestionCase{"fragmentsDeclinedByDefault",
                     kFragmentsBox,
                     {true, false},
                     true,
                     "y\n",
                     BoxAnswer::No,
                     "An error occurred while reading. Should be still processed the data "
                     "fragments? - no (--fragments processes them)\n"},
        QuestionCase{"fragmentsWanted",
                     kFragmentsBox,
                     {false, true},
                     false,
                     "",
                     BoxAnswer::Yes,
                     "An error occurred while reading. Should be still processed the data "
                     "fragments? - yes (--fragments)\n"},
        QuestionCase{"replaceDeclinedWithoutTerminal",
                     kReplaceBox,
                     {true, true},
                     false,
                     "",
                     BoxAnswer::No,
                     "Bestehende Datei ersetzen - log.txt? - no: no terminal to ask\n"},
        QuestionCase{"replaceAnsweredYes",
                     kReplaceBox,
                     {},
                     true,
                     "ja\n",
                     BoxAnswer::Yes,
                     "Bestehende Datei ersetzen - log.txt? [yes/No] "},
        QuestionCase{"otherBoxOnOneLineInUtf8",
                     Box{"Terminal", "Telefonnummer enth\xE4lt\nZeichen", BoxIcon::Exclamation,
                         BoxButtons::Ok, BoxAnswer::Ok},
                     {},
                     true,
                     "",
                     BoxAnswer::Ok,
                     "Telefonnummer enth\xC3\xA4lt Zeichen\n"}),
    testing::RowName{});

struct StopCase {
  const char* name;
  std::vector<std::string> arguments;
  int exitCode;
  const char* firstLine;
};

class CommandLineStopTest : public ::testing::TestWithParam<StopCase> {};

TEST_P(CommandLineStopTest, StopsBeforeThePort) {
  const StopCase& c = GetParam();
  std::ostringstream out;
  std::ostringstream err;
  EXPECT_EQ(cli::RunCli(c.arguments, out, err), c.exitCode);
  EXPECT_EQ(err.str().substr(0, err.str().find('\n')), c.firstLine);
  EXPECT_EQ(out.str(), "");
}

// No port named here exists: a command that got as far as the port would say so instead.
INSTANTIATE_TEST_SUITE_P(
    CommandLines, CommandLineStopTest,
    ::testing::Values(StopCase{"downloadWithoutPort",
                               {"download", "a.EAY"},
                               64,
                               "quillon-cli: download needs --port DEV"},
                      StopCase{"downloadUnknownKind",
                               {"download", "--port=/x", "--kind", "Q", "a.EAY"},
                               64,
                               "quillon-cli: unknown kind 'Q': use M, T, P, Y or all"},
                      StopCase{"downloadMissingFile",
                               {"download", "--port", "/x", "/nonexistent/a.EAY"},
                               9,
                               "File not found"},
                      StopCase{"uploadWithoutOutput",
                               {"upload", "--port", "/x"},
                               64,
                               "quillon-cli: upload needs -o OUT.EAY"},
                      StopCase{
                          "uploadMissingBase",
                          {"upload", "--port", "/x", "--into", "/nonexistent/b.EAY", "-o", "c.EAY"},
                          9,
                          "File not found"},
                      StopCase{"loggerUnknownOption",
                               {"logger", "--port", "/x", "--append"},
                               64,
                               "quillon-cli: unknown option '--append'"}),
    testing::RowName{});

}  // namespace
}  // namespace quillon
