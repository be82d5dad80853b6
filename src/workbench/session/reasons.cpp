#include "workbench/session/reasons.h"

#include <set>
#include <unordered_map>
#include <unordered_set>

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

/// Who has which name, among the points that may take part and among those that do.
struct NameUse {
  explicit NameUse(const SessionState& state) {
    for (const SessionPoint& point : state.points) take(point.record);
  }

  void take(const RefPoint& point) {
    if (point.active && !point.inBase) {
      activeNames.insert(point.commonId);
      activeGroups.insert(point.groupId);
    }
    if (!isEligible(point)) return;
    if (point.inBase) {
      eligibleBaseNames.insert(point.commonId);
    } else {
      ++eligibleCount[point.commonId];
      eligibleGroups.insert(point.groupId);
    }
  }

  bool nothingToJoin() const { return eligibleGroups.size() < 2 && eligibleBaseNames.empty(); }
  bool isShared(const RefPoint& point) const {
    const auto count = eligibleCount.find(point.commonId);
    return (count != eligibleCount.end() && count->second >= 2) || eligibleBaseNames.count(point.commonId) != 0;
  }

  /// Without the base.
  std::unordered_map<CommonPointId, std::size_t> eligibleCount;
  std::set<GroupId> eligibleGroups;
  std::unordered_set<CommonPointId> eligibleBaseNames;
  std::unordered_set<CommonPointId> activeNames;
  std::unordered_set<GroupId> activeGroups;
};

Reason reasonInBase(const RefPoint& point, const NameUse& use) {
  if (use.eligibleCount.count(point.commonId) == 0) return Reason::baseNotShared;
  return use.activeNames.count(point.commonId) == 0 ? Reason::partnersOut : Reason::thinBase;
}

Reason reasonOf(const RefPoint& point, const NameUse& use) {
  if (!point.included) return Reason::excluded;
  if (!(point.weight < 0.0 || point.weight > 0.0)) return Reason::weightZero;
  if (!point.named) return Reason::unnamed;
  if (point.inBase) return reasonInBase(point, use);
  if (use.nothingToJoin()) return Reason::nothingToJoin;
  if (!use.isShared(point)) return Reason::loneName;
  return use.activeGroups.count(point.groupId) == 0 ? Reason::thinGroup : Reason::partnersOut;
}

}  // namespace

std::vector<std::optional<Reason>> reasonsOut(const SessionState& state) {
  const NameUse use(state);
  std::vector<std::optional<Reason>> reasons;
  reasons.reserve(state.points.size());
  for (const SessionPoint& point : state.points) {
    reasons.push_back(point.record.active ? std::nullopt : std::optional(reasonOf(point.record, use)));
  }
  return reasons;
}

}  // namespace tiepoint::workbench
