// Reading from the module: the request, the count, blocks with their checksum, and the ways a
// read ends; and that replies cut into any pieces give the same outcome as whole ones.

#include <gtest/gtest.h>

#include "engine_harness.h"

namespace quillon::testing {
namespace {

// A version reply of 14 characters and the end-of-block character: 15 = 0x000F characters.
const std::string kVersionData = "007B090300003E" + EOB;
const std::string kVersionSum = "F4";

TEST(TransferEngineRead, VersionReadStepByStep) {
  Harness h(readJob('v', "Version"));
  h.run({startAt(0)});
  EXPECT_EQ(h.events, (Lines{"comment Sign in ...", "progress 0", "log WRITE: ??"}));
  h.forget();
  h.bytes(ACK, 100);
  h.run({deadlineAt(1100)});
  EXPECT_EQ(h.wire, "V");
  h.bytes("V000F", 1200);
  h.bytes(kVersionData + kVersionSum, 1300);

  EXPECT_EQ(h.wire, "V" + ACK + ACK);
  EXPECT_EQ(h.events,
            (Lines{"log READ: <6>", "comment  Reading Data ...", "busy on", "log WRITE: V",
                   "log READ: V000F", "log WRITE: <6>", "count 15",
                   "comment Reading data block by block...", "log READ: 007B090300003E<253>F4",
                   "log LESEN: 007B090300003E<253>F4", "blockread 007B090300003E<253> | F4",
                   "log SCHREIBEN: <6>", "received 0 007B090300003E<253>", "progress 100",
                   "busy off", "status Download done", "comment done", "finished"}));
  EXPECT_EQ(h.engine().outcome().received[0], kVersionData);
  EXPECT_EQ(h.title(), "Upload active");
}

// What a read brings is logged as it came, so only the READ lines may differ between pieces.
Lines withoutReadLines(const Lines& events) {
  Lines kept;
  for (const auto& e : events)
    if (e.rfind("log READ: ", 0) != 0) kept.push_back(e);
  return kept;
}

// Each acknowledgement below is one character, so that cutting the replies into pieces cannot
// turn one read into two: a read's last character decides, which the send tests cover.
TEST(TransferEngine, RepliesInPiecesGiveTheSameOutcomeAsWholeReplies) {
  const std::string a(64, 'A'),
      full = "0123456789ABCDEF0123456789ABCDEF0123456789ABCDEF0123456789ABCDEF";
  struct Script {
    TransferJob job;
    Steps steps;
    std::string wire;  // the whole exchange, written out
    std::string received;
  };
  const std::vector<Script> scripts = {
      {sendJob(a + "B", "M0041"),
       // A second sign-in round; any other reply to the start identifier is repeated once, and
       // whatever answers the repeat, the blocks follow.
       Steps{startAt(0), bytesAt(100, "x"), deadlineAt(1100), bytesAt(1200, "y" + ACK),
             deadlineAt(2200), bytesAt(2300, "z"), bytesAt(2400, NAK), bytesAt(2500, NAK),
             bytesAt(2600, ACK), bytesAt(2700, ACK), bytesAt(2750, ACK)},
       "????M0041M0041" + a + "00" + a + "00" + "B42", ""},
      {readJob('m', "Messages"),
       Steps{startAt(0), bytesAt(100, "?" + ACK + "?"), deadlineAt(1100), bytesAt(1200, "xM0042"),
             bytesAt(1300, full + "01"), bytesAt(1400, full + "00"),
             bytesAt(1500, "Z" + EOB + "A7")},
       "??M" + ACK + NAK + ACK + ACK, full + "Z" + EOB},
  };
  for (const Script& script : scripts) {
    SCOPED_TRACE(script.job.contentLabel);
    Harness whole(script.job);
    whole.run(script.steps);
    EXPECT_EQ(whole.wire, script.wire);
    EXPECT_EQ(whole.engine().outcome().receivedText(), script.received);
    EXPECT_EQ(whole.comment(), "done");
    for (const std::size_t piece : {1U, 2U, 3U, 5U, 65U}) {
      Harness pieces(script.job);
      pieces.run(script.steps, piece);
      EXPECT_EQ(pieces.wire, whole.wire) << piece;
      EXPECT_EQ(withoutReadLines(pieces.events), withoutReadLines(whole.events)) << piece;
      EXPECT_EQ(pieces.engine().outcome().received, whole.engine().outcome().received) << piece;
      EXPECT_EQ(pieces.title(), whole.title()) << piece;
    }
  }
}

TEST(TransferEngineRead, WrongChecksumIsAnsweredWithNakAndReadAgain) {
  Harness h(readJob('v', "Version"));
  h.signIn();
  // The comparison is case-sensitive: lower-case digits are wrong too.
  h.run({bytesAt(1200, "V000F"), bytesAt(1300, kVersionData + "F5"),
         bytesAt(1400, kVersionData + "f4"), bytesAt(1500, kVersionData + kVersionSum)});
  EXPECT_EQ(h.wire, "V" + ACK + NAK + NAK + ACK);
  EXPECT_EQ(h.only("log SCHREIBEN:"),
            (Lines{"log SCHREIBEN: <21>", "log SCHREIBEN: <21>", "log SCHREIBEN: <6>"}));
  EXPECT_EQ(h.engine().outcome().received[0], kVersionData);
  EXPECT_EQ(h.comment(), "done");
}

TEST(TransferEngineRead, CountReplyIsTheFourCharactersAfterTheLetter) {
  const std::string denied = "box Terminal: Option <Phone numbers> ist nicht implementiert";
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"T0A3C", "count 2620"},
      {"xyT0010", "count 16"},
      {"T00ff", "count 255"},
      // Refusals show the German text whatever the language, and leave the title alone.
      {NAK, denied},
      {"T00" + NAK, denied},
      {"T0000", denied}};
  for (const auto& [reply, shown] : rows) {
    SCOPED_TRACE(visible(reply));
    Harness h(readJob('t', "Phone numbers"));
    h.signIn();
    h.bytes(reply, 1200);
    EXPECT_EQ(h.wire, "T" + ACK);
    EXPECT_EQ(h.only("count", "box"), Lines{shown});
    if (shown == denied) {
      EXPECT_EQ(h.comment(), "Denied");
      EXPECT_EQ(h.only("title"), Lines{});
      EXPECT_EQ(h.result(), 0);
      EXPECT_EQ(h.engine().outcome().receivedText(), "");
    }
  }
}

// How a transfer ends once signed in (the start identifier or request letter left at 1100, so
// the reply wait counts from 1000 and times out at 22000).
TEST(TransferEngine, EndingsAfterTheSignIn) {
  struct Row {
    const char* name;
    TransferJob job;
    Steps steps;
    std::string wire;
    Lines boxesAndTitles;
    std::string comment;  // empty: not checked
    int result;
  };
  const std::string a(64, 'A'), sent = "M0041" + a + "00",
                                five = "box Terminal: Transfer ok, but no final confirmation  [!]";
  const TransferJob send = sendJob(a + "B", "M0041"), read = readJob('v', "Version");
  const Lines timeout = {"box : Timeout", "title No response", "title Timeout"};
  // A module gone quiet while we send is "No response", not the user's Cancel.
  const Lines sendTimeout = {"box : Timeout", "title No response"};
  const std::vector<Row> rows = {
      {"replyJustInTime", sendJob("AB"),
       Steps{deadlineAt(21999), bytesAt(21999, ACK), bytesAt(22000, ACK), bytesAt(22050, ACK)},
       "M0002AB03", Lines{}, "done", 0},
      {"replyTooLate", sendJob("AB"), Steps{deadlineAt(21999), bytesAt(22000, ACK)}, "M0002",
       sendTimeout, "Cancel", 6},
      {"silenceAfterABlock", send, Steps{bytesAt(2000, ACK), deadlineAt(22999), deadlineAt(23000)},
       sent, sendTimeout, "Cancel", 6},
      // After the one repeat of the start identifier the blocks follow, even when its reply
      // never came; the title still tells of the silence.
      {"repeatOfTheStartIdentifierUnanswered", sendJob("AB"),
       Steps{bytesAt(1200, "x"), deadlineAt(21999), deadlineAt(22000), bytesAt(22100, ACK),
             bytesAt(22200, ACK)},
       "M0002M0002AB03", sendTimeout, "done", 6},
      {"cancelWhileSending", send, Steps{bytesAt(2000, ACK), cancelAt(2050)}, sent,
       Lines{"title Cancel"}, "Cancel", 3},
      {"linkLostWhileSending", send, Steps{bytesAt(2000, ACK), linkLostAt(2050)}, sent, sendTimeout,
       "Cancel", 6},
      // Message 5 when the final confirmation is missing, and still done.
      {"finalConfirmationRefused", sendJob("AB"),
       Steps{bytesAt(2000, ACK), bytesAt(2100, ACK), bytesAt(2200, NAK)}, "M0002AB03", Lines{five},
       "done", 0},
      {"finalConfirmationMissing", sendJob("AB"),
       Steps{bytesAt(2000, ACK), bytesAt(2100, ACK), deadlineAt(23000)}, "M0002AB03",
       Lines{"box : Timeout", "title No response", five, "title Download active"}, "done", 0},
      {"noCount", read, Steps{deadlineAt(21999), deadlineAt(22000)}, "V" + ACK,
       Lines{"box : Timeout", "title No response",
             "box Terminal: Option <Version> ist nicht implementiert"},
       "Denied", 6},
      {"noBlock", read, Steps{bytesAt(1200, "V000F"), deadlineAt(22000)}, "V" + ACK, timeout, "",
       4},
      // Every piece starts a new wait: 2300 counts from 2000.
      {"silenceInsideABlock", read,
       Steps{bytesAt(1200, "V000F"), bytesAt(2300, "007B"), deadlineAt(22000), deadlineAt(22999),
             deadlineAt(23000)},
       "V" + ACK, timeout, "", 4},
      // The checksum characters after an end mark have no time-out; a lost link still ends it.
      {"linkLostBeforeTheChecksum", read,
       Steps{bytesAt(1200, "V000F"), bytesAt(1300, kVersionData), deadlineAt(86000000),
             linkLostAt(86000001)},
       "V" + ACK, timeout, "", 4},
      {"cancelledRead", read, Steps{bytesAt(1200, "V000F"), cancelAt(1250)}, "V" + ACK,
       Lines{"title Cancel"}, "", 3},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Harness h(row.job);
    h.signIn();
    h.run(row.steps);
    EXPECT_EQ(h.only("box", "title"), row.boxesAndTitles);
    EXPECT_EQ(h.wire, row.wire);
    EXPECT_EQ(h.only("busy"), Lines{"busy off"});
    EXPECT_EQ(h.events.back(), "finished");
    if (!row.comment.empty()) {
      EXPECT_EQ(h.comment(), row.comment);
    }
    EXPECT_EQ(h.result(), row.result);
    // Nothing more happens once it is over.
    h.forget();
    h.run({bytesAt(30000, ACK), deadlineAt(40000)});
    EXPECT_EQ(h.wire, "");
    EXPECT_EQ(h.events, Lines{});
    EXPECT_EQ(h.due(), std::nullopt);
  }
}

// A module may end every block with the end mark, not only the last. The count covers every
// character but the checksums; the data the upload parsers see lose all but the last mark.
TEST(TransferEngineRead, EveryBlockEndedByTheEndMark) {
  // AB<253>: 41 ^ 42 ^ FD = FE; CD<253>: 43 ^ 44 ^ FD = FA.
  const std::string first = "AB" + EOB + "FE", second = "CD" + EOB + "FA";
  Harness h(readJob('l', "Reading Logger"));
  h.signIn();
  h.run({bytesAt(1200, "L0006"), bytesAt(1300, first), bytesAt(1400, second)});
  EXPECT_EQ(h.wire, "L" + ACK + ACK + ACK);
  EXPECT_EQ(h.comment(), "done");
  EXPECT_EQ(h.engine().outcome().received[0], "AB" + EOB + "CD" + EOB);
  EXPECT_EQ(receivedDataText(h.engine().outcome()), "ABCD" + EOB);
  // What one read brought is logged whole, the checksum characters after the mark included;
  // characters read after the mark show only in the block's own line.
  EXPECT_EQ(h.only("log"),
            (Lines{"log READ: L0006", "log WRITE: <6>", "log READ: AB<253>FE",
                   "log LESEN: AB<253>FE", "log SCHREIBEN: <6>", "log READ: CD<253>FA",
                   "log LESEN: CD<253>FA", "log SCHREIBEN: <6>"}));

  Harness split(readJob('l', "Reading Logger"));
  split.signIn();
  split.run({bytesAt(1200, "L0006"), bytesAt(1300, "AB" + EOB), bytesAt(1310, "FE"),
             bytesAt(1400, second)});
  EXPECT_EQ(split.only("log READ:", "log LESEN:"),
            (Lines{"log READ: L0006", "log READ: AB<253>", "log LESEN: AB<253>FE",
                   "log READ: CD<253>FA", "log LESEN: CD<253>FA"}));
  EXPECT_EQ(receivedDataText(split.engine().outcome()), "ABCD" + EOB);
}

TEST(TransferEngineRead, AFullReceiveBoxPassesOnToTheNext) {
  // 250 blocks of 64 characters fill the first box to exactly 16000 characters.
  Harness h(readJob('m', "Messages"));
  h.signIn();
  h.bytes("M3E82", 1200);  // 16002 characters
  for (int i = 0; i < 250; ++i) h.bytes(std::string(64, 'x') + "00", 1300);
  EXPECT_FALSE(h.engine().finished());
  h.bytes("Z" + EOB + "A7", 1400);
  const auto& received = h.engine().outcome().received;
  EXPECT_EQ(received[0].size(), 16000U);
  EXPECT_EQ(received[1], "Z" + EOB);
  EXPECT_EQ(h.only("received 1"), Lines{"received 1 Z<253>"});
  EXPECT_EQ(h.wire, "M" + ACK + std::string(251, '\x06'));
  EXPECT_EQ(h.comment(), "done");
}

// A block cut off by the time-out is logged as each piece came, and never as a block; a piece
// that arrives as the wait runs out comes too late to be read or logged.
TEST(TransferEngineRead, PartialBlockAtTheTimeOutIsLoggedAsItCame) {
  Harness h(readJob('v', "Version"));
  h.signIn();
  h.run({bytesAt(1200, "V000F"), bytesAt(1300, "007B"), bytesAt(1400, "09"), bytesAt(22000, "03")});
  EXPECT_EQ(h.only("log"),
            (Lines{"log READ: V000F", "log WRITE: <6>", "log READ: 007B", "log READ: 09"}));
  EXPECT_EQ(h.only("box", "title"), (Lines{"box : Timeout", "title No response", "title Timeout"}));
  EXPECT_EQ(h.engine().outcome().receivedText(), "");
  EXPECT_EQ(h.result(), 4);
}

}  // namespace
}  // namespace quillon::testing
