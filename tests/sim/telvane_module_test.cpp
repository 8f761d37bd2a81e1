// The simulated module driven by scripted bytes and times; every answer is written out by hand.

#include "sim/telvane_module.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

namespace quillon::sim {
namespace {

using namespace std::string_literals;

// Wire bytes restated: 182 fills and separates fields, 253 ends an image and every block.
const std::string F = "\xB6";
const std::string E = "\xFD";

// A step feeds bytes at a time, or with no bytes serves the deadline at that time, and names
// what the module must have written afterwards.
struct Step {
  SimTime at;
  std::string in;
  std::string out;
};

struct Script {
  const char* name;
  ModuleConfig config;
  std::vector<Step> steps;
  std::string logger = "L1\rL2\r";
};

void PrintTo(const Script& script, std::ostream* os) { *os << script.name; }

ModuleConfig with(void (*change)(ModuleConfig&)) {
  ModuleConfig config;
  change(config);
  return config;
}

// 64 data characters, '?' included, whose XOR is 0x00 (0xFD with the end-of-block character).
const std::string k64 = "0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]^_`abcdefghijklmno";

const std::vector<Script>& scripts() {
  static const std::vector<Script> all = {
      {"SignInAnsweredWithAck", {}, {{0, "??", "\x06"}}},
      {"SignInSplitOverTwoReads", {}, {{0, "?", ""}, {1, "?", "\x06"}}},
      {"LoneQuestionMarkForgotten", {}, {{0, "?", ""}, {30, "", ""}, {40, "??", "\x06"}}},
      {"VersionOfADefaultTelvane",
       {},
       {{0, "??", "\x06"},
        {1000, "V", "V000F"},
        {1001, "\x06", "007B090300003E"s + E + "F4"},
        {1002, "\x06", ""}}},
      {"VersionOfAnotherModule",
       with([](ModuleConfig& c) {
         c.firmware = 2;
         c.bus = 4;
         c.deviceType = 1;
         c.messages = 400;
         c.phones = 20;
       }),
       {{0, "V", "V000F"}, {1, "\x06", "00020401010016"s + E + "FC"}}},
      {"BareKindLetterIsARequestAfterTheGap",
       {},
       {{0, "P", ""},
        {29, "", ""},
        {30, "", "P0009"},
        {31, "\x06", "00"s + F + "0000" + F + E + "FD"},
        {32, "\x06", ""}}},
      {"KindLetterFollowedByNonDigitIsARequest",
       {},
       {{0, "Y\x06", "Y0005"s + F + "00" + F + E + "FD"}}},
      {"DownloadStoredAndReadBack",
       {},
       {{0, "P0009", "\x06"},
        {5, "00"s + F + "1234" + F + E + "F9", "\x06"},
        {54, "", ""},
        {55, "", "\x06"},
        {100, "P", ""},
        {130, "", "P0009"},
        {131, "\x06", "00"s + F + "1234" + F + E + "F9"}}},
      // Only the last block from the module holds the 253; the others are 64 characters and
      // the checksum, and the PC's receive boxes hold exactly the image.
      {"SixtyFiveCharactersAreTwoBlocksEachWay",
       {},
       {{0, "M0041", "\x06"},
        {1, k64 + "00", "\x06"},
        {2, E + "FD", "\x06"},
        {52, "", "\x06"},
        {60, "M", ""},
        {90, "", "M0041"},
        {91, "\x06", k64 + "00"},
        {92, "\x06", E + "FD"},
        {93, "\x06", ""}}},
      {"EmptyMessagesImageIsAnnouncedWhole", {}, {{0, "M", ""}, {30, "", "M00D9"}}},
      {"LoggerOfOneFullBlockGetsAnEndBlock",
       {},
       {{0, "L", "L0041"}, {1, "\x06", k64 + "00"}, {2, "\x06", E + "FD"}},
       k64},
      {"WrongChecksumAnsweredWithNak",
       {},
       {{0, "P0001", "\x06"}, {1, "A42", "\x15"}, {2, "A41", "\x06"}, {52, "", "\x06"}}},
      {"LowerCaseChecksumIsWrong",
       {},
       {{0, "P0001", "\x06"}, {1, "z7a", "\x15"}, {2, "z7A", "\x06"}}},
      {"NakEverySecondBlock",
       with([](ModuleConfig& c) { c.nakEvery = 2; }),
       {{0, "P0041", "\x06"}, {1, k64 + "00", "\x06"}, {2, "p70", "\x15"}, {3, "p70", "\x06"}}},
      {"NakOnUploadRepeatsTheBlock",
       {},
       {{0, "V", "V000F"},
        {1, "\x06", "007B090300003E"s + E + "F4"},
        {2, "\x15", "007B090300003E"s + E + "F4"},
        {3, "\x06", ""}}},
      {"CorruptEveryBlockSent",
       with([](ModuleConfig& c) { c.corruptEvery = 1; }),
       {{0, "V", "V000F"},
        {1, "\x06", "007B090300003E"s + E + "F5"},
        {2, "\x15", "007B090300003E"s + E + "F5"}}},
      {"SilentFromTheStart",
       with([](ModuleConfig& c) { c.silentAfter = 0; }),
       {{0, "??", ""}, {1, "V", ""}}},
      {"SilentAfterOneBlock",
       with([](ModuleConfig& c) { c.silentAfter = 1; }),
       {{0, "M0041", "\x06"}, {1, k64 + "00", "\x06"}, {2, "p70", ""}, {3, "??", ""}}},
      {"RefusedRequestAndIdentifier",
       with([](ModuleConfig& c) { c.refuse = "VP"; }),
       {{0, "V", "\x15"}, {1, "P0009", "\x15"}, {2, "Y", ""}, {32, "", "Y0005"}}},
      {"UnknownLetterRefused", {}, {{0, "X", "\x15"}}},
      {"PartialIdentifierRefusedAfterTheGap", {}, {{0, "M00", ""}, {30, "", "\x15"}}},
      {"StalledDownloadForgottenAfterFiveSeconds",
       {},
       {{0, "P0009", "\x06"},
        {10, "00", ""},
        {5009, "", ""},
        {5010, "", ""},
        {5011, "??", "\x06"}}},
      {"NewSignInAbandonsAnUpload",
       {},
       {{0, "V", "V000F"}, {1, "\x06", "007B090300003E"s + E + "F4"}, {2, "??", "\x06"}}},
      {"LoggerServedAsItIs", {}, {{0, "L", "L0007"}, {1, "\x06", "L1\rL2\r"s + E + "FE"}}},
      {"EmptyDownloadAcknowledgedOnly", {}, {{0, "P0000", "\x06"}, {100, "??", "\x06"}}},
  };
  return all;
}

class ModuleScript : public ::testing::TestWithParam<Script> {};

TEST_P(ModuleScript, AnswersExactly) {
  const Script& script = GetParam();
  ModuleMemory memory(script.config.messages, script.config.phones);
  TelvaneModule module(script.config, memory, script.logger);
  for (std::size_t i = 0; i < script.steps.size(); ++i) {
    const Step& step = script.steps[i];
    if (step.in.empty()) {
      const auto due = module.deadline();
      if (due && *due <= step.at) module.onDeadline(step.at);
    } else {
      module.onBytes(step.in, step.at);
    }
    EXPECT_EQ(module.takeOutgoing(), step.out) << "step " << i << " at " << step.at;
  }
}

INSTANTIATE_TEST_SUITE_P(Scripts, ModuleScript, ::testing::ValuesIn(scripts()),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(ModuleScript, WholeExchangeInOneReadGivesTheSameAnswers) {
  ModuleMemory memory(100, 60);
  TelvaneModule module({}, memory, "");
  module.onBytes("??P000900"s + F + "1234" + F + E + "F9", 0);
  EXPECT_EQ(module.takeOutgoing(), "\x06\x06\x06");
  module.onDeadline(50);
  EXPECT_EQ(module.takeOutgoing(), "\x06");
  EXPECT_TRUE(module.takeMemoryChanged());
  EXPECT_FALSE(module.takeMemoryChanged());
  EXPECT_EQ(memory.image('P'), "00"s + F + "1234" + F + E);
}

TEST(ModuleScript, DeadlineOnlyWhileSomethingIsDue) {
  ModuleMemory memory(100, 60);
  TelvaneModule module({}, memory, "");
  EXPECT_FALSE(module.deadline());
  module.onBytes("M", 100);
  EXPECT_EQ(module.deadline(), 130);
  module.onBytes("0", 110);
  EXPECT_EQ(module.deadline(), 140);
  module.onBytes("003", 120);
  EXPECT_EQ(module.deadline(), 120 + 5000);  // receiving: the stall reset
}

TEST(ModuleScript, BaudStretchesTheStallResetPastTheReply) {
  ModuleConfig config;
  config.baud = 100;  // 100 ms a byte
  ModuleMemory memory(100, 60);
  TelvaneModule module(config, memory, "");
  module.onBytes("V", 0);
  module.onBytes("\x06", 10);
  // 17 bytes of block take 1.7 s on the line; the PC cannot answer before they are out.
  const auto due = module.deadline();
  ASSERT_TRUE(due);
  EXPECT_GE(*due, 10 + 1700 + 5000);
}

}  // namespace
}  // namespace quillon::sim
