// A registration, for programs.
#pragma once

#include <string>

#include "workbench/report/json_parts.h"
#include "workbench/values/registration.h"

namespace tiepoint::workbench {

/// All that the summary in text form tells; lengths in drawing units, numbers with all their digits.
/// docs/register-json.md describes every key.
OrderedJson summaryJson(const Registration& registration);

}  // namespace tiepoint::workbench
