#pragma once
// The printed listing of a project: plain text, one line per "\n", every line at most 80
// characters, in the project's own Windows-1252 bytes. The writers (printer, PDF, terminal)
// decide the line ends and the conversion; the listing only decides what is on the paper.

#include <cstddef>
#include <string>
#include <string_view>

#include "project/project.h"

namespace quillon {

inline constexpr std::size_t kListingWidth = 80;

struct ListingOptions {
  std::string projectName;  // the file name; no line when empty
  std::string date;         // as the caller formats it; the listing reads no clock
  std::string memo;         // free text typed in the print dialog
};

// "Printed with Quillon <major>.<minor>.<patch>": the maker's line at the end of every listing.
[[nodiscard]] std::string listingFooter();

[[nodiscard]] std::string printListing(const Project& project, const ListingOptions& options);

// Cuts every line of `text` into pieces of at most `width` characters. Blanks at the cut are
// kept, so the paper shows every character of a message text exactly once.
[[nodiscard]] std::string wrapLines(std::string_view text, std::size_t width = kListingWidth);

}  // namespace quillon
