// What an adjustment tells of each station, point and control target, for programs.
#pragma once

#include <cstddef>

#include "workbench/report/json_object_writer.h"
#include "workbench/report/json_parts.h"
#include "workbench/values/registration.h"

namespace tiepoint::workbench {

/// `adjusted` of a group, by its index; null for a base, for a group that takes no part, and without an
/// adjustment.
OrderedJson jsonAdjustedStation(const Registration& registration, std::size_t group);

/// `adjusted` of a point, by its index; null for a point that takes no part, and without an adjustment.
OrderedJson jsonAdjustedPoint(const Registration& registration, std::size_t point);

/// `control`: a row for each target with a given place, those that no station measured last. Empty without
/// an adjustment.
void addControl(const Registration& registration, JsonMembers& json);

}  // namespace tiepoint::workbench
