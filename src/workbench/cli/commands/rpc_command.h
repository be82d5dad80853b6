// tiepoint rpc
#pragma once

#include "workbench/cli/exit_status.h"
#include "workbench/cli/options.h"

namespace tiepoint::workbench::cli {

/// Answers JSON-RPC requests, one a line, from standard input on standard output, until the end of
/// the input.
ExitStatus runRpc(const RpcOptions& options);

}  // namespace tiepoint::workbench::cli
