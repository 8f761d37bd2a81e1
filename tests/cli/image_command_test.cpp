// quillon-cli image: the bytes a download would send, from a hand-written project file.

#include <filesystem>
#include <random>
#include <sstream>

#include <gtest/gtest.h>

#include "cli/cli.h"
#include "file_bytes.h"

namespace quillon {
namespace {

namespace fs = std::filesystem;

const std::string kP = "\xB6";
const std::string kEnd = "\xFD";

const std::string kProject =
    "M@Gr\xFC\xDF"
    "e;Kommentar\r\n"
    "MCHallo;\r\n"
    "MQ*T#;ok\r\n"
    "F01Filter;Kommentar\r\n"
    "T+49171;SMSC\r\n"
    "T0171 555;Name\r\n"
    "L1;;04D2;Station\r\n"
    "E 3;12;5\r\n"
    "V1.0.0\r\n";

std::string repeat(const std::string& piece, int times) {
  std::string out;
  for (int i = 0; i < times; ++i) out += piece;
  return out;
}

class ImageCommandTest : public ::testing::Test {
 protected:
  void SetUp() override {
    m_dir = fs::temp_directory_path() /
            ("quillon-image-" +
             std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()) + "-" +
             std::to_string(std::random_device{}()));
    fs::create_directories(m_dir);
    testing::writeBytes(m_dir / "anlage.EAY", kProject);
  }
  void TearDown() override { fs::remove_all(m_dir); }

  int run(std::vector<std::string> arguments) {
    std::ostringstream out;
    std::ostringstream err;
    const int code = cli::RunCli(arguments, out, err);
    m_out = out.str();
    m_err = err.str();
    return code;
  }
  [[nodiscard]] std::string file() const { return (m_dir / "anlage.EAY").string(); }

  fs::path m_dir;
  std::string m_out;
  std::string m_err;
};

TEST_F(ImageCommandTest, EachKindWritesItsImage) {
  struct Row {
    const char* kind;
    std::string image;
    std::string identifier;
    std::string warnings;
  };
  const Row rows[] = {
      {"M",
       "A;" + kP +
           "@Gr~\x1E"
           "e" +
           kP + "CHallo" + kP + repeat("@" + kP, 98) + "Q*T# ok" + kP + "Filter" + kP +
           repeat(kP, 9) + kEnd,
       "M00EE\n", ""},
      {"T",
       "+49171" + repeat(kP, 15) + "0171555" + repeat(kP, 14) + repeat(kP, 21 * 59) +
           repeat(kP, 20) + kEnd,
       "T0516\n",
       "Telefonnummer enth\xC3\xA4lt ung\xC3\xBCltiges Zeichen. 0171 555 wird gefiltert! \n"},
      {"p", "00" + kP + "1234" + kP + kEnd, "P0009\n", ""},
      {"Y", "03000C0500" + kP + "00" + kP + kEnd, "Y000F\n", ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.kind);
    EXPECT_EQ(run({"image", row.kind, file()}), 0);
    EXPECT_EQ(m_out, row.image);
    EXPECT_EQ(m_err, row.warnings);
    EXPECT_EQ(run({"image", "--identifier", row.kind, file()}), 0);
    EXPECT_EQ(m_out, row.identifier);
  }
}

TEST_F(ImageCommandTest, OutputFile) {
  const fs::path out = m_dir / "p.bin";
  EXPECT_EQ(run({"image", "P", file(), "-o", out.string()}), 0);
  EXPECT_EQ(m_out, "");
  EXPECT_EQ(testing::readBytes(out), "00" + kP + "1234" + kP + kEnd);
}

TEST_F(ImageCommandTest, RefusalsAndMistakes) {
  testing::writeBytes(m_dir / "ohne-pin.EAY", "M@Pumpe;\r\nV1.0.0\r\n");
  struct Row {
    const char* name;
    std::vector<std::string> arguments;
    int code;
    std::string err;
  };
  const Row rows[] = {
      {"pinRefused",
       {"image", "P", (m_dir / "ohne-pin.EAY").string()},
       65,
       "PIN is not valid. Download of the PIN is cancelled\n"},
      {"pinRefusedInGerman",
       {"image", "--lang", "de", "P", (m_dir / "ohne-pin.EAY").string()},
       65,
       "PIN ist ung\xC3\xBCltig. Download der PIN wird abgebrochen\n"},
      {"missingFile", {"image", "M", (m_dir / "fehlt.EAY").string()}, 9, "File not found\n"},
      {"unknownKind",
       {"image", "X", file()},
       64,
       "quillon-cli: unknown kind 'X': use M, T, P or Y\n"
       "Usage: quillon-cli image [--lang en|de] KIND FILE.EAY [-o OUT] [--identifier]\n"
       "Try 'quillon-cli image --help' for more information.\n"},
      {"outputWithoutName",
       {"image", "M", file(), "-o"},
       64,
       "quillon-cli: option -o needs a file name\n"
       "Usage: quillon-cli image [--lang en|de] KIND FILE.EAY [-o OUT] [--identifier]\n"
       "Try 'quillon-cli image --help' for more information.\n"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(run(row.arguments), row.code);
    EXPECT_EQ(m_out, "");
    EXPECT_EQ(m_err, row.err);
  }
}

}  // namespace
}  // namespace quillon
