// An import, for people.
#pragma once

#include <string>

#include "workbench/values/import_report.h"

namespace tiepoint::workbench {

/// The files with what was read of each; empty without files.
std::string importTable(const ImportReport& import);

/// The same, and what the import command said.
std::string importText(const ImportReport& import);

}  // namespace tiepoint::workbench
