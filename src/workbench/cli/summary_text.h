// A registration, for people.
#pragma once

#include <string>

#include "workbench/cli/length_format.h"
#include "workbench/cli/road.h"

namespace tiepoint::workbench::cli {

/// Files read, transformations, discrepancies, points that are out and why, RMS, spread, clouds; or what
/// keeps the groups apart. UTF-8, aligned columns, no control characters but line feeds.
std::string summaryText(const Road& road, const LengthFormat& lengths);

}  // namespace tiepoint::workbench::cli
