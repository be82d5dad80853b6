#include "workbench/naming/pair_links.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <tuple>

#include "workbench/geometry/certainty.h"
#include "workbench/geometry/links.h"

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

/// From the widest tolerance down by halves: the tightest is then right for data without noise.
constexpr int halvings = 6;
/// Congruent triangles within a station contradict one another, as the four of a rectangle; where the
/// sides of a usable triangle must differ by more, they don't count.
constexpr int raises = 3;
constexpr double raisedBy = 4.0;
/// Four points have four triangles; what fewer of them say isn't contradicted.
constexpr std::size_t minToContradict = 4;
/// Any three points may agree by chance: a link of one more is good enough to end the search.
constexpr std::size_t enoughShared = namesThatLink + 1;

/// Where every triangle equals so many of the other station's, no naming is free of contradiction.
constexpr std::size_t maxPairsPerTriangle = 10;

/// The tolerances that are worth a try, from tight to wide.
struct Tolerances {
  std::vector<double> each;
  /// Pairs of triangles within the widest of them.
  std::size_t equalPairs = 0;
};

/// Each links more than the one before, and none of them too much.
Tolerances tolerancesFor(const std::vector<Triangle>& first, const std::vector<Triangle>& second, double widest) {
  Tolerances tolerances;
  if (countEqualPairs(first, second, widest, 1) == 0) return tolerances;
  const std::size_t tooMany = maxPairsPerTriangle * std::min(first.size(), second.size());
  for (int halving = halvings; halving >= 0; --halving) {
    const double tolerance = std::ldexp(widest, -halving);
    const std::size_t pairs = countEqualPairs(first, second, tolerance, tooMany);
    if (pairs == tooMany) break;
    if (pairs == tolerances.equalPairs) continue;
    tolerances.each.push_back(tolerance);
    tolerances.equalPairs = pairs;
  }
  return tolerances;
}

class PairSearch {
 public:
  PairSearch(ScratchSession& scratch_, const Stations& stations_, const NamingLimits& limits_, GroupId first_,
             GroupId second_)
      : scratch(scratch_), stations(stations_), limits(limits_), first(first_), second(second_) {}

  void run(const Tolerances& tolerances) {
    if (sharedNames(scratch->state(), first, second).size() >= namesThatLink) tryTriangles(std::nullopt);
    tryTolerances(tolerances.each, limits.minSideDifference);
    double minSideDifference = limits.minSideDifference;
    for (int raise = 0; tolerances.equalPairs >= minToContradict && raise < raises && !hasSpareNames(); ++raise) {
      minSideDifference *= raisedBy;
      tryTolerances(tolerances.each, minSideDifference);
    }
  }

  std::optional<PairLink> best;
  std::optional<double> aboveLimit;

 private:
  void tryTolerances(const std::vector<double>& tolerances, double minSideDifference) {
    for (const double tolerance : tolerances) {
      if (isEnough()) return;
      tryTriangles(NamingStep{NamingKind::triangles, {first, second}, tolerance, minSideDifference, 0});
    }
  }

  bool hasSpareNames() const { return best && best->shared.size() > enoughShared; }
  bool isEnough() const { return best && best->shared.size() >= enoughShared; }

  void tryTriangles(std::optional<NamingStep> step) {
    if (!isFresh) scratch.restart();
    isFresh = false;
    if (step && scratch->matchByTriangles(step->groups, step->tolerance, step->minSideDifference) == 0) return;
    if (!solves()) return;
    if (!isSound(scratch->state(), limits.discrepancy)) {
      const double largest = largestDiscrepancy(scratch->state());
      if (!aboveLimit || largest < *aboveLimit) aboveLimit = largest;
      return;
    }
    consider(step);
    const bool closer = scratch->matchByCloseness(limits.closeness) > 0;
    if (!closer || !solves() || !isSound(scratch->state(), limits.discrepancy)) return;
    consider(step);
  }

  bool solves() { return scratch->solve({first, second}); }

  void consider(const std::optional<NamingStep>& step) {
    const SessionState& state = scratch->state();
    PairLink link{first, second, step, sharedNames(state, first, second), 0.0, largestDiscrepancy(state)};
    if (best && link.shared.size() <= best->shared.size()) return;
    if (link.shared.size() <= namesThatLink) link.chance = chanceOf(link.shared);
    best = link;
  }

  double chanceOf(const PointPairs& shared) const {
    const Station& there = stations.at(first);
    const Station& here = stations.at(second);
    TargetField field;
    field.targets = there.shape.points;
    field.stations.push_back({&there.shape, std::vector<std::size_t>(field.targets.size())});
    std::iota(field.stations[0].target.begin(), field.stations[0].target.end(), std::size_t{0});
    Placement own;
    for (const auto& [target, point] : shared) own[here.indexInShape.at(point)] = there.indexInShape.at(target);
    return expectedByChance(field, here.shape, own, limits.reach());
  }

  ScratchSession& scratch;
  bool isFresh = true;
  const Stations& stations;
  const NamingLimits& limits;
  GroupId first, second;
};

}  // namespace

PairLinks findPairLinks(Workbench& workbench, const SettingsById& settings, const SessionState& start,
                        const Stations& stations, const CommonTriangles& common, const NamingLimits& limits,
                        Progress& progress) {
  PairLinks result;
  const NamesByGroup names = namesByGroup(start);
  for (auto first = stations.begin(); first != stations.end(); ++first) {
    // One for each first station: a session keeps all names that it ever made.
    std::optional<ScratchSession> scratch;
    for (auto second = std::next(first); second != stations.end(); ++second) {
      step(progress, 0, 0);
      Tolerances tolerances;
      if (common.mayBeBetween(first->first, second->first)) {
        tolerances = tolerancesFor(first->second.shape.triangles, second->second.shape.triangles, limits.side);
      }
      const bool haveNames = countSharedNames(names, first->first, second->first) >= namesThatLink;
      if (tolerances.each.empty() && !haveNames) continue;
      const GroupIdSet both{first->first, second->first};
      if (scratch) {
        scratch->changeTo(both);
      } else {
        scratch.emplace(workbench, settings, both);
      }
      PairSearch search(*scratch, stations, limits, first->first, second->first);
      search.run(tolerances);
      if (search.best) result.links.push_back(*search.best);
      if (search.best || !search.aboveLimit) continue;
      for (const GroupId group : {first->first, second->first}) {
        const auto [entry, isNew] = result.aboveLimit.emplace(group, *search.aboveLimit);
        if (!isNew) entry->second = std::min(entry->second, *search.aboveLimit);
      }
    }
  }
  std::stable_sort(result.links.begin(), result.links.end(), [](const PairLink& a, const PairLink& b) {
    if (a.shared.size() != b.shared.size()) return a.shared.size() > b.shared.size();
    return std::tie(a.chance, a.largestDiscrepancy) < std::tie(b.chance, b.largestDiscrepancy);
  });
  return result;
}

}  // namespace tiepoint::workbench
