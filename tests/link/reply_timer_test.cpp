#include <gtest/gtest.h>

#include "engine_harness.h"
#include "link/reply_timer.h"

namespace quillon::testing {
namespace {

struct TimerRow {
  const char* name;
  TimeOfDay begin;
  TimeOfDay firstDeadline;
  std::vector<std::pair<TimeOfDay, bool>> probes;  // moment, timed out
};

class ReplyTimeout : public ::testing::TestWithParam<TimerRow> {};

TEST_P(ReplyTimeout, CountsFromTheWholeSecond) {
  const auto& row = GetParam();
  ReplyTimer timer;
  timer.start(row.begin, 20000);
  EXPECT_EQ(timer.deadline(), row.firstDeadline);
  for (const auto& [at, out] : row.probes) EXPECT_EQ(timer.expired(at), out) << "at " << at;
}

INSTANTIATE_TEST_SUITE_P(
    Rows, ReplyTimeout,
    ::testing::Values(
        TimerRow{"twentySecondsAfterAWholeSecondStillWaits", 10000, 31000, {{30000, false}}},
        TimerRow{"theTwentyFirstSecondStillWaits", 10000, 31000, {{30999, false}}},
        TimerRow{"twentyOneSecondsHaveTimedOut", 10000, 31000, {{31000, true}}},
        TimerRow{"halfwayIntoASecondWaitsTwentySecondsLessOneMillisecond",
                 10500,
                 31000,
                 {{30499, false}, {30999, false}}},
        TimerRow{"halfwayIntoASecondTimedOutAfterTwentyOne", 10500, 31000, {{31500, true}}},
        // Begun at x.999 the wait still lasts just over 20 seconds: it ends at x+21.000.
        TimerRow{"lateInASecondStillWaitsTwentySecondsLessOneMillisecond",
                 10999,
                 31000,
                 {{30998, false}}},
        TimerRow{"lateInASecondTimesOutAfterJustOverTwentySeconds", 10999, 31000, {{31000, true}}},
        TimerRow{"midnightMovesTheStartToTheNewDay",
                 86395500,
                 86400000,
                 {{86399999, false}, {3, false}, {20999, false}, {21000, true}}},
        TimerRow{"firstLookAfterMidnightLate",
                 86399000,
                 86400000,
                 {{2500, false}, {22999, false}, {23000, true}}}),
    [](const auto& p) { return std::string(p.param.name); });

struct EngineTimeRow {
  const char* name;
  TimeOfDay replyAt;
  bool timedOut;
};

class EngineReplyTime : public ::testing::TestWithParam<EngineTimeRow> {};

// The start identifier goes out at 10.999 s, so its wait counts from 10.000 s.
TEST_P(EngineReplyTime, AReplyAtTheBoundary) {
  Harness h(sendJob("AB"));
  h.start(9800);
  h.bytes(ACK, 9999);
  h.deadline(10999);
  h.forget();
  EXPECT_EQ(h.wire, "");
  EXPECT_EQ(h.due(), 31000);
  h.deadline(30999);
  EXPECT_EQ(h.events, std::vector<std::string>{});
  h.bytes(ACK, GetParam().replyAt);
  if (GetParam().timedOut) {
    EXPECT_EQ(h.only("box"), std::vector<std::string>{"box : Timeout"});
    EXPECT_EQ(h.engine().outcome().title, "Cancel");
    EXPECT_EQ(h.wire, "");
  } else {
    EXPECT_EQ(h.only("reply"), std::vector<std::string>{"reply [ACK]"});
    EXPECT_EQ(h.wire, "AB03");
  }
}

INSTANTIATE_TEST_SUITE_P(Rows, EngineReplyTime,
                         ::testing::Values(EngineTimeRow{"lastMomentIsInTime", 30999, false},
                                           EngineTimeRow{"oneMillisecondLateTimedOut", 31000,
                                                         true}),
                         [](const auto& p) { return std::string(p.param.name); });

TEST(EngineReplyTime, ASignInAcrossMidnightEndsTwentySecondsIntoTheNewDay) {
  Harness h(sendJob("AB"));
  h.start(86399000);
  EXPECT_EQ(h.due(), 86400000);
  h.deadline(0);
  EXPECT_EQ(h.events.size(), 3U);  // only what the start reported
  EXPECT_EQ(h.due(), 21000);
  h.deadline(20999);
  EXPECT_EQ(h.only("box"), std::vector<std::string>{});
  h.deadline(21000);
  EXPECT_EQ(h.only("box"),
            (std::vector<std::string>{"box : Timeout", "box Terminal: Telvane not ready"}));
}

TEST(EngineReplyTime, PauseAcrossMidnightLastsOneSecond) {
  Harness h(sendJob("AB"));
  h.start(86399000);
  h.bytes(ACK, 86399500);
  EXPECT_EQ(h.due(), 86400500);
  h.deadline(499);
  EXPECT_EQ(h.wire, "??");
  h.deadline(500);
  EXPECT_EQ(h.wire, "??M0002");
}

TEST(EngineReplyTime, ShorterReplyTimeoutFromTheSettings) {
  EngineSettings settings;
  settings.replyTimeout = 2000;
  Harness h(sendJob("AB"), settings);
  h.start(4321);
  EXPECT_EQ(h.due(), 7000);
}

}  // namespace
}  // namespace quillon::testing
