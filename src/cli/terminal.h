#pragma once
// Whether a person sits at the standard streams: questions are asked only when one can answer,
// and progress bars drawn only where one can see them.

namespace quillon::cli {

[[nodiscard]] bool standardInputIsTerminal();
[[nodiscard]] bool standardErrorIsTerminal();

}  // namespace quillon::cli
