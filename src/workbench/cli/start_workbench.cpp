#include "workbench/cli/start_workbench.h"

#include <boost/filesystem.hpp>
#include <stdexcept>

#include "workbench/cli/exit_status.h"
#include "workbench/io/text_encoding.h"

namespace tiepoint::workbench::cli {

namespace {

/// A name that was typed wrongly would mean the defaults.
void requireProfile(const std::string& file) {
  boost::system::error_code error;
  const boost::filesystem::path path(wideFromUtf8(file));
  if (file.empty() || boost::filesystem::status(path, error).type() != boost::filesystem::file_not_found) return;
  throw CommandError(ExitStatus::file, "--profile " + file + ": there is no such file");
}

}  // namespace

std::unique_ptr<Workbench> startWorkbench(const HostOptions& options, MissingProfile missing) {
  if (missing == MissingProfile::refused) requireProfile(options.profile);
  try {
    return std::make_unique<Workbench>(Workbench::Options{options.profile, options.module});
  } catch (const std::runtime_error& error) {
    throw CommandError(ExitStatus::file, error.what());
  }
}

}  // namespace tiepoint::workbench::cli
