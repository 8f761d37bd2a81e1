#include "text/ui_texts.h"

#include <gtest/gtest.h>

#include <string>

namespace quillon {
namespace {

struct SlotRow {
  int slot;
  const char* english;
  const char* german;
};

// Written out by hand as Windows-1252 bytes: 0x85 is the ellipsis, 0xB0 the sign in "N°".
// Every slot that other parts of the program name by number, and the quoted texts whose
// blanks, punctuation or signs are easy to get wrong.
constexpr SlotRow kQuotedSlots[] = {
    {0, "Reading address and PIN \x85", "Adresse und PIN lesen ..."},
    {1, "Active flags are colored yellow", "Aktivierte Merker sind gelb markiert"},
    {2, "Alarm module", "Alarmmodul"},
    {3, "Both columns may be enabled at the same time",
     "Alle 2 Spalten d\xFCrfen gleichzeitig aktiviert werden."},
    {4, "Clear all", "Alle l\xF6schen"},
    {5, "Read all", "Alles Auslesen"},
    {6, "Download all", "Alles Laden"},
    {7, "Set reception flag", "Als Empfangsflag setzen"},
    {8, "Set as SMS flag", "Als SMS-Merker setzen"},
    {9, "Click to see current data", "Anklicken, um aktuelle Daten zu sehen"},
    {10, "Ring", "Anklingeln"},
    {13, "An error occurred  during reading", "Beim Auslesen trat ein Fehler auf."},
    {14, "An error occurred  during loading configuration data",
     "Beim Laden der Konfiguration gab es einen Fehler. "},
    {15, "An error occurred  during loading messages",
     "Beim Laden der Meldungen gab es einen Fehler. "},
    {16, "Upload flags", "Upload Merker"},
    {17, "Exit", "Beenden"},
    {18, "Replace existing file?", "Bestehende Datei ersetzen?"},
    {19, "Clear bit", "Bit l\xF6schen"},
    {21, "Please check: ",
     "Bitte \xFC"
     "berpr\xFC"
     "fen: "},
    {24, "File not found", "Datei nicht gefunden"},
    {26, "Description", "Beschreibung"},
    {32, "&File", "Datei"},
    {35, "Data changed. Save?", "Daten ge\xE4ndert. Abspeichern ?"},
    {37,
     "SLIn is the receive area of the controller: the alarm module puts the flags that it sets "
     "on receiving an SMS there. SLOut is the send area: a flag that the controller sets there "
     "makes the alarm module send the assigned SMS.",
     "SLIn ist der Empfangsbereich der Steuerung: dort legt das Alarmmodul die Merker ab, die es "
     "beim Empfang einer SMS setzt. SLOut ist der Sendebereich: ein Merker, den die Steuerung "
     "dort setzt, l\xE4sst das Alarmmodul die zugeordnete SMS senden."},
    {39, "The SMS flag will be released.", "Der SMS-Merker wird wieder freigegeben"},
    {40, "First steps", "Die ersten Schritte"},
    {44, "Download flags", "Download Merker"},
    {45, "Download messages", "Download Meldungen"},
    {46, "PIN is not valid. Download of the PIN is cancelled",
     "PIN ist ung\xFCltig. Download der PIN wird abgebrochen"},
    {48, "Print", "Drucken"},
    {49, "Error occurred  while downloading", "Fehler bei Download!"},
    {50, "Printer setting", "Einstellung Drucker"},
    {51, "An error occurred  during reading phone numbers", "Fehler beim Laden der Telefonnummer "},
    {52, "ready \x85", "fertig ..."},
    {53, "Reception flag is set already. First reset former flag.",
     "Empfangs-Flag ist bereits gesetzt. Altes Flag bitte erst l\xF6schen"},
    {54, "Wrong number of ", "Falsche Anzahl von "},
    {56, "French", "Franz\xF6sisch"},
    {57, "Max. 60 individual phone numbers with max. 20 digits each can be entered.",
     "Es stehen max. 60 ver\xE4nderbare Telefonnummern zur Verf\xFCgung."},
    {58, "Max. 100 modifiable message texts with 160 characters each can be defined.",
     "Es stehen max. 100 ver\xE4nderbare Meldungstexte mit je 160 Zeichen zur Verf\xFCgung."},
    {59, "PIN and station name is saved in the PC.",
     "Im PC wird PIN und Stationsname gespeichert,"},
    {60, "No connection!", "Keine Verbindung !"},
    {65, "A log file has been opened: ",
     "Ein Logfile wurde ge\xF6"
     "ffnet: "},
    {66, "Edit filter text", "Filtertext editieren"},
    {67, "Marker Setting", "Merkerfestlegung"},
    {70, "Station name", "Stationsname:"},
    {71, "Assign the message and the phone number to the chosen flag",
     "Gew\xE4hlten Merker mit Meldung und Telefonnummer belegen"},
    {72, "&Help", "Hilfe"},
    {73, "Message text in line", "Meldungstext in Zeile "},
    {74, "Message nr.", "Meldungsnr.:"},
    {80, "only 1 character", "nur 1 Zeichen!"},
    {82, "Process data fragments anyway?",
     "Sollen die Datenfragmente trotzdem weiterbearbeitet werden ?"},
    {84, "Configuration", "Konfiguration"},
    {85, "SMSC phone N\xB0", "Telefonnummer des SMSC"},
    {86, "Edit phone N\xB0.", "Telefonnummer editieren"},
    {87, "Phone N\xB0s", "Telefonnummern"},
    {88, "Read phone N\xB0s", "Telefonnummern lesen"},
    {89, "Packing phone N\xB0s", "Telefonnummern werden zusammengefasst"},
    {90, "List of international SMSC", "Liste internat. SMS-Center"},
    {91, "Please limit the length of your text!", "Bitte begrenzen Sie Ihre Texte !"},
    {93, "Edit message", "Meldung editieren"},
    {95, "Upload messages", "Upload Meldungen"},
    {97, "Too many phone numbers", "Zu viele Telefonnummern !"},
    {100, "Message files *.EAY|*.EAY", "Meldungsdateien *.EAY|*.EAY"},
    {107, "New", "Neu"},
    {109, "Open",
     "\xD6"
     "ffnen"},
    {111, "Options", "Optionen"},
    {117, "Save", "Speichern"},
    {118, "Save as", "Speichern Unter"},
    {146, "Firmware version", "Version Ger\xE4tesoftware"},
    {151, "Saved in the PC only", "Wird nur im PC gespeichert"},
    {155, "Really terminate?", "wirklich beenden"},
    {158, "Too much text!", "Zuviel Text!"},
    {164, "Really clear all? ", "Wirklich alles l\xF6schen? "},
    {165, "Details not complete! ", "Angaben nicht vollst\xE4ndig!"},
    {166, " for downloading and reading data and ", "Zum Download und Auslesen der Daten und "},
    {167, "Clear all flags", "Alle Merker l\xF6schen"},
    {170, "Print table ", "Tabelle drucken"},
    {171, "Clear table", "Tabelle l\xF6schen"},
    {172, "Log file record", "Logfileaufzeichnung"},
};

TEST(UiTextTable, QuotedSlotsHoldTheirWordingInBothLanguages) {
  const auto english = uiTextTable(0);
  const auto german = uiTextTable(1);
  for (const auto& row : kQuotedSlots) {
    SCOPED_TRACE(row.slot);
    auto index = static_cast<std::size_t>(row.slot);
    EXPECT_EQ(english[index], row.english);
    EXPECT_EQ(german[index], row.german);
  }
}

TEST(UiTextTable, SeventyTextsInSlotsUpTo172AndNoneElsewhere) {
  for (int language : {0, 1}) {
    SCOPED_TRACE(language);
    const auto table = uiTextTable(language);
    int filled = 0;
    for (std::size_t slot = 0; slot < table.size(); ++slot) {
      bool empty = table[slot].empty();
      if (!empty) ++filled;
      if (slot == 25 || slot == 144 || slot == 145 || slot > 172) {
        EXPECT_TRUE(empty) << "slot " << slot;
      } else {
        EXPECT_FALSE(empty) << "slot " << slot;
      }
    }
    EXPECT_EQ(filled, 170);
  }
}

TEST(UiTextTable, NoTextCarriesALineEndOfTheDataFile) {
  for (int language : {0, 1}) {
    for (const auto& text : uiTextTable(language)) {
      EXPECT_EQ(text.find_first_of("\r\n\t"), std::string::npos) << text;
    }
  }
}

TEST(UiTexts, OnlyEnglishAndGermanChangeTheTable) {
  struct Case {
    const char* name;
    int first;
    int second;
    const char* slot35;
    int language;
  };
  const Case cases[] = {
      {"germanThenEnglish", 1, 0, "Data changed. Save?", 0},
      {"englishThenGerman", 0, 1, "Daten ge\xE4ndert. Abspeichern ?", 1},
      {"frenchKeepsGerman", 1, 2, "Daten ge\xE4ndert. Abspeichern ?", 1},
      {"negativeKeepsEnglish", 0, -1, "Data changed. Save?", 0},
      {"threeKeepsEnglish", 0, 3, "Data changed. Save?", 0},
      {"frenchFirstStaysEmpty", 2, 2, "", -1},
      {"outOfRangeFirstStaysEmpty", 7, 32767, "", -1},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    UiTexts texts;
    texts.fill(c.first);
    texts.fill(c.second);
    EXPECT_EQ(texts[35], c.slot35);
    EXPECT_EQ(texts.language(), c.language);
  }
}

TEST(UiTexts, SlotsOutsideTheTableReadEmpty) {
  UiTexts texts;
  texts.fill(0);
  EXPECT_EQ(texts[172], "Log file record");
  EXPECT_EQ(texts[-1], "");
  EXPECT_EQ(texts[201], "");
}

TEST(ParseUiTexts, RowsOfAHandWrittenTable) {
  const std::string table =
      "slot\tenglish\tgerman\r\n"
      "0\tTwo\\r\\nlines\tZwei\\nZeilen\r\n"
      "1\tTab\\there\tBack\\\\slash\n"
      "2\tTrailing  \t  Leading\n"
      "3\tUnknown \\q escape\tEnde\\\n"
      "x\tnot a slot\tkein Slot\n"
      "201\ttoo high\tzu hoch\n"
      "-1\tnegative\tnegativ\n"
      "4 \tblank after number\tLeerzeichen\n"
      "5\tEnglish only\n"
      "200\tlast\tletzter";
  struct Case {
    const char* name;
    int language;
    int slot;
    const char* expected;
  };
  const Case cases[] = {
      {"crLfEscapes", 0, 0, "Two\r\nlines"},
      {"lfEscape", 1, 0, "Zwei\nZeilen"},
      {"tabEscape", 0, 1, "Tab\there"},
      {"backslashEscape", 1, 1, "Back\\slash"},
      {"trailingBlanksKept", 0, 2, "Trailing  "},
      {"leadingBlanksKept", 1, 2, "  Leading"},
      {"unknownEscapeKept", 0, 3, "Unknown \\q escape"},
      {"lonelyBackslashKept", 1, 3, "Ende\\"},
      {"numberWithBlankSkipped", 0, 4, ""},
      {"missingGermanIsEmpty", 1, 5, ""},
      {"englishWithoutGerman", 0, 5, "English only"},
      {"lastRowWithoutLineEnd", 1, 200, "letzter"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(parseUiTexts(table, c.language)[static_cast<std::size_t>(c.slot)], c.expected);
  }
  int filled = 0;
  for (const auto& text : parseUiTexts(table, 0)) filled += text.empty() ? 0 : 1;
  EXPECT_EQ(filled, 6);  // rows 0, 1, 2, 3, 5 and 200; the header and bad slots are skipped
}

TEST(ParseUiTexts, FrenchGivesAnEmptyTable) {
  for (const auto& text : parseUiTexts("slot\ta\tb\n0\tx\ty\n", 2)) EXPECT_EQ(text, "");
}

}  // namespace
}  // namespace quillon
