#include "project/project_file.h"

#include <algorithm>
#include <system_error>

#include "project/file_history.h"
#include "project/flag_assignment.h"
#include "project/number_text.h"
#include "project/read_file.h"
#include "project/validation.h"

namespace quillon {

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr unsigned char kFirstFlagCharacter = '@';  // 64: no mark column set
constexpr unsigned char kLastFlagCharacter = 'G';   // 71: all three set
constexpr char kAckRecord = 'Q';
constexpr char kOldFlagRecord = 'V';
constexpr std::size_t kFilterPrefixLength = 3;  // "F" and the two-digit row number
constexpr std::uint32_t kPinModulus = 0x10000;  // the file keeps four hexadecimal digits

std::string_view stripTrailingPads(std::string_view text) {
  while (!text.empty() && text.back() == kPad) text.remove_suffix(1);
  return text;
}

std::string twoDigits(int row) {
  std::string digits = std::to_string(row);
  return digits.size() < 2 ? "0" + digits : digits;
}

char messageFlagCharacter(const Table& messages, int row) {
  int bits = 0;
  if (!messages.cell(row, kAckColumn).empty()) bits |= 1;
  if (!messages.cell(row, kCallBackColumn).empty()) bits |= 2;
  if (!messages.cell(row, kRingColumn).empty()) bits |= 4;
  return static_cast<char>(kFirstFlagCharacter + bits);
}

bool isDecimalNumber(std::string_view text) {
  if (!text.empty() && (text.front() == '-' || text.front() == '+')) text.remove_prefix(1);
  if (text.empty()) return false;
  for (char c : text) {
    if (c < '0' || c > '9') return false;
  }
  return true;
}

int hexDigitValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

// One pass over the records with the three counters and the one-warning-per-kind state.
class RecordReader {
 public:
  RecordReader(Project& project, const UiTexts& texts, UserDialog& dialog)
      : m_project(project), m_texts(texts), m_dialog(dialog) {}

  void read(std::string_view line) {
    switch (line.front()) {
      case 'M':
        readMessage(line.substr(1));
        break;
      case 'T':
        readPhone(line.substr(1));
        break;
      case 'F':
        readFilter(line);
        break;
      case 'L':
        readStation(line.substr(1));
        break;
      case 'E':
        readFlag(line.substr(1));
        break;
      default:  // "V", "P" and anything unknown carry nothing to load
        break;
    }
  }

 private:
  void readMessage(std::string_view body) {
    if (body.empty()) body = "@";
    const auto c = static_cast<unsigned char>(body.front());
    const std::int64_t counter = m_messageCounter++;
    if (c >= kFirstFlagCharacter && c <= kLastFlagCharacter) {
      const int lastIndex = m_project.messages.rows() - 1;
      if (counter > lastIndex) {
        if (!m_messagesWarned) {
          m_messagesWarned = true;
          m_dialog.tell(kMainTitle,
                        "Max. " + SignedDecimal(lastIndex) + m_texts[slot::kMessages] + "!!");
        }
        return;
      }
      const int row = static_cast<int>(counter) + 1;
      const int bits = c - kFirstFlagCharacter;
      Table& messages = m_project.messages;
      if (bits & 4) messages.setCell(row, kRingColumn, "x");
      if (bits & 1) messages.setCell(row, kAckColumn, "x");
      if (bits & 2) messages.setCell(row, kCallBackColumn, "x");
      const SplitFieldResult split = SplitField(body.substr(1));
      std::string text(split.field);
      DoLenCheck(text, counter, m_texts, m_dialog);
      messages.setCell(row, kMessageTextColumn, std::move(text));
      messages.setCell(row, kMessageCommentColumn, std::string(split.remainder));
    } else if (c == kAckRecord) {
      const SplitFieldResult split = SplitField(body.substr(1));
      m_project.ack.first = std::string(split.field);
      m_project.ack.second = std::string(TrimBlanks(split.remainder));
    }
  }

  void readPhone(std::string_view body) {
    const std::int64_t counter = m_phoneCounter++;
    const SplitFieldResult split = SplitField(body);
    if (counter == 0) {
      m_project.smsCentre = std::string(stripTrailingPads(split.field));
      return;
    }
    if (counter > m_project.phones.rows()) {
      if (!m_phonesWarned) {
        m_phonesWarned = true;
        m_dialog.tell(kMainTitle, m_texts[slot::kTooManyPhones]);
      }
      return;
    }
    const int row = static_cast<int>(counter);
    m_project.phones.setCell(row, kPhoneNumberColumn, std::string(stripTrailingPads(split.field)));
    m_project.phones.setCell(row, kPhoneNameColumn, std::string(split.remainder));
  }

  void readFilter(std::string_view line) {
    const std::int64_t counter = m_filterCounter++;
    if (counter >= kFilterRows) {
      if (!m_filtersWarned) {
        m_filtersWarned = true;
        m_dialog.tell(kMainTitle,
                      "Max. " + SignedDecimal(kFilterRows) + m_texts[slot::kFilterTexts]);
      }
      return;
    }
    const SplitFieldResult split =
        SplitField(line.substr(std::min(kFilterPrefixLength, line.size())));
    std::string text(split.field);
    DoLenCheck(text, counter, m_texts, m_dialog);
    const int row = static_cast<int>(counter) + 1;
    m_project.filters.setCell(row, kFilterTextColumn, std::move(text));
    m_project.filters.setCell(row, kFilterCommentColumn, std::string(split.remainder));
  }

  void readStation(std::string_view body) {
    // Record version, an unused field, the PIN; the rest is the station name.
    const SplitFieldResult version = SplitField(body);
    const SplitFieldResult unused = SplitField(version.remainder);
    const SplitFieldResult pin = SplitField(unused.remainder);
    m_project.pin = PinFromFile(pin.field);
    m_project.station = std::string(pin.remainder);
  }

  void readFlag(std::string_view body) {
    // "EV" and five hexadecimal pairs: an older form whose values are no longer used.
    if (!body.empty() && body.front() == kOldFlagRecord) return;
    const SplitFieldResult split = SplitField(body);
    (void)DataEasyLoad(m_project.flags, NumericValue(split.field), std::string(split.remainder));
  }

  Project& m_project;
  const UiTexts& m_texts;
  UserDialog& m_dialog;
  std::int64_t m_messageCounter = 0;
  std::int64_t m_phoneCounter = 0;
  std::int64_t m_filterCounter = 0;
  bool m_messagesWarned = false;
  bool m_phonesWarned = false;
  bool m_filtersWarned = false;
};

}  // namespace

ProgramVersion BuildVersion() {
  return {QUILLON_VERSION_MAJOR, QUILLON_VERSION_MINOR, QUILLON_VERSION_PATCH};
}

std::string PadField(std::string_view value) {
  std::string padded(value.substr(0, kPaddedFieldLength));
  padded.resize(kPaddedFieldLength, kPad);
  return padded;
}

SplitFieldResult SplitField(std::string_view body) {
  if (body.size() <= 1) return {};
  const auto semicolon = body.find(';');
  if (semicolon == std::string_view::npos) return {{}, body};
  return {TrimBlanks(body.substr(0, semicolon)), body.substr(semicolon + 1)};
}

std::string PinToFile(std::string_view pin) {
  pin = TrimBlanks(pin);
  if (!isDecimalNumber(pin)) return "0000";
  // The last four hexadecimal digits are the value modulo 0x10000, negative values as the
  // two's complement; computed digit by digit so any length of digits is safe.
  const bool negative = pin.front() == '-';
  if (pin.front() == '-' || pin.front() == '+') pin.remove_prefix(1);
  std::uint32_t value = 0;
  for (char c : pin) value = (value * 10 + static_cast<std::uint32_t>(c - '0')) % kPinModulus;
  if (negative) value = (kPinModulus - value) % kPinModulus;
  static constexpr char kHex[] = "0123456789ABCDEF";
  std::string hex(4, '0');
  for (int i = 3; i >= 0; --i) {
    hex[static_cast<std::size_t>(i)] = kHex[value & 0xF];
    value >>= 4;
  }
  return hex;
}

std::string PinFromFile(std::string_view field) {
  std::uint32_t value = 0;
  for (char c : field) {
    const int digit = hexDigitValue(c);
    if (digit < 0) break;
    value = (value * 16 + static_cast<std::uint32_t>(digit)) % kPinModulus;
  }
  std::string digits = std::to_string(value);
  if (digits.size() < 4) digits.insert(0, 4 - digits.size(), '0');
  return digits;
}

std::string ProjectFileBytes(Project& project, UserDialog& dialog, const ProgramVersion& version) {
  std::string out;
  const auto line = [&out](std::string_view a, std::string_view b = {}, std::string_view c = {},
                           std::string_view d = {}) {
    out.append(a).append(b).append(c).append(d).append(kLineEnd);
  };

  const Table& messages = project.messages;
  for (int row = 1; row <= messages.rows(); ++row) {
    line(std::string{'M', messageFlagCharacter(messages, row)},
         messages.cell(row, kMessageTextColumn), ";", messages.cell(row, kMessageCommentColumn));
  }
  line("MQ", TrimBlanks(project.ack.first), ";", TrimBlanks(project.ack.second));

  const Table& filters = project.filters;
  for (int row = 1; row <= filters.rows(); ++row) {
    line("F" + twoDigits(row), filters.cell(row, kFilterTextColumn), ";",
         filters.cell(row, kFilterCommentColumn));
  }

  line("T", PadField(project.smsCentre), ";", "SMSC");
  Table& phones = project.phones;
  for (int row = 1; row <= phones.rows(); ++row) {
    std::string number = phones.cell(row, kPhoneNumberColumn);
    std::string cleaned = CheckPhoneNumber(number, dialog);
    line("T", PadField(cleaned), ";", phones.cell(row, kPhoneNameColumn));
    phones.setCell(row, kPhoneNumberColumn, std::move(cleaned));
  }

  line("P", PadField(project.phoneSuffix));
  line("L1;;", PinToFile(project.pin), ";", project.station);
  out += DataEasySave(project.flags);
  line("V" + std::to_string(version.major) + "." + std::to_string(version.minor) + "." +
       std::to_string(version.revision));
  return out;
}

WriteResult ProjectFileSave(const std::filesystem::path& path, Project& project, UserDialog& dialog,
                            const ProgramVersion& version) {
  return WriteKeepingHistory(path, ProjectFileBytes(project, dialog, version));
}

void ProjectFileLoadBytes(std::string_view bytes, Project& project, const UiTexts& texts,
                          UserDialog& dialog) {
  clearAll(project);
  initMerkerArray(project);
  RecordReader reader(project, texts, dialog);
  // CR LF, a lone CR and a lone LF all end a line; the empty lines between them are skipped.
  std::size_t start = 0;
  while (start < bytes.size()) {
    std::size_t end = bytes.find_first_of("\r\n", start);
    if (end == std::string_view::npos) end = bytes.size();
    if (end > start) reader.read(bytes.substr(start, end - start));
    start = end + 1;
  }
  project.changed = false;
}

LoadResult ProjectFileLoad(const std::filesystem::path& path, Project& project,
                           const UiTexts& texts, UserDialog& dialog,
                           const std::function<void()>& askChanged) {
  std::error_code ec;
  if (!std::filesystem::exists(path, ec)) {
    dialog.tell(kMainTitle, texts[slot::kFileNotFound]);
    return {LoadStatus::FileNotFound, {}};
  }
  if (project.changed && askChanged) askChanged();

  const FileBytes read = ReadWholeFile(path);
  if (read.error != 0) {
    std::string error = std::generic_category().message(read.error);
    dialog.tell(kMainTitle, error, BoxIcon::Exclamation);
    return {LoadStatus::ReadError, std::move(error)};
  }
  ProjectFileLoadBytes(read.bytes, project, texts, dialog);
  return {};
}

}  // namespace quillon
