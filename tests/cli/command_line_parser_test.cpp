#include "cli/command_line_parser.h"

#include <gtest/gtest.h>

#include <sstream>

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

std::vector<std::string> words(const std::string& line) {
  std::vector<std::string> out;
  std::istringstream in(line);
  for (std::string word; in >> word;) out.push_back(word);
  return out;
}

TEST(CommandLineParser, Parses) {
  struct Row {
    const char* commandLine;
    Action action;
    const Command* command;
    const char* positionals;
    int language;
    std::string error;
  };
  const Row rows[] = {
      {"two a b", Action::Run, &kTwo, "a b", kEnglish, ""},
      {"--lang de one a", Action::Run, &kOne, "a", kGerman, ""},
      {"one a --lang=de", Action::Run, &kOne, "a", kGerman, ""},
      {"one -- --help", Action::Run, &kOne, "--help", kEnglish, ""},
      {"--help", Action::Help, nullptr, "", kEnglish, ""},
      {"one a b -h", Action::Help, &kOne, "", kEnglish, ""},  // help ignores the argument count
      {"three", Action::UsageError, nullptr, "", kEnglish, "unknown command 'three'"},
      {"one -x a", Action::UsageError, &kOne, "", kEnglish, "unknown option '-x'"},
      {"--lang fr one a", Action::UsageError, nullptr, "", kEnglish,
       "unknown language 'fr': use en or de"},
      {"one a --lang", Action::UsageError, &kOne, "", kEnglish,
       "option --lang needs a value: en or de"},
      {"one", Action::UsageError, &kOne, "", kEnglish, "one takes 1 argument, not 0"},
      {"two a b c", Action::UsageError, &kTwo, "", kEnglish, "two takes 2 arguments, not 3"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.commandLine);
    const Invocation invocation = CommandLineParser(kTable).parse(words(row.commandLine));
    EXPECT_EQ(invocation.action, row.action);
    EXPECT_EQ(invocation.command, row.command);
    EXPECT_EQ(invocation.arguments, words(row.positionals));
    EXPECT_EQ(invocation.language, row.language);
    EXPECT_EQ(invocation.error, row.error);
  }
}

TEST(CommandLineParser, HelpListsTheTable) {
  const CommandLineParser parser(kTable);
  EXPECT_EQ(parser.usage(&kTwo), "Usage: quillon-cli two [--lang en|de] IN OUT\n");
  EXPECT_NE(parser.help(nullptr).find("\n  one FILE    one file\n  two IN OUT  two files\n"),
            std::string::npos);
  EXPECT_TRUE(parser.help(&kOne).starts_with(
      "Usage: quillon-cli one [--lang en|de] FILE\n\nTakes one file.\n\nOptions:\n"));
}

}  // namespace
}  // namespace quillon
