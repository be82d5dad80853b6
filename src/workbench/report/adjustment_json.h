// What an adjustment tells of the whole survey, for programs.
#pragma once

#include "workbench/report/json_object_writer.h"
#include "workbench/values/registration.h"

namespace tiepoint::workbench {

/// `adjustment`; null without an adjustment, and where nothing was left to adjust. Of an undetermined one,
/// what depends on the shape of the minimum is null or empty.
void addAdjustment(const Registration& registration, JsonMembers& json);

}  // namespace tiepoint::workbench
