#include "print/listing.h"

#include <gtest/gtest.h>

#include <string>

namespace quillon {
namespace {

std::string footer() {
  return "Printed with Quillon " + std::to_string(QUILLON_VERSION_MAJOR) + "." +
         std::to_string(QUILLON_VERSION_MINOR) + "." + std::to_string(QUILLON_VERSION_PATCH) + "\n";
}

const std::string kRule =
    "--------------------------------------------------------------------------------\n";

Project pumpStation() {
  Project p;
  p.station = "Pumpwerk Nord";
  p.smsCentre = "+491722270333";
  p.pin = "1234";
  p.filters.setCell(2, 1, "ALARM AUS");
  p.filters.setCell(2, 2, "Fernabschaltung");
  p.messages.setCell(1, 1, "x");
  p.messages.setCell(1, 2, "x");
  p.messages.setCell(1, 4,
                     "Pumpe 1 St\xF6"
                     "rung");
  p.messages.setCell(1, 5, "Nordseite");
  p.messages.setCell(3, 3, "x");
  p.messages.setCell(3, 4, "Druck zu hoch");
  p.messages.setCell(7, 5, "reserve");
  p.phones.setCell(1, 1, "+491701234567");
  p.phones.setCell(1, 2, "Meier");
  p.phones.setCell(3, 1, "0171555");
  p.phones.setCell(60, 2, "nur Name");
  return p;
}

TEST(PrintListing, SmallProjectIsListedSectionBySection) {
  const std::string expected =
      "Project: PUMPS.EAY\n"
      "Station: Pumpwerk Nord\n"
      "Datum: 12.03.2025\n"
      "Memo: nach Wartung\n"
      "\n"
      "Filter texts\n"
      "------------\n"
      "Filter 2\n"
      "ALARM AUS\n"
      "Comment: Fernabschaltung\n"
      "\n"
      "Messages\n"
      "--------\n"
      "Message 1 Acknowledgement Call back\n"
      "Pumpe 1 St\xF6"
      "rung\n"
      "Comment: Nordseite\n"
      "\n"
      "Message 3 Ring\n"
      "Druck zu hoch\n"
      "\n"
      "Message 7\n"
      "Comment: reserve\n"
      "\n"
      "Phone numbers\n"
      "-------------\n"
      "SMS-Center +491722270333\n"
      "Nr  Number                Name\n"
      " 1  +491701234567         Meier\n"
      " 3  0171555\n"
      "60                        nur Name\n"
      "\n" +
      kRule + footer();
  EXPECT_EQ(printListing(pumpStation(), {"PUMPS.EAY", "12.03.2025", "nach Wartung"}), expected);
}

TEST(PrintListing, EmptyProjectStillShowsEverySectionAndTheMemoLine) {
  const std::string expected =
      "Datum: \n"
      "Memo: \n"
      "\n"
      "Filter texts\n"
      "------------\n"
      "(no entries)\n"
      "\n"
      "Messages\n"
      "--------\n"
      "(no entries)\n"
      "\n"
      "Phone numbers\n"
      "-------------\n"
      "SMS-Center\n"
      "(no entries)\n"
      "\n" +
      kRule + footer();
  EXPECT_EQ(printListing(Project{}, {}), expected);
}

TEST(PrintListing, MarkersFollowTheMessageNumberInAFixedOrder) {
  struct Row {
    const char* name;
    bool ack, callBack, ring;
    const char* line;
  };
  const Row rows[] = {
      {"noMarker", false, false, false, "\nMessage 12\nT\n"},
      {"acknowledgementOnly", true, false, false, "\nMessage 12 Acknowledgement\nT\n"},
      {"callBackOnly", false, true, false, "\nMessage 12 Call back\nT\n"},
      {"ringOnly", false, false, true, "\nMessage 12 Ring\nT\n"},
      {"all", true, true, true, "\nMessage 12 Acknowledgement Call back Ring\nT\n"},
  };
  for (const auto& row : rows) {
    Project p;
    p.messages.setCell(12, 1, row.ack ? "x" : "");
    p.messages.setCell(12, 2, row.callBack ? "x" : "");
    p.messages.setCell(12, 3, row.ring ? "x" : "");
    p.messages.setCell(12, 4, "T");
    EXPECT_NE(printListing(p, {}).find(row.line), std::string::npos) << row.name;
  }
}

TEST(PrintListing, LongLinesAreCutAtExactlyEightyCharacters) {
  const std::string tens = "123456789.";
  const std::string eighty = tens + tens + tens + tens + tens + tens + tens + tens;
  struct Row {
    const char* name;
    std::string text;
    std::string printed;
  };
  const Row rows[] = {
      {"eightyStays", eighty, eighty + "\n"},
      {"eightyOneWrapsOneCharacter", eighty + "A", eighty + "\nA\n"},
      {"fullTextFillsTwoLines", eighty + eighty, eighty + "\n" + eighty + "\n"},
      {"blankAtTheCutIsKept", eighty.substr(0, 79) + "  B", eighty.substr(0, 79) + " \n B\n"},
  };
  for (const auto& row : rows) {
    Project p;
    p.messages.setCell(5, 4, row.text);
    EXPECT_NE(printListing(p, {}).find("\nMessage 5\n" + row.printed + "\n"), std::string::npos)
        << row.name;
  }
}

TEST(PrintListing, HeaderAndCommentLinesWrapLikeAnyOther) {
  Project p;
  p.station = std::string(75, 'S');  // "Station: " makes 84
  p.filters.setCell(1, 2, std::string(95, 'k'));
  const std::string listing = printListing(p, {"", "", "Memo\r\nline 2"});
  const std::string head = "Station: " + std::string(71, 'S') + "\n" + std::string(4, 'S') +
                           "\nDatum: \nMemo: Memo\nline 2\n\n";
  EXPECT_EQ(listing.substr(0, head.size()), head);
  EXPECT_NE(listing.find("\nComment: " + std::string(71, 'k') + "\n" + std::string(24, 'k') + "\n"),
            std::string::npos);
}

TEST(WrapLines, CutsEveryLineOnItsOwn) {
  struct Row {
    const char* name;
    std::string text;
    std::size_t width;
    std::string wrapped;
  };
  const Row rows[] = {
      {"emptyStaysEmpty", "", 3, ""},
      {"shortLinesUntouched", "ab\ncd\n", 3, "ab\ncd\n"},
      {"exactWidthNotCut", "abc\n", 3, "abc\n"},
      {"oneOverIsCut", "abcd\n", 3, "abc\nd\n"},
      {"columnRestartsAfterEachLine", "ab\nabcdefg", 3, "ab\nabc\ndef\ng"},
      {"blankLinesKept", "\n\nabcd\n", 3, "\n\nabc\nd\n"},
      {"carriageReturnsDropped", "ab\r\nabc\r\n", 3, "ab\nabc\n"},
  };
  for (const auto& row : rows) EXPECT_EQ(wrapLines(row.text, row.width), row.wrapped) << row.name;
}

}  // namespace
}  // namespace quillon
