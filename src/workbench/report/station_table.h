// How well an adjustment knows each station.
#pragma once

#include <string>

#include "workbench/report/discrepancy_tables.h"
#include "workbench/report/length_format.h"
#include "workbench/values/registration.h"

namespace tiepoint::workbench {

/// Standard deviations of each station, the error of a measurement that its tests find, its redundancy.
std::string stationTable(const Registration& registration, const LengthFormat& lengths, const TableOptions& options);

}  // namespace tiepoint::workbench
