#include "workbench/session/mirrored_session.h"

#include <new>
#include <utility>

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

/// An error is on its way already, and stays the one.
template <class Apply>
void ignoringErrors(Apply apply) {
  try {
    apply();
  } catch (...) {
    return;
  }
}

/// Passes a call on, and takes over what it has done when it wasn't refused. Only memory can run out
/// before a session has done its part; any other error comes from the host, which is told at the end.
template <class Call, class Apply>
bool passOn(Call call, Apply apply) {
  bool isDone = false;
  try {
    isDone = call();
  } catch (const std::bad_alloc&) {
    throw;
  } catch (...) {
    ignoringErrors(apply);
    throw;
  }
  if (isDone) apply();
  return isDone;
}

/// The same for an operation that can't refuse.
template <class Call, class Apply>
void passOnAlways(Call call, Apply apply) {
  passOn(
      [&] {
        call();
        return true;
      },
      apply);
}

}  // namespace

MirroredSession::MirroredSession(std::unique_ptr<iMultiRegistrator> session_) : session(std::move(session_)) {}

MirroredSession::~MirroredSession() = default;

void MirroredSession::become(MirroredSession&& other) {
  session = std::move(other.session);
  mirror = std::move(other.mirror);
  namesAreOld = other.namesAreOld;
  clustersAreOld = other.clustersAreOld;
  limitsAreOld = other.limitsAreOld;
}

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
  const bool isNew = isDone && mirror.addGroupNames(groups);
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
  const auto apply = [&] {
    // Where it isn't sure who has a name, it isn't sure either whether it is dropped.
    const bool isSure = isKnown && mirror.state().unsureNames.empty();
    if (isKnown) mirror.renamePoint(point, newName);
    mirror.setInactive(inactivePoints);
    namesAreOld = !isSure;
  };
  const bool isDone =
      passOn([&] { return session->renamePoint(point, newName, group, inactiveGroups, inactivePoints); }, apply);
  if (!isDone) namesAreOld = wereOld;
  return isDone;
}

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

bool MirroredSession::registerIterative(std::uint64_t maxIterations, double convergenceCriteria,
                                        std::map<RefPointId, double>& discrepancies) {
  limitsAreOld = true;
  return passOn([&] { return session->registerIterative(maxIterations, convergenceCriteria, discrepancies); },
                [&] { mirror.setRegisteredIteratively(discrepancies); });
}

// --- Matching.

template <class Match>
void MirroredSession::match(const std::map<RefPointId, std::string>& assignedNames, const RefPointIdSet& inactivePoints,
                            Match match) {
  const bool hasPoints = !mirror.state().points.empty();
  if (hasPoints && namesAreOld) askNames();
  const bool wereOld = std::exchange(namesAreOld, true);
  limitsAreOld = true;
  passOnAlways(match, [&] {
    // Nothing has changed then; where an error came before anything was named, nothing is told either.
    if (assignedNames.empty()) {
      namesAreOld = wereOld;
      return;
    }
    mirror.setInactive(inactivePoints);
    if (!hasPoints) return;
    std::list<NamedId> names;
    session->getCommonPointNames(names);
    mirror.assignNames(assignedNames, names);
    namesAreOld = false;
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

}  // namespace tiepoint::workbench
