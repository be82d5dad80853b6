// Findings in words.
#pragma once

#include <string>

#include "workbench/values/finding.h"

namespace tiepoint::workbench {

/// One line, without a full stop. Names stand in it as they are: who prints it to a terminal makes it
/// printable.
std::string findingText(const Finding& finding);

}  // namespace tiepoint::workbench
