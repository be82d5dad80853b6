#include "workbench/survey/output_targets.h"

#include <algorithm>
#include <boost/filesystem.hpp>
#include <map>
#include <stdexcept>
#include <system_error>

#include "workbench/io/durable_file.h"
#include "workbench/io/text_encoding.h"

namespace tiepoint::workbench {

namespace fs = boost::filesystem;

namespace {

fs::path pathOf(const std::string& utf8) { return fs::path(wideFromUtf8(utf8)); }

bool isInput(const Replacing& replacing, const std::string& path) {
  return std::any_of(replacing.inputs.begin(), replacing.inputs.end(), [&](const std::string& input) {
    boost::system::error_code error;
    return !input.empty() && fs::equivalent(pathOf(input), pathOf(path), error);
  });
}

/// The path itself where its links lead nowhere.
std::string behindLinks(const std::string& path) {
  try {
    return pathBehindLinks(path);
  } catch (const std::system_error&) {
    return path;
  }
}

/// One text for all ways to write a path; of a file that isn't there, its folder's.
std::string canonicalPath(const std::string& utf8) {
  boost::system::error_code error;
  const fs::path canonical = fs::weakly_canonical(fs::absolute(pathOf(behindLinks(utf8))), error);
  return error ? utf8 : canonical.generic_string();
}

[[noreturn]] void refuse(RefusalKind kind, const OutputTarget& target) {
  Refusal refusal{kind, target.field, target.given.empty() ? target.path : target.given};
  if (!target.given.empty()) refusal.name = target.path;
  throw Refused(std::move(refusal));
}

}  // namespace

void requireFolder(const OutputTarget& target) {
  const fs::path folder = pathOf(target.path).parent_path();
  boost::system::error_code error;
  if (folder.empty() || fs::is_directory(folder, error)) return;
  Refusal refusal{RefusalKind::noFolder, target.field, target.path};
  refusal.other = folder.string();
  throw Refused(std::move(refusal));
}

void requireReplaceable(const Replacing& replacing, const OutputTarget& target) {
  boost::system::error_code error;
  const fs::file_status status = fs::status(pathOf(target.path), error);
  if (!fs::exists(status)) return;
  if (fs::is_directory(status)) refuse(RefusalKind::targetIsFolder, target);
  // A device or a pipe would be gone, and a file in its place.
  if (!fs::is_regular_file(status)) refuse(RefusalKind::targetNotOrdinary, target);
  requireNotRead(replacing, target);
  if (!replacing.force) refuse(RefusalKind::targetExists, target);
}

void requireNotRead(const Replacing& replacing, const OutputTarget& target) {
  if (isInput(replacing, target.path)) refuse(RefusalKind::targetIsRead, target);
}

void requireDifferent(const std::vector<OutputTarget>& targets) {
  std::map<std::string, const OutputTarget*> targetOf;
  for (const OutputTarget& target : targets) {
    const auto [known, isNew] = targetOf.emplace(canonicalPath(target.path), &target);
    if (isNew) continue;
    Refusal refusal{RefusalKind::sameTarget, known->second->field, target.path};
    refusal.otherField = target.field;
    throw Refused(std::move(refusal));
  }
}

void makeFolder(Field field, const std::string& folder) {
  boost::system::error_code error, ignored;
  fs::create_directories(pathOf(folder), error);
  if (fs::is_directory(pathOf(folder), ignored)) return;
  Refusal refusal{RefusalKind::folderNotMade, field, folder};
  refusal.cause = error.message();
  throw Refused(std::move(refusal));
}

void putFile(const Replacing& replacing, const OutputTarget& target, const std::string& content) {
  requireReplaceable(replacing, target);
  try {
    replaceFile(target.path, content);
  } catch (const std::runtime_error& error) {
    Refusal refusal{RefusalKind::notWritten, target.field, target.path};
    refusal.cause = error.what();
    throw Refused(std::move(refusal));
  }
}

}  // namespace tiepoint::workbench
