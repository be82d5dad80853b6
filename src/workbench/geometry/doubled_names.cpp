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
  std::vector<Eigen::Vector3d> places;

  double x() const { return places.front().x(); }
};

/// Ascending by the place of the first point.
std::vector<Bearers> bearersOf(const SessionState& state, const GroupIdSet& groups,
                               const std::map<GroupId, OdGeMatrix3d>& toCommon) {
  std::map<CommonPointId, Bearers> byName;
  for (const SessionPoint& point : state.points) {
    const RefPoint& record = point.record;
    if (groups.count(record.groupId) == 0 || !isEligible(record)) continue;
    const Eigen::Vector3d place = inCommonSystem(record, toCommon);
    if (!place.allFinite()) continue;
    Bearers& bearers = byName[record.commonId];
    bearers.name = record.commonId;
    bearers.isAutomatic = bearers.isAutomatic && record.autoNamed;
    bearers.groups.insert(record.groupId);
    bearers.points.push_back(record.id);
    bearers.places.push_back(place);
  }
  std::vector<Bearers> all;
  for (auto& [name, bearers] : byName) all.push_back(std::move(bearers));
  std::stable_sort(all.begin(), all.end(), [](const Bearers& a, const Bearers& b) { return a.x() < b.x(); });
  return all;
}

bool areOnOneSpot(const Bearers& one, const Bearers& other, double reach) {
  const auto isNearAll = [&](const Eigen::Vector3d& place) {
    return std::all_of(other.places.begin(), other.places.end(),
                       [&](const Eigen::Vector3d& there) { return (place - there).norm() <= reach; });
  };
  return std::all_of(one.places.begin(), one.places.end(), isNearAll);
}

bool shareGroup(const Bearers& one, const Bearers& other) {
  return std::any_of(one.groups.begin(), one.groups.end(),
                     [&](GroupId group) { return other.groups.count(group) != 0; });
}

/// A file's name before all automatic ones.
bool isElder(const Bearers& one, const Bearers& other) {
  return std::tie(one.isAutomatic, one.name) < std::tie(other.isAutomatic, other.name);
}

/// The one that this name gives way to among the others on its spot: the file's, else the oldest.
/// None where the files have two there.
const Bearers* elderBeside(const Bearers& name, const std::vector<Bearers>& all, double reach) {
  const Bearers* elder = nullptr;
  auto other = std::lower_bound(all.begin(), all.end(), name.x() - reach,
                                [](const Bearers& bearers, double x) { return bearers.x() < x; });
  for (; other != all.end() && other->x() <= name.x() + reach; ++other) {
    if (&*other == &name || !areOnOneSpot(name, *other, reach)) continue;
    if (elder && !elder->isAutomatic && !other->isAutomatic) return nullptr;
    if (!elder || isElder(*other, *elder)) elder = &*other;
  }
  return elder && isElder(*elder, name) ? elder : nullptr;
}

}  // namespace

PointPairs doubledNames(const SessionState& state, const GroupIdSet& groups,
                        const std::map<GroupId, OdGeMatrix3d>& toCommon, double reach) {
  const std::vector<Bearers> all = bearersOf(state, groups, toCommon);
  PointPairs doubled;
  std::set<CommonPointId> taken;
  for (const Bearers& name : all) {
    if (!name.isAutomatic) continue;
    const Bearers* elder = elderBeside(name, all, reach);
    if (!elder || shareGroup(name, *elder) || !taken.insert(elder->name).second) continue;
    for (const RefPointId point : name.points) doubled.emplace_back(point, elder->points.front());
  }
  return doubled;
}

}  // namespace tiepoint::workbench
