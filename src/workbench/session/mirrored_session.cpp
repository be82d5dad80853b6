#include "workbench/session/mirrored_session.h"

#include <limits>
#include <new>
#include <utility>

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

/// No cloud has this number: a list's numbers count from 0.
constexpr std::uint64_t notListed = std::numeric_limits<std::uint64_t>::max();

/// An error is on its way already, and stays the one.
template <class Take>
void tryTo(Take take) {
  try {
    take();
  } catch (...) {
    return;
  }
}

/// Passes a call on, and takes over what it has done when it wasn't refused. Only memory can run out
/// before a session has done its part; any other error comes from the host, which is told at the end.
template <class Call, class Take>
bool passOn(Call call, Take take) {
  bool isDone = false;
  try {
    isDone = call();
  } catch (const std::bad_alloc&) {
    throw;
  } catch (...) {
    tryTo(take);
    throw;
  }
  if (isDone) take();
  return isDone;
}

/// The same for an operation that can't refuse.
template <class Call, class Take>
void passOnAlways(Call call, Take take) {
  passOn(
      [&] {
        call();
        return true;
      },
      take);
}

}  // namespace

MirroredSession::MirroredSession(std::unique_ptr<iMultiRegistrator> session_) : session(std::move(session_)) {}

MirroredSession::~MirroredSession() = default;

const SessionState& MirroredSession::state() {
  if (namesAreOld) askNames();
  if (clustersAreOld) askClusters();
  if (limitsAreOld) {
    std::uint64_t maxIterations = 0;
    double criteria = 0.0, distance = 0.0, side = 0.0, minSideDifference = 0.0;
    session->getIterationLimits(maxIterations, criteria);
    session->getMatchDistanceTolerance(distance);
    session->getTriangleMatchTolerances(side, minSideDifference);
    mirror.setIterationLimits(maxIterations, criteria);
    mirror.setTolerances(distance, side, minSideDifference);
    limitsAreOld = false;
  }
  return mirror.state();
}

void MirroredSession::askNames() {
  std::list<NamedId> names;
  session->getCommonPointNames(names);
  mirror.setNames(names);
  namesAreOld = false;
}

void MirroredSession::askClusters() {
  GroupClusters clusters;
  session->getGroupClusters(clusters);
  mirror.setClusters(clusters);
  clustersAreOld = false;
}

// --- Membership.

bool MirroredSession::getAvailableGroups(std::map<GroupId, std::string>& groups) {
  // New groups bring new names, also when an error keeps the groups from being told.
  const bool wereOld = std::exchange(namesAreOld, true);
  const bool isDone = session->getAvailableGroups(groups);
  const bool isNew = isDone && mirror.learnGroups(groups);
  namesAreOld = wereOld || isNew;
  return isDone;
}

bool MirroredSession::addGroups(const GroupIdSet& groups, std::list<RefPoint>& addedPoints, GroupIdSet& inactiveGroups,
                                RefPointIdSet& inactivePoints) {
  return passOn([&] { return session->addGroups(groups, addedPoints, inactiveGroups, inactivePoints); },
                [&] {
                  if (namesAreOld) askNames();
                  mirror.addPoints(addedPoints);
                  mirror.setInactive(inactivePoints);
                  mirror.show(groups);
                });
}

bool MirroredSession::removeGroups(const GroupIdSet& groups, RefPointIdSet& removedPoints, GroupIdSet& inactiveGroups,
                                   RefPointIdSet& inactivePoints) {
  return passOn([&] { return session->removeGroups(groups, removedPoints, inactiveGroups, inactivePoints); },
                [&] {
                  mirror.removePoints(removedPoints);
                  mirror.setInactive(inactivePoints);
                  mirror.hide(groups);
                });
}

bool MirroredSession::removePoints(const RefPointIdSet& points, GroupIdSet& vanishedGroups, GroupIdSet& inactiveGroups,
                                   RefPointIdSet& inactivePoints) {
  return passOn([&] { return session->removePoints(points, vanishedGroups, inactiveGroups, inactivePoints); },
                [&] {
                  mirror.removePoints(points);
                  mirror.setInactive(inactivePoints);
                  mirror.hide(vanishedGroups);
                });
}

// --- Switches.

void MirroredSession::setBaseGroups(const GroupIdSet& groups, GroupIdSet& baseGroups, RefPointIdSet& basePoints,
                                    GroupIdSet& inactiveGroups, RefPointIdSet& inactivePoints) {
  passOnAlways([&] { session->setBaseGroups(groups, baseGroups, basePoints, inactiveGroups, inactivePoints); },
               [&] {
                 // An empty set does nothing and leaves the outputs alone.
                 if (groups.empty()) return;
                 mirror.setBase(baseGroups, basePoints);
                 mirror.setInactive(inactivePoints);
               });
}

void MirroredSession::unsetBaseGroups(const GroupIdSet& groups, GroupIdSet& baseGroups, RefPointIdSet& basePoints,
                                      GroupIdSet& inactiveGroups, RefPointIdSet& inactivePoints) {
  passOnAlways([&] { session->unsetBaseGroups(groups, baseGroups, basePoints, inactiveGroups, inactivePoints); },
               [&] {
                 if (groups.empty()) return;
                 mirror.setBase(baseGroups, basePoints);
                 mirror.setInactive(inactivePoints);
               });
}

void MirroredSession::includePoints(const RefPointIdSet& points, GroupIdSet& excludedGroups, GroupIdSet& inactiveGroups,
                                    RefPointIdSet& inactivePoints) {
  passOnAlways([&] { session->includePoints(points, excludedGroups, inactiveGroups, inactivePoints); },
               [&] {
                 mirror.switchPoints(points, true);
                 mirror.setInactive(inactivePoints);
               });
}

void MirroredSession::excludePoints(const RefPointIdSet& points, GroupIdSet& excludedGroups, GroupIdSet& inactiveGroups,
                                    RefPointIdSet& inactivePoints) {
  passOnAlways([&] { session->excludePoints(points, excludedGroups, inactiveGroups, inactivePoints); },
               [&] {
                 mirror.switchPoints(points, false);
                 mirror.setInactive(inactivePoints);
               });
}

bool MirroredSession::setPointsWeight(const RefPointIdSet& points, double weight, GroupIdSet& inactiveGroups,
                                      RefPointIdSet& inactivePoints) {
  return passOn([&] { return session->setPointsWeight(points, weight, inactiveGroups, inactivePoints); },
                [&] {
                  mirror.setWeight(points, weight);
                  mirror.setInactive(inactivePoints);
                });
}

void MirroredSession::includeGroups(const GroupIdSet& groups, RefPointIdSet& excludedPoints, GroupIdSet& inactiveGroups,
                                    RefPointIdSet& inactivePoints) {
  passOnAlways([&] { session->includeGroups(groups, excludedPoints, inactiveGroups, inactivePoints); },
               [&] {
                 mirror.setExcluded(excludedPoints);
                 mirror.setInactive(inactivePoints);
               });
}

void MirroredSession::excludeGroups(const GroupIdSet& groups, RefPointIdSet& excludedPoints, GroupIdSet& inactiveGroups,
                                    RefPointIdSet& inactivePoints) {
  passOnAlways([&] { session->excludeGroups(groups, excludedPoints, inactiveGroups, inactivePoints); },
               [&] {
                 mirror.setExcluded(excludedPoints);
                 mirror.setInactive(inactivePoints);
               });
}

// --- Names.

bool MirroredSession::renameGroup(GroupId group, std::string newName, RefPointIdSet& groupPoints) {
  return passOn([&] { return session->renameGroup(group, newName, groupPoints); },
                [&] { mirror.renameGroup(group, newName); });
}

bool MirroredSession::renamePoint(RefPointId point, std::string newName, GroupId& group, GroupIdSet& inactiveGroups,
                                  RefPointIdSet& inactivePoints) {
  const bool isKnown = mirror.hasPoint(point);
  if (isKnown && namesAreOld) askNames();
  const bool wereOld = std::exchange(namesAreOld, true);
  const auto take = [&] {
    // Where it isn't sure who has a name, it isn't sure either whether it is dropped.
    const bool isSure = isKnown && mirror.state().unsureNames.empty();
    if (isKnown) mirror.renamePoint(point, newName);
    mirror.setInactive(inactivePoints);
    namesAreOld = !isSure;
  };
  const bool isDone =
      passOn([&] { return session->renamePoint(point, newName, group, inactiveGroups, inactivePoints); }, take);
  if (!isDone) namesAreOld = wereOld;
  return isDone;
}

bool MirroredSession::getCommonPointNames(std::list<NamedId>& names) { return session->getCommonPointNames(names); }

bool MirroredSession::hasUnnamedPointsInRegisteredGroups() { return session->hasUnnamedPointsInRegisteredGroups(); }

bool MirroredSession::hasUnnamedPoints() { return session->hasUnnamedPoints(); }

// --- Display.

void MirroredSession::setGroupsVisible(GroupIdSet groups, bool visible) {
  passOnAlways([&] { session->setGroupsVisible(groups, visible); },
               [&] {
                 if (visible) {
                   mirror.show(groups);
                 } else {
                   mirror.hide(groups);
                 }
               });
}

void MirroredSession::zoomToGroup(GroupId group) { session->zoomToGroup(group); }

void MirroredSession::zoomToPoint(RefPointId point) { session->zoomToPoint(point); }

void MirroredSession::zoomToAll() { session->zoomToAll(); }

// --- Solving.

void MirroredSession::clearResults() {
  passOnAlways([&] { session->clearResults(); },
               [&] {
                 mirror.clearResults();
                 clustersAreOld = false;
               });
}

bool MirroredSession::registerPairwise(std::map<RefPointId, double>& discrepancies) {
  const bool wereOld = std::exchange(clustersAreOld, true);
  const bool isRegistered = passOn([&] { return session->registerPairwise(discrepancies); },
                                   [&] {
                                     mirror.setRegistered(discrepancies);
                                     clustersAreOld = wereOld;
                                   });
  if (!isRegistered) mirror.setRefused(discrepancies);
  return isRegistered;
}

void MirroredSession::getGroupClusters(std::map<std::uint64_t, GroupIdSet>& clusters) {
  session->getGroupClusters(clusters);
}

void MirroredSession::keepGroupCluster(std::uint64_t cluster, RefPointIdSet& excludedPoints, GroupIdSet& inactiveGroups,
                                       RefPointIdSet& inactivePoints) {
  if (clustersAreOld) askClusters();
  const bool isKnown = mirror.state().clusters.count(cluster) != 0;
  passOnAlways([&] { session->keepGroupCluster(cluster, excludedPoints, inactiveGroups, inactivePoints); },
               [&] {
                 // A number that the session doesn't know leaves the outputs alone.
                 if (!isKnown) return;
                 mirror.setExcluded(excludedPoints);
                 mirror.setInactive(inactivePoints);
               });
}

void MirroredSession::getIterationLimits(std::uint64_t& maxIterations, double& convergenceCriteria) {
  session->getIterationLimits(maxIterations, convergenceCriteria);
}

bool MirroredSession::registerIterative(std::uint64_t maxIterations, double convergenceCriteria,
                                        std::map<RefPointId, double>& discrepancies) {
  limitsAreOld = true;
  return passOn([&] { return session->registerIterative(maxIterations, convergenceCriteria, discrepancies); },
                [&] { mirror.setRegisteredIteratively(discrepancies); });
}

// --- Matching.

void MirroredSession::getMatchDistanceTolerance(double& tolerance) { session->getMatchDistanceTolerance(tolerance); }

void MirroredSession::getTriangleMatchTolerances(double& sideTolerance, double& minSideDifference) {
  session->getTriangleMatchTolerances(sideTolerance, minSideDifference);
}

template <class Match>
void MirroredSession::match(const std::map<RefPointId, std::string>& assignedNames, const RefPointIdSet& inactivePoints,
                            Match match) {
  const bool hasPoints = !mirror.state().points.empty();
  if (hasPoints && namesAreOld) askNames();
  const bool wereOld = std::exchange(namesAreOld, true);
  limitsAreOld = true;
  passOnAlways(match, [&] {
    mirror.setInactive(inactivePoints);
    if (assignedNames.empty()) {
      namesAreOld = wereOld;
    } else if (hasPoints) {
      std::list<NamedId> names;
      session->getCommonPointNames(names);
      mirror.assignNames(assignedNames, names);
      namesAreOld = false;
    }
  });
}

void MirroredSession::matchPointsByDistance(double tolerance, std::map<RefPointId, std::string>& assignedNames,
                                            GroupIdSet& inactiveGroups, RefPointIdSet& inactivePoints) {
  match(assignedNames, inactivePoints,
        [&] { session->matchPointsByDistance(tolerance, assignedNames, inactiveGroups, inactivePoints); });
}

void MirroredSession::matchGroupsByTriangles(const GroupIdSet& groups, double sideTolerance, double minSideDifference,
                                             std::map<RefPointId, std::string>& assignedNames,
                                             GroupIdSet& inactiveGroups, RefPointIdSet& inactivePoints) {
  match(assignedNames, inactivePoints, [&] {
    session->matchGroupsByTriangles(groups, sideTolerance, minSideDifference, assignedNames, inactiveGroups,
                                    inactivePoints);
  });
}

void MirroredSession::matchAllGroupsByTriangles(double sideTolerance, double minSideDifference,
                                                std::map<RefPointId, std::string>& assignedNames,
                                                GroupIdSet& inactiveGroups, RefPointIdSet& inactivePoints) {
  match(assignedNames, inactivePoints, [&] {
    session->matchAllGroupsByTriangles(sideTolerance, minSideDifference, assignedNames, inactiveGroups, inactivePoints);
  });
}

double MirroredSession::getMaxPointSpread() { return session->getMaxPointSpread(); }

bool MirroredSession::getPointSpreadHistogram(std::vector<std::uint64_t>& binCounts, std::vector<double>& binEdges) {
  return session->getPointSpreadHistogram(binCounts, binEdges);
}

// --- Output.

bool MirroredSession::saveCommonPointsFile(std::string name, std::string folder) {
  return session->saveCommonPointsFile(std::move(name), std::move(folder));
}

bool MirroredSession::storeCommonPoints(std::string name) { return session->storeCommonPoints(std::move(name)); }

bool MirroredSession::applyTransformToCloud(GroupId group, std::uint64_t cloud) {
  return session->applyTransformToCloud(group, cloud);
}

bool MirroredSession::applyTransformations() { return session->applyTransformations(); }

void MirroredSession::getPointClouds(std::list<NamedId>& clouds) {
  // The former list is gone whatever comes. A drawing without clouds leaves the output as it was.
  mirror.setClouds({});
  std::list<NamedId> listed{{notListed, {}}};
  session->getPointClouds(listed);
  if (listed.size() == 1 && listed.front().id == notListed) return;
  mirror.setClouds(listed);
  clouds = std::move(listed);
}

void MirroredSession::getMatrixFormats(std::map<std::uint64_t, std::string>& formats) {
  session->getMatrixFormats(formats);
}

bool MirroredSession::saveGroupMatrices(GroupIdSet groups, std::string folder, std::uint64_t format) {
  return session->saveGroupMatrices(std::move(groups), std::move(folder), format);
}

bool MirroredSession::saveAllMatrices(std::string folder, std::uint64_t format) {
  return session->saveAllMatrices(std::move(folder), format);
}

std::wstring MirroredSession::getPointsReport(RefPointIdSet points) {
  std::wstring report = session->getPointsReport(std::move(points));
  mirror.setLastReport(LastReport::points);
  return report;
}

std::wstring MirroredSession::getGroupsReport(GroupIdSet groups) {
  std::wstring report = session->getGroupsReport(std::move(groups));
  mirror.setLastReport(LastReport::groups);
  return report;
}

std::wstring MirroredSession::getResultsReport() {
  std::wstring report = session->getResultsReport();
  mirror.setLastReport(LastReport::results);
  return report;
}

void MirroredSession::getReportFormats(std::map<std::uint64_t, std::string>& formats) {
  session->getReportFormats(formats);
}

bool MirroredSession::saveReport(std::string path, std::uint64_t format) {
  return session->saveReport(std::move(path), format);
}

}  // namespace tiepoint::workbench
