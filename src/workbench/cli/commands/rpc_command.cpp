#include "workbench/cli/commands/rpc_command.h"

#include <cerrno>
#include <iostream>

#include "workbench/host/workbench.h"
#include "workbench/rpc/rpc_server.h"

namespace tiepoint::workbench::cli {

ExitStatus runRpc(const HostOptions& options) {
  Workbench workbench({options.profile, options.module});
  if (!options.document.empty()) workbench.openDocument(options.document);
  RpcServer server(workbench);
  errno = 0;
  server.serve(std::cin, std::cout);
  // A reader that has gone away wanted no more answers; anything else has lost some.
  if (!std::cout && errno != EPIPE) {
    throw CommandError(ExitStatus::file, "standard output can't be written; the last answers are lost");
  }
  return ExitStatus::done;
}

}  // namespace tiepoint::workbench::cli
