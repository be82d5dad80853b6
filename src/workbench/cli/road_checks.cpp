#include "workbench/cli/road_checks.h"

#include <fmt/format.h>

#include <algorithm>
#include <boost/filesystem.hpp>
#include <boost/filesystem/path.hpp>

#include "workbench/cli/exit_status.h"
#include "workbench/cli/output_targets.h"
#include "workbench/io/text_encoding.h"
#include "workbench/report/suggestion.h"
#include "workbench/session/stored_groups.h"
#include "workbench/values/session_state.h"

namespace tiepoint::workbench::cli {

namespace fs = boost::filesystem;

namespace {

constexpr const char* ending = ".txt";

std::string withoutEnding(const std::string& name) {
  const std::size_t length = name.size();
  return length > 4 && name.compare(length - 4, 4, ending) == 0 ? name.substr(0, length - 4) : name;
}

/// The names by which the session will know the groups.
std::vector<std::string> groupsToCome(Workbench& workbench, const std::vector<LayoutFiles>& runs) {
  std::vector<std::string> names = groupsOfFiles(runs);
  if (HostDocument* const document = workbench.activeDocument()) {
    const OdDbDatabasePtr database = document->database();
    for (const StoredGroup& group : storedGroups(*database)) names.push_back(utf8FromWide(group.name));
  }
  for (std::string& name : names) name = sessionName(name);
  return names;
}

}  // namespace

CommonPointsTarget commonPointsTarget(const RegisterOptions& options) {
  const std::string& file = options.commonPoints;
  const fs::path path(wideFromUtf8(file));
  CommonPointsTarget target;
  const std::string name = withoutEnding(path.filename().string());
  target.fileName = name + ending;
  target.path = (path.parent_path() / fs::path(wideFromUtf8(target.fileName))).string();
  target.name = nameFromUtf8(name);
  if (!fs::windows_name(target.name)) {
    throw CommandError(ExitStatus::usage, fmt::format("--common-points {}: \"{}\" isn't a file name that every system "
                                                      "takes",
                                                      file, name));
  }
  requireFolder({"--common-points", file});
  requireReplaceable(options, {fmt::format("--common-points {}", file), target.path});
  return target;
}

void openDrawing(Workbench& workbench, const std::string& document, bool hasFiles) {
  if (document.empty() && !hasFiles) {
    throw CommandError(ExitStatus::usage,
                       "nothing to register; name files of reference points, or a drawing with "
                       "--document FILE");
  }
  boost::system::error_code error;
  const bool isThere = !document.empty() && fs::exists(fs::path(wideFromUtf8(document)), error);
  if (isThere || !hasFiles) workbench.openDocument(document, false);
}

void makeDrawing(Workbench& workbench, const std::string& document) {
  if (workbench.activeDocument()) return;
  if (document.empty()) {
    workbench.openTemporaryDocument();
  } else {
    workbench.openDocument(document);
  }
}

void checkGroupNames(Workbench& workbench, const RegisterOptions& options, const std::vector<LayoutFiles>& runs) {
  const std::vector<std::string> names = groupsToCome(workbench, runs);
  const auto check = [&](const std::string& wanted, const std::string& option) {
    if (std::find(names.begin(), names.end(), sessionName(wanted)) != names.end()) return;
    throw CommandError(ExitStatus::usage, fmt::format("{}: there is no group \"{}\"{}", option, wanted,
                                                      suggestion(sessionName(wanted), names)));
  };
  for (const std::string& base : options.base) check(base, "--base " + base);
  for (const std::string& cloud : options.clouds) check(parseCloudOption(cloud, "--cloud").name, "--cloud " + cloud);
}

}  // namespace tiepoint::workbench::cli
