// tiepoint groups
#pragma once

#include "workbench/cli/exit_status.h"
#include "workbench/cli/options.h"

namespace tiepoint::workbench::cli {

/// Lists the groups of reference points that a drawing holds.
ExitStatus runGroups(const GroupsOptions& options);

}  // namespace tiepoint::workbench::cli
