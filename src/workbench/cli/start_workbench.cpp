#include "workbench/cli/start_workbench.h"

#include <stdexcept>

#include "workbench/cli/exit_status.h"

namespace tiepoint::workbench::cli {

std::unique_ptr<Workbench> startWorkbench(const HostOptions& options) {
  try {
    return std::make_unique<Workbench>(Workbench::Options{options.profile, options.module});
  } catch (const std::runtime_error& error) {
    throw CommandError(ExitStatus::file, error.what());
  }
}

}  // namespace tiepoint::workbench::cli
