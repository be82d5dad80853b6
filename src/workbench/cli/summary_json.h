// A registration, for programs.
#pragma once

#include <string>
#include <vector>

#include "workbench/cli/json_writer.h"
#include "workbench/cli/road.h"

namespace tiepoint::workbench::cli {

/// One JSON object with all that the summary in text form tells; lengths in drawing units, numbers
/// with all their digits. docs/register-json.md describes every key. Goes to the sink in pieces: of a
/// site of thousands of stations it is longer than all that was read.
void writeSummaryJson(const Road& road, const std::vector<std::string>& warnings, const TextSink& sink);

}  // namespace tiepoint::workbench::cli
