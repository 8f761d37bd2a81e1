#pragma once
// The transfer engine still spells the received hexadecimal fields this way; everything else
// reads them through wire/wire_format.h, where they now live.

#include "wire/wire_format.h"

namespace quillon {

using wire::fixedField;
using wire::hexPrefixValue;

}  // namespace quillon
