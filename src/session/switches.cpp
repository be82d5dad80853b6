// What takes part: base, inclusion, weights.
#include "session/collectors.h"
#include "session/multi_registrator.h"

namespace ZOR::reg {

void MultiRegistrator::setBase(const GroupIdSet& groups, bool inBase) {
  for (RefPoint& point : sessionPoints) {
    if (groups.count(point.groupId) != 0) point.inBase = inBase;
  }
}

void MultiRegistrator::reportBase(GroupIdSet& baseGroups, RefPointIdSet& basePoints, GroupIdSet& inactiveGroups,
                                  RefPointIdSet& inactivePoints) {
  collectBaseGroups(sessionPoints, baseGroups);
  collectBasePoints(sessionPoints, basePoints);
  rebuildActive(inactiveGroups, inactivePoints);
}

void MultiRegistrator::setBaseGroups(const GroupIdSet& groups, GroupIdSet& baseGroups, RefPointIdSet& basePoints,
                                     GroupIdSet& inactiveGroups, RefPointIdSet& inactivePoints) {
  if (groups.empty()) return;
  setBase(groups, true);
  reportBase(baseGroups, basePoints, inactiveGroups, inactivePoints);
}

void MultiRegistrator::unsetBaseGroups(const GroupIdSet& groups, GroupIdSet& baseGroups, RefPointIdSet& basePoints,
                                       GroupIdSet& inactiveGroups, RefPointIdSet& inactivePoints) {
  if (groups.empty()) return;
  setBase(groups, false);
  reportBase(baseGroups, basePoints, inactiveGroups, inactivePoints);
}

void MultiRegistrator::setIncluded(const RefPointIdSet& points, bool included) {
  for (RefPoint& point : sessionPoints) {
    if (points.count(point.id) != 0) point.included = included;
  }
}

void MultiRegistrator::includePoints(const RefPointIdSet& points, GroupIdSet& excludedGroups,
                                     GroupIdSet& inactiveGroups, RefPointIdSet& inactivePoints) {
  setIncluded(points, true);
  collectExcludedGroups(sessionPoints, excludedGroups);
  rebuildActive(inactiveGroups, inactivePoints);
}

void MultiRegistrator::excludePoints(const RefPointIdSet& points, GroupIdSet& excludedGroups,
                                     GroupIdSet& inactiveGroups, RefPointIdSet& inactivePoints) {
  setIncluded(points, false);
  collectExcludedGroups(sessionPoints, excludedGroups);
  rebuildActive(inactiveGroups, inactivePoints);
}

void MultiRegistrator::setGroupsIncluded(const GroupIdSet& groups, bool included) {
  for (RefPoint& point : sessionPoints) {
    if (groups.count(point.groupId) != 0) point.included = included;
  }
}

void MultiRegistrator::includeGroups(const GroupIdSet& groups, RefPointIdSet& excludedPoints,
                                     GroupIdSet& inactiveGroups, RefPointIdSet& inactivePoints) {
  setGroupsIncluded(groups, true);
  collectExcludedPoints(sessionPoints, excludedPoints);
  rebuildActive(inactiveGroups, inactivePoints);
}

void MultiRegistrator::excludeGroups(const GroupIdSet& groups, RefPointIdSet& excludedPoints,
                                     GroupIdSet& inactiveGroups, RefPointIdSet& inactivePoints) {
  setGroupsIncluded(groups, false);
  collectExcludedPoints(sessionPoints, excludedPoints);
  rebuildActive(inactiveGroups, inactivePoints);
}

bool MultiRegistrator::setPointsWeight(const RefPointIdSet& points, double weight, GroupIdSet& inactiveGroups,
                                       RefPointIdSet& inactivePoints) {
  // Written so that not-a-number is refused as well.
  if (!(weight >= 0.0 && weight <= 1.0)) return false;
  for (RefPoint& point : sessionPoints) {
    if (points.count(point.id) != 0) point.weight = weight;
  }
  rebuildActive(inactiveGroups, inactivePoints);
  return true;
}

}  // namespace ZOR::reg
