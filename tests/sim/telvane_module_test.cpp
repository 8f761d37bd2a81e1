// The simulated module driven by scripted bytes and times; every answer is written out by hand.

#include "sim/telvane_module.h"

#include <gtest/gtest.h>

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

ModuleConfig with(void (*change)(ModuleConfig&)) {
  ModuleConfig config;
  change(config);
  return config;
}

TEST(TelvaneModule, AnswersEveryScriptExactly) {
  const std::vector<Script> scripts = {
      {"SignInSplitOverTwoReads", {At{0, "?", ""}, At{1, "?", ACK}}},
      {"LoneQuestionMarkForgotten", {At{0, "?", ""}, At{30, "", ""}, At{40, "??", ACK}}},
      {"VersionOfADefaultTelvane",
       {At{0, "??", ACK}, At{1000, "V", "V000F"}, At{1001, ACK, kVersion}, At{1002, ACK, ""}}},
      {"VersionOfAnotherModule",
       {At{0, "V", "V000F"}, At{1, ACK, "00020401010016"s + E + "FC"}},
       with([](ModuleConfig& c) {
         c.firmware = 2, c.bus = 4, c.deviceType = 1, c.messages = 400, c.phones = 20;
       })},
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
       with([](ModuleConfig& c) { c.nakEvery = 2; })},
      {"NakOnUploadRepeatsTheBlock",
       {At{0, "V", "V000F"}, At{1, ACK, kVersion}, At{2, NAK, kVersion}, At{3, ACK, ""}}},
      {"CorruptEveryBlockSent",
       {At{0, "V", "V000F"}, At{1, ACK, "007B090300003E"s + E + "F5"},
        At{2, NAK, "007B090300003E"s + E + "F5"}},
       with([](ModuleConfig& c) { c.corruptEvery = 1; })},
      {"SilentFromTheStart", {At{0, "??", ""}, At{1, "V", ""}}, with([](ModuleConfig& c) {
         c.silentAfter = 0;
       })},
      {"SilentAfterOneBlock",
       {At{0, "M0041", ACK}, At{1, k64 + "00", ACK}, At{2, "p70", ""}, At{3, "??", ""}},
       with([](ModuleConfig& c) { c.silentAfter = 1; })},
      {"RefusedRequestsAndIdentifiers",
       {At{0, "V", NAK}, At{1, "P0009", NAK}, At{2, "X", NAK}, At{3, "Y", ""}, At{33, "", "Y0005"}},
       with([](ModuleConfig& c) { c.refuse = "VP"; })},
      {"PartialIdentifierRefusedAfterTheGap", {At{0, "M00", ""}, At{30, "", NAK}}},
      {"StalledDownloadForgottenAfterFiveSeconds",
       {At{0, "P0009", ACK}, At{10, "00", ""}, At{5009, "", ""}, At{5010, "", ""},
        At{5011, "??", ACK}}},
      {"NewSignInAbandonsAnUpload", {At{0, "V", "V000F"}, At{1, ACK, kVersion}, At{2, "??", ACK}}},
      {"EmptyDownloadAcknowledgedOnly", {At{0, "P0000", ACK}, At{100, "??", ACK}}},
      {"WholeDownloadInOneRead",
       {At{0, "??P000900"s + F + "1234" + F + E + "F9", ACK + ACK + ACK}, At{50, "", ACK}}},
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

}  // namespace
}  // namespace quillon::sim
