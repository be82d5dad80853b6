#include "workbench/cli/cloud_moves.h"

#include <fmt/format.h>

#include <algorithm>
#include <boost/filesystem.hpp>
#include <set>

#include "platform/sdk/od_code_page.h"
#include "workbench/cli/exit_status.h"
#include "workbench/io/text_encoding.h"

namespace tiepoint::workbench::cli {

using namespace ZOR::reg;
namespace fs = boost::filesystem;

namespace {

CloudMove foreseenMove(const std::string& cloud, const SessionState& state, const Results& results) {
  const auto group =
      std::find_if(state.groups.begin(), state.groups.end(), [&](const SessionGroup& g) { return g.name == cloud; });
  if (group == state.groups.end()) return CloudMove::noGroup;
  const auto place = static_cast<std::size_t>(group - state.groups.begin());
  if (results.groups[place].toCommon) return CloudMove::moved;
  return group->inBase ? CloudMove::base : CloudMove::notRegistered;
}

void requireUnmoved(const std::vector<CloudReport>& clouds) {
  for (const CloudReport& cloud : clouds) {
    if (cloud.move == CloudMove::moved && cloud.matrix != OdGeMatrix3d()) {
      throw CommandError(ExitStatus::refused,
                         fmt::format("cloud {} was moved before; applying again would move it once "
                                     "more (--force does)",
                                     cloud.name));
    }
  }
}

}  // namespace

std::vector<CloudOption> cloudsToAdd(const std::vector<std::string>& options, const std::string& option) {
  std::vector<CloudOption> clouds;
  std::set<std::string> names;
  for (const std::string& text : options) {
    CloudOption cloud = parseCloudOption(text, option);
    if (!names.insert(cloud.name).second) {
      throw CommandError(ExitStatus::usage, fmt::format("{} {}: the cloud is named twice", option, text));
    }
    wideFromUtf8(cloud.name);
    const fs::path file(wideFromUtf8(cloud.file));
    boost::system::error_code error;
    if (!fs::is_regular_file(file, error)) {
      throw CommandError(ExitStatus::file, fmt::format("{}: there is no such file (cloud {})", cloud.file, cloud.name));
    }
    cloud.file = fs::absolute(file).lexically_normal().string();
    clouds.push_back(std::move(cloud));
  }
  return clouds;
}

void addClouds(OdDbDatabase& database, const std::vector<CloudOption>& clouds) {
  for (const CloudOption& cloud : clouds) {
    const std::wstring name = wideFromUtf8(cloud.name);
    const std::wstring source = wideFromUtf8(cloud.file);
    if (addCloud(database, name, source)) continue;
    for (const DrawingCloud& known : cloudsOf(database)) {
      if (known.name != name || known.source == source) continue;
      throw CommandError(ExitStatus::refused, fmt::format("the drawing has a cloud {} already, from {}", cloud.name,
                                                          utf8FromWide(known.source)));
    }
  }
}

std::vector<CloudReport> foreseenMoves(const OdDbDatabase& database, const SessionState& state,
                                       const Results& results) {
  std::vector<CloudReport> reports;
  for (const DrawingCloud& cloud : cloudsOf(database)) {
    CloudReport report;
    report.name = utf8FromWide(cloud.name);
    report.source = utf8FromWide(cloud.source);
    // The module knows both names in windows-1251 only.
    report.move = foreseenMove(utf8FromName(odToNarrow(cloud.name)), state, results);
    report.matrix = cloud.matrix;
    reports.push_back(std::move(report));
  }
  return reports;
}

void applyMoves(const OdDbDatabase& database, iMultiRegistrator& session, std::vector<CloudReport>& clouds,
                bool force) {
  if (!force) requireUnmoved(clouds);
  std::list<NamedId> listed;
  session.getPointClouds(listed);
  session.applyTransformations();
  const std::vector<DrawingCloud> after = cloudsOf(database);
  for (std::size_t i = 0; i < clouds.size(); ++i) clouds[i].matrix = after[i].matrix;
}

std::string copyPath(const CloudReport& cloud, const std::string& folder) {
  return (fs::path(wideFromUtf8(folder)) / fs::path(wideFromUtf8(cloud.source)).filename()).string();
}

void writeCopies(std::vector<CloudReport>& clouds, const std::string& folder, bool force) {
  const fs::path target(wideFromUtf8(folder));
  boost::system::error_code error;
  fs::create_directories(target, error);
  boost::system::error_code ignored;
  if (!fs::is_directory(target, ignored)) {
    throw CommandError(ExitStatus::file,
                       fmt::format("--moved {}: the folder can't be made: {}", folder, error.message()));
  }
  std::set<std::string> written;
  for (CloudReport& cloud : clouds) {
    if (cloud.source.empty()) continue;
    const fs::path source(wideFromUtf8(cloud.source));
    const std::string path = copyPath(cloud, folder);
    if (!written.insert(path).second) {
      throw CommandError(ExitStatus::file, path + ": two clouds have files of this name; rename one of them");
    }
    try {
      cloud.copy = CloudCopy{path, writeMovedCloud(source.string(), path, cloud.matrix, force)};
    } catch (const CloudFileError& failure) {
      throw CommandError(ExitStatus::file, failure.what());
    }
  }
}

}  // namespace tiepoint::workbench::cli
