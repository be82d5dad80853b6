#include "workbench/cli/options.h"

#include <fmt/format.h>

#include <algorithm>

#include "workbench/cli/exit_status.h"
#include "workbench/cli/layouts.h"

namespace tiepoint::workbench::cli {

namespace {

void addFiles(std::vector<LayoutFiles>& runs, Layout layout, const std::vector<std::string>& paths) {
  if (paths.empty()) return;
  if (std::find(paths.begin(), paths.end(), "") != paths.end()) {
    throw CommandError(ExitStatus::usage, "a file's name is empty; is a variable of the shell unset?");
  }
  auto run = std::find_if(runs.begin(), runs.end(), [&](const LayoutFiles& r) { return r.layout == layout; });
  if (run == runs.end()) run = runs.insert(runs.end(), LayoutFiles{layout, {}});
  run->paths.insert(run->paths.end(), paths.begin(), paths.end());
}

}  // namespace

std::vector<LayoutFiles> importRuns(const FileOptions& options) {
  std::vector<LayoutFiles> runs;
  addFiles(runs, layoutByName(options.layout), options.files);
  addFiles(runs, Layout::nxyz, options.nxyz);
  addFiles(runs, Layout::xyz, options.xyz);
  addFiles(runs, Layout::xyzw, options.xyzw);
  addFiles(runs, Layout::nxyzw, options.nxyzw);
  return runs;
}

CloudOption parseCloudOption(const std::string& text, const std::string& option) {
  const std::size_t equals = text.find('=');
  if (equals == std::string::npos || equals == 0 || equals + 1 == text.size()) {
    throw CommandError(ExitStatus::usage, fmt::format("{} {}: write it as NAME=FILE", option, text));
  }
  return {text.substr(0, equals), text.substr(equals + 1)};
}

}  // namespace tiepoint::workbench::cli
