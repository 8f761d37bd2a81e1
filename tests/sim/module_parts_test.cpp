// The module's memory, its command line and the paced line.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "sim/module_memory.h"
#include "sim/paced_line.h"
#include "sim/sim_options.h"

namespace quillon::sim {
namespace {

using namespace std::string_literals;

// Wire bytes restated: 182 fills and separates fields, 253 ends an image and every block.
const std::string F = "\xB6";
const std::string E = "\xFD";

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

TEST(ModuleMemory, StateFileRoundTripKeepsEveryByte) {
  ModuleMemory memory(100, 60);
  memory.store('P', "00"s + F + "1234" + F + E);
  memory.store('Y', std::string("\n\0\xFF", 3));
  const std::string state = memory.serialize();
  EXPECT_TRUE(state.starts_with("telvane-sim state 1\nM 217\nA;"s + F));

  ModuleMemory restored(2, 2);
  std::string error;
  ASSERT_TRUE(restored.deserialize(state, error)) << error;
  for (char kind : kImageKinds) EXPECT_EQ(restored.image(kind), memory.image(kind)) << kind;
}

TEST(ModuleMemory, MalformedStateFilesChangeNothing) {
  const std::vector<std::pair<const char*, std::string>> rows = {
      {"NoHeader", "M 1\nx\n"},
      {"UnknownKind", "telvane-sim state 1\nQ 1\nx\n"},
      {"ShorterThanItsLength", "telvane-sim state 1\nP 5\nab\n"},
  };
  for (const auto& [name, text] : rows) {
    ModuleMemory memory(2, 2);
    std::string error;
    EXPECT_FALSE(memory.deserialize(text, error)) << name;
    EXPECT_FALSE(error.empty()) << name;
    EXPECT_EQ(memory.image('P'), emptyConfigurationImage()) << name;
  }
}

TEST(SimOptions, CommandLines) {
  struct Row {
    const char* name;
    std::vector<std::string> args;
    bool ok;
    std::string expect;  // the error, or a summary of the parsed options
  };
  const auto summary = [](const SimOptions& o) {
    const ModuleConfig& m = o.module;
    return o.link + "|" + std::to_string(o.registerAs) + "|" + std::to_string(m.deviceType) + "|" +
           std::to_string(m.bus) + "|" + std::to_string(m.messages) + "|" +
           std::to_string(m.phones) + "|" + std::to_string(m.firmware) + "|" +
           std::to_string(m.baud) + "|" + std::to_string(m.nakEvery) + "|" +
           std::to_string(m.corruptEvery) + "|" + std::to_string(m.silentAfter) + "|" + m.refuse +
           "|" + o.loggerFile + "|" + o.stateFile + "|" + (o.trace ? "trace" : "");
  };
  const std::vector<Row> rows = {
      {"Defaults", {}, true, "|0|3|9|100|60|123|0|0|0|-1||||"},
      {"EveryOption",
       {"--link",      "/tmp/l", "--register",      "4",       "--device-type",  "1",
        "--bus",       "2",      "--messages",      "400",     "--phones",       "20",
        "--firmware",  "2",      "--logger",        "log.txt", "--baud",         "9600",
        "--nak-every", "3",      "--corrupt-every", "5",       "--silent-after", "7",
        "--refuse",    "vm",     "--state",         "s.dat",   "--trace"},
       true,
       "/tmp/l|4|1|2|400|20|2|9600|3|5|7|VM|log.txt|s.dat|trace"},
      {"ValueAfterEquals", {"--phones=12", "--link=/x"}, true, "/x|0|3|9|100|12|123|0|0|0|-1||||"},
      {"MessagesOnly100Or400", {"--messages", "200"}, false, "bad value for --messages: 200"},
      {"UnknownOption", {"--speed", "9600"}, false, "unknown option --speed"},
      {"MissingValue", {"--bus"}, false, "--bus needs a value"},
      {"PhonesBeyondTheField", {"--phones", "254"}, false, "bad value for --phones: 254"},
  };
  for (const Row& row : rows) {
    SimOptions options;
    std::string error;
    const bool ok = parseSimOptions(row.args, options, error);
    EXPECT_EQ(ok, row.ok) << row.name;
    EXPECT_EQ(ok ? summary(options) : error, row.expect) << row.name;
  }
}

TEST(PacedLine, BytesArriveAtTheLineSpeed) {
  PacedLine line(9600);  // 1041 us a byte
  line.push("ab", 10);
  EXPECT_EQ(line.deadline(), 12);
  EXPECT_EQ(line.take(11), "");
  EXPECT_EQ(line.take(12), "a");
  EXPECT_EQ(line.deadline(), 13);
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
