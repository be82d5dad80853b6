// An import, for people.
#pragma once

#include <string>

#include "workbench/cli/import_files.h"

namespace tiepoint::workbench::cli {

/// The files with what was read of each; empty without files.
std::string importTable(const Import& import);

/// The same, and what the import command said.
std::string importText(const Import& import);

}  // namespace tiepoint::workbench::cli
