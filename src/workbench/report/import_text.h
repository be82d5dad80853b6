// An import, for people.
#pragma once

#include <string>

#include "workbench/values/import_report.h"

namespace tiepoint::workbench {

/// The files with what was read of each; empty without files. Of more than 200 those of which something
/// is to be said come first, and most of the others are left out, unless `all` are asked for.
std::string importTable(const ImportReport& import, bool all = false);

/// The same, and what the import command said.
std::string importText(const ImportReport& import);

}  // namespace tiepoint::workbench
