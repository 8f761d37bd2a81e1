#include "project/project_file.h"

#include <algorithm>
#include <system_error>

#include "project/file_history.h"
#include "project/flag_assignment.h"
#include "project/number_text.h"
#include "project/read_file.h"
#include "project/validation.h"
#include "wire/wire_format.h"

namespace quillon {

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr char kAckRecord = 'Q';
constexpr char kOldFlagRecord = 'V';
constexpr std::size_t kFilterPrefixLength = 3;  // "F" and the two-digit row number
constexpr std::size_t kPinDigits = 4;
constexpr std::uint32_t kPinModulus = 0x10000;  // the file keeps four hexadecimal digits

std::string twoDigits(int row) {
  std::string digits = std::to_string(row);
  return digits.size() < 2 ? "0" + digits : digits;
}

char messageFlagCharacter(const Table& messages, int row) {
  return wire::optionLetter({!messages.cell(row, kAckColumn).empty(),
                             !messages.cell(row, kCallBackColumn).empty(),
                             !messages.cell(row, kRingColumn).empty()});
}

bool isDecimalNumber(std::string_view text) {
  if (!text.empty() && (text.front() == '-' || text.front() == '+')) text.remove_prefix(1);
  if (text.empty()) return false;
  for (char c : text) {
    if (c < '0' || c > '9') return false;
  }
  return true;
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
    const std::int64_t counter = m_messageCounter++;
    if (const auto options = wire::optionsOfLetter(body.front())) {
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
      Table& messages = m_project.messages;
      if (options->ring) messages.setCell(row, kRingColumn, "x");
      if (options->acknowledge) messages.setCell(row, kAckColumn, "x");
      if (options->callBack) messages.setCell(row, kCallBackColumn, "x");
      const wire::SemicolonSplit split = wire::splitProjectRecord(body.substr(1));
      std::string text(split.before);
      DoLenCheck(text, counter, m_texts, m_dialog);
      messages.setCell(row, kMessageTextColumn, std::move(text));
      messages.setCell(row, kMessageCommentColumn, std::string(split.after));
    } else if (body.front() == kAckRecord) {
      const wire::SemicolonSplit split = wire::splitProjectRecord(body.substr(1));
      m_project.ack.first = std::string(split.before);
      m_project.ack.second = std::string(TrimBlanks(split.after));
    }
  }

  void readPhone(std::string_view body) {
    const std::int64_t counter = m_phoneCounter++;
    const wire::SemicolonSplit split = wire::splitProjectRecord(body);
    if (counter == 0) {
      m_project.smsCentre = std::string(wire::withoutTrailingPads(split.before));
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
    m_project.phones.setCell(row, kPhoneNumberColumn,
                             std::string(wire::withoutTrailingPads(split.before)));
    m_project.phones.setCell(row, kPhoneNameColumn, std::string(split.after));
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
    const wire::SemicolonSplit split =
        wire::splitProjectRecord(line.substr(std::min(kFilterPrefixLength, line.size())));
    std::string text(split.before);
    DoLenCheck(text, counter, m_texts, m_dialog);
    const int row = static_cast<int>(counter) + 1;
    m_project.filters.setCell(row, kFilterTextColumn, std::move(text));
    m_project.filters.setCell(row, kFilterCommentColumn, std::string(split.after));
  }

  void readStation(std::string_view body) {
    // Record version, an unused field, the PIN; the rest is the station name.
    const wire::SemicolonSplit version = wire::splitProjectRecord(body);
    const wire::SemicolonSplit unused = wire::splitProjectRecord(version.after);
    const wire::SemicolonSplit pin = wire::splitProjectRecord(unused.after);
    m_project.pin = PinFromFile(pin.before);
    m_project.station = std::string(pin.after);
  }

  void readFlag(std::string_view body) {
    // "EV" and five hexadecimal pairs: an older form whose values are no longer used.
    if (!body.empty() && body.front() == kOldFlagRecord) return;
    const wire::SemicolonSplit split = wire::splitProjectRecord(body);
    (void)DataEasyLoad(m_project.flags, NumericValue(split.before), std::string(split.after));
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

std::string PadField(std::string_view value) { return wire::padded(value, kPaddedFieldLength); }

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
  return wire::hexField(value, kPinDigits);
}

std::string PinFromFile(std::string_view field) {
  std::uint32_t value = 0;
  for (char c : field) {
    const int digit = wire::hexDigitValue(c);
    if (digit < 0) break;
    value = (value * 16 + static_cast<std::uint32_t>(digit)) % kPinModulus;
  }
  std::string digits = std::to_string(value);
  if (digits.size() < kPinDigits) digits.insert(0, kPinDigits - digits.size(), '0');
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
