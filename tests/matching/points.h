// Points as the matchers' tests need them.
#pragma once

#include "records/tables.h"

namespace tiepoint::testing {

inline ZOR::reg::RefPoint unnamedPoint(ZOR::reg::RefPointId id, ZOR::reg::GroupId group,
                                       const OdGePoint3d& position = {}) {
  ZOR::reg::RefPoint point;
  point.id = id;
  point.groupId = group;
  point.position = position;
  point.weight = 1.0;
  return point;
}

/// A name from a file or the user.
inline ZOR::reg::RefPoint manualPoint(ZOR::reg::RefPointId id, ZOR::reg::GroupId group, ZOR::reg::CommonPointId name,
                                      const OdGePoint3d& position = {}) {
  ZOR::reg::RefPoint point = unnamedPoint(id, group, position);
  point.commonId = name;
  point.named = true;
  return point;
}

/// A name of an earlier matching.
inline ZOR::reg::RefPoint autoPoint(ZOR::reg::RefPointId id, ZOR::reg::GroupId group, ZOR::reg::CommonPointId name,
                                    const OdGePoint3d& position = {}) {
  ZOR::reg::RefPoint point = manualPoint(id, group, name, position);
  point.autoNamed = true;
  return point;
}

using Assignments = std::map<std::uint64_t, std::uint64_t>;

}  // namespace tiepoint::testing
