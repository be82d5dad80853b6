#include "session/active_flags.h"

#include <algorithm>
#include <cstddef>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace ZOR::reg {

namespace {

/// A group of fewer points fixes no rigid transformation.
constexpr std::size_t minGroupPoints = 3;
/// A base of fewer names fixes no coordinate system.
constexpr std::size_t minBaseNames = 3;

using IdSet = std::unordered_set<std::uint64_t>;

/// A weight that compares neither below nor above zero, such as not-a-number, counts as zero.
bool isZeroWeight(double weight) { return !(weight < 0.0) && !(weight > 0.0); }

bool couldTakePart(const RefPoint& point) { return point.included && !isZeroWeight(point.weight) && point.named; }

/// The points that share a group or a name, and how many of them are active and not base.
struct Shelf {
  std::vector<RefPoint*> points;
  std::size_t count = 0;
};

/// The pruning of the points outside the base. Each round looks only at the groups and the names
/// whose counts have changed since the last one, so that a long chain of consequences costs as
/// much as it drops.
class Pruning {
 public:
  Pruning(RefPointList& points, const IdSet& baseNames) : allPoints(points), baseCommon(baseNames) {
    for (RefPoint& point : points) {
      Shelf& group = groups[point.groupId];
      Shelf& name = names[point.commonId];
      group.points.push_back(&point);
      name.points.push_back(&point);
      if (!point.active || point.inBase) continue;
      if (group.count++ == 0) ++liveGroups;
      ++name.count;
    }
  }

  void run() {
    std::vector<GroupId> groupsToCheck = keysOf(groups);
    bool firstPass = true;
    do {
      if (liveGroups == 0 || (liveGroups == 1 && baseCommon.empty())) {
        for (RefPoint& point : allPoints) point.active = false;
        return;
      }
      const bool groupsChanged = dropThinGroups(groupsToCheck);
      if (!groupsChanged && !firstPass) return;
      std::vector<CommonPointId> namesToCheck = firstPass ? keysOf(names) : std::move(touchedNames);
      touchedNames.clear();
      firstPass = false;
      touchedGroups.clear();
      if (!dropLoneNames(namesToCheck)) return;
      groupsToCheck = std::move(touchedGroups);
      touchedNames.clear();
    } while (true);
  }

 private:
  using Shelves = std::unordered_map<std::uint64_t, Shelf>;

  static std::vector<std::uint64_t> keysOf(const Shelves& shelves) {
    std::vector<std::uint64_t> keys;
    keys.reserve(shelves.size());
    for (const auto& [key, shelf] : shelves) keys.push_back(key);
    return keys;
  }

  bool dropThinGroups(const std::vector<GroupId>& candidates) {
    bool changed = false;
    for (GroupId id : candidates) {
      Shelf& group = groups[id];
      if (group.count == 0 || group.count >= minGroupPoints) continue;
      for (RefPoint* point : group.points) drop(*point);
      changed = true;
    }
    return changed;
  }

  bool dropLoneNames(const std::vector<CommonPointId>& candidates) {
    bool changed = false;
    for (CommonPointId id : candidates) {
      Shelf& name = names[id];
      if (name.count != 1 || baseCommon.count(id) != 0) continue;
      for (RefPoint* point : name.points) {
        if (!point->inBase) drop(*point);
      }
      changed = true;
    }
    return changed;
  }

  void drop(RefPoint& point) {
    if (!point.active) return;
    point.active = false;
    if (point.inBase) return;
    Shelf& group = groups[point.groupId];
    if (--group.count == 0) --liveGroups;
    --names[point.commonId].count;
    touchedGroups.push_back(point.groupId);
    touchedNames.push_back(point.commonId);
  }

  RefPointList& allPoints;
  const IdSet& baseCommon;
  Shelves groups;
  Shelves names;
  /// Groups that have an active point outside the base.
  std::size_t liveGroups = 0;
  std::vector<GroupId> touchedGroups;
  std::vector<CommonPointId> touchedNames;
};

IdSet activeNames(const RefPointList& points, bool inBase) {
  IdSet names;
  for (const RefPoint& point : points) {
    if (point.active && point.inBase == inBase) names.insert(point.commonId);
  }
  return names;
}

/// A base target that no other group sees is of no use.
void dropUnsharedBasePoints(RefPointList& points) {
  const IdSet otherNames = activeNames(points, false);
  for (RefPoint& point : points) {
    if (point.inBase && otherNames.count(point.commonId) == 0) point.active = false;
  }
}

/// The other groups keep their points, and go on among themselves.
void dropThinBase(RefPointList& points) {
  if (activeNames(points, true).size() >= minBaseNames) return;
  for (RefPoint& point : points) {
    if (point.inBase) point.active = false;
  }
}

}  // namespace

void rebuildActiveFlags(RefPointList& points) {
  if (points.empty()) return;
  for (RefPoint& point : points) point.active = couldTakePart(point);
  const IdSet baseCommon = activeNames(points, true);
  Pruning(points, baseCommon).run();
  dropUnsharedBasePoints(points);
  dropThinBase(points);
}

}  // namespace ZOR::reg
