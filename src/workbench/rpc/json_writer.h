// From JSON to text.
#pragma once

#include <string>

#include "workbench/rpc/json_types.h"

namespace tiepoint::workbench {

/// On one line, without blanks. A double is written with the fewest digits that read back as the
/// same double, and can be told from a whole number; it must be finite. Bytes of a text that
/// aren't UTF-8 become U+FFFD.
std::string writeJson(const OrderedJson& value);

}  // namespace tiepoint::workbench
