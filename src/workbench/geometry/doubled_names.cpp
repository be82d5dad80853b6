#include "workbench/geometry/doubled_names.h"

#include <algorithm>
#include <set>
#include <tuple>

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

/// One name and the points that bear it.
struct Bearers {
  CommonPointId name = 0;
  bool isAutomatic = true;
  GroupIdSet groups;
  std::vector<RefPointId> points;
  std::vector<Eigen::Vector3d> positions;

  double x() const { return positions.front().x(); }
};

/// Ascending by the position of the first point.
std::vector<Bearers> bearersOf(const SessionState& state, const GroupIdSet& groups,
                               const std::map<GroupId, OdGeMatrix3d>& toCommon) {
  std::map<CommonPointId, Bearers> byName;
  for (const SessionPoint& point : state.points) {
    const RefPoint& record = point.record;
    if (groups.count(record.groupId) == 0 || !isEligible(record)) continue;
    const Eigen::Vector3d position = inCommonSystem(record, toCommon);
    if (!position.allFinite()) continue;
    Bearers& bearers = byName[record.commonId];
    bearers.name = record.commonId;
    bearers.isAutomatic = bearers.isAutomatic && record.autoNamed;
    bearers.groups.insert(record.groupId);
    bearers.points.push_back(record.id);
    bearers.positions.push_back(position);
  }
  std::vector<Bearers> all;
  for (auto& [name, bearers] : byName) all.push_back(std::move(bearers));
  std::stable_sort(all.begin(), all.end(), [](const Bearers& a, const Bearers& b) { return a.x() < b.x(); });
  return all;
}

bool coincide(const Bearers& one, const Bearers& other, double reach) {
  const auto isNearAll = [&](const Eigen::Vector3d& position) {
    return std::all_of(other.positions.begin(), other.positions.end(),
                       [&](const Eigen::Vector3d& there) { return (position - there).norm() <= reach; });
  };
  return std::all_of(one.positions.begin(), one.positions.end(), isNearAll);
}

bool shareGroup(const Bearers& one, const Bearers& other) {
  return std::any_of(one.groups.begin(), one.groups.end(),
                     [&](GroupId group) { return other.groups.count(group) != 0; });
}

/// A file's name before all automatic ones.
bool takesPrecedence(const Bearers& one, const Bearers& other) {
  return std::tie(one.isAutomatic, one.name) < std::tie(other.isAutomatic, other.name);
}

/// The one that this name gives way to among the others of its target: the file's, else the oldest.
/// None where the files have two there.
const Bearers* nameToKeep(const Bearers& name, const std::vector<Bearers>& all, double reach) {
  const Bearers* kept = nullptr;
  auto other = std::lower_bound(all.begin(), all.end(), name.x() - reach,
                                [](const Bearers& bearers, double x) { return bearers.x() < x; });
  for (; other != all.end() && other->x() <= name.x() + reach; ++other) {
    if (&*other == &name || !coincide(name, *other, reach)) continue;
    if (kept && !kept->isAutomatic && !other->isAutomatic) return nullptr;
    if (!kept || takesPrecedence(*other, *kept)) kept = &*other;
  }
  return kept && takesPrecedence(*kept, name) ? kept : nullptr;
}

}  // namespace

PointPairs doubledNames(const SessionState& state, const GroupIdSet& groups,
                        const std::map<GroupId, OdGeMatrix3d>& toCommon, double reach) {
  const std::vector<Bearers> all = bearersOf(state, groups, toCommon);
  PointPairs doubled;
  std::set<CommonPointId> taken;
  for (const Bearers& name : all) {
    if (!name.isAutomatic) continue;
    const Bearers* kept = nameToKeep(name, all, reach);
    if (!kept || shareGroup(name, *kept) || !taken.insert(kept->name).second) continue;
    for (const RefPointId point : name.points) doubled.emplace_back(point, kept->points.front());
  }
  return doubled;
}

}  // namespace tiepoint::workbench
