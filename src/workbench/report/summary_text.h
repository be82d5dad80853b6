// A registration, for people.
#pragma once

#include <string>

#include "workbench/report/discrepancy_tables.h"
#include "workbench/report/length_format.h"
#include "workbench/values/registration.h"

namespace tiepoint::workbench {

/// Files read, transformations, discrepancies, points that are out and why, the figures for a protocol,
/// spread, clouds; or what keeps the groups apart. UTF-8, aligned columns, no control characters but line
/// feeds. Tables of more than 200 rows show their worst rows alone, unless all are asked for.
std::string summaryText(const Registration& registration, const LengthFormat& lengths,
                        const TableOptions& options = {});

}  // namespace tiepoint::workbench
