#include <gtest/gtest.h>

#include "engine_harness.h"

namespace quillon::testing {
namespace {

const std::string kFull =
    std::string("0123456789ABCDEF") + "0123456789ABCDEF" + "0123456789ABCDEF" + "0123456789ABCDEF";

struct Script {
  const char* name;
  TransferJob job;
  std::vector<Step> steps;
  std::string wire;  // the whole exchange, written out
};

Script download() {
  return {
      "downloadWithNakAndOtherReplies",
      sendJob(std::string(64, 'A') + "B", "M0041"),
      {startAt(0), bytesAt(100, "x"), deadlineAt(1100), bytesAt(1200, "y" + ACK), deadlineAt(2200),
       bytesAt(2300, "z"), bytesAt(2400, NAK), bytesAt(2500, NAK), bytesAt(2600, ACK),
       // The last block's ACK and the final confirmation may reach us in one piece.
       bytesAt(2700, ACK + ACK)},
      "????M0041M0041" + std::string(64, 'A') + "00" + std::string(64, 'A') + "00" + "B42"};
}

Script upload() {
  return {
      "uploadWithChecksumRetry",
      readJob('m', "Messages"),
      {startAt(0), bytesAt(100, "?" + ACK + "?"), deadlineAt(1100), bytesAt(1200, "xM0042"),
       bytesAt(1300, kFull + "01"), bytesAt(1400, kFull + "00"), bytesAt(1500, "Z" + EOB + "A7")},
      "??M" + ACK + NAK + ACK + ACK};
}

class Chunking : public ::testing::TestWithParam<std::size_t> {};

TEST_P(Chunking, GivesTheSameOutcomeAsWholeReplies) {
  for (const Script& script : {download(), upload()}) {
    SCOPED_TRACE(script.name);
    Harness whole(script.job);
    whole.run(script.steps);
    Harness pieces(script.job);
    pieces.run(script.steps, GetParam());

    EXPECT_EQ(whole.wire, script.wire);
    EXPECT_EQ(whole.engine().comment(), "done");
    EXPECT_EQ(pieces.wire, whole.wire);
    EXPECT_EQ(pieces.events, whole.events);
    EXPECT_EQ(pieces.engine().outcome().received, whole.engine().outcome().received);
    EXPECT_EQ(pieces.engine().outcome().title, whole.engine().outcome().title);
  }
}

INSTANTIATE_TEST_SUITE_P(PieceSizes, Chunking, ::testing::Values(1, 2, 3, 5, 65),
                         [](const auto& p) { return "pieceOf" + std::to_string(p.param); });

}  // namespace
}  // namespace quillon::testing
