#include "print/pages.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

TEST(PaginateListing, EntriesAreNotTornAcrossPages) {
  struct Row {
    const char* name;
    const char* listing;
    int linesPerPage;
    std::vector<ListingPage> pages;
  };
  const Row rows[] = {
      {"emptyListingHasNoPage", "", 3, {}},
      {"everythingFits", "a\nb\n\nc\n", 10, {{"a", "b", "", "c"}}},
      {"exactlyFullPage", "a\nb\n\nc\n", 4, {{"a", "b", "", "c"}}},
      {"entryMovesToTheNextPage", "a\nb\n\nc\nd\n", 4, {{"a", "b"}, {"c", "d"}}},
      {"blanksBeforeAMovedEntryAreDropped", "a\n\n\nb\nc\n", 3, {{"a"}, {"b", "c"}}},
      {"entryLongerThanAPageIsCut", "a\n\nb\nc\nd\ne\n", 3, {{"a", "", "b"}, {"c", "d", "e"}}},
      {"blankAtTheTopOfACutPageIsDropped",
       "a\nb\nc\n\nd\ne\nf\ng\n",
       3,
       {{"a", "b", "c"}, {"d", "e", "f"}, {"g"}}},
      {"leadingBlankOfTheFirstPageKept", "\na\n", 3, {{"", "a"}}},
      {"lastLineWithoutNewline", "a\nb", 3, {{"a", "b"}}},
      {"zeroLinesPerPageTakenAsOne", "a\nb\n", 0, {{"a"}, {"b"}}},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(paginateListing(row.listing, row.linesPerPage), row.pages) << row.name;
  }
}

}  // namespace
}  // namespace quillon
