#include "workbench/session/driven_session.h"

#include <algorithm>
#include <limits>
#include <unordered_map>
#include <unordered_set>

#include "workbench/io/text_encoding.h"

namespace tiepoint::workbench {

using namespace ZOR::reg;

DrivenSession::DrivenSession(iMultiRegistrator& registrator_) : registrator(registrator_) {}

bool DrivenSession::addAllGroups() { return addGroups(readGroups()); }

GroupIdSet DrivenSession::readGroups() {
  std::map<GroupId, std::string> available;
  GroupIdSet ids;
  if (!registrator.getAvailableGroups(available)) return ids;
  const bool isFirst = current.groups.empty();
  for (const auto& [id, name] : available) {
    ids.insert(id);
    if (isFirst) current.groups.push_back({id, utf8FromName(name), false});
  }
  return ids;
}

bool DrivenSession::addGroups(const GroupIdSet& groups) {
  if (current.groups.empty()) readGroups();
  std::list<RefPoint> added;
  GroupIdSet inactiveGroups;
  RefPointIdSet inactivePoints;
  if (!registrator.addGroups(groups, added, inactiveGroups, inactivePoints)) return false;
  takeAdded(added);
  takeInactive(inactivePoints);
  return true;
}

void DrivenSession::takeAdded(const std::list<RefPoint>& added) {
  std::list<NamedId> names;
  registrator.getCommonPointNames(names);
  std::unordered_map<CommonPointId, std::string> nameOf;
  for (const NamedId& named : names) nameOf.emplace(named.id, utf8FromName(named.name));
  for (const RefPoint& point : added) current.points.push_back({point, nameOf[point.commonId]});
}

void DrivenSession::removeGroups(const GroupIdSet& groups) {
  RefPointIdSet removedPoints, inactivePoints;
  GroupIdSet inactiveGroups;
  registrator.removeGroups(groups, removedPoints, inactiveGroups, inactivePoints);
  const auto isRemoved = [&](const SessionPoint& point) { return removedPoints.count(point.record.id) != 0; };
  current.points.erase(std::remove_if(current.points.begin(), current.points.end(), isRemoved), current.points.end());
  takeInactive(inactivePoints);
}

void DrivenSession::restoreMarkers() {
  // A removal makes the markers anew, even one of a group that no session has.
  removeGroups({std::numeric_limits<GroupId>::max()});
}

void DrivenSession::setBase(const GroupIdSet& groups) {
  GroupIdSet baseGroups, inactiveGroups;
  RefPointIdSet basePoints, inactivePoints;
  if (groups.empty()) return;
  registrator.setBaseGroups(groups, baseGroups, basePoints, inactiveGroups, inactivePoints);
  for (SessionGroup& group : current.groups) group.inBase = baseGroups.count(group.id) != 0;
  for (SessionPoint& point : current.points) point.record.inBase = basePoints.count(point.record.id) != 0;
  takeInactive(inactivePoints);
}

void DrivenSession::includeGroups(const GroupIdSet& groups) {
  GroupIdSet inactiveGroups;
  RefPointIdSet excludedPoints, inactivePoints;
  registrator.includeGroups(groups, excludedPoints, inactiveGroups, inactivePoints);
  takeExcluded(excludedPoints);
  takeInactive(inactivePoints);
}

void DrivenSession::excludeGroups(const GroupIdSet& groups) {
  GroupIdSet inactiveGroups;
  RefPointIdSet excludedPoints, inactivePoints;
  registrator.excludeGroups(groups, excludedPoints, inactiveGroups, inactivePoints);
  takeExcluded(excludedPoints);
  takeInactive(inactivePoints);
}

void DrivenSession::excludePoints(const RefPointIdSet& points) {
  GroupIdSet excludedGroups, inactiveGroups;
  RefPointIdSet inactivePoints;
  registrator.excludePoints(points, excludedGroups, inactiveGroups, inactivePoints);
  for (SessionPoint& point : current.points) {
    if (points.count(point.record.id) != 0) point.record.included = false;
  }
  takeInactive(inactivePoints);
}

bool DrivenSession::setWeight(const RefPointIdSet& points, double weight) {
  GroupIdSet inactiveGroups;
  RefPointIdSet inactivePoints;
  if (!registrator.setPointsWeight(points, weight, inactiveGroups, inactivePoints)) return false;
  for (SessionPoint& point : current.points) {
    if (points.count(point.record.id) != 0) point.record.weight = weight;
  }
  takeInactive(inactivePoints);
  return true;
}

bool DrivenSession::registerPairwise() { return registrator.registerPairwise(current.discrepancies); }

bool DrivenSession::registerIterative(std::uint64_t maxIterations, double convergence) {
  return registrator.registerIterative(maxIterations, convergence, current.discrepancies);
}

GroupClusters DrivenSession::clusters() {
  GroupClusters all;
  registrator.getGroupClusters(all);
  return all;
}

void DrivenSession::keepCluster(std::uint64_t number) {
  RefPointIdSet excludedPoints, inactivePoints;
  GroupIdSet inactiveGroups;
  // The session leaves the outputs alone when it doesn't know the number.
  if (clusters().count(number) == 0) return;
  registrator.keepGroupCluster(number, excludedPoints, inactiveGroups, inactivePoints);
  takeExcluded(excludedPoints);
  takeInactive(inactivePoints);
}

std::size_t DrivenSession::matchAllByTriangles(double sideTolerance, double minSideDifference) {
  std::map<RefPointId, std::string> assignedNames;
  GroupIdSet inactiveGroups;
  RefPointIdSet inactivePoints;
  registrator.matchAllGroupsByTriangles(sideTolerance, minSideDifference, assignedNames, inactiveGroups,
                                        inactivePoints);
  takeInactive(inactivePoints);
  return takeNames(assignedNames);
}

std::size_t DrivenSession::matchByTriangles(const GroupIdSet& groups, double sideTolerance, double minSideDifference) {
  std::map<RefPointId, std::string> assignedNames;
  GroupIdSet inactiveGroups;
  RefPointIdSet inactivePoints;
  registrator.matchGroupsByTriangles(groups, sideTolerance, minSideDifference, assignedNames, inactiveGroups,
                                     inactivePoints);
  takeInactive(inactivePoints);
  return takeNames(assignedNames);
}

std::size_t DrivenSession::matchByCloseness(double tolerance) {
  std::map<RefPointId, std::string> assignedNames;
  GroupIdSet inactiveGroups;
  RefPointIdSet inactivePoints;
  registrator.matchPointsByDistance(tolerance, assignedNames, inactiveGroups, inactivePoints);
  takeInactive(inactivePoints);
  return takeNames(assignedNames);
}

/// The session tells names, not ids. A new name stands behind the older ones, so where two ids have
/// one name the last is meant. Who joins a name of the user's is the user's.
std::size_t DrivenSession::takeNames(const std::map<RefPointId, std::string>& assignedNames) {
  if (assignedNames.empty()) return 0;
  std::list<NamedId> names;
  registrator.getCommonPointNames(names);
  std::unordered_map<std::string, CommonPointId> idOf;
  for (const NamedId& named : names) idOf[named.name] = named.id;
  std::unordered_set<CommonPointId> ofUser;
  for (const SessionPoint& point : current.points) {
    if (point.record.named && !point.record.autoNamed) ofUser.insert(point.record.commonId);
  }
  for (SessionPoint& point : current.points) {
    const auto assigned = assignedNames.find(point.record.id);
    if (assigned == assignedNames.end()) continue;
    point.name = utf8FromName(assigned->second);
    point.record.commonId = idOf[assigned->second];
    point.record.named = true;
    point.record.autoNamed = ofUser.count(point.record.commonId) == 0;
  }
  return assignedNames.size();
}

bool DrivenSession::takeName(RefPointId point, RefPointId other) {
  const SessionPoint& named = pointOf(other);
  SessionPoint& taker = pointOf(point);
  GroupId group = 0;
  GroupIdSet inactiveGroups;
  RefPointIdSet inactivePoints;
  if (!registrator.renamePoint(point, nameFromUtf8(named.name), group, inactiveGroups, inactivePoints)) return false;
  taker.name = named.name;
  taker.record.commonId = named.record.commonId;
  taker.record.named = named.record.named;
  takeInactive(inactivePoints);
  return true;
}

SessionPoint& DrivenSession::pointOf(RefPointId id) {
  return *std::find_if(current.points.begin(), current.points.end(),
                       [&](const SessionPoint& point) { return point.record.id == id; });
}

void DrivenSession::takeInactive(const RefPointIdSet& inactivePoints) {
  for (SessionPoint& point : current.points) point.record.active = inactivePoints.count(point.record.id) == 0;
}

void DrivenSession::takeExcluded(const RefPointIdSet& excludedPoints) {
  for (SessionPoint& point : current.points) point.record.included = excludedPoints.count(point.record.id) == 0;
}

}  // namespace tiepoint::workbench
