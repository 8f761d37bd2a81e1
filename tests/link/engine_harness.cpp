#include "engine_harness.h"

namespace quillon::testing {

std::string visible(const std::string& bytes) {
  std::string out;
  for (char c : bytes) {
    const auto code = static_cast<unsigned char>(c);
    if (code < 32 || code >= 127) {
      out += "<" + std::to_string(code) + ">";
    } else {
      out += c;
    }
  }
  return out;
}

namespace {

std::string iconName(BoxIcon icon) {
  switch (icon) {
    case BoxIcon::Critical:
      return " [stop]";
    case BoxIcon::Exclamation:
      return " [!]";
    case BoxIcon::Information:
      return " [i]";
    case BoxIcon::Question:
      return " [?]";
    case BoxIcon::None:
      break;
  }
  return "";
}

}  // namespace

std::string describe(const TransferEvent& e) {
  using K = TransferEvent::Kind;
  switch (e.kind) {
    case K::Comment:
      return "comment " + e.text;
    case K::Progress:
      return "progress " + std::to_string(e.value);
    case K::Block:
      return "block " + visible(e.text) + " | " + e.text2;
    case K::Reply:
      return "reply " + visible(e.text);
    case K::Received:
      return "received " + std::to_string(e.value) + " " + visible(e.text);
    case K::Count:
      return "count " + std::to_string(e.value);
    case K::Title:
      return "title " + e.text;
    case K::Box:
      return "box " + e.box.title + ": " + visible(e.box.text) + iconName(e.box.icon);
    case K::Log:
      return "log " + e.text2 + visible(e.text);
    case K::Busy:
      return e.value != 0 ? "busy on" : "busy off";
    case K::Finished:
      return "finished";
    case K::StatusText:
      return "status " + visible(e.text);
    case K::BlockRead:
      return "blockread " + visible(e.text) + " | " + visible(e.text2);
  }
  return "?";
}

Step startAt(TimeOfDay at) { return {Step::Kind::Start, at, {}}; }
Step bytesAt(TimeOfDay at, std::string bytes) { return {Step::Kind::Bytes, at, std::move(bytes)}; }
Step deadlineAt(TimeOfDay at) { return {Step::Kind::Deadline, at, {}}; }
Step cancelAt(TimeOfDay at) { return {Step::Kind::Cancel, at, {}}; }
Step linkLostAt(TimeOfDay at) { return {Step::Kind::LinkLost, at, {}}; }

void Harness::collect() {
  wire += m_engine.takeOutgoing();
  for (auto& e : m_engine.takeEvents()) {
    events.push_back(describe(e));
    raw.push_back(std::move(e));
  }
}

void Harness::start(TimeOfDay now) {
  m_engine.start(now);
  collect();
}

void Harness::bytes(const std::string& received, TimeOfDay now) {
  m_engine.onBytes(received, now);
  collect();
}

void Harness::deadline(TimeOfDay now) {
  m_engine.onDeadline(now);
  collect();
}

TimeOfDay Harness::fire() {
  const TimeOfDay at = m_engine.deadline().value_or(-1);
  deadline(at);
  return at;
}

void Harness::cancel(TimeOfDay now) {
  m_engine.cancel(now);
  collect();
}

void Harness::linkLost(TimeOfDay now) {
  m_engine.onLinkLost(now);
  collect();
}

void Harness::run(const std::vector<Step>& steps, std::size_t piece) {
  for (const Step& s : steps) {
    switch (s.kind) {
      case Step::Kind::Start:
        start(s.at);
        break;
      case Step::Kind::Bytes:
        if (piece == 0) {
          bytes(s.bytes, s.at);
        } else {
          for (std::size_t i = 0; i < s.bytes.size(); i += piece)
            bytes(s.bytes.substr(i, piece), s.at);
        }
        break;
      case Step::Kind::Deadline:
        deadline(s.at);
        break;
      case Step::Kind::Cancel:
        cancel(s.at);
        break;
      case Step::Kind::LinkLost:
        linkLost(s.at);
        break;
    }
  }
}

void Harness::signIn(TimeOfDay at) {
  start(at);
  bytes(ACK, at + 100);
  forget();
  deadline(at + 1100);
  events.clear();
  raw.clear();
}

void Harness::ackAll(TimeOfDay from) {
  for (int i = 0; i < 1000 && !m_engine.finished(); ++i) bytes(ACK, from + 10 * i);
}

void Harness::forget() {
  wire.clear();
  events.clear();
  raw.clear();
}

std::vector<std::string> Harness::only(const std::string& prefix) const {
  std::vector<std::string> out;
  for (const auto& e : events) {
    if (e.rfind(prefix + " ", 0) == 0) out.push_back(e);
  }
  return out;
}

TransferJob sendJob(std::string text, std::string startIdentifier, std::string text2) {
  TransferJob job;
  job.title = "Download active";
  job.contentLabel = "Messages";
  job.sendText = std::move(text);
  job.sendText2 = std::move(text2);
  job.startIdentifier = std::move(startIdentifier);
  return job;
}

TransferJob readJob(char letter, std::string contentLabel) {
  TransferJob job;
  job.title = "Upload active";
  job.contentLabel = std::move(contentLabel);
  job.requestLetter = letter;
  return job;
}

}  // namespace quillon::testing
