#pragma once
// The end-to-end tests' name for the one simulator helper.

#include "sim_module.h"

namespace quillon::testing {
using SimProcess = SimModule;
}  // namespace quillon::testing
