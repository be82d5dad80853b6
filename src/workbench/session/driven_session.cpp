#include "workbench/session/driven_session.h"

#include <algorithm>
#include <limits>

#include "workbench/io/text_encoding.h"

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

/// What the mirror has taken in already.
struct Answers {
  GroupIdSet groups;
  RefPointIdSet points;
  GroupIdSet inactiveGroups;
  RefPointIdSet inactivePoints;
  std::map<RefPointId, std::string> names;
  PointDiscrepancies discrepancies;
};

/// The groups of the drawing that aren't in the session.
GroupIdSet readGroups(MirroredSession& session) {
  std::map<GroupId, std::string> available;
  session.getAvailableGroups(available);
  GroupIdSet ids;
  for (const auto& entry : available) ids.insert(ids.end(), entry.first);
  return ids;
}

const SessionPoint& pointOf(const SessionState& state, RefPointId id) {
  return *std::find_if(state.points.begin(), state.points.end(),
                       [&](const SessionPoint& point) { return point.record.id == id; });
}

}  // namespace

DrivenSession::DrivenSession(MirroredSession& session_) : session(session_) {}

bool DrivenSession::addAllGroups() { return addGroups(readGroups(session)); }

bool DrivenSession::addGroups(const GroupIdSet& groups) {
  if (state().groups.empty()) readGroups(session);
  Answers out;
  std::list<RefPoint> added;
  return session.addGroups(groups, added, out.inactiveGroups, out.inactivePoints);
}

void DrivenSession::removeGroups(const GroupIdSet& groups) {
  Answers out;
  session.removeGroups(groups, out.points, out.inactiveGroups, out.inactivePoints);
}

void DrivenSession::restoreMarkers() {
  // A removal makes the markers anew, even one of a group that no session has.
  removeGroups({std::numeric_limits<GroupId>::max()});
}

void DrivenSession::setBase(const GroupIdSet& groups) {
  Answers out;
  session.setBaseGroups(groups, out.groups, out.points, out.inactiveGroups, out.inactivePoints);
}

void DrivenSession::includeGroups(const GroupIdSet& groups) {
  Answers out;
  session.includeGroups(groups, out.points, out.inactiveGroups, out.inactivePoints);
}

void DrivenSession::excludeGroups(const GroupIdSet& groups) {
  Answers out;
  session.excludeGroups(groups, out.points, out.inactiveGroups, out.inactivePoints);
}

void DrivenSession::excludePoints(const RefPointIdSet& points) {
  Answers out;
  session.excludePoints(points, out.groups, out.inactiveGroups, out.inactivePoints);
}

bool DrivenSession::setWeight(const RefPointIdSet& points, double weight) {
  Answers out;
  return session.setPointsWeight(points, weight, out.inactiveGroups, out.inactivePoints);
}

bool DrivenSession::registerPairwise() {
  Answers out;
  return session.registerPairwise(out.discrepancies);
}

bool DrivenSession::registerIterative(std::uint64_t maxIterations, double convergence) {
  Answers out;
  return session.registerIterative(maxIterations, convergence, out.discrepancies);
}

void DrivenSession::keepCluster(std::uint64_t number) {
  Answers out;
  session.keepGroupCluster(number, out.points, out.inactiveGroups, out.inactivePoints);
}

std::size_t DrivenSession::matchAllByTriangles(double sideTolerance, double minSideDifference) {
  Answers out;
  session.matchAllGroupsByTriangles(sideTolerance, minSideDifference, out.names, out.inactiveGroups,
                                    out.inactivePoints);
  return out.names.size();
}

std::size_t DrivenSession::matchByTriangles(const GroupIdSet& groups, double sideTolerance, double minSideDifference) {
  Answers out;
  session.matchGroupsByTriangles(groups, sideTolerance, minSideDifference, out.names, out.inactiveGroups,
                                 out.inactivePoints);
  return out.names.size();
}

std::size_t DrivenSession::matchByCloseness(double tolerance) {
  Answers out;
  session.matchPointsByDistance(tolerance, out.names, out.inactiveGroups, out.inactivePoints);
  return out.names.size();
}

bool DrivenSession::adoptName(RefPointId point, RefPointId other) {
  Answers out;
  GroupId group = 0;
  const std::string name = nameFromUtf8(pointOf(state(), other).name);
  return session.renamePoint(point, name, group, out.inactiveGroups, out.inactivePoints);
}

}  // namespace tiepoint::workbench
