// tiepoint register
#pragma once

#include "workbench/cli/exit_status.h"
#include "workbench/cli/options.h"

namespace tiepoint::workbench::cli {

/// From files and a drawing to transformations, printed. `refused` when the groups can't be
/// registered.
ExitStatus runRegister(const RegisterOptions& options);

}  // namespace tiepoint::workbench::cli
