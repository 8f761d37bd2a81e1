#pragma once
// Splits a listing into pages without tearing an entry apart: entries are the blocks between
// blank lines, and a block that does not fit on what is left of a page starts the next one,
// unless it would not fit on a whole page either.

#include <string>
#include <string_view>
#include <vector>

namespace quillon {

using ListingPage = std::vector<std::string>;

// A listing ending in "\n" has no trailing empty line. linesPerPage below 1 counts as 1.
[[nodiscard]] std::vector<ListingPage> paginateListing(std::string_view listing, int linesPerPage);

}  // namespace quillon
