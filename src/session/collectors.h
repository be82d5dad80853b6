// What is out, and what is base: read from the session's points.
#pragma once

#include "records/tables.h"

namespace ZOR::reg {

// Each empties its outputs first.

/// The groups without an active point, and the points that aren't active.
void collectInactive(const RefPointList& points, GroupIdSet& inactiveGroups, RefPointIdSet& inactivePoints);
/// The groups without an included point.
void collectExcludedGroups(const RefPointList& points, GroupIdSet& excludedGroups);
/// The points that aren't included.
void collectExcludedPoints(const RefPointList& points, RefPointIdSet& excludedPoints);
void collectBaseGroups(const RefPointList& points, GroupIdSet& baseGroups);
void collectBasePoints(const RefPointList& points, RefPointIdSet& basePoints);

/// The groups that the points belong to.
GroupIdSet groupsOf(const RefPointList& points);

}  // namespace ZOR::reg
