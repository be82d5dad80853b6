#include "session/active_flags.h"

#include <algorithm>
#include <boost/unordered/unordered_flat_map.hpp>
#include <boost/unordered/unordered_flat_set.hpp>
#include <cstddef>
#include <numeric>
#include <vector>

namespace ZOR::reg {

namespace {

/// A group of fewer points fixes no rigid transformation.
constexpr std::size_t minGroupPoints = 3;
/// A base of fewer names fixes no coordinate system.
constexpr std::size_t minBaseNames = 3;

using IdSet = boost::unordered_flat_set<std::uint64_t>;

/// A weight that compares neither below nor above zero, such as not-a-number, counts as zero.
bool isZeroWeight(double weight) { return !(weight < 0.0) && !(weight > 0.0); }

bool couldTakePart(const RefPoint& point) { return point.included && !isZeroWeight(point.weight) && point.named; }

/// The points on numbered shelves: those of one group, or those of one name, together. The shelves
/// stand in one piece of memory each for the counts and for the points, since there may be as many
/// shelves as points.
class Shelves {
 public:
  template <class IdOf>
  Shelves(const std::vector<RefPoint*>& points, IdOf idOf) {
    shelfOfPoint.reserve(points.size());
    boost::unordered_flat_map<std::uint64_t, std::size_t> shelfOfId;
    for (const RefPoint* point : points) {
      shelfOfPoint.push_back(shelfOfId.try_emplace(idOf(*point), shelfOfId.size()).first->second);
    }
    sortIn(shelfOfId.size());
  }

  std::size_t size() const { return counts.size(); }
  std::size_t shelfOf(std::size_t point) const { return shelfOfPoint[point]; }
  /// The indices of the shelf's points in the list that the shelves were made from.
  const std::size_t* begin(std::size_t shelf) const { return indices.data() + starts[shelf]; }
  const std::size_t* end(std::size_t shelf) const { return indices.data() + starts[shelf + 1]; }
  /// How many of the shelf's points are active and not base; kept by the user of the shelves.
  std::size_t& count(std::size_t shelf) { return counts[shelf]; }

 private:
  void sortIn(std::size_t shelves) {
    counts.resize(shelves);
    starts.resize(shelves + 1);
    for (std::size_t shelf : shelfOfPoint) ++starts[shelf + 1];
    for (std::size_t shelf = 0; shelf < shelves; ++shelf) starts[shelf + 1] += starts[shelf];
    indices.resize(shelfOfPoint.size());
    std::vector<std::size_t> next(starts.begin(), starts.end() - 1);
    for (std::size_t point = 0; point < shelfOfPoint.size(); ++point) indices[next[shelfOfPoint[point]]++] = point;
  }

  std::vector<std::size_t> shelfOfPoint;
  std::vector<std::size_t> counts;
  std::vector<std::size_t> starts;
  std::vector<std::size_t> indices;
};

std::vector<RefPoint*> addressesOf(RefPointList& points) {
  std::vector<RefPoint*> addresses;
  addresses.reserve(points.size());
  for (RefPoint& point : points) addresses.push_back(&point);
  return addresses;
}

std::vector<std::size_t> numbersBelow(std::size_t end) {
  std::vector<std::size_t> numbers(end);
  std::iota(numbers.begin(), numbers.end(), std::size_t{0});
  return numbers;
}

/// The pruning of the points outside the base. Each round looks only at the groups and the names
/// whose counts have changed since the last one, so that a long chain of consequences costs as
/// much as it drops.
class Pruning {
 public:
  Pruning(RefPointList& list, const IdSet& baseNames)
      : baseCommon(baseNames),
        points(addressesOf(list)),
        groups(points, [](const RefPoint& point) { return point.groupId; }),
        names(points, [](const RefPoint& point) { return point.commonId; }) {
    for (std::size_t i = 0; i < points.size(); ++i) {
      if (!points[i]->active || points[i]->inBase) continue;
      if (groups.count(groups.shelfOf(i))++ == 0) ++liveGroups;
      ++names.count(names.shelfOf(i));
    }
  }

  void run() {
    std::vector<std::size_t> groupsToCheck = numbersBelow(groups.size());
    std::vector<std::size_t> namesToCheck = numbersBelow(names.size());
    bool firstPass = true;
    do {
      if (liveGroups == 0 || (liveGroups == 1 && baseCommon.empty())) {
        for (RefPoint* point : points) point->active = false;
        return;
      }
      touchedNames.clear();
      const bool groupsChanged = dropThinGroups(groupsToCheck);
      if (!groupsChanged && !firstPass) return;
      if (!firstPass) namesToCheck.swap(touchedNames);
      firstPass = false;
      touchedGroups.clear();
      const bool namesChanged = dropLoneNames(namesToCheck);
      if (!namesChanged) return;
      groupsToCheck.swap(touchedGroups);
    } while (true);
  }

 private:
  bool dropThinGroups(const std::vector<std::size_t>& candidates) {
    bool changed = false;
    for (std::size_t group : candidates) {
      if (groups.count(group) == 0 || groups.count(group) >= minGroupPoints) continue;
      std::for_each(groups.begin(group), groups.end(group), [this](std::size_t point) { drop(point); });
      changed = true;
    }
    return changed;
  }

  bool dropLoneNames(const std::vector<std::size_t>& candidates) {
    bool changed = false;
    for (std::size_t name : candidates) {
      if (names.count(name) != 1 || baseCommon.count(points[*names.begin(name)]->commonId) != 0) continue;
      std::for_each(names.begin(name), names.end(name), [this](std::size_t point) {
        if (!points[point]->inBase) drop(point);
      });
      changed = true;
    }
    return changed;
  }

  void drop(std::size_t i) {
    RefPoint& point = *points[i];
    if (!point.active) return;
    point.active = false;
    if (point.inBase) return;
    const std::size_t group = groups.shelfOf(i);
    const std::size_t name = names.shelfOf(i);
    if (--groups.count(group) == 0) --liveGroups;
    --names.count(name);
    touchedGroups.push_back(group);
    touchedNames.push_back(name);
  }

  const IdSet& baseCommon;
  std::vector<RefPoint*> points;
  Shelves groups;
  Shelves names;
  /// Groups that have an active point outside the base.
  std::size_t liveGroups = 0;
  std::vector<std::size_t> touchedGroups;
  std::vector<std::size_t> touchedNames;
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
