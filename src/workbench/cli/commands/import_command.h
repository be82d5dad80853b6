// tiepoint import
#pragma once

#include "workbench/cli/exit_status.h"
#include "workbench/cli/options.h"

namespace tiepoint::workbench::cli {

/// Takes files into a drawing. `refused` when the drawing had the group of a file already.
ExitStatus runImport(const ImportOptions& options);

}  // namespace tiepoint::workbench::cli
