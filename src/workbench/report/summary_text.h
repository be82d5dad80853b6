// A registration, for people.
#pragma once

#include <string>

#include "workbench/report/length_format.h"
#include "workbench/values/registration.h"

namespace tiepoint::workbench {

/// Files read, transformations, discrepancies, points that are out and why, RMS, spread, clouds; or what
/// keeps the groups apart. UTF-8, aligned columns, no control characters but line feeds.
std::string summaryText(const Registration& registration, const LengthFormat& lengths);

}  // namespace tiepoint::workbench
