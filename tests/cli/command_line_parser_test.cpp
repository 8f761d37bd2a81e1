#include "cli/command_line_parser.h"

#include <gtest/gtest.h>

#include "row_name.h"

namespace quillon {
namespace {

using cli::Command;
using cli::CommandLineParser;
using cli::Invocation;
using Action = Invocation::Action;

int runNothing(const cli::CommandContext&) { return 0; }

// A table of its own, so the parser's rules are tested apart from the real commands.
const Command kOne{"one", "FILE", 1, "one file", "Takes one file.\n", runNothing};
const Command kTwo{"two", "IN OUT", 2, "two files", "Takes two files.\n", runNothing};
const std::array<const Command*, 2> kTable{&kOne, &kTwo};

struct ParseCase {
  const char* name;
  std::vector<std::string> arguments;
  Action action;
  const Command* command;
  std::vector<std::string> positionals;
  int language;
  std::string error;
};

class CommandLineParserTest : public ::testing::TestWithParam<ParseCase> {};

TEST_P(CommandLineParserTest, Parses) {
  const ParseCase& c = GetParam();
  const Invocation invocation = CommandLineParser(kTable).parse(c.arguments);
  EXPECT_EQ(invocation.action, c.action);
  EXPECT_EQ(invocation.command, c.command);
  EXPECT_EQ(invocation.arguments, c.positionals);
  EXPECT_EQ(invocation.language, c.language);
  EXPECT_EQ(invocation.error, c.error);
}

INSTANTIATE_TEST_SUITE_P(
    CommandLines, CommandLineParserTest,
    ::testing::Values(
        ParseCase{"commandWithFile", {"one", "a.EAY"}, Action::Run, &kOne, {"a.EAY"}, kEnglish, ""},
        ParseCase{"twoFiles", {"two", "a", "b"}, Action::Run, &kTwo, {"a", "b"}, kEnglish, ""},
        ParseCase{"langBeforeCommand",
                  {"--lang", "de", "one", "a"},
                  Action::Run,
                  &kOne,
                  {"a"},
                  kGerman,
                  ""},
        ParseCase{
            "langAfterFile", {"one", "a", "--lang=de"}, Action::Run, &kOne, {"a"}, kGerman, ""},
        ParseCase{"dashDashEndsOptions",
                  {"one", "--", "--help"},
                  Action::Run,
                  &kOne,
                  {"--help"},
                  kEnglish,
                  ""},
        ParseCase{"topLevelHelp", {"--help"}, Action::Help, nullptr, {}, kEnglish, ""},
        ParseCase{"commandHelp", {"two", "--help"}, Action::Help, &kTwo, {}, kEnglish, ""},
        ParseCase{"helpIgnoresArgumentCount",
                  {"one", "a", "b", "-h"},
                  Action::Help,
                  &kOne,
                  {},
                  kEnglish,
                  ""},
        ParseCase{"nothing", {}, Action::UsageError, nullptr, {}, kEnglish, "no command given"},
        ParseCase{"unknownCommand",
                  {"three"},
                  Action::UsageError,
                  nullptr,
                  {},
                  kEnglish,
                  "unknown command 'three'"},
        ParseCase{"unknownOptionTopLevel",
                  {"--verbose"},
                  Action::UsageError,
                  nullptr,
                  {},
                  kEnglish,
                  "unknown option '--verbose'"},
        ParseCase{"unknownOptionOfCommand",
                  {"one", "-x", "a"},
                  Action::UsageError,
                  &kOne,
                  {},
                  kEnglish,
                  "unknown option '-x'"},
        ParseCase{"unknownLanguage",
                  {"--lang", "fr", "one", "a"},
                  Action::UsageError,
                  nullptr,
                  {},
                  kEnglish,
                  "unknown language 'fr': use en or de"},
        ParseCase{"langWithoutValue",
                  {"one", "a", "--lang"},
                  Action::UsageError,
                  &kOne,
                  {},
                  kEnglish,
                  "option --lang needs a value: en or de"},
        ParseCase{"missingFile",
                  {"one"},
                  Action::UsageError,
                  &kOne,
                  {},
                  kEnglish,
                  "one takes 1 argument, not 0"},
        ParseCase{"surplusFile",
                  {"two", "a", "b", "c"},
                  Action::UsageError,
                  &kTwo,
                  {},
                  kEnglish,
                  "two takes 2 arguments, not 3"}),
    testing::RowName{});

TEST(CommandLineParserHelpTest, ListsTheTable) {
  const CommandLineParser parser(kTable);
  EXPECT_EQ(parser.usage(nullptr),
            "Usage: quillon-cli [--lang en|de] COMMAND [ARGUMENTS]\n"
            "       quillon-cli COMMAND --help\n");
  EXPECT_EQ(parser.usage(&kTwo), "Usage: quillon-cli two [--lang en|de] IN OUT\n");
  const std::string help = parser.help(nullptr);
  EXPECT_NE(help.find("\n  one FILE    one file\n  two IN OUT  two files\n"), std::string::npos)
      << help;
  EXPECT_TRUE(parser.help(&kOne).starts_with(
      "Usage: quillon-cli one [--lang en|de] FILE\n\nTakes one file.\n\nOptions:\n"));
}

}  // namespace
}  // namespace quillon
