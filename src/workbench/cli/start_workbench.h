// The host of one command.
#pragma once

#include <memory>

#include "workbench/cli/options.h"
#include "workbench/host/workbench.h"

namespace tiepoint::workbench::cli {

/// Of a profile whose file isn't there: one that can be written to is made at the first value.
enum class MissingProfile { refused, made };

/// Throws CommandError(file) when the module or the profile can't be used.
std::unique_ptr<Workbench> startWorkbench(const HostOptions& options, MissingProfile missing = MissingProfile::refused);

}  // namespace tiepoint::workbench::cli
