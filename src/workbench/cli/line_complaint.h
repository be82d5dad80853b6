// Why a line of a reference point file can't be read.
#pragma once

#include <string>

#include "workbench/host/workbench.h"

namespace tiepoint::workbench::cli {

/// For a line that the module has refused in that layout: what is wrong with it and, where that is
/// likely, what to do, as a clause such as `has 5 fields where NXYZ has 4 (name x y z)`.
std::string lineComplaint(const std::string& line, Layout layout);

}  // namespace tiepoint::workbench::cli
