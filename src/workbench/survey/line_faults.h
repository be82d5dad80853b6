// Why a line of a reference point file can't be read.
#pragma once

#include <string>

#include "workbench/values/import_report.h"

namespace tiepoint::workbench {

/// For a line that the module has refused in that layout; `line` of the fault is left 0.
LineFault lineFault(const std::string& line, Layout layout);

}  // namespace tiepoint::workbench
