#include "print/listing.h"

#include <string>

namespace quillon {
namespace {

constexpr const char* kDateLabel = "Datum: ";
constexpr const char* kMemoLabel = "Memo: ";
constexpr const char* kSmsCentreLabel = "SMS-Center";
constexpr const char* kAckMarker = " Acknowledgement";
constexpr const char* kCallBackMarker = " Call back";
constexpr const char* kRingMarker = " Ring";
constexpr const char* kNoEntries = "(no entries)";

class LineWriter {
 public:
  void line(std::string text = {}) {
    m_text += text;
    m_text += '\n';
  }
  void heading(const std::string& title) {
    line(title);
    line(std::string(title.size(), '-'));
  }
  [[nodiscard]] const std::string& text() const { return m_text; }

 private:
  std::string m_text;
};

bool rowIsEmpty(const Table& table, int row) {
  for (int column = 1; column <= table.columns(); ++column) {
    if (!table.cell(row, column).empty()) return false;
  }
  return true;
}

std::string rightAligned(const std::string& text, std::size_t width) {
  return text.size() >= width ? text : std::string(width - text.size(), ' ') + text;
}

std::string leftAligned(const std::string& text, std::size_t width) {
  return text.size() >= width ? text : text + std::string(width - text.size(), ' ');
}

void trimRight(std::string& text) {
  const auto end = text.find_last_not_of(' ');
  text.erase(end == std::string::npos ? 0 : end + 1);
}

void writeComment(LineWriter& out, const std::string& comment) {
  if (!comment.empty()) out.line("Comment: " + comment);
}

void writeFilters(LineWriter& out, const Table& filters) {
  out.heading("Filter texts");
  bool any = false;
  for (int row = 1; row <= filters.rows(); ++row) {
    if (rowIsEmpty(filters, row)) continue;
    any = true;
    out.line("Filter " + std::to_string(row));
    if (const auto& text = filters.cell(row, kFilterTextColumn); !text.empty()) out.line(text);
    writeComment(out, filters.cell(row, kFilterCommentColumn));
    out.line();
  }
  if (!any) {
    out.line(kNoEntries);
    out.line();
  }
}

void writeMessages(LineWriter& out, const Table& messages) {
  out.heading("Messages");
  bool any = false;
  for (int row = 1; row <= messages.rows(); ++row) {
    if (rowIsEmpty(messages, row)) continue;
    any = true;
    std::string title = "Message " + std::to_string(row);
    if (!messages.cell(row, kAckColumn).empty()) title += kAckMarker;
    if (!messages.cell(row, kCallBackColumn).empty()) title += kCallBackMarker;
    if (!messages.cell(row, kRingColumn).empty()) title += kRingMarker;
    out.line(title);
    // The text starts in column 1 so that a full 160-character text fills exactly two lines.
    if (const auto& text = messages.cell(row, kMessageTextColumn); !text.empty()) out.line(text);
    writeComment(out, messages.cell(row, kMessageCommentColumn));
    out.line();
  }
  if (!any) {
    out.line(kNoEntries);
    out.line();
  }
}

void writePhones(LineWriter& out, const Project& project) {
  const Table& phones = project.phones;
  out.heading("Phone numbers");
  std::string centre = std::string(kSmsCentreLabel) + " " + project.smsCentre;
  trimRight(centre);
  out.line(centre);
  const std::size_t numberWidth = std::to_string(phones.rows()).size();
  bool any = false;
  for (int row = 1; row <= phones.rows(); ++row) {
    if (rowIsEmpty(phones, row)) continue;
    if (!any) {
      out.line(leftAligned("Nr", numberWidth) + "  " +
               leftAligned("Number", static_cast<std::size_t>(kMaxPhoneLength)) + "  Name");
    }
    any = true;
    std::string line = rightAligned(std::to_string(row), numberWidth) + "  " +
                       leftAligned(phones.cell(row, kPhoneNumberColumn),
                                   static_cast<std::size_t>(kMaxPhoneLength)) +
                       "  " + phones.cell(row, kPhoneNameColumn);
    trimRight(line);
    out.line(line);
  }
  if (!any) out.line(kNoEntries);
  out.line();
}

}  // namespace

std::string listingFooter() {
  return "Printed with Quillon " + std::to_string(QUILLON_VERSION_MAJOR) + "." +
         std::to_string(QUILLON_VERSION_MINOR) + "." + std::to_string(QUILLON_VERSION_PATCH);
}

std::string printListing(const Project& project, const ListingOptions& options) {
  LineWriter out;
  if (!options.projectName.empty()) out.line("Project: " + options.projectName);
  if (!project.station.empty()) out.line("Station: " + project.station);
  out.line(kDateLabel + options.date);
  // Printed even when empty: the technician can write on the line by hand.
  out.line(kMemoLabel + options.memo);
  out.line();
  writeFilters(out, project.filters);
  writeMessages(out, project.messages);
  writePhones(out, project);
  out.line(std::string(kListingWidth, '-'));
  out.line(listingFooter());
  return wrapLines(out.text());
}

std::string wrapLines(std::string_view text, std::size_t width) {
  if (width == 0) width = 1;
  std::string out;
  out.reserve(text.size() + text.size() / width + 1);
  std::size_t column = 0;
  for (char c : text) {
    if (c == '\r') continue;
    if (c == '\n') {
      out += '\n';
      column = 0;
      continue;
    }
    if (column == width) {
      out += '\n';
      column = 0;
    }
    out += c;
    ++column;
  }
  return out;
}

}  // namespace quillon
