#include "text/ui_texts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace quillon {
namespace {

struct SlotRow {
  int slot;
  const char* english;
  const char* german;
};

// Every slot that the program names by number, written out by hand as Windows-1252 bytes:
// 0x85 is the ellipsis, 0xB0 the sign in "N°".
constexpr SlotRow kNumberedSlots[] = {
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
    {16, "Upload flags", "Upload Merker"},
    {17, "Exit", "Beenden"},
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
    {48, "Print", "Drucken"},
    {50, "Printer setting", "Einstellung Drucker"},
    {53, "Reception flag is set already. First reset former flag.",
     "Empfangs-Flag ist bereits gesetzt. Altes Flag bitte erst l\xF6schen"},
    {66, "Edit filter text", "Filtertext editieren"},
    {71, "Assign the message and the phone number to the chosen flag",
     "Gew\xE4hlten Merker mit Meldung und Telefonnummer belegen"},
    {72, "&Help", "Hilfe"},
    {84, "Configuration", "Konfiguration"},
    {90, "List of international SMSC", "Liste internat. SMS-Center"},
    {91, "Please limit the length of your text!", "Bitte begrenzen Sie Ihre Texte !"},
    {93, "Edit message", "Meldung editieren"},
    {95, "Upload messages", "Upload Meldungen"},
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
    {167, "Clear all flags", "Alle Merker l\xF6schen"},
    {170, "Print table ", "Tabelle drucken"},
    {171, "Clear table", "Tabelle l\xF6schen"},
    {172, "Log file record", "Logfileaufzeichnung"},
};

TEST(UiTextTable, NumberedSlotsHoldTheirWordingInBothLanguages) {
  const auto english = uiTextTable(kEnglish);
  const auto german = uiTextTable(kGerman);
  for (const auto& row : kNumberedSlots) {
    SCOPED_TRACE(row.slot);
    EXPECT_EQ(english[static_cast<std::size_t>(row.slot)], row.english);
    EXPECT_EQ(german[static_cast<std::size_t>(row.slot)], row.german);
  }
}

TEST(UiTextTable, SeventyTextsInSlotsUpTo172AndNoneElsewhere) {
  for (int language : {kEnglish, kGerman}) {
    SCOPED_TRACE(language);
    const auto table = uiTextTable(language);
    int filled = 0;
    for (std::size_t slot = 0; slot < table.size(); ++slot) {
      const bool unused = slot == 25 || slot == 144 || slot == 145 || slot > 172;
      EXPECT_EQ(table[slot].empty(), unused) << "slot " << slot;
      filled += table[slot].empty() ? 0 : 1;
    }
    EXPECT_EQ(filled, 170);
  }
}

TEST(ParseUiTexts, RowsOfAHandWrittenTable) {
  const std::string table =
      "slot\tenglish\tgerman\r\n"
      "0\tTwo\\r\\nlines\\tTab\tBack\\\\slash \\q\\\r\n"
      "2\tTrailing  \n"
      "x\tnot a slot\tkein Slot\n201\ttoo high\tzu hoch\n4 \tblank after number\tLeer\n"
      "200\tlast\tletzter";
  const auto english = parseUiTexts(table, kEnglish);
  const auto german = parseUiTexts(table, kGerman);
  EXPECT_EQ(english[0], "Two\r\nlines\tTab");
  EXPECT_EQ(german[0], "Back\\slash \\q\\");  // unknown and lonely escapes kept
  EXPECT_EQ(english[2], "Trailing  ");
  EXPECT_EQ(german[2], "");
  EXPECT_EQ(german[200], "letzter");
  EXPECT_EQ(std::count_if(english.begin(), english.end(), [](auto& t) { return !t.empty(); }), 3);
  EXPECT_EQ(parseUiTexts(table, kFrench), decltype(english){});
}

}  // namespace
}  // namespace quillon
