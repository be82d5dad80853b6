// Standard deviations of measurements in a text file.
#pragma once

#include <string>
#include <vector>

#include "workbench/values/adjustment_request.h"

namespace tiepoint::workbench {

/// A line `GROUP S` or `GROUP POINT S` each, S in drawing units and above 0; a name of several words stands
/// in quotation marks. The rest is as in `line_fields.h`. `path` is UTF-8. Throws Refused: (sigmasLine) with
/// the line's number, and what a file that can't be read throws.
std::vector<SigmaChoice> readSigmasFile(const std::string& path);

}  // namespace tiepoint::workbench
