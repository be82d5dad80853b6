// What an adjustment was asked for beside the rest: points to carry, and measurements to trace.
#pragma once

#include <string>

#include "workbench/report/discrepancy_tables.h"
#include "workbench/report/length_format.h"
#include "workbench/values/registration.h"

namespace tiepoint::workbench {

/// Places in the common system with their standard deviations; empty without any. There must be an adjustment.
std::string carriedTable(const Registration& registration, const LengthFormat& lengths);

/// A table for each traced measurement: how far every station moves by an error that its test doesn't find, and
/// without the measurement. Empty without any. There must be an adjustment.
std::string traceTables(const Registration& registration, const LengthFormat& lengths, const TableOptions& options);

}  // namespace tiepoint::workbench
