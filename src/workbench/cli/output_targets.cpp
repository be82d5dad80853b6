#include "workbench/cli/output_targets.h"

#include <fmt/format.h>

#include <algorithm>
#include <boost/filesystem.hpp>
#include <map>

#include "workbench/cli/exit_status.h"
#include "workbench/io/durable_file.h"
#include "workbench/io/text_encoding.h"

namespace tiepoint::workbench::cli {

namespace fs = boost::filesystem;

namespace {

fs::path pathOf(const std::string& utf8) { return fs::path(wideFromUtf8(utf8)); }

/// The files that a command reads.
std::vector<std::string> inputs(const RegisterOptions& options) {
  std::vector<std::string> paths{options.weightsFile, options.host.document, options.host.profile, options.host.module};
  const FileOptions& files = options.files;
  for (const auto* some : {&files.files, &files.nxyz, &files.xyz, &files.xyzw, &files.nxyzw}) {
    paths.insert(paths.end(), some->begin(), some->end());
  }
  for (const std::string& cloud : options.clouds) paths.push_back(parseCloudOption(cloud, "--cloud").file);
  return paths;
}

bool isInput(const RegisterOptions& options, const std::string& path) {
  const std::vector<std::string> paths = inputs(options);
  return std::any_of(paths.begin(), paths.end(), [&](const std::string& input) {
    boost::system::error_code error;
    return !input.empty() && fs::equivalent(pathOf(input), pathOf(path), error);
  });
}

/// One text for all ways to write a path; of a file that isn't there, its folder's.
std::string placeOf(const std::string& utf8) {
  boost::system::error_code error;
  const fs::path place = fs::weakly_canonical(fs::absolute(pathOf(utf8)), error);
  return error ? utf8 : place.generic_string();
}

[[noreturn]] void refuse(const OutputTarget& target, const std::string& why) {
  throw CommandError(ExitStatus::file, fmt::format("{}: {}{}", target.option, target.path, why));
}

}  // namespace

void requireFolder(const OutputTarget& target) {
  const fs::path folder = pathOf(target.path).parent_path();
  boost::system::error_code error;
  if (folder.empty() || fs::is_directory(folder, error)) return;
  throw CommandError(ExitStatus::file, fmt::format("{} {}: there is no folder {}; make it first", target.option,
                                                   target.path, folder.string()));
}

void requireReplaceable(const RegisterOptions& options, const OutputTarget& target) {
  boost::system::error_code error;
  const fs::file_status status = fs::status(pathOf(target.path), error);
  if (!fs::exists(status)) return;
  if (fs::is_directory(status)) refuse(target, ": this is a folder; name a file in it");
  // A device or a pipe would be gone, and a file in its place.
  if (!fs::is_regular_file(status)) refuse(target, ": this is no ordinary file; choose another place");
  requireNotRead(options, target);
  if (!options.force) refuse(target, " exists; --force replaces it");
}

void requireNotRead(const RegisterOptions& options, const OutputTarget& target) {
  if (isInput(options, target.path)) refuse(target, ": this command reads it; choose another place");
}

void requireDifferent(const std::vector<OutputTarget>& targets) {
  std::map<std::string, const OutputTarget*> optionOf;
  for (const OutputTarget& target : targets) {
    const auto [known, isNew] = optionOf.emplace(placeOf(target.path), &target);
    if (isNew) continue;
    throw CommandError(ExitStatus::usage, fmt::format("{} and {} both write {}; name two files", known->second->option,
                                                      target.option, target.path));
  }
}

void putFile(const RegisterOptions& options, const OutputTarget& target, const std::string& content) {
  requireReplaceable(options, target);
  try {
    replaceFile(target.path, content);
  } catch (const std::runtime_error& error) {
    throw CommandError(ExitStatus::file, fmt::format("{}: {}", target.option, error.what()));
  }
}

}  // namespace tiepoint::workbench::cli
