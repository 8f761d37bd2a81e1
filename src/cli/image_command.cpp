// quillon-cli image KIND FILE.EAY [-o OUT] [--identifier]: the bytes a download would send.

#include <optional>

#include "cli/command.h"
#include "cli/command_line_parser.h"
#include "cli/terminal_dialog.h"
#include "link/start_identifier.h"
#include "project/atomic_file.h"
#include "transfer/data_image.h"

namespace quillon::cli {

extern const Command kImageCommand;

namespace {

inline constexpr int kExitImageRefused = 65;  // the download would send nothing

class NoStatus : public StatusDisplay {
 public:
  void setStatus(StatusPanel /*panel*/, const std::string& /*text*/) override {}
};

struct ImageOptions {
  char kind = '\0';
  std::string projectPath;
  std::optional<std::string> outputPath;
  bool identifier = false;
};

std::optional<char> kindOf(const std::string& argument) {
  if (argument.size() != 1) return std::nullopt;
  const char kind = upperLetter(argument.front());
  if (kind == kKindMessages || kind == kKindPhoneNumbers || kind == kKindConfiguration ||
      kind == kKindControllerData) {
    return kind;
  }
  return std::nullopt;
}

// Reads KIND, FILE.EAY, -o OUT and --identifier in any order; an error text on failure.
std::optional<std::string> parseOptions(const std::vector<std::string>& arguments,
                                        ImageOptions& options) {
  std::vector<std::string> positional;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    if (argument == "-o" || argument == "--output") {
      if (i + 1 >= arguments.size()) return "option " + argument + " needs a file name";
      options.outputPath = arguments[++i];
    } else if (argument == "--identifier") {
      options.identifier = true;
    } else if (argument.size() > 1 && argument.front() == '-') {
      return "unknown option '" + argument + "'";
    } else {
      positional.push_back(argument);
    }
  }
  if (positional.size() != 2) return "image takes KIND and FILE.EAY";
  const auto kind = kindOf(positional[0]);
  if (!kind) return "unknown kind '" + positional[0] + "': use M, T, P or Y";
  options.kind = *kind;
  options.projectPath = positional[1];
  return std::nullopt;
}

int runImage(const CommandContext& context) {
  ImageOptions options;
  if (const auto error = parseOptions(context.arguments, options)) {
    context.err << "quillon-cli: " << *error << "\n"
                << CommandLineParser(CommandTable()).usage(&kImageCommand)
                << "Try 'quillon-cli image --help' for more information.\n";
    return kExitUsage;
  }

  TerminalDialog dialog(context.err);
  Project project;
  const LoadResult loaded = ProjectFileLoad(options.projectPath, project, context.texts, dialog);
  if (loaded.status != LoadStatus::Ok) return ExitCodeFor(loaded.status);

  NoStatus status;
  const ModuleLimits limits;
  // No module is asked, so no phone-number count is reported.
  const DownloadImage built = buildDownloadImage(options.kind, project, context.texts, limits, 0);
  showImageNotes(built.notes, dialog, status);
  if (built.refused) return kExitImageRefused;

  const std::string bytes =
      options.identifier ? MakeStartIdentifier(options.kind, built.image) + "\n" : built.image;
  if (!options.outputPath) {
    context.out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return kExitOk;
  }
  const WriteResult written = WriteFileReplacing(*options.outputPath, bytes);
  if (!written.ok) {
    context.err << "quillon-cli: cannot write " << *options.outputPath << ": " << written.error
                << "\n";
    return kExitCannotWrite;
  }
  return kExitOk;
}

}  // namespace

const Command kImageCommand{
    "image",
    "KIND FILE.EAY [-o OUT] [--identifier]",
    0,
    "write the data image that a download of one kind would send",
    "Loads FILE.EAY and writes the exact bytes that a download of KIND would send to the\n"
    "module: M messages, T phone numbers, P configuration (PIN), Y flag table. The\n"
    "image goes to the standard output, or to OUT with -o. Warnings go to the error\n"
    "output. Exit status 65 when the download would send nothing (too much text, PIN\n"
    "refused), 9 when FILE.EAY is missing.\n"
    "\n"
    "  -o OUT        writes the image to OUT instead of the standard output; OUT is\n"
    "                replaced as a whole, or left as it was when that fails (73)\n"
    "  --identifier  writes the start identifier (kind and length in hexadecimal,\n"
    "                e.g. P0009) and a line break instead of the image\n",
    runImage,
    true,
};

}  // namespace quillon::cli
