#pragma once
// The settings dialog's port test: ports 1 to 16 are opened and closed in turn, and one box
// titled "Einstellungen" lists those that worked.

#include <functional>
#include <string>
#include <vector>

#include "project/user_dialog.h"

namespace quillon {

inline constexpr const char* kPortTestTitle = "Einstellungen";
inline constexpr int kPortTestFirst = 1;
inline constexpr int kPortTestLast = 16;

// " COM " + n + " verfügbar!" + CR for every available port in ascending order, or
// "No com-interface available" (Windows-1252 text).
[[nodiscard]] std::string PortTestText(const std::vector<int>& available);
[[nodiscard]] Box PortTestBox(const std::vector<int>& available);

// Tries every port number with `canOpen`; `testing` hears each number before it is tried (the
// dialog shows it in lblComNr).
[[nodiscard]] std::vector<int> ScanPorts(const std::function<bool(int)>& canOpen,
                                         const std::function<void(int)>& testing = {});

// Opens port `number` with "9600, N ,8 ,1" and closes it again.
[[nodiscard]] bool CanOpenPort(int number);

// The whole test as the dialog's Test button runs it: the text of its box.
[[nodiscard]] std::string RunPortTest(const std::function<void(int)>& testing = {});

}  // namespace quillon
