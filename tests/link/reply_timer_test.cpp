// The reply time-out counts whole seconds: more than 20 of them between the start and now.

#include <gtest/gtest.h>

#include "engine_harness.h"
#include "link/reply_timer.h"

namespace quillon::testing {
namespace {

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
      {"midnightMovesTheStartToTheNewDay", 86395500, 86400000,
       Probes{{86399999, false}, {3, false}, {20999, false}, {21000, true}}},
  };
  for (const Row& row : rows) {
    ReplyTimer timer;
    timer.start(row.begin, 20000);
    EXPECT_EQ(timer.deadline(), row.firstDeadline) << row.name;
    for (const auto& [at, out] : row.probes)
      EXPECT_EQ(timer.expired(at), out) << row.name << " at " << at;
  }
}

// The start identifier goes out at 10.999 s, so its wait counts from 10.000 s.
TEST(EngineReplyTime, AReplyAtTheBoundary) {
  for (const TimeOfDay replyAt : {30999, 31000}) {
    Harness h(sendJob("AB"));
    h.run({startAt(9800), bytesAt(9999, ACK), deadlineAt(10999)});
    h.forget();
    EXPECT_EQ(h.due(), 31000);
    h.deadline(30999);
    EXPECT_EQ(h.events, Lines{});
    h.bytes(ACK, replyAt);
    if (replyAt == 31000) {
      EXPECT_EQ(h.only("box"), Lines{"box : Timeout"});
      EXPECT_EQ(h.engine().outcome().title, "Cancel");
      EXPECT_EQ(h.wire, "");
    } else {
      EXPECT_EQ(h.only("reply"), Lines{"reply [ACK]"});
      EXPECT_EQ(h.wire, "AB03");
    }
  }
}

TEST(EngineReplyTime, ASignInAcrossMidnightEndsTwentyOneSecondsIntoTheNewDay) {
  Harness h(sendJob("AB"));
  h.start(86399000);
  EXPECT_EQ(h.due(), 86400000);
  h.deadline(0);
  EXPECT_EQ(h.events.size(), 3U);  // only what the start reported
  EXPECT_EQ(h.due(), 21000);
  h.deadline(20999);
  EXPECT_EQ(h.only("box"), Lines{});
  h.deadline(21000);
  EXPECT_EQ(h.only("box"), (Lines{"box : Timeout", "box Terminal: Telvane not ready"}));
}

TEST(EngineReplyTime, PauseAcrossMidnightLastsOneSecond) {
  Harness h(sendJob("AB"));
  h.run({startAt(86399000), bytesAt(86399500, ACK)});
  EXPECT_EQ(h.due(), 86400500);
  h.deadline(499);
  EXPECT_EQ(h.wire, "??");
  h.deadline(500);
  EXPECT_EQ(h.wire, "??M0002");
}

}  // namespace
}  // namespace quillon::testing
