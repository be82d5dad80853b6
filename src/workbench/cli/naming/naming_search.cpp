#include "workbench/cli/naming/naming_search.h"

#include <algorithm>
#include <map>
#include <set>

#include "workbench/cli/links.h"
#include "workbench/cli/naming/certainty.h"
#include "workbench/cli/naming/planned_session.h"

namespace tiepoint::workbench::cli {

using namespace ZOR::reg;

namespace {

/// Rounds of naming points on one spot after a station was added: a solve brings more points near,
/// as three corners place far points badly.
constexpr int mostRounds = 6;
/// A link of three points that contradicts another is as likely when chance makes it no more than so
/// many times as often.
constexpr double likelyAsWell = 4.0;

/// A station that hangs on three points alone, and what stood before it.
struct WeakAddition {
  std::size_t stepsBefore = 0;
  GroupIdSet before;
  double chance = 0.0;
};

class Growth {
 public:
  Growth(Workbench& workbench, const SessionState& start_, const NamingLimits& limits_)
      : start(start_),
        limits(limits_),
        stations(stationsOf(start_)),
        pairs(findPairLinks(workbench, start_, stations, limits_)),
        planned(workbench, start_) {}

  NamingPlan run() {
    while (addOne()) continue;
    addByNames();
    dropDoubtful();
    NamingPlan plan;
    if (!placed.empty()) plan.steps = planned.steps();
    plan.placed = placed;
    for (const auto& [group, station] : stations) {
      if (placed.count(group) == 0) plan.unplaced.push_back(troubleOf(group));
    }
    for (const PairLink* link : openLinks()) plan.openLoops.emplace_back(link->first, link->second);
    return plan;
  }

 private:
  // --- Adding.

  /// The best link that carries the set on, from two stations at first.
  bool addOne() {
    for (const PairLink& link : pairs.links) {
      const bool first = placed.count(link.first) != 0, second = placed.count(link.second) != 0;
      if (!placed.empty() && first == second) continue;
      const GroupIdSet before = placed.empty() ? GroupIdSet{link.first} : placed;
      const GroupId added = first || placed.empty() ? link.second : link.first;
      if (add(before, added, &link)) return true;
    }
    return false;
  }

  /// Stations that share names with several of the others, though with none of them enough.
  void addByNames() {
    for (bool grown = !placed.empty(); grown;) {
      grown = false;
      for (const auto& [group, station] : stations) {
        if (placed.count(group) == 0 && hasNames(group) && add(placed, group, nullptr)) grown = true;
      }
    }
  }

  bool hasNames(GroupId group) const {
    return std::any_of(start.points.begin(), start.points.end(), [&](const SessionPoint& point) {
      return point.record.groupId == group && isEligible(point.record);
    });
  }

  /// A link that failed is tried again when more stations stand.
  bool add(const GroupIdSet& before, GroupId group, const PairLink* link) {
    if (failedAt[{group, link}] == before.size()) return false;
    const std::size_t stepsBefore = planned.steps().size();
    GroupIdSet all = before;
    all.insert(group);
    if (join(before, all, group, link)) {
      placed = all;
      closeLoops();
      return true;
    }
    failedAt[{group, link}] = before.size();
    planned.backTo(stepsBefore);
    return false;
  }

  bool join(const GroupIdSet& before, const GroupIdSet& all, GroupId group, const PairLink* link) {
    const std::size_t stepsBefore = planned.steps().size();
    if (link && !matchTriangles(*link)) return false;
    if (!planned.solve(all) || !isSoundNow()) return false;
    nameSpotsInRounds(all);
    const NamedField named = fieldOf(planned.state(), stations, before, planned.motions());
    const Station& station = stations.at(group);
    const Placement own = placementOf(planned.state(), station, named);
    const Certainty certainty = certaintyOf(named.field, station.shape, own, limits.reach(), triesFor(before));
    if (certainty == Certainty::rivalled && own.size() > namesThatLink) ambiguous[group] = own.size();
    if (certainty != Certainty::certain) return false;
    if (own.size() <= namesThatLink) weak.push_back({stepsBefore, before, link ? link->chance : 0.0});
    return true;
  }

  /// The first two are the best of all pairs, each of which might have been it by chance; and nothing
  /// bears them out yet.
  double triesFor(const GroupIdSet& before) const {
    return before.size() > 1 ? 1.0 : 20.0 * static_cast<double>(stations.size() * (stations.size() - 1));
  }

  bool matchTriangles(const PairLink& link) {
    if (!link.triangles) return true;
    const NamingStep& step = *link.triangles;
    return planned.matchByTriangles(step.groups, step.tolerance, step.minSideDifference);
  }

  bool isSoundNow() { return isSound(planned.state(), limits.discrepancy); }

  // --- Names for what fell on one spot.

  void nameSpotsInRounds(const GroupIdSet& groups) {
    for (int round = 0; round < mostRounds; ++round) {
      if (!nameSpots(groups, limits.closeness) && !nameSpots(groups, 2.0 * limits.closeness)) return;
    }
  }

  /// Only if the solve that follows is as good.
  bool nameSpots(const GroupIdSet& groups, double tolerance) {
    const std::size_t stepsBefore = planned.steps().size();
    if (planned.matchByCloseness(tolerance) && planned.solve(groups) && isSoundNow()) return true;
    planned.backTo(stepsBefore);
    return false;
  }

  // --- Loops.

  /// Links between stations that stand, of which not all points have got their names.
  std::vector<const PairLink*> openLinks() {
    std::vector<const PairLink*> open;
    for (const PairLink& link : pairs.links) {
      const bool bothStand = placed.count(link.first) != 0 && placed.count(link.second) != 0;
      if (bothStand && sharedNames(planned.state(), link.first, link.second) < link.shared) open.push_back(&link);
    }
    return open;
  }

  void closeLoops() {
    for (const PairLink* link : openLinks()) {
      if (!triedLoops.insert({link, placed.size()}).second) continue;
      const std::size_t stepsBefore = planned.steps().size();
      if (matchTriangles(*link) && planned.solve(placed) && isSoundNow()) {
        nameSpotsInRounds(placed);
      } else {
        planned.backTo(stepsBefore);
      }
    }
  }

  /// Takes back the first station that hangs on three points while another link, not much more of a
  /// chance, would put it elsewhere; and all that came after it.
  void dropDoubtful() {
    const std::vector<const PairLink*> open = openLinks();
    for (const WeakAddition& addition : weak) {
      const auto contradicts = [&](const PairLink* link) {
        const bool crosses = addition.before.count(link->first) != addition.before.count(link->second);
        return crosses && link->chance <= likelyAsWell * addition.chance;
      };
      if (std::none_of(open.begin(), open.end(), contradicts)) continue;
      planned.backTo(addition.stepsBefore);
      placed = addition.before.size() > 1 ? addition.before : GroupIdSet{};
      return;
    }
  }

  UnplacedStation troubleOf(GroupId group) {
    const auto known = ambiguous.find(group);
    if (known != ambiguous.end()) return {group, StationTrouble::ambiguous, known->second, 0.0};
    return cli::troubleOf(group, start, stations, pairs, limits);
  }

  const SessionState& start;
  NamingLimits limits;
  Stations stations;
  PairLinks pairs;
  PlannedSession planned;
  GroupIdSet placed;
  std::map<std::pair<GroupId, const PairLink*>, std::size_t> failedAt;
  std::set<std::pair<const PairLink*, std::size_t>> triedLoops;
  std::vector<WeakAddition> weak;
  std::map<GroupId, std::size_t> ambiguous;
};

}  // namespace

NamingPlan searchNames(Workbench& workbench, const SessionState& start, const NamingLimits& limits) {
  return Growth(workbench, start, limits).run();
}

}  // namespace tiepoint::workbench::cli
