#include "print/pages.h"

#include <cstddef>

namespace quillon {
namespace {

std::vector<std::string> splitLines(std::string_view text) {
  std::vector<std::string> lines;
  std::size_t start = 0;
  while (start < text.size()) {
    std::size_t end = text.find('\n', start);
    if (end == std::string_view::npos) end = text.size();
    lines.emplace_back(text.substr(start, end - start));
    start = end + 1;
  }
  return lines;
}

class PageFiller {
 public:
  explicit PageFiller(std::size_t linesPerPage) : m_capacity(linesPerPage) {}

  void addBlock(const std::vector<std::string>& block, std::size_t blanksBefore) {
    const std::size_t room = m_capacity - m_page.size();
    if (!m_page.empty() && blanksBefore + block.size() > room && block.size() <= m_capacity) {
      newPage();
    }
    for (std::size_t i = 0; i < blanksBefore; ++i) addLine({});
    for (const auto& line : block) addLine(line);
  }

  std::vector<ListingPage> finish() {
    if (!m_page.empty()) newPage();
    return std::move(m_pages);
  }

 private:
  void addLine(std::string line) {
    if (m_page.size() == m_capacity) newPage();
    // A page needs no blank lines to separate it from the page before.
    if (line.empty() && m_page.empty() && !m_pages.empty()) return;
    m_page.push_back(std::move(line));
  }
  void newPage() {
    m_pages.push_back(std::move(m_page));
    m_page.clear();
  }

  std::size_t m_capacity;
  ListingPage m_page;
  std::vector<ListingPage> m_pages;
};

}  // namespace

std::vector<ListingPage> paginateListing(std::string_view listing, int linesPerPage) {
  PageFiller filler(linesPerPage < 1 ? 1 : static_cast<std::size_t>(linesPerPage));
  std::vector<std::string> block;
  std::size_t blanks = 0;
  std::size_t blanksBeforeBlock = 0;
  for (auto& line : splitLines(listing)) {
    if (line.empty()) {
      if (!block.empty()) {
        filler.addBlock(block, blanksBeforeBlock);
        block.clear();
      }
      ++blanks;
      continue;
    }
    if (block.empty()) {
      blanksBeforeBlock = blanks;
      blanks = 0;
    }
    block.push_back(std::move(line));
  }
  if (!block.empty()) filler.addBlock(block, blanksBeforeBlock);
  return filler.finish();
}

}  // namespace quillon
