#include <optional>
#include <string>

#include "text/substitution.h"
#include "text/ui_text_slots.h"
#include "transfer/image_parse.h"

namespace quillon {

namespace {

inline constexpr const char* kMark = "x";

// Reads records out of the five receive texts, appending the next text only when the current
// one holds no further separator.
class RecordReader {
 public:
  explicit RecordReader(const std::array<std::string, kReceiveBoxes>& received)
      : m_received(received) {}

  // The first character of the next record, if any data is left.
  [[nodiscard]] std::optional<char> peek() {
    while (m_pos >= m_text.size() && appendNext()) {
    }
    if (m_pos >= m_text.size()) return std::nullopt;
    return m_text[m_pos];
  }

  // The next record without its separator; nullopt when no separator is left.
  [[nodiscard]] std::optional<std::string> take() {
    auto sep = m_text.find(wire::kPad, m_pos);
    while (sep == std::string::npos && appendNext()) sep = m_text.find(wire::kPad, m_pos);
    if (sep == std::string::npos) return std::nullopt;
    std::string record = m_text.substr(m_pos, sep - m_pos);
    m_pos = sep + 1;
    return record;
  }

  [[nodiscard]] bool exhausted() { return !peek().has_value(); }

 private:
  bool appendNext() {
    if (m_next >= m_received.size()) return false;
    m_text += m_received[m_next++];
    return true;
  }

  const std::array<std::string, kReceiveBoxes>& m_received;
  std::string m_text;
  std::size_t m_pos = 0;
  std::size_t m_next = 0;
};

void fillMessageRow(Table& messages, int row, const std::string& record) {
  messages.setCell(row, kAckColumn, {});
  messages.setCell(row, kCallBackColumn, {});
  messages.setCell(row, kRingColumn, {});
  if (record.empty()) {
    messages.setCell(row, kMessageTextColumn, {});
    return;
  }
  if (const auto options = wire::optionsOfLetter(record.front())) {
    if (options->ring) messages.setCell(row, kRingColumn, kMark);
    if (options->acknowledge) messages.setCell(row, kAckColumn, kMark);
    if (options->callBack) messages.setCell(row, kCallBackColumn, kMark);
  }
  messages.setCell(row, kMessageTextColumn, toPc(record.substr(1)));
}

void takeAckRequest(AckRequest& ack, const std::string& record) {
  const std::string rest = record.substr(1);
  const auto blank = rest.find(kAckRequestSeparator);
  if (blank == std::string::npos) return;
  ack.first = rest.substr(0, blank);
  ack.second = rest.substr(blank + 1);
}

class MessagesParser {
 public:
  MessagesParser(const std::array<std::string, kReceiveBoxes>& received, Project& project,
                 ImageEnv& env)
      : m_reader(received), m_project(project), m_env(env) {}

  MessagesParse run() {
    if (m_reader.exhausted()) return m_result;
    if (!m_reader.take()) {  // the header
      fail();
      return m_result;
    }
    m_env.status.setStatus(StatusPanel::Transfer, m_env.texts[slot::kFillTable]);
    if (!messageRows() || !ackRequest() || !filterRows()) return m_result;
    m_result.endMarkSeen = atEndMark();
    return m_result;
  }

 private:
  // Each step returns false when the image ended or broke off.
  bool messageRows() {
    for (int row = 1; row <= m_project.messages.rows(); ++row) {
      if (atEndMark()) return false;
      // A module with fewer messages than the table: no message record starts with "Q".
      if (m_reader.peek() == kAckRequestRecord) return true;
      const auto record = m_reader.take();
      if (!record) {
        fail();
        return false;
      }
      fillMessageRow(m_project.messages, row, *record);
    }
    return true;
  }

  bool ackRequest() {
    // Records of a module with more message rows than the table are passed over.
    for (;;) {
      if (atEndMark()) return false;
      const auto record = m_reader.take();
      if (!record) {
        fail();
        return false;
      }
      if (!record->empty() && record->front() == kAckRequestRecord) {
        takeAckRequest(m_project.ack, *record);
        return true;
      }
    }
  }

  bool filterRows() {
    for (int row = 1; row <= m_project.filters.rows(); ++row) {
      if (atEndMark()) return false;
      auto record = m_reader.take();
      if (!record) {
        fail();
        return false;
      }
      m_project.filters.setCell(row, kFilterTextColumn, std::move(*record));
    }
    return true;
  }

  bool atEndMark() {
    const auto next = m_reader.peek();
    if (next == wire::kEndMark) m_result.endMarkSeen = true;
    return next == wire::kEndMark;
  }

  void fail() {
    if (!m_reader.exhausted() && !m_result.malformed) {
      m_result.malformed = true;
      m_env.dialog.tell(
          kMainTitle,
          m_env.texts[slot::kErrorLoadingMessages] + '\r' + m_env.texts[slot::kPleaseCorrect],
          BoxIcon::Exclamation);
    }
  }

  RecordReader m_reader;
  Project& m_project;
  ImageEnv& m_env;
  MessagesParse m_result;
};

}  // namespace

MessagesParse parseMessages(const std::array<std::string, kReceiveBoxes>& received,
                            Project& project, ImageEnv& env) {
  return MessagesParser(received, project, env).run();
}

}  // namespace quillon
