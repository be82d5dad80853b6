// A report of an adjusted survey as an HTML document.
#pragma once

#include <string>

#include "workbench/values/registration.h"

namespace tiepoint::workbench {

/// One document that needs nothing beside it: the points with their residuals, the groups with their points,
/// or the whole result. `registration` is adjusted.
std::string adjustmentReport(const Registration& registration, ReportKind kind, Unit unit);

}  // namespace tiepoint::workbench
