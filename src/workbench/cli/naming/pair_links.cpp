#include "workbench/cli/naming/pair_links.h"

#include <algorithm>
#include <cmath>
#include <tuple>

#include "workbench/cli/links.h"
#include "workbench/cli/naming/certainty.h"

namespace tiepoint::workbench::cli {

using namespace ZOR::reg;

namespace {

/// From the widest tolerance down by halves: the tightest is then right for data without noise.
constexpr int halvings = 6;
/// A link of more points than any three can be had by chance only is good enough to end the search.
constexpr std::size_t enoughShared = namesThatLink + 1;

class PairSearch {
 public:
  PairSearch(Workbench& workbench_, const SessionState& start_, const Stations& stations_, const NamingLimits& limits_,
             GroupId first_, GroupId second_)
      : workbench(workbench_), start(start_), stations(stations_), limits(limits_), first(first_), second(second_) {}

  void run(bool haveEqualTriangles) {
    if (sharedNames(start, first, second) >= namesThatLink) tryTriangles(std::nullopt);
    for (int halving = halvings; haveEqualTriangles && halving >= 0 && !isEnough(); --halving) {
      NamingStep step;
      step.kind = NamingKind::triangles;
      step.groups = {first, second};
      step.tolerance = std::ldexp(limits.side, -halving);
      step.minSideDifference = limits.minSideDifference;
      tryTriangles(step);
    }
  }

  std::optional<PairLink> best;
  std::optional<double> aboveLimit;

 private:
  bool isEnough() const { return best && best->shared >= enoughShared; }

  void tryTriangles(std::optional<NamingStep> step) {
    ScratchSession scratch(workbench, start);
    if (step && scratch->matchByTriangles(step->groups, step->tolerance, step->minSideDifference) == 0) return;
    if (!solves(scratch)) return;
    if (!isSound(scratch->state(), limits.discrepancy)) {
      const double largest = largestDiscrepancy(scratch->state());
      if (!aboveLimit || largest < *aboveLimit) aboveLimit = largest;
      return;
    }
    consider(step, scratch->state());
    const bool closer = scratch->matchByCloseness(limits.closeness) > 0;
    if (!closer || !solves(scratch) || !isSound(scratch->state(), limits.discrepancy)) return;
    consider(step, scratch->state());
  }

  bool solves(ScratchSession& scratch) const { return scratch->solve({first, second}); }

  void consider(const std::optional<NamingStep>& step, const SessionState& state) {
    PairLink link{first, second, step, sharedNames(state, first, second), 0.0, largestDiscrepancy(state)};
    if (best && link.shared <= best->shared) return;
    if (link.shared <= namesThatLink) link.chance = chanceOf(state);
    best = link;
  }

  double chanceOf(const SessionState& state) const {
    const Station& station = stations.at(second);
    const NamedField named = fieldOf(state, stations, {first}, {});
    return expectedByChance(named.field, station.shape, placementOf(state, station, named), limits.reach());
  }

  Workbench& workbench;
  const SessionState& start;
  const Stations& stations;
  const NamingLimits& limits;
  GroupId first, second;
};

}  // namespace

PairLinks findPairLinks(Workbench& workbench, const SessionState& start, const Stations& stations,
                        const NamingLimits& limits) {
  PairLinks result;
  for (auto first = stations.begin(); first != stations.end(); ++first) {
    for (auto second = std::next(first); second != stations.end(); ++second) {
      PairSearch search(workbench, start, stations, limits, first->first, second->first);
      search.run(haveEqualTriangles(first->second.shape.triangles, second->second.shape.triangles, limits.side));
      if (search.best) result.links.push_back(*search.best);
      if (search.best || !search.aboveLimit) continue;
      for (const GroupId group : {first->first, second->first}) {
        const auto [entry, isNew] = result.aboveLimit.emplace(group, *search.aboveLimit);
        if (!isNew) entry->second = std::min(entry->second, *search.aboveLimit);
      }
    }
  }
  std::stable_sort(result.links.begin(), result.links.end(), [](const PairLink& a, const PairLink& b) {
    if (a.shared != b.shared) return a.shared > b.shared;
    return std::tie(a.chance, a.largestDiscrepancy) < std::tie(b.chance, b.largestDiscrepancy);
  });
  return result;
}

}  // namespace tiepoint::workbench::cli
