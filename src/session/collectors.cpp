#include "session/collectors.h"

namespace ZOR::reg {

namespace {

/// The groups of the points less those with at least one point for which `counts` holds.
template <class Test>
GroupIdSet groupsWithout(const RefPointList& points, Test counts) {
  GroupIdSet with;
  GroupIdSet without;
  for (const RefPoint& point : points) {
    if (counts(point)) {
      with.insert(point.groupId);
    } else {
      without.insert(point.groupId);
    }
  }
  for (GroupId group : with) without.erase(group);
  return without;
}

template <class Test>
RefPointIdSet pointsWith(const RefPointList& points, Test holds) {
  RefPointIdSet ids;
  for (const RefPoint& point : points) {
    if (holds(point)) ids.insert(ids.end(), point.id);
  }
  return ids;
}

}  // namespace

void collectInactive(const RefPointList& points, GroupIdSet& inactiveGroups, RefPointIdSet& inactivePoints) {
  inactiveGroups = groupsWithout(points, [](const RefPoint& point) { return point.active; });
  inactivePoints = pointsWith(points, [](const RefPoint& point) { return !point.active; });
}

void collectExcludedGroups(const RefPointList& points, GroupIdSet& excludedGroups) {
  excludedGroups = groupsWithout(points, [](const RefPoint& point) { return point.included; });
}

void collectExcludedPoints(const RefPointList& points, RefPointIdSet& excludedPoints) {
  excludedPoints = pointsWith(points, [](const RefPoint& point) { return !point.included; });
}

void collectBaseGroups(const RefPointList& points, GroupIdSet& baseGroups) {
  baseGroups.clear();
  for (const RefPoint& point : points) {
    if (point.inBase) baseGroups.insert(point.groupId);
  }
}

void collectBasePoints(const RefPointList& points, RefPointIdSet& basePoints) {
  basePoints = pointsWith(points, [](const RefPoint& point) { return point.inBase; });
}

GroupIdSet groupsOf(const RefPointList& points) {
  GroupIdSet groups;
  for (const RefPoint& point : points) groups.insert(point.groupId);
  return groups;
}

}  // namespace ZOR::reg
