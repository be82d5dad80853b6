// The host of one command.
#pragma once

#include <memory>

#include "workbench/cli/options.h"
#include "workbench/host/workbench.h"

namespace tiepoint::workbench::cli {

/// Throws CommandError(file) when the module or the profile can't be used.
std::unique_ptr<Workbench> startWorkbench(const HostOptions& options);

}  // namespace tiepoint::workbench::cli
