#include "workbench/cli/naming/target_field.h"

namespace tiepoint::workbench::cli {

using namespace ZOR::reg;

namespace {

Eigen::Vector3d moved(const Eigen::Vector3d& position, const std::map<GroupId, OdGeMatrix3d>& toCommon, GroupId group) {
  const auto motion = toCommon.find(group);
  if (motion == toCommon.end()) return position;
  OdGePoint3d point(position.x(), position.y(), position.z());
  point.p_transform(motion->second);
  return {point.x, point.y, point.z};
}

}  // namespace

NamedField fieldOf(const SessionState& state, const Stations& stations, const GroupIdSet& groups,
                   const std::map<GroupId, OdGeMatrix3d>& toCommon) {
  NamedField named;
  for (const GroupId group : groups) {
    const Station& station = stations.at(group);
    TargetField::Seen seen;
    seen.shape = &station.shape;
    for (std::size_t i = 0; i < station.places.size(); ++i) {
      const RefPoint& record = state.points[station.places[i]].record;
      std::size_t target = named.field.targets.size();
      if (record.named) target = named.targetOf.try_emplace(record.commonId, target).first->second;
      if (target == named.field.targets.size()) {
        named.field.targets.push_back(moved(station.shape.points[i], toCommon, group));
      }
      seen.target.push_back(target);
    }
    named.field.stations.push_back(std::move(seen));
  }
  return named;
}

Placement placementOf(const SessionState& state, const Station& station, const NamedField& named) {
  Placement placement;
  for (std::size_t i = 0; i < station.places.size(); ++i) {
    const RefPoint& record = state.points[station.places[i]].record;
    const auto target = named.targetOf.find(record.commonId);
    if (record.named && target != named.targetOf.end()) placement.emplace(i, target->second);
  }
  return placement;
}

}  // namespace tiepoint::workbench::cli
