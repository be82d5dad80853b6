// The rebuild of the active flags as it is told, for comparison: full passes over ordered
// containers, nothing remembered between them.
#pragma once

#include <map>
#include <set>

#include "records/tables.h"

namespace tiepoint::testing {

inline std::set<ZOR::reg::CommonPointId> activeNamesOf(const ZOR::reg::RefPointList& points, bool inBase) {
  std::set<ZOR::reg::CommonPointId> found;
  for (const ZOR::reg::RefPoint& p : points) {
    if (p.active && p.inBase == inBase) found.insert(p.commonId);
  }
  return found;
}

/// Drops what a solve can't use; false when nothing is left to register.
inline bool plainPrune(ZOR::reg::RefPointList& points, const std::set<ZOR::reg::CommonPointId>& baseCommon) {
  using namespace ZOR::reg;
  bool firstPass = true;
  bool namesChanged = true;
  while (namesChanged) {
    std::map<GroupId, int> groupCount;
    for (const RefPoint& p : points) {
      if (p.active && !p.inBase) ++groupCount[p.groupId];
    }
    if (groupCount.empty() || (groupCount.size() == 1 && baseCommon.empty())) {
      for (RefPoint& p : points) p.active = false;
      return false;
    }
    bool groupsChanged = false;
    for (RefPoint& p : points) {
      const auto count = groupCount.find(p.groupId);
      if (count == groupCount.end() || count->second >= 3) continue;
      p.active = false;
      groupsChanged = true;
    }
    if (!groupsChanged && !firstPass) break;
    std::map<CommonPointId, int> nameCount;
    for (const RefPoint& p : points) {
      if (p.active && !p.inBase) ++nameCount[p.commonId];
    }
    namesChanged = false;
    for (RefPoint& p : points) {
      const auto count = nameCount.find(p.commonId);
      if (count == nameCount.end() || count->second >= 2 || baseCommon.count(p.commonId) != 0) continue;
      namesChanged = true;
      if (!p.inBase) p.active = false;
    }
    firstPass = false;
  }
  return true;
}

inline void plainRebuild(ZOR::reg::RefPointList& points) {
  using namespace ZOR::reg;
  if (points.empty()) return;
  for (RefPoint& p : points) p.active = p.included && (p.weight < 0.0 || p.weight > 0.0) && p.named;
  if (!plainPrune(points, activeNamesOf(points, true))) return;
  const std::set<CommonPointId> baseNames = activeNamesOf(points, true);
  const std::set<CommonPointId> otherNames = activeNamesOf(points, false);
  for (RefPoint& p : points) {
    if (p.inBase && baseNames.count(p.commonId) != 0 && otherNames.count(p.commonId) == 0) p.active = false;
  }
  if (activeNamesOf(points, true).size() >= 3) return;
  for (RefPoint& p : points) {
    if (p.inBase) p.active = false;
  }
}

}  // namespace tiepoint::testing
