#include "workbench/session/base_targets.h"

namespace tiepoint::workbench {

using namespace ZOR::reg;

BaseTargets::BaseTargets(const SessionState& state) {
  for (const SessionPoint& point : state.points) {
    if (point.record.active && point.record.inBase) add(point.record);
  }
}

std::optional<OdGePoint3d> BaseTargets::at(CommonPointId name) const {
  const auto found = sums.find(name);
  if (found == sums.end()) return std::nullopt;
  const Sum& s = found->second;
  return OdGePoint3d(s.x / s.weight, s.y / s.weight, s.z / s.weight);
}

void BaseTargets::add(const RefPoint& point) {
  Sum& s = sums[point.commonId];
  s.x += point.weight * point.position.x;
  s.y += point.weight * point.position.y;
  s.z += point.weight * point.position.z;
  s.weight += point.weight;
}

}  // namespace tiepoint::workbench
