// Sign-in and sending: the wire format of what goes out, and how the module's replies steer it.

#include <gtest/gtest.h>

#include "engine_harness.h"
#include "link/block_checksum.h"
#include "link/reply_timer.h"
#include "link/start_identifier.h"

namespace quillon::testing {
namespace {

EngineSettings inLanguage(int language) { return {64, 20000, language, 4}; }

TEST(BlockChecksum, XorOfAllCodesAsTwoUpperCaseDigits) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"", "00"},    {"0:", "0A"}, {"AB", "03"}, {"\xFF\x0F", "F0"}, {"007B090300003E\xFD", "F4"},
      {"\xFC", "FC"}};
  for (const auto& [data, digits] : rows) EXPECT_EQ(BlockChecksum(data), digits) << data;
}

TEST(StartIdentifier, IsTheUpperCaseLetterAndTheLengthInHex) {
  const auto make = [](char letter, std::size_t length, int digits) {
    return MakeStartIdentifier(letter, std::string(length, 'x'), digits);
  };
  EXPECT_EQ(make('M', 40000, 4), "M9C40");
  EXPECT_EQ(make('p', 39, 4), "P0027");
  EXPECT_EQ(make('t', 0x1234, 3), "T234");
  EXPECT_EQ(make('Y', 0x2A, 7), "Y002A");  // any other digit count means four
  EXPECT_EQ(make('y', 0x11170, 4), "Y1170");
}

TEST(TransferEngineSend, DownloadOfTwoCharactersStepByStep) {
  Harness h(sendJob("AB", "M0002"));
  h.run({startAt(1000)});
  EXPECT_EQ(h.wire, "??");
  EXPECT_EQ(h.events, (Lines{"comment Sign in ...", "progress 0", "log WRITE: ??"}));
  h.forget();
  h.bytes(ACK, 1200);
  EXPECT_EQ(h.due(), 2200);  // the one-second pause after the answer
  h.run({deadlineAt(2199)});
  EXPECT_EQ(h.wire, "");
  h.run({deadlineAt(2200)});
  h.bytes(ACK, 2300);
  h.bytes(ACK, 2400);
  EXPECT_FALSE(h.engine().finished());  // the final confirmation comes separately
  h.bytes(ACK, 2450);

  EXPECT_EQ(h.wire, "M0002AB03");
  EXPECT_EQ(h.events,
            (Lines{"log READ: <6>", "comment Com open", "busy on", "comment Start identifier ...",
                   "log WRITE: M0002", "log READ: <6>", "reply [ACK]",
                   "comment Sending data block by block...", "block AB | 30", "log WRITE: AB03",
                   "progress 100", "log READ: <6>", "reply [ACK]", "log READ: <6>", "reply [ACK]",
                   "status Download done", "comment done", "busy off", "finished"}));
  EXPECT_EQ(h.title(), "Download active");
  EXPECT_EQ(h.due(), std::nullopt);
}

// ReadAcknowledge looks at the last character of what one read brought: noise in front of an
// ACK is an ACK, an ACK followed by a NAK is a NAK. "AB" goes out as one block, AB03.
TEST(TransferEngineSend, OneReadIsOneReplyJudgedByItsLastCharacter) {
  struct Row {
    const char* name;
    Steps steps;  // after the sign-in: start identifier reply, block replies, confirmation
    std::string wire;
    Lines repliesAndBoxes;
    int result;
  };
  const std::string five = "box Terminal: Transfer ok, but no final confirmation  [!]";
  const std::vector<Row> rows = {
      {"noiseBeforeEachAck",
       Steps{bytesAt(1200, "\xFF" + ACK), bytesAt(1300, std::string("\x00~", 2) + ACK),
             bytesAt(1400, "?" + ACK)},
       "M0002AB03", Lines{"reply [ACK]", "reply [ACK]", "reply [ACK]"}, 0},
      {"nakThenAckIsAnAck", Steps{bytesAt(1200, ACK), bytesAt(1300, NAK + ACK), bytesAt(1400, ACK)},
       "M0002AB03", Lines{"reply [ACK]", "reply [ACK]", "reply [ACK]"}, 0},
      {"ackThenNakIsANak",
       Steps{bytesAt(1200, ACK), bytesAt(1300, ACK + NAK), bytesAt(1400, ACK), bytesAt(1500, ACK)},
       "M0002AB03AB03", Lines{"reply [ACK]", "reply [nak]", "reply [ACK]", "reply [ACK]"}, 0},
      {"ackThenNoiseIsNeither",
       Steps{bytesAt(1200, ACK + "z"), bytesAt(1300, ACK), bytesAt(1400, ACK), bytesAt(1500, ACK)},
       "M0002M0002AB03", Lines{"reply [z]", "reply [ACK]", "reply [ACK]", "reply [ACK]"}, 0},
      // The block's ACK and the confirmation in one read answer the block only; the wait for the
      // confirmation then runs out, and the transfer still counts as done.
      {"ackAndConfirmationInOneRead",
       Steps{bytesAt(1200, ACK), bytesAt(1300, ACK + ACK), deadlineAt(21999), deadlineAt(22000)},
       "M0002AB03", Lines{"reply [ACK]", "reply [ACK]", "box : Timeout", five}, 0},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Harness h(sendJob("AB"));
    h.signIn();
    h.run(row.steps);
    EXPECT_EQ(h.wire, row.wire);
    EXPECT_EQ(h.only("reply", "box"), row.repliesAndBoxes);
    EXPECT_EQ(h.comment(), "done");
    EXPECT_EQ(h.result(), row.result);
  }
}

TEST(TransferEngineSignIn, EndingsAndTheirBoxes) {
  struct Row {
    const char* name;
    int language;
    std::string portError;
    Steps steps;
    std::string wire;
    Lines boxesAndTitles;
  };
  const std::vector<Row> rows = {
      // The second round follows a second after an answer without ACK, the start identifier a
      // second after the ACK.
      {"secondRoundSucceeds", 0, "",
       Steps{startAt(1000), bytesAt(1500, "x"), deadlineAt(2499), deadlineAt(2500),
             bytesAt(2600, ACK), deadlineAt(3599), deadlineAt(3600)},
       "????M0002", Lines{}},
      // Across midnight the pause still lasts one second.
      {"pauseAcrossMidnight", 0, "",
       Steps{startAt(86399000), bytesAt(86399500, ACK), deadlineAt(86400499), deadlineAt(86400500)},
       "??M0002", Lines{}},
      // The wait counts from the whole second and starts again at midnight: 20.999 s after it
      // still waits.
      {"signInAcrossMidnightStillWaits", 0, "",
       Steps{startAt(86399000), deadlineAt(86400000), deadlineAt(86420999)}, "??", Lines{}},
      {"signInAcrossMidnightTimesOut", 0, "",
       Steps{startAt(86399000), deadlineAt(86400000), deadlineAt(86421000)}, "??",
       Lines{"box : Timeout", "title No response", "box Terminal: Telvane not ready",
             "title No connection"}},
      // The steady clock counts from anywhere: the time of day read at the start places the
      // midnight, here 1.4 s after the start.
      {"midnightPlacedByTheTimeOfDay", 0, "",
       Steps{startAt(5000, 86398600), deadlineAt(26399), deadlineAt(27399)}, "??", Lines{}},
      {"midnightPlacedByTheTimeOfDayTimesOut", 0, "",
       Steps{startAt(5000, 86398600), deadlineAt(27400)}, "??",
       Lines{"box : Timeout", "title No response", "box Terminal: Telvane not ready",
             "title No connection"}},
      {"ackAnywhereInTheAnswerCounts", 0, "",
       Steps{startAt(0), bytesAt(100, "xy"), bytesAt(900, ACK + "z"), deadlineAt(1900)}, "??M0002",
       Lines{}},
      {"twoAnswersWithoutAckShowThePortError", 0, "Device busy",
       Steps{startAt(0), bytesAt(100, "x"), deadlineAt(1100), bytesAt(1200, "y"), deadlineAt(2200)},
       "????", Lines{"box Terminal: Error Device busy", "title No connection"}},
      {"silentModuleGerman", 1, "", Steps{startAt(500), deadlineAt(21000)}, "??",
       Lines{"box : Timeout", "title No response", "box Terminal: Telvane nicht bereit",
             "title No connection"}},
      {"silentInTheSecondRound", 0, "",
       Steps{startAt(0), bytesAt(100, "x"), deadlineAt(1100), deadlineAt(22000)}, "????",
       Lines{"box : Timeout", "title No response", "box Terminal: Telvane not ready",
             "title No connection"}},
      {"cancelledWhileWaiting", 0, "", Steps{startAt(0), cancelAt(700)}, "??",
       Lines{"title Cancel", "box Terminal: Aborted", "title No connection"}},
      {"cancelledDuringThePauseGerman", 1, "", Steps{startAt(0), bytesAt(100, ACK), cancelAt(700)},
       "??", Lines{"title Cancel", "box Terminal: abgebrochen", "title No connection"}},
      {"linkLost", 0, "", Steps{startAt(0), linkLostAt(300)}, "??",
       Lines{"box Terminal: Interface not active", "title No connection"}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Harness h(sendJob("AB"), inLanguage(row.language));
    h.presenter().setPortErrorText(row.portError);
    h.run(row.steps);
    const Lines shown = h.only("box", "title");
    EXPECT_EQ(shown, row.boxesAndTitles);
    EXPECT_EQ(h.wire, row.wire);
    EXPECT_EQ(h.engine().finished(), !shown.empty());
    EXPECT_EQ(h.result(), shown.empty() ? 0 : 5);
  }
}

// The one repeat after any other reply is part of RepliesInPiecesGiveTheSameOutcomeAsWholeReplies.
// A refusal is "Denied" with the title left alone, so the sign-in counts it as done.
TEST(TransferEngineSend, StartIdentifierRefusedOrNothingToSend) {
  const std::vector<std::tuple<int, std::string, std::string, Lines>> rows = {
      {0, "AB", NAK, Lines{"reply [nak]", "box Terminal: Option <Messages> is not implemented"}},
      {1, "AB", NAK,
       Lines{"reply [nak]", "box Terminal: Option <Messages> ist nicht implementiert"}},
      {0, "", ACK, Lines{"reply [ACK]", "box Terminal: No data to transfer"}}};
  for (const auto& [language, text, reply, shown] : rows) {
    Harness h(sendJob(text, text.empty() ? "M0000" : "M0002"), inLanguage(language));
    h.signIn();
    h.bytes(reply, 2000);
    EXPECT_EQ(h.wire, text.empty() ? "M0000" : "M0002");
    EXPECT_EQ(h.only("reply", "box", "title"), shown);
    EXPECT_TRUE(h.engine().finished());
    if (reply == NAK) {
      EXPECT_EQ(h.comment(), "Denied");
    }
    EXPECT_EQ(h.result(), 0);
  }
}

TEST(TransferEngineSend, FiveFailuresWithinOneDataStringEndTheTransfer) {
  struct Row {
    const char* name;
    std::string text, text2;
    Lines replies;  // to the start identifier, then to every block
    std::string wire;
    Lines boxes;
    int result;
  };
  const std::string a(64, 'A'), b(64, 'B'), c(64, 'C'), sa = a + "00", sb = b + "00";
  const std::vector<Row> rows = {
      {"fiveSpreadOverBlocks", a + b + c, "", Lines{ACK, NAK, NAK, ACK, NAK, "x", ACK, NAK},
       "M00C0" + sa + sa + sa + sb + sb + sb + c + "00",
       Lines{"box Terminal:  Aborted after 5 triials  [stop]"}, 3},
      {"fourAreNotEnough", a + "B", "", Lines{ACK, NAK, NAK, NAK, ACK, NAK, ACK, ACK},
       "M0041" + sa + sa + sa + sa + "B42" + "B42", Lines{}, 0},
      {"secondDataStringCountsAfresh", a, "B", Lines{ACK, NAK, NAK, NAK, NAK, ACK, NAK, ACK, ACK},
       "M0041" + sa + sa + sa + sa + sa + "B42" + "B42", Lines{}, 0},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Harness h(sendJob(row.text, row.wire.substr(0, 5), row.text2));
    h.signIn();
    TimeOfDay t = 2000;
    for (const std::string& r : row.replies) h.bytes(r, t += 10);
    EXPECT_EQ(h.wire, row.wire);
    EXPECT_EQ(h.only("box"), row.boxes);
    EXPECT_TRUE(h.engine().finished());
    EXPECT_EQ(h.comment(), row.result == 0 ? "done" : "Cancel");
    EXPECT_EQ(h.result(), row.result);
  }
}

// The reply time-out counts whole seconds: more than 20 of them between the start and now.
TEST(ReplyTimeout, CountsFromTheWholeSecond) {
  using Probes = std::vector<std::pair<TimeOfDay, bool>>;  // moment, timed out
  struct Row {
    const char* name;
    TimeOfDay begin;
    TimeOfDay firstDeadline;
    Probes probes;
  };
  const std::vector<Row> rows = {
      // 20 s - 1 ms after the start still waits; 21 s after it has timed out.
      {"halfwayIntoASecond", 10500, 31000,
       Probes{{30499, false}, {30999, false}, {31000, true}, {31500, true}}},
      // Begun at x.999 the wait still lasts just over 20 seconds: it ends at x+21.000.
      {"lateInASecond", 10999, 31000, Probes{{30998, false}, {31000, true}}},
      // A wait that would end after midnight starts again there.
      {"midnightMovesTheStartToTheNewDay", 86395500, 86421000,
       Probes{{86399999, false}, {86400003, false}, {86420999, false}, {86421000, true}}},
      // One that ends exactly at midnight starts again as well.
      {"dueAtMidnightStartsAgain", 86379000, 86421000,
       Probes{{86399999, false}, {86400000, false}, {86421000, true}}},
  };
  for (const Row& row : rows) {
    ReplyTimer timer;
    timer.start(row.begin, 20000);
    EXPECT_EQ(timer.deadline(), row.firstDeadline) << row.name;
    for (const auto& [at, out] : row.probes)
      EXPECT_EQ(timer.expired(at), out) << row.name << " at " << at;
  }
}

}  // namespace
}  // namespace quillon::testing
