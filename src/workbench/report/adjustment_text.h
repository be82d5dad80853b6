// What an adjustment tells beyond a registration's figures.
#pragma once

#include <string>

#include "workbench/report/discrepancy_tables.h"
#include "workbench/report/length_format.h"
#include "workbench/values/registration.h"

namespace tiepoint::workbench {

/// The verdict, the stations, the measurements that need a look, advice; then what was asked for beside: carried
/// points and effects of traced measurements. Each part ends with a line feed, and an empty line stands between
/// them. There must be an adjustment and a registration.
std::string adjustmentText(const Registration& registration, const LengthFormat& lengths, const TableOptions& options);

}  // namespace tiepoint::workbench
