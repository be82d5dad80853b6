// Which groups and points are in the session.
#include <iterator>

#include "session/collectors.h"
#include "session/multi_registrator.h"

namespace ZOR::reg {

namespace {

/// The elements of `a` that aren't in `b`.
GroupIdSet less(const GroupIdSet& a, const GroupIdSet& b) {
  GroupIdSet rest;
  for (GroupId id : a) {
    if (b.count(id) == 0) rest.insert(rest.end(), id);
  }
  return rest;
}

void eraseAll(GroupIdSet& from, const GroupIdSet& ids) {
  for (GroupId id : ids) from.erase(id);
}

}  // namespace

bool MultiRegistrator::addGroups(const GroupIdSet& groups, std::list<RefPoint>& addedPoints, GroupIdSet& inactiveGroups,
                                 RefPointIdSet& inactivePoints) {
  if (groups.empty() || allPoints.empty()) return false;
  const bool wasEmpty = sessionPoints.empty();
  const GroupIdSet wanted = wasEmpty ? groups : less(groups, groupsOf(sessionPoints));
  if (wanted.empty()) return false;

  addedPoints.clear();
  for (const RefPoint& point : allPoints) {
    if (wanted.count(point.groupId) != 0) addedPoints.push_back(point);
  }
  sessionPoints.insert(sessionPoints.end(), addedPoints.begin(), addedPoints.end());
  rebuildActive(inactiveGroups, inactivePoints);
  visibleGroups.insert(groups.begin(), groups.end());
  rebuildDisplay();
  if (wasEmpty) zoomToAll();
  return true;
}

bool MultiRegistrator::removeGroups(const GroupIdSet& groups, RefPointIdSet& removedPoints, GroupIdSet& inactiveGroups,
                                    RefPointIdSet& inactivePoints) {
  if (groups.empty()) return false;
  removedPoints.clear();
  sessionPoints.remove_if([&](const RefPoint& point) {
    const bool leaves = groups.count(point.groupId) != 0;
    if (leaves) removedPoints.insert(point.id);
    return leaves;
  });
  rebuildActive(inactiveGroups, inactivePoints);
  eraseAll(visibleGroups, groups);
  rebuildDisplay();
  return true;
}

bool MultiRegistrator::removePoints(const RefPointIdSet& points, GroupIdSet& vanishedGroups, GroupIdSet& inactiveGroups,
                                    RefPointIdSet& inactivePoints) {
  if (points.empty()) return false;
  vanishedGroups.clear();
  const GroupIdSet before = groupsOf(sessionPoints);
  sessionPoints.remove_if([&](const RefPoint& point) { return points.count(point.id) != 0; });
  vanishedGroups = less(before, groupsOf(sessionPoints));
  rebuildActive(inactiveGroups, inactivePoints);
  eraseAll(visibleGroups, vanishedGroups);
  rebuildDisplay();
  return true;
}

}  // namespace ZOR::reg
