// tiepoint clouds
#pragma once

#include "workbench/cli/exit_status.h"
#include "workbench/cli/options.h"

namespace tiepoint::workbench::cli {

/// Adds clouds to a drawing, lists its clouds, and writes moved copies of their files.
ExitStatus runClouds(const CloudsOptions& options);

}  // namespace tiepoint::workbench::cli
