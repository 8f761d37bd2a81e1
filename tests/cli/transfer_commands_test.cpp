// The terminal side of download, upload and logger without a module: the progress line and how
// the questions are answered.

#include <gtest/gtest.h>

#include <sstream>

#include "cli/cli.h"
#include "cli/console_dialog.h"
#include "cli/progress_lines.h"

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

// How each question is answered, with and without a terminal to ask on.
TEST(ConsoleDialog, Answers) {
  const Box ready{"Kestrix", "Telvane ready ?", BoxIcon::Question, BoxButtons::OkCancel,
                  BoxAnswer::Ok};
  const std::string fragmentsText =
      "An error occurred while reading. Should be still processed the data fragments?";
  const Box fragments{"Option Alarmmodul", fragmentsText, BoxIcon::Critical, BoxButtons::YesNo,
                      BoxAnswer::No};
  const Box replace{"Kestrix", "Bestehende Datei ersetzen - log.txt?", BoxIcon::Question,
                    BoxButtons::YesNoCancel, BoxAnswer::Yes};
  const Box other{"Terminal", "Telefonnummer enth\xE4lt\nZeichen", BoxIcon::Exclamation};
  struct Row {
    const char* name;
    Box box;
    bool yes;        // --yes
    bool fragments;  // --fragments
    bool interactive;
    const char* input;
    BoxAnswer answer;
    std::string err;
  };
  const Row rows[] = {
      {"readyDeclinedWithoutTerminal", ready, false, false, false, "", BoxAnswer::Cancel,
       "Telvane ready ? - declined: no terminal to ask (use --yes)\n"},
      {"readyAskedOnTheTerminal", ready, false, false, true, "\n", BoxAnswer::Ok,
       "Telvane ready ? [OK/cancel] "},
      {"fragmentsDeclinedByDefault", fragments, true, false, true, "y\n", BoxAnswer::No,
       fragmentsText + " - no (--fragments processes them)\n"},
      {"fragmentsWanted", fragments, false, true, false, "", BoxAnswer::Yes,
       fragmentsText + " - yes (--fragments)\n"},
      {"replaceDeclinedWithoutTerminal", replace, true, true, false, "", BoxAnswer::No,
       "Bestehende Datei ersetzen - log.txt? - no: no terminal to ask\n"},
      {"replaceAnsweredYes", replace, false, false, true, "ja\n", BoxAnswer::Yes,
       "Bestehende Datei ersetzen - log.txt? [yes/No] "},
      {"otherBoxOnOneLineInUtf8", other, false, false, true, "", BoxAnswer::Ok,
       "Telefonnummer enth\xC3\xA4lt Zeichen\n"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    std::istringstream in(row.input);
    std::ostringstream out;
    std::ostringstream err;
    Console console{in, out, err, row.interactive, false};
    ProgressLines progress(err, false);
    ConsoleDialog dialog(console, progress, DialogAnswers{row.yes, row.fragments});
    EXPECT_EQ(dialog.ask(row.box), row.answer);
    EXPECT_EQ(err.str(), row.err);
    EXPECT_EQ(out.str(), "");
  }
}

}  // namespace
}  // namespace quillon
