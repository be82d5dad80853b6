#include "workbench/cli/commands/rpc_command.h"

#include <iostream>

#include "workbench/cli/output.h"
#include "workbench/cli/start_workbench.h"
#include "workbench/host/workbench.h"
#include "workbench/rpc/rpc_server.h"

namespace tiepoint::workbench::cli {

ExitStatus runRpc(const RpcOptions& options) {
  const std::unique_ptr<Workbench> host = startWorkbench(options.host, MissingProfile::made);
  Workbench& workbench = *host;
  if (!options.host.document.empty()) workbench.openDocument(options.host.document);
  RpcServer server(workbench);
  forgetWriteErrors();
  server.serve(std::cin, std::cout);
  // A reader that has gone away wanted no more answers; anything else has lost some.
  if (!std::cout && !hasReaderGone()) {
    throw CommandError(ExitStatus::file, "standard output can't be written; the last answers are lost");
  }
  return ExitStatus::done;
}

}  // namespace tiepoint::workbench::cli
