// quillon-cli run in-process on hand-written project files: what each command prints, writes and
// returns, and the command lines it refuses before touching a port.

#include "cli/cli.h"

#include <filesystem>
#include <random>
#include <sstream>

#include <gtest/gtest.h>

#include "file_bytes.h"
#include "transfer_bench.h"

namespace quillon {
namespace {

namespace fs = std::filesystem;
using namespace quillon::testing;

// Every kind of data with something to convert: umlauts, options, filter, phones to clean, a
// message of one character, PIN, flag.
const std::string kProject =
    "M@Gr\xFC\xDF\x65;Kommentar\r\n"
    "MCa;\r\n"
    "MQ*T#;ok\r\n"
    "F01Filter;Kommentar\r\n"
    "T+49171\xB6;SMSC\r\n"
    "T+49 (0)171 555;M\xFCller\r\n"
    "T12;zu kurz\r\n"
    "L1;;04D2;Station\r\n"
    "E 3;12;5\r\n"
    "V1.0.0\r\n";

const std::string kPhoneWarning =
    "Telefonnummer enth\xC3\xA4lt ung\xC3\xBCltiges Zeichen. +49 (0)171 555 wird gefiltert! \n";

class CliRunTest : public ::testing::Test {
 protected:
  void SetUp() override {
    m_dir = fs::temp_directory_path() /
            ("quillon-cli-" +
             std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()) + "-" +
             std::to_string(std::random_device{}()));
    fs::create_directories(m_dir);
    writeBytes(m_dir / "anlage.EAY", kProject);
    writeBytes(m_dir / "ohne-pin.EAY", "M@Pumpe;\r\nV1.0.0\r\n");
  }
  void TearDown() override { fs::remove_all(m_dir); }

  // Runs the command line, split at blanks; "@name" stands for the file `name` in the test's
  // folder.
  int run(const std::string& commandLine) {
    std::vector<std::string> arguments;
    std::istringstream words(commandLine);
    for (std::string word; words >> word;)
      arguments.push_back(word.starts_with('@') ? path(word.substr(1)) : word);
    std::ostringstream out;
    std::ostringstream err;
    const int code = cli::RunCli(arguments, out, err);
    m_out = out.str();
    m_err = err.str();
    return code;
  }
  [[nodiscard]] std::string path(const std::string& name) const { return (m_dir / name).string(); }

  fs::path m_dir;
  std::string m_out;
  std::string m_err;
};

TEST_F(CliRunTest, ExitCodesAndErrorOutput) {
  struct Row {
    const char* name;
    const char* commandLine;  // split at blanks
    int code;
    std::string err;  // without a final line break: only the first line of the output
  };
  const std::string imageUsage =
      "Usage: quillon-cli image [--lang en|de] KIND FILE.EAY [-o OUT] [--identifier]\n"
      "Try 'quillon-cli image --help' for more information.\n";
  const Row rows[] = {
      {"checkPrintsEachBox", "check @anlage.EAY", 0, "Message nr. 1only 1 character\n"},
      {"checkInGerman", "check --lang de @anlage.EAY", 0, "Meldungsnr.: 1nur 1 Zeichen!\n"},
      {"checkUnreadableFile", "check @", 66, "Is a directory\n"},
      {"resaveIntoMissingFolder", "resave @ohne-pin.EAY @nicht/da.EAY", 73,
       "quillon-cli: cannot write " + path("nicht/da.EAY") + ": No such file or directory\n"},
      {"noCommand", "", 64,
       "quillon-cli: no command given\n"
       "Usage: quillon-cli [--lang en|de] COMMAND [ARGUMENTS]\n"
       "       quillon-cli COMMAND --help\n"
       "Try 'quillon-cli --help' for more information.\n"},
      {"pinRefused", "image P @ohne-pin.EAY", 65,
       "PIN is not valid. Download of the PIN is cancelled\n"},
      {"imageOfMissingFile", "image M @fehlt.EAY", 9, "File not found\n"},
      {"resaveOfMissingFile", "resave @fehlt.EAY @c.EAY", 9, "File not found\n"},
      {"unknownKind", "image X @anlage.EAY", 64,
       "quillon-cli: unknown kind 'X': use M, T, P or Y\n" + imageUsage},
      {"outputWithoutName", "image M @anlage.EAY -o", 64,
       "quillon-cli: option -o needs a file name\n" + imageUsage},
      // No port named here exists: a command that got as far as the port would say so instead.
      {"downloadWithoutPort", "download a.EAY", 64, "quillon-cli: download needs --port DEV"},
      {"downloadUnknownKind", "download --port=/x --kind Q a.EAY", 64,
       "quillon-cli: unknown kind 'Q': use M, T, P, Y or all"},
      {"downloadMissingFile", "download --port /x @fehlt.EAY", 9, "File not found"},
      {"uploadWithoutOutput", "upload --port /x", 64, "quillon-cli: upload needs -o OUT.EAY"},
      {"uploadMissingBase", "upload --port /x --into @fehlt.EAY -o @c.EAY", 9, "File not found"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(run(row.commandLine), row.code);
    EXPECT_EQ(m_out, "");
    EXPECT_EQ(row.err.ends_with('\n') ? m_err : m_err.substr(0, m_err.find('\n')), row.err);
  }
  EXPECT_FALSE(fs::exists(path("c.EAY")));
}

TEST_F(CliRunTest, ResaveCleansPhonesAndPrintsWarningsInUtf8) {
  EXPECT_EQ(run("resave @anlage.EAY @clean.EAY"), 0);
  EXPECT_EQ(m_err, "Message nr. 1only 1 character\n" + kPhoneWarning);
  EXPECT_NE(readBytes(path("clean.EAY"))
                .find("\r\nT+49171" + repeat(kP, 14) + ";SMSC\r\nT+490171555" + repeat(kP, 10) +
                      ";M\xFCller\r\nT" + repeat(kP, 20) + ";zu kurz\r\n"),
            std::string::npos);
}

TEST_F(CliRunTest, ImageOfEachKind) {
  struct Row {
    std::string kind;
    std::string image;
    std::string identifier;
    std::string warnings;
  };
  const Row rows[] = {
      {"M",
       "A;" + kP + "@Gr~\x1E\x65" + kP + "Ca" + kP + repeat("@" + kP, 98) + "Q*T# ok" + kP +
           "Filter" + kP + repeat(kP, 9) + kEnd,
       "M00EA\n", "Message text in line 1only 1 character\n"},
      {"T",
       "+49171" + repeat(kP, 15) + "+490171555" + repeat(kP, 11) + repeat(kP, 21 * 59) +
           repeat(kP, 20) + kEnd,
       "T0516\n", kPhoneWarning},
      {"p", "00" + kP + "1234" + kP + kEnd, "P0009\n", ""},
      {"Y", "03000C0500" + kP + "00" + kP + kEnd, "Y000F\n", ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.kind);
    EXPECT_EQ(run("image " + row.kind + " @anlage.EAY"), 0);
    EXPECT_EQ(m_out, row.image);
    EXPECT_EQ(m_err, "Message nr. 1only 1 character\n" + row.warnings);  // the load's box first
    EXPECT_EQ(run("image --identifier " + row.kind + " @anlage.EAY"), 0);
    EXPECT_EQ(m_out, row.identifier);
    EXPECT_EQ(run("image " + row.kind + " @anlage.EAY -o @image.bin"), 0);
    EXPECT_EQ(readBytes(path("image.bin")), row.image);
  }
}

}  // namespace
}  // namespace quillon
