#include <gtest/gtest.h>

#include "engine_harness.h"
#include "link/sign_in.h"

namespace quillon::testing {
namespace {

using Lines = std::vector<std::string>;

// A version reply of 14 characters and the end-of-block character: 15 = 0x000F characters.
const std::string kVersionData = "007B090300003E" + EOB;
const std::string kVersionSum = "F4";

TEST(TransferEngineRead, VersionReadStepByStep) {
  Harness h(readJob('v', "Version"));
  h.start(0);
  h.bytes(ACK, 100);
  h.deadline(1100);
  EXPECT_EQ(h.wire, "??V");
  h.bytes("V000F", 1200);
  h.bytes(kVersionData + kVersionSum, 1300);

  EXPECT_EQ(h.wire, "??V" + ACK + ACK);
  EXPECT_EQ(h.events, (Lines{
                          "comment Sign in ...",
                          "progress 0",
                          "log WRITE: ??",
                          "log READ: <6>",
                          "comment  Reading Data ...",
                          "busy on",
                          "log WRITE: V",
                          "log READ: V000F",
                          "log WRITE: <6>",
                          "count 15",
                          "comment Reading data block by block...",
                          "log READ: 007B090300003E<253>",
                          "log LESEN: 007B090300003E<253>F4",
                          "blockread 007B090300003E<253> | F4",
                          "log SCHREIBEN: <6>",
                          "received 0 007B090300003E<253>",
                          "progress 100",
                          "busy off",
                          "status Download done",
                          "comment done",
                          "finished",
                      }));
  EXPECT_EQ(h.engine().outcome().received[0], kVersionData);
  EXPECT_EQ(h.engine().outcome().title, "Upload active");
}

TEST(TransferEngineRead, FullBlocksWithoutEndMarkThenTheLastBlock) {
  const std::string full = std::string("0123456789ABCDEF") + "0123456789ABCDEF" +
                           "0123456789ABCDEF" + "0123456789ABCDEF";
  Harness h(readJob('m', "Messages"));
  h.signIn();
  h.bytes("M0042", 1200);
  h.bytes(full + "00", 1300);
  EXPECT_EQ(h.only("blockread"), Lines{"blockread " + full + " | 00"});
  h.bytes("Z" + EOB + "A7", 1400);
  EXPECT_EQ(h.wire, "M" + ACK + ACK + ACK);
  EXPECT_EQ(h.engine().outcome().received[0], full + "Z" + EOB);
  EXPECT_EQ(h.only("progress"), (Lines{"progress 96", "progress 100"}));
  EXPECT_EQ(h.engine().comment(), "done");
}

struct ChecksumRow {
  const char* name;
  std::string firstSum;
};

class WrongChecksum : public ::testing::TestWithParam<ChecksumRow> {};

TEST_P(WrongChecksum, IsAnsweredWithNakAndReadAgain) {
  Harness h(readJob('v', "Version"));
  h.signIn();
  h.bytes("V000F", 1200);
  h.bytes(kVersionData + GetParam().firstSum, 1300);
  h.bytes(kVersionData + GetParam().firstSum, 1400);
  h.bytes(kVersionData + kVersionSum, 1500);
  EXPECT_EQ(h.wire, "V" + ACK + NAK + NAK + ACK);
  EXPECT_EQ(h.only("log SCHREIBEN:"),
            (Lines{"log SCHREIBEN: <21>", "log SCHREIBEN: <21>", "log SCHREIBEN: <6>"}));
  EXPECT_EQ(h.engine().outcome().received[0], kVersionData);
  EXPECT_EQ(h.engine().comment(), "done");
}

INSTANTIATE_TEST_SUITE_P(Rows, WrongChecksum,
                         ::testing::Values(ChecksumRow{"wrongDigits", "F5"},
                                           ChecksumRow{"lowerCaseDigitsCountAsWrong", "f4"}),
                         [](const auto& p) { return std::string(p.param.name); });

TEST(TransferEngineRead, RefusedRequestIsDeniedInGermanWithTitleUnchanged) {
  Harness h(readJob('p', "Configuration"));  // English window texts
  h.signIn();
  h.bytes(NAK, 1200);
  EXPECT_EQ(h.wire, "P" + ACK);
  EXPECT_EQ(h.only("box"), Lines{"box Terminal: Option <Configuration> ist nicht implementiert"});
  EXPECT_EQ(h.engine().comment(), "Denied");
  EXPECT_EQ(h.only("title"), Lines{});
  EXPECT_EQ(h.only("busy"), (Lines{"busy off"}));
  EXPECT_EQ(TransferResultForTitle(h.engine().outcome().title), 0);
  EXPECT_EQ(h.engine().outcome().receivedText(), "");
}

struct CountRow {
  const char* name;
  std::string reply;
  int count;  // 0: denied
};

class CountReply : public ::testing::TestWithParam<CountRow> {};

TEST_P(CountReply, IsTheFourCharactersAfterTheLetter) {
  Harness h(readJob('t', "Phone numbers"));
  h.signIn();
  h.bytes(GetParam().reply, 1200);
  EXPECT_EQ(h.wire, "T" + ACK);
  if (GetParam().count == 0) {
    EXPECT_EQ(h.engine().comment(), "Denied");
  } else {
    EXPECT_EQ(h.only("count"), Lines{"count " + std::to_string(GetParam().count)});
  }
}

INSTANTIATE_TEST_SUITE_P(Rows, CountReply,
                         ::testing::Values(CountRow{"plain", "T0A3C", 2620},
                                           CountRow{"noiseBeforeTheLetter", "xyT0010", 16},
                                           CountRow{"lowerCaseHexDigits", "T00ff", 255},
                                           CountRow{"nakBeforeTheDigitsAreComplete", "T00" + NAK,
                                                    0},
                                           CountRow{"zeroCount", "T0000", 0}),
                         [](const auto& p) { return std::string(p.param.name); });

struct ReadTimeoutRow {
  const char* name;
  std::vector<Step> steps;  // after the sign-in at 0, which ends at 1100
  Lines boxes;
  Lines titles;
  std::string wire;
  int result;
};

class ReadTimeout : public ::testing::TestWithParam<ReadTimeoutRow> {};

TEST_P(ReadTimeout, EndsTheRead) {
  const auto& row = GetParam();
  Harness h(readJob('v', "Version"));
  h.signIn();
  h.run(row.steps);
  EXPECT_EQ(h.only("box"), row.boxes);
  EXPECT_EQ(h.only("title"), row.titles);
  EXPECT_EQ(h.wire, row.wire);
  EXPECT_EQ(h.only("busy"), (Lines{"busy off"}));
  EXPECT_TRUE(h.engine().finished());
  EXPECT_EQ(TransferResultForTitle(h.engine().outcome().title), row.result);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, ReadTimeout,
    ::testing::Values(
        ReadTimeoutRow{"noCount",
                       {deadlineAt(21999), deadlineAt(22000)},
                       {"box : Timeout", "box Terminal: Option <Version> ist nicht implementiert"},
                       {"title No response"},
                       "V" + ACK,
                       6},
        ReadTimeoutRow{"noBlock",
                       {bytesAt(1200, "V000F"), deadlineAt(22000)},
                       {"box : Timeout"},
                       {"title No response", "title Timeout"},
                       "V" + ACK,
                       4},
        // Every piece starts a new wait: 2300 counts from 2000.
        ReadTimeoutRow{"silenceInsideABlock",
                       {bytesAt(1200, "V000F"), bytesAt(2300, "007B"), deadlineAt(22000),
                        deadlineAt(22999), deadlineAt(23000)},
                       {"box : Timeout"},
                       {"title No response", "title Timeout"},
                       "V" + ACK,
                       4},
        // The checksum characters after an end mark have no time-out; a lost link still ends it.
        ReadTimeoutRow{"linkLostBeforeTheChecksum",
                       {bytesAt(1200, "V000F"), bytesAt(1300, kVersionData), deadlineAt(86000000),
                        linkLostAt(86000001)},
                       {"box : Timeout"},
                       {"title No response", "title Timeout"},
                       "V" + ACK,
                       4}),
    [](const auto& p) { return std::string(p.param.name); });

TEST(TransferEngineRead, NoDeadlineWhileWaitingForTheChecksumCharacters) {
  Harness h(readJob('v', "Version"));
  h.signIn();
  h.bytes("V000F", 1200);
  h.bytes(kVersionData, 1300);
  EXPECT_EQ(h.due(), std::nullopt);
  h.bytes("F", 50000);
  h.bytes("4", 60000);
  EXPECT_EQ(h.engine().comment(), "done");
}

TEST(TransferEngineRead, CancelEndsAtOnceWithoutFurtherBoxes) {
  Harness h(readJob('v', "Version"));
  h.signIn();
  h.bytes("V000F", 1200);
  h.forget();
  h.cancel(1250);
  EXPECT_EQ(h.events, (Lines{"title Cancel", "busy off", "finished"}));
  EXPECT_EQ(h.wire, "");
  EXPECT_TRUE(h.engine().cancelled());
  EXPECT_EQ(TransferResultForTitle(h.engine().outcome().title), 3);
}

TEST(TransferEngineRead, AFullReceiveBoxPassesOnToTheNext) {
  // 250 blocks of 64 characters fill the first box to exactly 16000 characters.
  const std::string block(64, 'x');
  Harness h(readJob('m', "Messages"));
  h.signIn();
  h.bytes("M3E82", 1200);  // 16002 characters
  for (int i = 0; i < 250; ++i) h.bytes(block + "00", 1300);
  EXPECT_FALSE(h.engine().finished());
  h.bytes("Z" + EOB + "A7", 1400);
  const auto& received = h.engine().outcome().received;
  EXPECT_EQ(received[0].size(), 16000U);
  EXPECT_EQ(received[1], "Z" + EOB);
  EXPECT_EQ(h.only("received 1"), Lines{"received 1 Z<253>"});
  EXPECT_EQ(h.wire, "M" + ACK + std::string(251, '\x06'));
  EXPECT_EQ(h.engine().comment(), "done");
}

}  // namespace
}  // namespace quillon::testing
