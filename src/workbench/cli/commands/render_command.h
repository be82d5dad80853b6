// tiepoint render
#pragma once

#include "workbench/cli/exit_status.h"
#include "workbench/cli/options.h"

namespace tiepoint::workbench::cli {

/// Draws the points of a drawing into a file.
ExitStatus runRender(const RenderOptions& options);

}  // namespace tiepoint::workbench::cli
