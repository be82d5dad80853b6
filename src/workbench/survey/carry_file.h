// Points of stations in a text file, to be carried to the common system.
#pragma once

#include <string>
#include <vector>

#include "workbench/values/adjustment_request.h"

namespace tiepoint::workbench {

/// A line `GROUP x y z` each, in the station's system and in drawing units; a name of several words stands in
/// quotation marks. The rest is as in `line_fields.h`. `path` is UTF-8. Throws Refused: (carryLine) with the
/// line's number, and what a file that can't be read throws.
std::vector<StationPlace> readCarryFile(const std::string& path);

}  // namespace tiepoint::workbench
