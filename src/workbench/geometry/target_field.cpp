#include "workbench/geometry/target_field.h"

#include <algorithm>

namespace tiepoint::workbench {

using namespace ZOR::reg;

Eigen::Vector3d inCommonSystem(const RefPoint& record, const std::map<GroupId, OdGeMatrix3d>& toCommon) {
  OdGePoint3d point = record.position;
  const auto motion = toCommon.find(record.groupId);
  if (motion != toCommon.end()) point.p_transform(motion->second);
  return {point.x, point.y, point.z};
}

namespace {

bool isNamedByFile(const RefPoint& record) { return record.named && !record.autoNamed; }

}  // namespace

NamedField fieldOf(const SessionState& state, const Stations& stations, const GroupIdSet& groups,
                   const std::map<GroupId, OdGeMatrix3d>& toCommon) {
  NamedField named;
  for (const GroupId group : groups) {
    const Station& station = stations.at(group);
    TargetField::Seen seen;
    seen.shape = &station.shape;
    for (std::size_t i = 0; i < station.indices.size(); ++i) {
      const RefPoint& record = state.points[station.indices[i]].record;
      std::size_t target = named.field.targets.size();
      if (record.named) target = named.targetOf.try_emplace(record.commonId, target).first->second;
      if (target == named.field.targets.size()) {
        named.field.targets.push_back(inCommonSystem(record, toCommon));
      }
      seen.target.push_back(target);
    }
    named.field.stations.push_back(std::move(seen));
  }
  return named;
}

Placement placementOf(const SessionState& state, const Station& station, const NamedField& named) {
  Placement placement;
  for (std::size_t i = 0; i < station.indices.size(); ++i) {
    const RefPoint& record = state.points[station.indices[i]].record;
    const auto target = named.targetOf.find(record.commonId);
    if (record.named && target != named.targetOf.end()) placement.emplace(i, target->second);
  }
  return placement;
}

FileNames fileNamesOf(const SessionState& start, const Stations& stations, const GroupIdSet& groups,
                      const NamedField& named, const Station& added) {
  FileNames names;
  for (std::size_t i = 0; i < added.indices.size(); ++i) {
    const RefPoint& record = start.points[added.indices[i]].record;
    if (isNamedByFile(record)) names.ofPoint.emplace(i, record.commonId);
  }
  auto seen = named.field.stations.begin();
  for (const GroupId group : groups) {
    const Station& station = stations.at(group);
    for (std::size_t i = 0; i < station.indices.size(); ++i) {
      const RefPoint& record = start.points[station.indices[i]].record;
      if (!isNamedByFile(record)) continue;
      names.targetOf.emplace(record.commonId, seen->target[i]);
      names.targets.insert(seen->target[i]);
    }
    ++seen;
  }
  return names;
}

bool contradicts(const Placement& placement, const FileNames& names) {
  return std::any_of(placement.begin(), placement.end(), [&](const auto& pair) {
    const auto name = names.ofPoint.find(pair.first);
    if (name == names.ofPoint.end()) return false;
    const auto target = names.targetOf.find(name->second);
    return target == names.targetOf.end() ? names.targets.count(pair.second) != 0 : target->second != pair.second;
  });
}

RecordsById recordsById(const SessionState& state) {
  RecordsById records;
  records.reserve(state.points.size());
  for (const SessionPoint& point : state.points) records.emplace(point.record.id, &point.record);
  return records;
}

double farthestApart(const RecordsById& records, const PointPairs& pairs,
                     const std::map<GroupId, OdGeMatrix3d>& toCommon) {
  double farthest = 0.0;
  for (const auto& [first, second] : pairs) {
    const Eigen::Vector3d here = inCommonSystem(*records.at(first), toCommon);
    farthest = std::max(farthest, (here - inCommonSystem(*records.at(second), toCommon)).norm());
  }
  return farthest;
}

}  // namespace tiepoint::workbench
