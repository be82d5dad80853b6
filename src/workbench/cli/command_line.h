// The commands of the program and their options.
#pragma once

#include "workbench/cli/exit_status.h"

namespace tiepoint::workbench::cli {

/// Parses the command line, runs the command, and says in one line on standard error what kept it
/// from its end. Never throws.
ExitStatus runCommandLine(int argc, const char* const* argv);

}  // namespace tiepoint::workbench::cli
