#include <gtest/gtest.h>

#include "engine_harness.h"
#include "link/sign_in.h"

namespace quillon::testing {
namespace {

using Lines = std::vector<std::string>;

TEST(TransferEngineSend, DownloadOfTwoCharactersStepByStep) {
  Harness h(sendJob("AB", "M0002"));
  h.start(1000);
  EXPECT_EQ(h.wire, "??");
  h.bytes(ACK, 1200);
  EXPECT_EQ(h.due(), 2200);  // the one-second pause after the answer
  h.deadline(2199);
  EXPECT_EQ(h.wire, "??");
  h.deadline(2200);
  h.bytes(ACK, 2300);
  h.bytes(ACK, 2400);
  EXPECT_FALSE(h.engine().finished());  // the final confirmation comes separately
  h.bytes(ACK, 2450);

  EXPECT_EQ(h.wire, "??M0002AB03");
  EXPECT_EQ(h.events, (Lines{
                          "comment Sign in ...",
                          "progress 0",
                          "log WRITE: ??",
                          "log READ: <6>",
                          "comment Com open",
                          "busy on",
                          "comment Start identifier ...",
                          "log WRITE: M0002",
                          "log READ: <6>",
                          "reply [ACK]",
                          "comment Sending data block by block...",
                          "block AB | 30",
                          "log WRITE: AB03",
                          "progress 100",
                          "log READ: <6>",
                          "reply [ACK]",
                          "log READ: <6>",
                          "reply [ACK]",
                          "status Download done",
                          "comment done",
                          "busy off",
                          "finished",
                      }));
  EXPECT_TRUE(h.engine().finished());
  EXPECT_EQ(h.engine().outcome().title, "Download active");
  EXPECT_EQ(h.due(), std::nullopt);
}

TEST(TransferEngineSignIn, SecondRoundSucceedsAfterAnAnswerWithoutAck) {
  Harness h(sendJob("AB"));
  h.start(1000);
  h.bytes("x", 1500);
  EXPECT_EQ(h.fire(), 2500);
  EXPECT_EQ(h.wire, "????");
  h.bytes(ACK, 2600);
  EXPECT_EQ(h.fire(), 3600);
  EXPECT_EQ(h.wire, "????M0002");
  EXPECT_EQ(h.only("comment"),
            (Lines{"comment Sign in ...", "comment Com open", "comment Start identifier ..."}));
  EXPECT_EQ(h.only("box"), Lines{});
}

TEST(TransferEngineSignIn, AnAckAnywhereInTheAnswerCounts) {
  Harness h(sendJob("AB"));
  h.start(0);
  h.bytes("xy", 100);
  h.bytes(ACK + "z", 900);  // still inside the pause
  h.fire();
  EXPECT_EQ(h.wire, "??M0002");
}

struct SignInFailureRow {
  const char* name;
  int language;
  std::string portError;
  std::vector<Step> steps;
  Lines boxes;
  Lines titles;
  std::string wire;
};

class SignInFailure : public ::testing::TestWithParam<SignInFailureRow> {};

TEST_P(SignInFailure, EndsWithNoConnectionAndItsBox) {
  const auto& row = GetParam();
  EngineSettings settings;
  settings.language = row.language;
  Harness h(sendJob("AB"), settings);
  h.engine().setPortErrorText(row.portError);
  h.run(row.steps);
  EXPECT_EQ(h.only("box"), row.boxes);
  EXPECT_EQ(h.only("title"), row.titles);
  EXPECT_EQ(h.wire, row.wire);
  EXPECT_EQ(h.engine().comment(), "No connection");
  EXPECT_TRUE(h.engine().finished());
  EXPECT_EQ(TransferResultForTitle(h.engine().outcome().title), 5);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, SignInFailure,
    ::testing::Values(SignInFailureRow{"twoAnswersWithoutAck",
                                       0,
                                       "",
                                       {startAt(0), bytesAt(100, "x"), deadlineAt(1100),
                                        bytesAt(1200, "y"), deadlineAt(2200)},
                                       {"box Terminal: Error "},
                                       {"title No connection"},
                                       "????"},
                      SignInFailureRow{"portErrorTextInTheBox",
                                       0,
                                       "Device busy",
                                       {startAt(0), bytesAt(100, "x"), deadlineAt(1100),
                                        bytesAt(1200, "y"), deadlineAt(2200)},
                                       {"box Terminal: Error Device busy"},
                                       {"title No connection"},
                                       "????"},
                      SignInFailureRow{"silentModule",
                                       0,
                                       "",
                                       {startAt(500), deadlineAt(21000)},
                                       {"box : Timeout", "box Terminal: Telvane not ready"},
                                       {"title No response", "title No connection"},
                                       "??"},
                      SignInFailureRow{"silentModuleGerman",
                                       1,
                                       "",
                                       {startAt(500), deadlineAt(21000)},
                                       {"box : Timeout", "box Terminal: Telvane nicht bereit"},
                                       {"title No response", "title No connection"},
                                       "??"},
                      SignInFailureRow{
                          "silentInTheSecondRound",
                          0,
                          "",
                          {startAt(0), bytesAt(100, "x"), deadlineAt(1100), deadlineAt(22000)},
                          {"box : Timeout", "box Terminal: Telvane not ready"},
                          {"title No response", "title No connection"},
                          "????"},
                      SignInFailureRow{"cancelledWhileWaiting",
                                       0,
                                       "",
                                       {startAt(0), cancelAt(700)},
                                       {"box Terminal: Aborted"},
                                       {"title Cancel", "title No connection"},
                                       "??"},
                      SignInFailureRow{"cancelledDuringThePause",
                                       1,
                                       "",
                                       {startAt(0), bytesAt(100, ACK), cancelAt(700)},
                                       {"box Terminal: abgebrochen"},
                                       {"title Cancel", "title No connection"},
                                       "??"},
                      SignInFailureRow{"linkLost",
                                       0,
                                       "",
                                       {startAt(0), linkLostAt(300)},
                                       {"box Terminal: Interface not active"},
                                       {"title No connection"},
                                       "??"}),
    [](const auto& p) { return std::string(p.param.name); });

struct BlockRow {
  const char* name;
  std::string text;
  std::string startIdentifier;
  std::string wire;  // after the sign-in
  Lines blocks;
  Lines progress;
};

class Blocks : public ::testing::TestWithParam<BlockRow> {};

TEST_P(Blocks, GoOutWithTheirChecksum) {
  const auto& row = GetParam();
  Harness h(sendJob(row.text, row.startIdentifier));
  h.signIn();
  h.ackAll(2000);
  EXPECT_EQ(h.wire, row.wire);
  EXPECT_EQ(h.only("block"), row.blocks);
  EXPECT_EQ(h.only("progress"), row.progress);
  EXPECT_EQ(h.engine().comment(), "done");
}

INSTANTIATE_TEST_SUITE_P(Rows, Blocks,
                         ::testing::Values(BlockRow{"exactly64CharactersAreOneBlock",
                                                    std::string(63, 'A') + "K",
                                                    "M0040",
                                                    "M0040" + std::string(63, 'A') + "K0A",
                                                    {"block " + std::string(63, 'A') + "K | A0"},
                                                    {"progress 100"}},
                                           BlockRow{"65CharactersGiveASecondBlockOfOne",
                                                    std::string(64, 'A') + "B",
                                                    "M0041",
                                                    "M0041" + std::string(64, 'A') + "00" + "B42",
                                                    {"block " + std::string(64, 'A') + " | 00",
                                                     "block B | 42"},
                                                    {"progress 98", "progress 100"}},
                                           BlockRow{"checksumTenIsSentAsZeroA",
                                                    "0:",
                                                    "P0002",
                                                    "P00020:0A",
                                                    {"block 0: | A0"},
                                                    {"progress 100"}},
                                           BlockRow{"twoDigitChecksumShownAsIs",
                                                    "Aa",
                                                    "T0002",
                                                    "T0002Aa20",
                                                    {"block Aa | 20"},
                                                    {"progress 100"}},
                                           BlockRow{"eightBitCharacter",
                                                    "\xFC",
                                                    "M0001",
                                                    "M0001\xFC"
                                                    "FC",
                                                    {"block <252> | FC"},
                                                    {"progress 100"}}),
                         [](const auto& p) { return std::string(p.param.name); });

struct StartReplyRow {
  const char* name;
  Lines replies;     // to the start identifier and its repeat
  std::string wire;  // after the sign-in, before the final confirmation
};

class StartIdentifierReply : public ::testing::TestWithParam<StartReplyRow> {};

TEST_P(StartIdentifierReply, AnythingButAckOrNakIsRepeatedExactlyOnce) {
  const auto& row = GetParam();
  Harness h(sendJob("AB"));
  h.signIn();
  TimeOfDay t = 2000;
  for (const auto& reply : row.replies) h.bytes(reply, t += 10);
  h.ackAll(3000);
  EXPECT_EQ(h.wire, row.wire);
  EXPECT_EQ(h.engine().comment(), "done");
  EXPECT_EQ(h.only("box"), Lines{});
}

INSTANTIATE_TEST_SUITE_P(
    Rows, StartIdentifierReply,
    ::testing::Values(StartReplyRow{"ackGoesOn", {ACK}, "M0002AB03"},
                      StartReplyRow{"otherThenOther", {"x", "y"}, "M0002M0002AB03"},
                      StartReplyRow{"otherThenNak", {"x", NAK}, "M0002M0002AB03"},
                      StartReplyRow{"otherThenAck", {"?", ACK}, "M0002M0002AB03"}),
    [](const auto& p) { return std::string(p.param.name); });

TEST(TransferEngineSend, StartIdentifierRefusedIsDeniedWithTitleUnchanged) {
  for (int language : {0, 1}) {
    EngineSettings settings;
    settings.language = language;
    Harness h(sendJob("AB"), settings);
    h.signIn();
    h.bytes(NAK, 2000);
    EXPECT_EQ(h.wire, "M0002");
    EXPECT_EQ(h.only("box"),
              Lines{language == 0 ? "box Terminal: Option <Messages> is not implemented"
                                  : "box Terminal: Option <Messages> ist nicht implementiert"});
    EXPECT_EQ(h.only("reply"), Lines{"reply [nak]"});
    EXPECT_EQ(h.engine().comment(), "Denied");
    EXPECT_EQ(h.only("title"), Lines{});
    EXPECT_EQ(TransferResultForTitle(h.engine().outcome().title), 0);
    EXPECT_TRUE(h.engine().finished());
  }
}

TEST(TransferEngineSend, EmptyDataStringSendsNothingAfterTheStartIdentifier) {
  Harness h(sendJob("", "M0000"));
  h.signIn();
  h.bytes(ACK, 2000);
  EXPECT_EQ(h.wire, "M0000");
  EXPECT_EQ(h.only("box"), Lines{"box Terminal: No data to transfer"});
  EXPECT_TRUE(h.engine().finished());
}

TEST(TransferEngineSend, FiveFailuresSpreadOverBlocksEndTheTransfer) {
  const std::string a(64, 'A'), b(64, 'B'), c(64, 'C');
  Harness h(sendJob(a + b + c, "M00C0"));
  h.signIn();
  TimeOfDay t = 2000;
  for (const std::string& r : Lines{ACK, NAK, NAK, ACK, NAK, "x", ACK, NAK}) h.bytes(r, t += 10);
  EXPECT_EQ(h.wire,
            "M00C0" + a + "00" + a + "00" + a + "00" + b + "00" + b + "00" + b + "00" + c + "00");
  EXPECT_EQ(h.only("box"), Lines{"box Terminal:  Aborted after 5 triials  [stop]"});
  EXPECT_EQ(h.only("title"), Lines{"title Cancel"});
  EXPECT_EQ(h.engine().comment(), "Cancel");
  EXPECT_TRUE(h.engine().cancelled());
  EXPECT_TRUE(h.engine().finished());
  EXPECT_EQ(TransferResultForTitle(h.engine().outcome().title), 3);
}

TEST(TransferEngineSend, FourFailuresDoNotEndIt) {
  const std::string a(64, 'A');
  Harness h(sendJob(a + "B", "M0041"));
  h.signIn();
  TimeOfDay t = 2000;
  for (const std::string& r : Lines{ACK, NAK, NAK, NAK, ACK, NAK, ACK, ACK}) h.bytes(r, t += 10);
  EXPECT_EQ(h.wire, "M0041" + a + "00" + a + "00" + a + "00" + a + "00" + "B42" + "B42");
  EXPECT_EQ(h.only("box"), Lines{});
  EXPECT_EQ(h.engine().comment(), "done");
}

TEST(TransferEngineSend, SecondDataStringCountsFailuresAfresh) {
  const std::string a(64, 'A');
  Harness h(sendJob(a, "M0041", "B"));
  h.signIn();
  TimeOfDay t = 2000;
  for (const std::string& r : Lines{ACK, NAK, NAK, NAK, NAK, ACK, NAK, ACK, ACK})
    h.bytes(r, t += 10);
  EXPECT_EQ(h.wire, "M0041" + a + "00" + a + "00" + a + "00" + a + "00" + a + "00" + "B42" + "B42");
  EXPECT_EQ(h.only("box"), Lines{});
  EXPECT_EQ(h.only("progress"), (Lines{"progress 100"}));
  EXPECT_EQ(h.engine().comment(), "done");
}

struct FinalRow {
  const char* name;
  std::vector<Step> afterLastBlock;
  Lines boxes;
  Lines titles;
};

class FinalConfirmation : public ::testing::TestWithParam<FinalRow> {};

TEST_P(FinalConfirmation, MissingGivesMessageFiveAndStillDone) {
  const auto& row = GetParam();
  Harness h(sendJob("AB"));
  h.signIn();
  h.bytes(ACK, 2000);
  h.bytes(ACK, 2100);
  h.forget();
  h.run(row.afterLastBlock);
  EXPECT_EQ(h.only("box"), row.boxes);
  EXPECT_EQ(h.only("title"), row.titles);
  EXPECT_EQ(h.only("status"), Lines{"status Download done"});
  EXPECT_EQ(h.engine().comment(), "done");
  EXPECT_EQ(TransferResultForTitle(h.engine().outcome().title), 0);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, FinalConfirmation,
    ::testing::Values(FinalRow{"otherCharacter",
                               {bytesAt(2200, NAK)},
                               {"box Terminal: Transfer ok, but no final confirmation  [!]"},
                               {}},
                      FinalRow{"silence",
                               {deadlineAt(23000)},
                               {"box : Timeout",
                                "box Terminal: Transfer ok, but no final confirmation  [!]"},
                               {"title No response", "title Download active"}}),
    [](const auto& p) { return std::string(p.param.name); });

TEST(TransferEngineSend, TimeOutWhileSendingEndsAsCancel) {
  Harness h(sendJob(std::string(64, 'A') + "B", "M0041"));
  h.signIn();
  h.bytes(ACK, 2000);
  EXPECT_EQ(h.due(), 23000);
  h.deadline(23000);
  EXPECT_EQ(h.only("box"), Lines{"box : Timeout"});
  EXPECT_EQ(h.only("title"), (Lines{"title No response", "title Cancel"}));
  EXPECT_EQ(h.engine().comment(), "Cancel");
  EXPECT_EQ(h.only("busy"), (Lines{"busy off"}));
  EXPECT_EQ(TransferResultForTitle(h.engine().outcome().title), 3);
}

TEST(TransferEngineSend, CancelMidTransferStopsEverything) {
  Harness h(sendJob(std::string(64, 'A') + "B", "M0041"));
  h.signIn();
  h.bytes(ACK, 2000);
  h.forget();
  h.cancel(2050);
  EXPECT_EQ(h.events, (Lines{"title Cancel", "comment Cancel", "busy off", "finished"}));
  h.bytes(ACK, 2100);
  h.deadline(40000);
  EXPECT_EQ(h.wire, "");
  EXPECT_EQ(h.events.size(), 4U);
  EXPECT_EQ(h.due(), std::nullopt);
  EXPECT_EQ(TransferResultForTitle(h.engine().outcome().title), 3);
}

TEST(TransferEngineSend, LinkLostWhileSendingEndsAsATimeOut) {
  Harness h(sendJob("AB"));
  h.signIn();
  h.linkLost(1500);
  EXPECT_EQ(h.only("box"), Lines{"box : Timeout"});
  EXPECT_EQ(h.only("title"), (Lines{"title No response", "title Cancel"}));
  EXPECT_TRUE(h.engine().finished());
}

}  // namespace
}  // namespace quillon::testing
