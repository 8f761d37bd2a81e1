// The simulated module driven by scripted bytes and times, its memory, its command line and the
// paced line; every answer is written out by hand.

#include "sim/telvane_module.h"

#include <gtest/gtest.h>

#include "sim/module_memory.h"
#include "sim/paced_line.h"
#include "sim/sim_options.h"
#include "sim/write_splitter.h"

#include <string>
#include <vector>

namespace quillon::sim {
namespace {

using namespace std::string_literals;

// Wire bytes restated: 182 fills and separates fields, 253 ends an image and every block.
const std::string F = "\xB6";
const std::string E = "\xFD";
const std::string ACK = "\x06";
const std::string NAK = "\x15";

// Bytes fed at a time, or with no bytes the deadline served at that time, and what the module
// must have written afterwards.
struct At {
  SimTime at;
  std::string in;
  std::string out;
};

struct Script {
  const char* name;
  std::vector<At> steps;
  ModuleConfig config = {};
  std::string logger = "L1\rL2\r";
};

// 64 data characters, '?' included, whose XOR is 0x00 (0xFD with the end-of-block character).
const std::string k64 = "0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]^_`abcdefghijklmno";
const std::string kVersion = "007B090300003E"s + E + "F4";

TEST(TelvaneModule, AnswersEveryScriptExactly) {
  const std::vector<Script> scripts = {
      {"SignInSplitOverTwoReads", {At{0, "?", ""}, At{1, "?", ACK}}},
      {"VersionOfAnotherModule",
       {At{0, "V", "V000F"}, At{1, ACK, "00020401010016"s + E + "FC"}},
       ModuleConfig{
           .firmware = 2, .bus = 4, .deviceType = 1, .messages = 400, .phones = 20, .refuse = ""}},
      {"BareKindLetterIsARequestAfterTheGap",
       {At{0, "P", ""}, At{29, "", ""}, At{30, "", "P0009"},
        At{31, ACK, "00"s + F + "0000" + F + E + "FD"}, At{32, ACK, ""}}},
      {"KindLetterFollowedByNonDigitIsARequest",
       {At{0, "Y" + ACK, "Y0005"s + F + "00" + F + E + "FD"}}},
      {"DownloadStoredAndReadBack",
       {At{0, "P0009", ACK}, At{5, "00"s + F + "1234" + F + E + "F9", ACK}, At{54, "", ""},
        At{55, "", ACK}, At{100, "P", ""}, At{130, "", "P0009"},
        At{131, ACK, "00"s + F + "1234" + F + E + "F9"}}},
      // Only the last block from the module holds the 253; the others are 64 characters and
      // the checksum, and the PC's receive boxes hold exactly the image.
      {"SixtyFiveCharactersAreTwoBlocksEachWay",
       {At{0, "M0041", ACK}, At{1, k64 + "00", ACK}, At{2, E + "FD", ACK}, At{52, "", ACK},
        At{60, "M", ""}, At{90, "", "M0041"}, At{91, ACK, k64 + "00"}, At{92, ACK, E + "FD"},
        At{93, ACK, ""}}},
      {"LoggerOfOneFullBlockGetsAnEndBlock",
       {At{0, "L", "L0041"}, At{1, ACK, k64 + "00"}, At{2, ACK, E + "FD"}},
       {},
       k64},
      {"LoggerServedAsItIs", {At{0, "L", "L0007"}, At{1, ACK, "L1\rL2\r"s + E + "FE"}}},
      {"WrongOrLowerCaseChecksumAnsweredWithNak",
       {At{0, "P0001", ACK}, At{1, "z7B", NAK}, At{2, "z7a", NAK}, At{3, "z7A", ACK},
        At{53, "", ACK}}},
      {"NakEverySecondBlock",
       {At{0, "P0041", ACK}, At{1, k64 + "00", ACK}, At{2, "p70", NAK}, At{3, "p70", ACK}},
       ModuleConfig{.nakEvery = 2, .refuse = ""}},
      // A NAK from the PC gets the same block again.
      {"CorruptEveryBlockSent",
       {At{0, "V", "V000F"}, At{1, ACK, "007B090300003E"s + E + "F5"},
        At{2, NAK, "007B090300003E"s + E + "F5"}},
       ModuleConfig{.corruptEvery = 1, .refuse = ""}},
      {"SilentFromTheStart",
       {At{0, "??", ""}, At{1, "V", ""}},
       ModuleConfig{.silentAfter = 0, .refuse = ""}},
      {"SilentAfterOneBlock",
       {At{0, "M0041", ACK}, At{1, k64 + "00", ACK}, At{2, "p70", ""}, At{3, "??", ""}},
       ModuleConfig{.silentAfter = 1, .refuse = ""}},
      {"RefusedRequestsAndIdentifiers",
       {At{0, "V", NAK}, At{1, "P0009", NAK}, At{2, "X", NAK}, At{3, "Y", ""}, At{33, "", "Y0005"}},
       ModuleConfig{.refuse = "VP"}},
      {"PartialIdentifierRefusedAfterTheGap", {At{0, "M00", ""}, At{30, "", NAK}}},
      {"StalledDownloadForgottenAfterFiveSeconds",
       {At{0, "P0009", ACK}, At{10, "00", ""}, At{5009, "", ""}, At{5010, "", ""},
        At{5011, "??", ACK}}},
      {"VersionOfADefaultTelvaneThenANewSignIn",
       {At{0, "??", ACK}, At{1000, "V", "V000F"}, At{1001, ACK, kVersion}, At{1002, "??", ACK}}},
      {"WholeDownloadInOneRead",
       {At{0, "??P000900"s + F + "1234" + F + E + "F9", ACK + ACK + ACK}, At{50, "", ACK}}},
      // A sign-in that follows the last ACK of an upload in the same read is answered.
      {"SignInInTheSameReadAsTheLastAck",
       {At{0, "V", "V000F"}, At{1, ACK, kVersion}, At{2, ACK + "??", ACK}}},
      {"NoiseInFrontOfEveryReply",
       {At{0, "??", "\x00\xFF"s + ACK}, At{1, "V", "\x00\xFFV000F"s}, At{2, ACK, kVersion},
        At{3, ACK + "X0001", "\x00\xFF"s + NAK}},
       ModuleConfig{.refuse = "", .replyNoise = 2}},
      {"ConfirmationInTheSameWriteAsTheLastAck",
       {At{0, "P0009", ACK}, At{5, "00"s + F + "1234" + F + E + "F9", ACK + ACK}, At{6, "P", ""},
        At{36, "", "P0009"}, At{37, ACK, "00"s + F + "1234" + F + E + "F9"}},
       ModuleConfig{.refuse = "", .mergedFinalAck = true}},
      {"OddReplyThenTheRepeatIsAcknowledged",
       {At{0, "P0009", "X"}, At{1, "P0009", ACK}, At{2, "00"s + F + "1234" + F + E + "F9", ACK},
        At{52, "", ACK}},
       ModuleConfig{.refuse = "", .oddStartReply = true}},
      {"OddReplyThenTheRepeatTakenSilently",
       {At{0, "P0009", "X"}, At{1, "P0009", ""}, At{2, "00"s + F + "1234" + F + E + "F9", ACK},
        At{52, "", ACK}},
       ModuleConfig{.refuse = "", .oddStartReply = true, .muteStartRepeat = true}},
      // x ^ y ^ FD = FC. The count covers both end marks.
      {"EveryBlockEndsWithTheEndMark",
       {At{0, "L", "L0044"}, At{1, ACK, k64 + E + "FD"}, At{2, ACK, "xy"s + E + "FC"},
        At{3, ACK, ""}, At{4, "P", ""}, At{34, "", "P0009"},
        At{35, ACK, "00"s + F + "0000" + F + E + "FD"}},
       ModuleConfig{.refuse = "", .endEveryBlock = true},
       k64 + "xy"},
      {"VersionRequestIgnored",
       {At{0, "V", ""}, At{30, "", ""}, At{31, "??", ACK}},
       ModuleConfig{.refuse = "", .ignoreVersion = true}},
  };
  for (const Script& script : scripts) {
    ModuleMemory memory(script.config.messages, script.config.phones);
    TelvaneModule module(script.config, memory, script.logger);
    for (const At& step : script.steps) {
      if (step.in.empty()) {
        const auto due = module.deadline();
        if (due && *due <= step.at) module.onDeadline(step.at);
      } else {
        module.onBytes(step.in, step.at);
      }
      EXPECT_EQ(module.takeOutgoing(), step.out) << script.name << " at " << step.at;
    }
  }
}

TEST(TelvaneModule, BaudStretchesTheStallResetPastTheReply) {
  ModuleConfig config;
  config.baud = 100;  // 100 ms a byte
  ModuleMemory memory(100, 60);
  TelvaneModule module(config, memory, "");
  module.onBytes("V", 0);
  module.onBytes(ACK, 10);
  // 17 bytes of block take 1.7 s on the line; the PC cannot answer before they are out.
  const auto due = module.deadline();
  ASSERT_TRUE(due);
  EXPECT_GE(*due, 10 + 1700 + 5000);
}

TEST(ModuleMemory, EmptyImagesHaveTheShapeThePcReads) {
  const std::string fill21(21, '\xB6');
  const std::string fill20(20, '\xB6');
  EXPECT_EQ(emptyConfigurationImage(), "00"s + F + "0000" + F + E);
  EXPECT_EQ(emptyFlagsImage(), F + "00" + F + E);
  EXPECT_EQ(emptyPhonesImage(2), fill21 + fill21 + fill21 + fill20 + E);
  EXPECT_EQ(emptyMessagesImage(2),
            "A;"s + F + "@" + F + "@" + F + "Q " + F + std::string(10, '\xB6') + E);
  EXPECT_EQ(emptyPhonesImage(60).size(), 1302U);

  const ModuleMemory memory(2, 2);
  EXPECT_EQ(memory.image('M'), emptyMessagesImage(2));
  EXPECT_EQ(memory.image('T'), emptyPhonesImage(2));
}

TEST(ModuleMemory, StateFileRoundTripKeepsEveryByteAndRefusesMalformedFiles) {
  ModuleMemory memory(100, 60);
  memory.store('P', "00"s + F + "1234" + F + E);
  memory.store('Y', std::string("\n\0\xFF", 3));
  const std::string state = memory.serialize();
  EXPECT_TRUE(state.starts_with("telvane-sim state 1\nM 217\nA;"s + F));

  ModuleMemory restored(2, 2);
  std::string error;
  ASSERT_TRUE(restored.deserialize(state, error)) << error;
  for (char kind : kImageKinds) EXPECT_EQ(restored.image(kind), memory.image(kind)) << kind;

  // A malformed state file changes nothing.
  for (const std::string bad :
       {"M 1\nx\n", "telvane-sim state 1\nQ 1\nx\n", "telvane-sim state 1\nP 5\nab\n"}) {
    ModuleMemory untouched(2, 2);
    EXPECT_FALSE(untouched.deserialize(bad, error)) << bad;
    EXPECT_EQ(untouched.image('P'), emptyConfigurationImage()) << bad;
  }
}

TEST(SimOptions, CommandLines) {
  // Parsed options are summarised with '|'; a refused command line gives its error. The
  // end-to-end tests use every other option.
  const auto summary = [](const SimOptions& o) {
    const ModuleConfig& m = o.module;
    return o.link + "|" + std::to_string(o.registerAs) + "|" + std::to_string(m.deviceType) + "|" +
           std::to_string(m.bus) + "|" + std::to_string(m.messages) + "|" +
           std::to_string(m.phones) + "|" + std::to_string(m.firmware) + "|" +
           std::to_string(m.baud) + "|" + std::to_string(m.nakEvery) + "|" +
           std::to_string(m.corruptEvery) + "|" + std::to_string(m.silentAfter) + "|" + m.refuse +
           "|" + o.loggerFile + "|" + o.stateFile + "|" + (o.trace ? "trace" : "");
  };
  using Args = std::vector<std::string>;
  const std::vector<std::pair<Args, std::string>> rows = {
      {Args{}, "|0|3|9|100|60|123|0|0|0|-1||||"},
      {Args{"--phones=12", "--link=/x"}, "/x|0|3|9|100|12|123|0|0|0|-1||||"},
      {Args{"--messages", "200"}, "bad value for --messages: 200"},
      {Args{"--phones", "254"}, "bad value for --phones: 254"},
      {Args{"--speed", "9600"}, "unknown option --speed"},
      {Args{"--bus"}, "--bus needs a value"},
      {Args{"--split-writes", "0"}, "bad value for --split-writes: 0"},
      {Args{"--end-every-block=1"}, "--end-every-block takes no value"},
  };
  for (const auto& [args, expected] : rows) {
    SimOptions options;
    std::string error;
    const bool ok = parseSimOptions(args, options, error);
    EXPECT_EQ(ok, expected.find('|') != std::string::npos) << expected;
    EXPECT_EQ(ok ? summary(options) : error, expected);
  }
}

TEST(WriteSplitter, CutsAtRandomPointsTheSameWayForTheSameSeed) {
  const std::string bytes = k64 + k64;
  const auto pieces = [&bytes](unsigned seed) {
    WriteSplitter splitter(seed);
    splitter.push(bytes);
    std::vector<std::string> out;
    SimTime now = 0;
    EXPECT_EQ(splitter.deadline(), 0);  // the first piece is due at once
    while (const auto due = splitter.deadline()) {
      if (*due > now) {
        EXPECT_EQ(splitter.take(*due - 1), "");
      }
      now = *due;
      const std::string piece = splitter.take(now);
      EXPECT_GE(piece.size(), 1U);
      EXPECT_LE(piece.size(), 8U);
      if (const auto next = splitter.deadline()) {
        EXPECT_GE(*next - now, 2);
        EXPECT_LE(*next - now, 6);
      }
      out.push_back(piece);
    }
    return out;
  };
  const auto first = pieces(7);
  std::string joined;
  for (const auto& p : first) joined += p;
  EXPECT_EQ(joined, bytes);
  EXPECT_GE(first.size(), bytes.size() / 8);
  EXPECT_EQ(pieces(7), first);
  EXPECT_NE(pieces(8), first);
}

TEST(PacedLine, BytesArriveAtTheLineSpeed) {
  PacedLine line(9600);  // 1041 us a byte
  line.push("ab", 10);
  EXPECT_EQ(line.deadline(), 12);
  EXPECT_EQ(line.take(11), "");
  EXPECT_EQ(line.take(12), "a");
  EXPECT_EQ(line.take(13), "b");
  EXPECT_FALSE(line.deadline());
  // A byte pushed while the line is busy waits for the one before it.
  line.push("c", 13);
  line.push("d", 13);
  EXPECT_EQ(line.take(14), "");
  EXPECT_EQ(line.take(15), "c");
  EXPECT_EQ(line.take(16), "d");

  PacedLine unpaced(0);
  unpaced.push("abc", 7);
  EXPECT_EQ(unpaced.take(7), "abc");
}

}  // namespace
}  // namespace quillon::sim
