#include "workbench/naming/naming_search.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>
#include <vector>

#include "workbench/geometry/certainty.h"
#include "workbench/geometry/doubled_names.h"
#include "workbench/geometry/links.h"
#include "workbench/geometry/nearest_points.h"
#include "workbench/naming/planned_session.h"

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

/// Rounds of naming coincident points after a station was added: each solve brings more points together,
/// as three corners alone place far points badly.
constexpr int maxRounds = 12;
/// The misclosure allowed for a loop of stations, in multiples of how far two measurements of a target may
/// lie apart.
constexpr double maxLoopGap = 20.0;
/// Close points first: a wide tolerance chains neighbours together.
constexpr std::array<double, 4> closenessParts{0.25, 0.5, 1.0, 2.0};
/// Points a little farther apart than the widest tolerance are looked for too, so that what lies
/// exactly at it is seen.
constexpr double nearestPart = 1.001 * closenessParts.back();
/// A contradicting link of three points counts as equally likely when chance makes it at most this many times
/// as often.
constexpr double maxChanceRatio = 4.0;
/// A station that depends on three points alone, and what was placed before it.
struct WeakAddition {
  GroupId group = 0;
  std::size_t stepsBefore = 0;
  GroupIdSet before;
  /// Of its link.
  double chance = 0.0;
  /// That some link of chance would have been taken like this one.
  double risk = 0.0;
};

/// More stations may decide between several ways, but nothing else.
struct FailedAddition {
  std::size_t before = 0;
  bool mayPass = false;
};

class NamingSearch {
 public:
  NamingSearch(Workbench& workbench, const SessionState& start_, const NamingLimits& limits_, Progress& progress_)
      : start(start_),
        records(recordsById(start_)),
        limits(limits_),
        progress(progress_),
        stations(stationsOf(start_)),
        common(stations, std::max(limits_.side, limits_.reach())),
        settings(settingsOf(start_)),
        pairs(findPairLinks(workbench, settings, start_, stations, common, limits_, progress_)),
        planned(workbench, settings) {}

  NamingPlan run() {
    while (addOne()) step(progress, placed.size(), stations.size());
    addByNames();
    dropDoubtful();
    NamingPlan plan;
    if (!placed.empty()) plan.steps = planned.steps();
    plan.placed = placed;
    for (const auto& [group, station] : stations) {
      if (placed.count(group) == 0) plan.unplaced.push_back(troubleOf(group));
    }
    plan.openLoops = openLoops();
    for (const WeakAddition& addition : weak) {
      if (placed.count(addition.group) != 0) plan.risks[addition.group] = addition.risk;
    }
    if (!placed.empty()) plan.named = planned.handOver();
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

  bool add(const GroupIdSet& before, GroupId group, const PairLink* link) {
    const auto failed = failedAt.find({group, link});
    if (failed != failedAt.end() && !(failed->second.mayPass && failed->second.before < before.size())) return false;
    const std::size_t stepsBefore = planned.steps().size();
    GroupIdSet all = before;
    all.insert(group);
    const Joined joined = join(before, all, group, link);
    if (joined == Joined::yes) {
      placed = all;
      closeLoops();
      return true;
    }
    failedAt[{group, link}] = {before.size(), joined == Joined::rivalled};
    planned.backTo(stepsBefore);
    return false;
  }

  enum class Joined { yes, no, rivalled };

  Joined join(const GroupIdSet& before, const GroupIdSet& all, GroupId group, const PairLink* link) {
    const std::size_t stepsBefore = planned.steps().size();
    if (link && !matchTriangles(*link)) return Joined::no;
    if (!planned.solve(all) || !isSoundNow()) return Joined::no;
    nameClosePointsInRounds(all);
    NamedField named = fieldOf(planned.state(), stations, before, planned.motions());
    const Station& station = stations.at(group);
    const Placement own = placementOf(planned.state(), station, named);
    const FileNames names = fileNamesOf(start, stations, before, named, station);
    const auto isPossible = [&](const Placement& way) { return !contradicts(way, names); };
    const double tries = triesFor(before);
    if (own.size() > namesThatLink) keepThoseInCommon(named.field, before, group);
    const Certainty certainty = certaintyOf(named.field, station.shape, own, limits.reach(), tries, isPossible);
    if (certainty == Certainty::rivalled && own.size() > namesThatLink) {
      ambiguous[group] = own.size();
      return Joined::rivalled;
    }
    if (certainty != Certainty::certain) return Joined::no;
    if (own.size() <= namesThatLink) {
      const double risk = tries * expectedByChance(named.field, station.shape, own, limits.reach());
      weak.push_back({group, stepsBefore, before, link ? link->chance : 0.0, risk});
    }
    return Joined::yes;
  }

  /// Only those can show another way of laying the station; how often chance makes a link of three
  /// points takes all.
  void keepThoseInCommon(TargetField& field, const GroupIdSet& groups, GroupId added) const {
    std::vector<TargetField::Seen> kept;
    auto seen = field.stations.begin();
    for (const GroupId group : groups) {
      if (common.mayBeBetween(group, added)) kept.push_back(std::move(*seen));
      ++seen;
    }
    field.stations = std::move(kept);
  }

  /// Of the links that could carry the set on the best is tried first, and each might have been it by
  /// chance; at the start that of any two stations could. The field holds all stations that stand.
  double triesFor(const GroupIdSet& before) const {
    const auto all = static_cast<double>(stations.size()), standing = static_cast<double>(before.size());
    return standing > 1.0 ? all - standing : all * (all - 1.0) / 2.0;
  }

  bool matchTriangles(const PairLink& link) {
    if (!link.triangles) return true;
    const NamingStep& step = *link.triangles;
    return planned.matchByTriangles(step.groups, step.tolerance, step.minSideDifference);
  }

  bool isSoundNow() { return isSound(planned.state(), limits.discrepancy); }

  // --- Names for coincident points.

  void nameClosePointsInRounds(const GroupIdSet& groups) {
    for (int round = 0; round < maxRounds; ++round) {
      const NearestPoints nearest = nearestNow();
      const auto names = [&](double part) {
        const double tolerance = part * limits.closeness;
        return tolerance > nearest.toUnnamed && nameClosePoints(groups, tolerance);
      };
      if (std::any_of(closenessParts.begin(), closenessParts.end(), names)) continue;
      const auto unites = [&](double part) {
        const double tolerance = part * limits.closeness;
        return tolerance >= nearest.betweenNames && uniteNames(groups, tolerance);
      };
      if (std::none_of(closenessParts.begin(), closenessParts.end(), unites)) return;
    }
  }

  /// A tolerance within which there is nothing to name isn't worth the operation, which looks at all
  /// points of the session.
  NearestPoints nearestNow() {
    return nearestPoints(placedPoints(planned.state(), planned.motions()), nearestPart * limits.closeness);
  }

  /// What a station brings a name for may have an automatic one in those that stand.
  bool uniteNames(const GroupIdSet& groups, double tolerance) {
    const PointPairs doubled = doubledNames(planned.state(), groups, planned.motions(), tolerance);
    if (doubled.empty()) return false;
    const std::size_t stepsBefore = planned.steps().size();
    if (planned.unite(doubled, tolerance) && planned.solve(groups) && isSoundNow()) return true;
    planned.backTo(stepsBefore);
    return false;
  }

  /// Only if the solve that follows is as good.
  bool nameClosePoints(const GroupIdSet& groups, double tolerance) {
    const std::size_t stepsBefore = planned.steps().size();
    if (!planned.matchByCloseness(tolerance)) {
      planned.dropIdle();
      return false;
    }
    if (planned.solve(groups) && isSoundNow()) return true;
    planned.backTo(stepsBefore);
    return false;
  }

  // --- Loops.

  /// Links between stations that stand, of which not all points have got their names.
  std::vector<const PairLink*> openLinks() {
    std::vector<const PairLink*> open;
    const NamesByGroup names = namesByGroup(planned.state());
    for (const PairLink& link : pairs.links) {
      const bool bothStand = placed.count(link.first) != 0 && placed.count(link.second) != 0;
      if (!bothStand) continue;
      if (countSharedNames(names, link.first, link.second) < link.shared.size()) open.push_back(&link);
    }
    return open;
  }

  /// Whether its points lie as near as the two ends of a loop; those of a chance link don't.
  bool nearlyCloses(const PairLink& link, const std::map<GroupId, OdGeMatrix3d>& toCommon) {
    return farthestApart(records, link.shared, toCommon) <= maxLoopGap * limits.reach();
  }

  void closeLoops() {
    const std::vector<const PairLink*> open = openLinks();
    if (open.empty()) return;
    for (const PairLink* link : open) {
      if (!nearlyCloses(*link, planned.motions())) continue;
      const std::size_t stepsBefore = planned.steps().size();
      if (matchTriangles(*link) && planned.solve(placed) && isSoundNow()) {
        nameClosePointsInRounds(placed);
      } else {
        planned.backTo(stepsBefore);
      }
    }
  }

  /// Removes the first station that depends on three points while another link, not much more likely to be
  /// chance, would put it elsewhere; and all that came after it.
  void dropDoubtful() {
    const std::vector<const PairLink*> open = openLinks();
    if (open.empty() || weak.empty()) return;
    const std::map<GroupId, OdGeMatrix3d> toCommon = planned.motions();
    for (const WeakAddition& addition : weak) {
      const auto contradicts = [&](const PairLink* link) {
        const bool crosses = addition.before.count(link->first) != addition.before.count(link->second);
        return crosses && link->chance <= maxChanceRatio * addition.chance && !nearlyCloses(*link, toCommon);
      };
      if (std::none_of(open.begin(), open.end(), contradicts)) continue;
      planned.backTo(addition.stepsBefore);
      placed = addition.before.size() > 1 ? addition.before : GroupIdSet{};
      return;
    }
  }

  std::vector<std::pair<GroupId, GroupId>> openLoops() {
    std::vector<std::pair<GroupId, GroupId>> loops;
    if (placed.empty()) return loops;
    const std::map<GroupId, OdGeMatrix3d> toCommon = planned.motions();
    for (const PairLink* link : openLinks()) {
      if (nearlyCloses(*link, toCommon)) loops.emplace_back(link->first, link->second);
    }
    return loops;
  }

  UnplacedStation troubleOf(GroupId group) {
    const UnplacedStation trouble = workbench::troubleOf(group, start, stations, pairs, limits);
    const auto known = ambiguous.find(group);
    if (known == ambiguous.end() || trouble.trouble == StationTrouble::mirrored) return trouble;
    return ambiguousStation(group, start, stations, known->second);
  }

  const SessionState& start;
  RecordsById records;
  NamingLimits limits;
  Progress& progress;
  Stations stations;
  CommonTriangles common;
  SettingsById settings;
  PairLinks pairs;
  PlannedSession planned;
  GroupIdSet placed;
  std::map<std::pair<GroupId, const PairLink*>, FailedAddition> failedAt;
  std::vector<WeakAddition> weak;
  std::map<GroupId, std::size_t> ambiguous;
};

}  // namespace

NamingPlan searchNames(Workbench& workbench, const SessionState& start, const NamingLimits& limits,
                       Progress& progress) {
  return NamingSearch(workbench, start, limits, progress).run();
}

}  // namespace tiepoint::workbench
