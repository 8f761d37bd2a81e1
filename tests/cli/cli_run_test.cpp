#include "cli/cli.h"

#include <filesystem>
#include <random>
#include <sstream>

#include <gtest/gtest.h>

#include "file_bytes.h"
#include "row_name.h"

namespace quillon {
namespace {

namespace fs = std::filesystem;
using testing::readBytes;
using testing::writeBytes;

struct CliRun {
  int code = 0;
  std::string out;
  std::string err;
};

CliRun run(const std::vector<std::string>& arguments) {
  std::ostringstream out;
  std::ostringstream err;
  CliRun result;
  result.code = cli::RunCli(arguments, out, err);
  result.out = out.str();
  result.err = err.str();
  return result;
}

class CliRunTest : public ::testing::Test {
 protected:
  void SetUp() override {
    const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
    m_dir = fs::temp_directory_path() / ("quillon-cli-" + std::string(info->name()) + "-" +
                                         std::to_string(std::random_device{}()));
    fs::create_directories(m_dir);
  }
  void TearDown() override { fs::remove_all(m_dir); }
  [[nodiscard]] std::string path(const std::string& name) const { return (m_dir / name).string(); }

  fs::path m_dir;
};

// A hand-written project with one message too short, a phone number to clean and an umlaut in
// the warning.
const std::string kMessyProject =
    "M@Pumpe aus;\r\n"
    "M@a;\r\n"
    "T0171\xB6;SMSC\r\n"
    "T+49 (0)171 555;M\xFCller\r\n"
    "T12;zu kurz\r\n"
    "V1.0.0\r\n";

TEST_F(CliRunTest, CheckPrintsEachBoxOnItsOwnLine) {
  writeBytes(path("messy.EAY"), kMessyProject);
  const CliRun result = run({"check", path("messy.EAY")});
  EXPECT_EQ(result.code, 0);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err, "Message nr. 1only 1 character\n");
}

TEST_F(CliRunTest, CheckInGerman) {
  writeBytes(path("messy.EAY"), kMessyProject);
  const CliRun result = run({"check", "--lang", "de", path("messy.EAY")});
  EXPECT_EQ(result.err, "Meldungsnr.: 1nur 1 Zeichen!\n");
}

TEST_F(CliRunTest, CheckMissingFile) {
  const CliRun result = run({"check", path("fehlt.EAY")});
  EXPECT_EQ(result.code, 9);
  EXPECT_EQ(result.err, "File not found\n");
}

TEST_F(CliRunTest, CheckUnreadableFile) {
  const CliRun result = run({"check", m_dir.string()});
  EXPECT_EQ(result.code, 66);
  EXPECT_EQ(result.err, "Is a directory\n");
}

TEST_F(CliRunTest, ResaveCleansPhonesAndPrintsWarningsInUtf8) {
  writeBytes(path("messy.EAY"), kMessyProject);
  const CliRun result = run({"resave", path("messy.EAY"), path("clean.EAY")});
  EXPECT_EQ(result.code, 0);
  EXPECT_EQ(result.err,
            "Message nr. 1only 1 character\n"
            "Telefonnummer enth\xC3\xA4lt ung\xC3\xBCltiges Zeichen. +49 (0)171 555 wird "
            "gefiltert! \n");
  const std::string bytes = readBytes(path("clean.EAY"));
  EXPECT_NE(bytes.find(
                "\r\nT0171\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6;SMSC\r\n"
                "T+490171555\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6;M\xFCller\r\n"
                "T\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6;"
                "zu kurz\r\n"),
            std::string::npos);
}

TEST_F(CliRunTest, ResaveMissingInputWritesNothing) {
  const CliRun result = run({"resave", path("fehlt.EAY"), path("out.EAY")});
  EXPECT_EQ(result.code, 9);
  EXPECT_FALSE(fs::exists(path("out.EAY")));
}

TEST_F(CliRunTest, ResaveIntoMissingDirectory) {
  writeBytes(path("a.EAY"), "M@Pumpe;\r\n");
  const std::string target = path("nicht/da.EAY");
  const CliRun result = run({"resave", path("a.EAY"), target});
  EXPECT_EQ(result.code, 73);
  EXPECT_EQ(result.err, "quillon-cli: cannot write " + target + ": No such file or directory\n");
}

struct UsageCase {
  const char* name;
  std::vector<std::string> arguments;
  int code;
  std::string err;
};

class CliUsageTest : public ::testing::TestWithParam<UsageCase> {};

TEST_P(CliUsageTest, ExplainsOnStandardError) {
  const UsageCase& c = GetParam();
  const CliRun result = run(c.arguments);
  EXPECT_EQ(result.code, c.code);
  EXPECT_EQ(result.err, c.err);
  EXPECT_EQ(result.out, "");
}

INSTANTIATE_TEST_SUITE_P(
    Mistakes, CliUsageTest,
    ::testing::Values(UsageCase{"noCommand",
                                {},
                                64,
                                "quillon-cli: no command given\n"
                                "Usage: quillon-cli [--lang en|de] COMMAND [ARGUMENTS]\n"
                                "       quillon-cli COMMAND --help\n"
                                "Try 'quillon-cli --help' for more information.\n"},
                      UsageCase{"unknownOptionOfCheck",
                                {"check", "--quiet", "a.EAY"},
                                64,
                                "quillon-cli: unknown option '--quiet'\n"
                                "Usage: quillon-cli check [--lang en|de] FILE.EAY\n"
                                "Try 'quillon-cli check --help' for more information.\n"},
                      UsageCase{"resaveWithOneFile",
                                {"resave", "a.EAY"},
                                64,
                                "quillon-cli: resave takes 2 arguments, not 1\n"
                                "Usage: quillon-cli resave [--lang en|de] IN.EAY OUT.EAY\n"
                                "Try 'quillon-cli resave --help' for more information.\n"}),
    testing::RowName{});

}  // namespace
}  // namespace quillon
