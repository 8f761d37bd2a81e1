#pragma once
// What the end-to-end tests of the transfer commands share: a project as a technician writes
// it, what reading it back from the module gives, and running quillon-cli.

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <string>
#include <utility>

#include "file_bytes.h"
#include "project/project_file.h"
#include "scripted_dialog.h"
#include "sim_module.h"

namespace quillon::testing {

// Eight messages, message i with option letter '@' + i: bit 1 acknowledgement, bit 2 call back,
// bit 4 ring.
inline const char* const kTexts[] = {"Pumpe l\xE4uft",
                                     "\xD6lstand niedrig",
                                     "St\xF6rung F\xF6rderband",
                                     "T\xFCr offen \x96 Fu\xDFweg",
                                     "Nur Klingeln \xE4\xF6\xFC",
                                     "Klingeln und Quittung \xC4\xD6\xDC",
                                     "Klingeln und K\xFChlung",
                                     "Alle drei Optionen"};

// A project as a user writes it: the messages above with comments, the acknowledgement pair,
// filters, an SMS centre and phone numbers that need cleaning, a PIN, flags and a reception
// flag, and what stays on the PC: comments, names, the station name, the ring option.
inline std::string richProject() {
  std::string file;
  for (int i = 0; i < 8; ++i)
    file += "M" + std::string(1, static_cast<char>('@' + i)) + kTexts[i] + ";K\r\n";
  return file +
         "MQ*T#;Vielen Dank\r\n"
         "F01PUMPE1 EIN;setzt M20\r\n"
         "F02STATUS T\xFCren;Kommentar\r\n"
         "T+49 172 2270333;SMSC\r\n"
         "T0171/5551234;Meier\r\n"
         "T+49 (0)160 9001;M\xFCller\r\n"
         "T(0)7531 12345;Leitstelle\r\n"
         "T12;zu kurz\r\n"
         "T+41791234567;Bodensee\r\n"
         "L1;;1267;Pumpstation M\xFChlbach\r\n"
         "E 1;1;1\r\nE 3;3;3\r\nE 7;7;60\r\nE12;20;10\r\nE16;-2;-1\r\nV1.0.0\r\n";
}

// What the phone download says about the numbers it cleans, one line per box.
inline const char kCleaningWarnings[] =
    "Telefonnummer enth\xC3\xA4lt ung\xC3\xBCltiges Zeichen. +49 172 2270333 wird gefiltert! \n"
    "Telefonnummer enth\xC3\xA4lt ung\xC3\xBCltiges Zeichen. 0171/5551234 wird gefiltert! \n"
    "Telefonnummer enth\xC3\xA4lt ung\xC3\xBCltiges Zeichen. +49 (0)160 9001 wird gefiltert! \n"
    "1. Zeichen der Telefonnummer nur Ziffer oder '+'. (0)7531 12345\n"
    "Telefonnummer enth\xC3\xA4lt ung\xC3\xBCltiges Zeichen. (0)7531 12345 wird gefiltert! \n";

// Everything of richProject() that travels, as reading it back from the module gives it:
// comments, names, the station and the ring option stay on the PC.
inline Project richProjectReadBack() {
  Project want;
  for (int i = 0; i < 8; ++i) {
    want.messages.setCell(i + 1, kMessageTextColumn, kTexts[i]);
    if ((i & 1) != 0) want.messages.setCell(i + 1, kAckColumn, "x");
    if ((i & 2) != 0) want.messages.setCell(i + 1, kCallBackColumn, "x");
  }
  want.filters.setCell(1, kFilterTextColumn, "PUMPE1 EIN");
  want.filters.setCell(2, kFilterTextColumn, "STATUS T\xFCren");
  const char* phones[] = {"01715551234", "+4901609001", "0753112345", "", "+41791234567"};
  for (int row = 1; row <= 5; ++row) want.phones.setCell(row, kPhoneNumberColumn, phones[row - 1]);
  const std::pair<std::size_t, const char*> flags[] = {
      {1, "1;1"}, {3, "3;3"}, {7, "7;60"}, {12, "20;10"}, {16, "-2;-1"}};
  for (const auto& [flag, entry] : flags) {
    want.flags.entries[flag] = entry;
    want.flags.used[flag] = entry[0] != '-';  // the reception flag is not marked as in use
  }
  want.ack = {"*T#", "Vielen Dank"};
  want.smsCentre = "+491722270333";
  want.pin = "4711";
  return want;
}

inline Project loadProject(const QString& path) {
  ScriptedDialog dialog;
  UiTexts texts;
  texts.fill(kEnglish);
  Project project;
  (void)ProjectFileLoad(path.toStdString(), project, texts, dialog);
  return project;
}

inline void writeFile(const QString& path, const std::string& bytes) {
  writeBytes(path.toStdString(), bytes);
}

// richProject() written into the simulator's folder; returns its path.
inline QString richFile(const SimModule& sim) {
  const QString path = sim.file("rich.EAY");
  writeFile(path, richProject());
  return path;
}

struct CliRun {
  int exitCode = -1;
  QByteArray out;
  QByteArray err;
};

inline CliRun runCli(const QStringList& arguments) {
  QProcess cli;
  cli.start(QStringLiteral(QUILLON_CLI), arguments);
  if (!cli.waitForFinished(30000) || cli.exitStatus() != QProcess::NormalExit) return {};
  return {cli.exitCode(), cli.readAllStandardOutput(), cli.readAllStandardError()};
}

}  // namespace quillon::testing
