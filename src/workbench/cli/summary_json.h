// A registration, for programs.
#pragma once

#include <string>
#include <vector>

#include "workbench/cli/road.h"

namespace tiepoint::workbench::cli {

/// One JSON object with all that the summary in text form tells; lengths in drawing units, numbers
/// with all their digits. docs/register-json.md describes every key.
std::string summaryJson(const Road& road, const std::vector<std::string>& warnings);

}  // namespace tiepoint::workbench::cli
