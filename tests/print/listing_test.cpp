#include "print/listing.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

#include "print/pages.h"

namespace quillon {
namespace {

std::string footer() {
  return "Printed with Quillon " + std::to_string(QUILLON_VERSION_MAJOR) + "." +
         std::to_string(QUILLON_VERSION_MINOR) + "." + std::to_string(QUILLON_VERSION_PATCH) + "\n";
}

const std::string kRule =
    "--------------------------------------------------------------------------------\n";

TEST(PrintListing, SmallProjectIsListedSectionBySection) {
  Project p;
  p.station = "Pumpwerk Nord";
  p.smsCentre = "+491722270333";
  p.filters.setCell(2, 1, "ALARM AUS");
  p.filters.setCell(2, 2, "Fernabschaltung");
  p.messages.setCell(1, 1, "x");
  p.messages.setCell(1, 2, "x");
  p.messages.setCell(1, 4, "Pumpe 1 St\xF6rung");
  p.messages.setCell(1, 5, "Nordseite");
  p.messages.setCell(3, 2, "x");
  p.messages.setCell(3, 3, "x");
  p.messages.setCell(3, 4, "Druck zu hoch");
  p.messages.setCell(7, 5, "reserve");
  p.phones.setCell(1, 1, "+491701234567");
  p.phones.setCell(1, 2, "Meier");
  p.phones.setCell(3, 1, "0171555");
  p.phones.setCell(60, 2, "nur Name");

  // The listing as it must be, written by hand: data/small_project.txt, then the rule and the
  // footer.
  std::ifstream golden(QUILLON_PRINT_DATA_DIR "/small_project.txt", std::ios::binary);
  ASSERT_TRUE(golden);
  std::ostringstream listed;
  listed << golden.rdbuf();
  const std::string expected = listed.str() + kRule + footer();
  EXPECT_EQ(printListing(p, {"PUMPS.EAY", "12.03.2025", "nach\r\nWartung"}), expected);
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

TEST(PaginateListing, EntriesAreNotTornAcrossPages) {
  struct Row {
    const char* name;
    const char* listing;
    int linesPerPage;
    std::vector<ListingPage> pages;
  };
  const Row rows[] = {
      {"emptyListingHasNoPage", "", 3, {}},
      {"exactlyFullPage", "a\nb\n\nc\n", 4, {{"a", "b", "", "c"}}},
      {"entryMovesToTheNextPage", "a\nb\n\nc\nd\n", 4, {{"a", "b"}, {"c", "d"}}},
      {"blanksBeforeAMovedEntryAreDropped", "a\n\n\nb\nc\n", 3, {{"a"}, {"b", "c"}}},
      {"entryLongerThanAPageIsCut", "a\n\nb\nc\nd\ne\n", 3, {{"a", "", "b"}, {"c", "d", "e"}}},
      {"blankAtTheTopOfACutPageIsDropped",
       "a\nb\nc\n\nd\ne\nf\ng\n",
       3,
       {{"a", "b", "c"}, {"d", "e", "f"}, {"g"}}},
      {"zeroLinesPerPageTakenAsOne", "a\nb\n", 0, {{"a"}, {"b"}}},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(paginateListing(row.listing, row.linesPerPage), row.pages) << row.name;
  }
}

}  // namespace
}  // namespace quillon
