#include "workbench/survey/cloud_moves.h"

#include <algorithm>
#include <boost/filesystem.hpp>
#include <map>
#include <set>

#include "workbench/clouds/moved_cloud.h"
#include "workbench/io/stand_in_names.h"
#include "workbench/io/text_encoding.h"
#include "workbench/survey/output_targets.h"
#include "workbench/values/refusal.h"
#include "workbench/values/session_state.h"

namespace tiepoint::workbench {

using namespace ZOR::reg;
namespace fs = boost::filesystem;

namespace {

const GroupOutcome* groupOf(const std::string& cloud, const std::vector<GroupOutcome>& groups) {
  const auto group = std::find_if(groups.begin(), groups.end(), [&](const GroupOutcome& g) { return g.name == cloud; });
  return group == groups.end() ? nullptr : &*group;
}

CloudMove plannedMove(const std::string& cloud, const std::vector<GroupOutcome>& groups) {
  const GroupOutcome* const group = groupOf(cloud, groups);
  if (!group) return CloudMove::noGroup;
  if (group->toCommon) return CloudMove::moved;
  return group->inBase ? CloudMove::base : CloudMove::notRegistered;
}

void requireUnmoved(const std::vector<CloudReport>& clouds) {
  for (const CloudReport& cloud : clouds) {
    if (cloud.move != CloudMove::moved || !(cloud.matrix != OdGeMatrix3d())) continue;
    throw Refused({RefusalKind::cloudMovedBefore, Field::apply, "", cloud.name});
  }
}

void readBack(const OdDbDatabase& database, std::vector<CloudReport>& clouds) {
  const std::vector<DrawingCloud> after = cloudsOf(database);
  for (std::size_t i = 0; i < clouds.size(); ++i) clouds[i].matrix = after[i].matrix;
}

void writeCopy(CloudReport& cloud, const std::string& path, bool force) {
  const fs::path source(wideFromUtf8(cloud.source));
  try {
    const MovedCloud counts = writeMovedCloud(source.string(), path, cloud.matrix, force);
    cloud.copy = CloudCopy{path, counts.points, counts.otherLines};
  } catch (const CloudFileError& failure) {
    Refusal refusal{RefusalKind::cloudFile, Field::moved, path, cloud.name};
    refusal.cause = failure.what();
    throw Refused(std::move(refusal));
  }
}

}  // namespace

std::vector<CloudRequest> cloudsToAdd(const std::vector<CloudRequest>& requests) {
  std::vector<CloudRequest> clouds;
  std::set<std::string> names;
  for (CloudRequest cloud : requests) {
    if (!names.insert(cloud.name).second) {
      throw Refused({RefusalKind::cloudTwice, Field::cloud, cloud.name + "=" + cloud.path, cloud.name});
    }
    wideFromUtf8(cloud.name);
    const fs::path file(wideFromUtf8(cloud.path));
    boost::system::error_code error;
    if (!fs::is_regular_file(file, error)) {
      throw Refused({RefusalKind::cloudFileMissing, Field::cloud, cloud.path, cloud.name});
    }
    cloud.path = fs::absolute(file).lexically_normal().string();
    clouds.push_back(std::move(cloud));
  }
  return clouds;
}

void addClouds(OdDbDatabase& database, const std::vector<CloudRequest>& clouds) {
  for (const CloudRequest& cloud : clouds) {
    // By its name it finds its group, which stands in the drawing under such a name too.
    const std::wstring name = wideFromUtf8(standInGroupName(cloud.name));
    const std::wstring source = wideFromUtf8(cloud.path);
    if (addCloud(database, name, source)) continue;
    for (const DrawingCloud& known : cloudsOf(database)) {
      if (known.name != name || known.source == source) continue;
      Refusal refusal{RefusalKind::cloudTaken, Field::cloud, cloud.path, cloud.name};
      refusal.other = utf8FromWide(known.source);
      throw Refused(std::move(refusal));
    }
  }
}

std::vector<CloudReport> cloudsIn(const OdDbDatabase& database) {
  std::vector<CloudReport> reports;
  for (const DrawingCloud& cloud : cloudsOf(database)) {
    CloudReport report;
    report.name = nameOfStandIn(utf8FromWide(cloud.name));
    report.source = utf8FromWide(cloud.source);
    report.matrix = cloud.matrix;
    reports.push_back(std::move(report));
  }
  return reports;
}

std::vector<CloudReport> plannedMoves(const OdDbDatabase& database, const std::vector<GroupOutcome>& groups) {
  std::vector<CloudReport> reports = cloudsIn(database);
  const std::vector<DrawingCloud> clouds = cloudsOf(database);
  for (std::size_t i = 0; i < reports.size(); ++i) {
    reports[i].move = plannedMove(sessionNameOfStored(clouds[i].name), groups);
  }
  return reports;
}

void applyMoves(const OdDbDatabase& database, iMultiRegistrator& session, std::vector<CloudReport>& clouds,
                bool force) {
  if (!force) requireUnmoved(clouds);
  std::list<NamedId> listed;
  session.getPointClouds(listed);
  session.applyTransformations();
  readBack(database, clouds);
}

void applyMoves(OdDbDatabase& database, const std::vector<GroupOutcome>& groups, std::vector<CloudReport>& clouds,
                bool force) {
  if (!force) requireUnmoved(clouds);
  std::map<std::wstring, OdGeMatrix3d> motions;
  const std::vector<DrawingCloud> inDrawing = cloudsOf(database);
  for (std::size_t i = 0; i < clouds.size(); ++i) {
    if (clouds[i].move != CloudMove::moved) continue;
    motions.emplace(inDrawing[i].name, *groupOf(sessionNameOfStored(inDrawing[i].name), groups)->toCommon);
  }
  moveClouds(database, motions);
  readBack(database, clouds);
}

std::string copyPath(const CloudReport& cloud, const std::string& folder) {
  return (fs::path(wideFromUtf8(folder)) / fs::path(wideFromUtf8(cloud.source)).filename()).string();
}

void writeCopies(std::vector<CloudReport>& clouds, const std::string& folder, bool force, Progress& progress) {
  makeFolder(Field::moved, folder);
  const StageScope stage(progress, Stage::movingClouds);
  std::set<std::string> written;
  for (std::size_t i = 0; i < clouds.size(); ++i) {
    step(progress, i, clouds.size());
    if (clouds[i].source.empty()) continue;
    const std::string path = copyPath(clouds[i], folder);
    if (!written.insert(path).second) throw Refused({RefusalKind::copiesCollide, Field::moved, path});
    writeCopy(clouds[i], path, force);
  }
}

}  // namespace tiepoint::workbench
