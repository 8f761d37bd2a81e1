#include "cli/terminal.h"

#ifdef _WIN32
#include <io.h>

#include <cstdio>
#else
#include <unistd.h>
#endif

namespace quillon::cli {

#ifdef _WIN32
bool standardInputIsTerminal() { return _isatty(_fileno(stdin)) != 0; }
bool standardErrorIsTerminal() { return _isatty(_fileno(stderr)) != 0; }
#else
bool standardInputIsTerminal() { return ::isatty(STDIN_FILENO) != 0; }
bool standardErrorIsTerminal() { return ::isatty(STDERR_FILENO) != 0; }
#endif

}  // namespace quillon::cli
