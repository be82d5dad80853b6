// Why a line of a reference point file can't be read, for people.
#pragma once

#include <string>

#include "workbench/values/import_report.h"

namespace tiepoint::workbench {

/// What is wrong with the line and, where that is likely, what to do, as a clause such as
/// `has 5 fields where NXYZ has 4 (name x y z)`.
std::string lineFaultText(const LineFault& fault);

}  // namespace tiepoint::workbench
