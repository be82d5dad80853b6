#include "workbench/analysis/naming_margin.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "workbench/analysis/fit_moments.h"

namespace tiepoint::workbench::analysis {

namespace {

constexpr double largestMargin = 1000.0;
/// Above it nothing is to be learnt from comparing ways that all fit badly.
constexpr double hopelessSum = 10000.0;
/// Pairs of points compared in one search: about a tenth of a second.
constexpr std::size_t mostComparisons = 20000000;
/// With more pairs nothing but exchanges of two is looked at, and with still more not even those: both grow
/// with the square of the pairs.
constexpr std::size_t mostPairsSearched = 500, mostPairsExchanged = 1000;

using Order = std::vector<std::size_t>;

/// Depth first through all ways, bounded by what the pairs placed so far cost already: a sum of squares only
/// grows with further pairs.
class Search {
 public:
  Search(const std::vector<FitPair>& given, bool levelled_) : pairs(given), levelled(levelled_), naming(given.size()) {
    centre();
    std::iota(naming.begin(), naming.end(), std::size_t{0});
    givenSum = sumOf(naming);
    best = givenSum + largestMargin;
  }

  std::optional<NextNaming> run() {
    if (pairs.size() < 2) return std::nullopt;
    if (pairs.size() > mostPairsExchanged) return NextNaming{0.0, naming, false};
    const double leastExchange = tryExchanges();
    if (givenSum > hopelessSum && leastExchange > hopelessSum) return std::nullopt;
    if (pairs.size() > mostPairsSearched) {
      return NextNaming{best - givenSum, bestNaming.empty() ? naming : bestNaming, false};
    }
    Candidates all(pairs.size());
    for (std::size_t p = 0; p < pairs.size(); ++p) {
      for (std::size_t t = 0; t < pairs.size(); ++t) all[p].push_back({t, 0.0});
    }
    Order open(pairs.size());
    std::iota(open.begin(), open.end(), std::size_t{0});
    place(open, all, FitMoments());
    if (bestNaming.empty()) return std::nullopt;
    return NextNaming{best - givenSum, bestNaming, comparisons < mostComparisons};
  }

 private:
  struct Candidate {
    std::size_t target;
    /// The least that this pair costs together with one that stands already.
    double atLeast;
  };
  using Candidates = std::vector<std::vector<Candidate>>;

  /// A shift of all changes no sum of squares, and small numbers keep their digits.
  void centre() {
    Eigen::Vector3d from = Eigen::Vector3d::Zero(), to = from;
    for (const FitPair& pair : pairs) {
      from += pair.from / static_cast<double>(pairs.size());
      to += pair.to / static_cast<double>(pairs.size());
    }
    for (FitPair& pair : pairs) {
      pair.from -= from;
      pair.to -= to;
    }
  }

  double sumOf(const Order& targets) const {
    std::vector<FitPair> named = pairs;
    for (std::size_t p = 0; p < pairs.size(); ++p) named[p].to = pairs[targets[p]].to;
    return sumOfSquares(named, fitRigid(named, levelled));
  }

  /// The least sum of an exchange of two; the limit of the search falls to it.
  double tryExchanges() {
    double least = HUGE_VAL;
    FitMoments given;
    for (const FitPair& pair : pairs) given.add(pair.from, pair.to, pair.weight);
    for (std::size_t a = 0; a < pairs.size(); ++a) {
      for (std::size_t b = 0; b < a; ++b) {
        const double atLeast = exchanged(given, a, b).leastSumOfSquares(levelled);
        if (atLeast < std::min(least, best)) considerExchange(a, b);
        least = std::min(least, atLeast);
      }
    }
    return least;
  }

  FitMoments exchanged(FitMoments moments, std::size_t a, std::size_t b) const {
    const FitPair &one = pairs[a], &other = pairs[b];
    moments.add(one.from, one.to, -one.weight);
    moments.add(other.from, other.to, -other.weight);
    moments.add(one.from, other.to, one.weight);
    moments.add(other.from, one.to, other.weight);
    return moments;
  }

  void considerExchange(std::size_t a, std::size_t b) {
    Order targets = naming;
    std::swap(targets[a], targets[b]);
    consider(targets);
  }

  void consider(const Order& targets) {
    const double sum = sumOf(targets);
    if (!(sum < best)) return;
    best = sum;
    bestNaming = targets;
  }

  bool isGivenWay(const Order& targets) const {
    for (std::size_t p = 0; p < targets.size(); ++p) {
      if (targets[p] != p) return false;
    }
    return true;
  }

  /// The open point with the fewest candidates; of equals the farthest one, which leaves the least freedom.
  std::size_t nextPoint(const Order& open, const Candidates& candidates) const {
    std::size_t chosen = 0;
    for (std::size_t k = 1; k < open.size(); ++k) {
      const std::size_t count = candidates[open[k]].size(), least = candidates[open[chosen]].size();
      if (count > least) continue;
      const bool isFarther = pairs[open[k]].from.squaredNorm() > pairs[open[chosen]].from.squaredNorm();
      if (count < least || isFarther) chosen = k;
    }
    return chosen;
  }

  void place(Order open, const Candidates& candidates, const FitMoments& placed) {
    if (open.empty()) {
      if (!isGivenWay(naming)) consider(naming);
      return;
    }
    const std::size_t at = nextPoint(open, candidates), point = open[at];
    open.erase(open.begin() + static_cast<std::ptrdiff_t>(at));
    for (const Candidate& candidate : candidates[point]) {
      if (candidate.atLeast >= best || comparisons >= mostComparisons) continue;
      FitMoments moments = placed;
      moments.add(pairs[point].from, pairs[candidate.target].to, pairs[point].weight);
      if (moments.leastSumOfSquares(levelled) >= best) continue;
      naming[point] = candidate.target;
      Candidates left(pairs.size());
      if (narrow(open, candidates, point, candidate.target, left)) place(open, left, moments);
    }
    naming[point] = point;
  }

  /// What is left for the open points beside a new pair; false when one of them has nothing left.
  bool narrow(const Order& open, const Candidates& candidates, std::size_t point, std::size_t target,
              Candidates& left) {
    for (const std::size_t p : open) {
      comparisons += candidates[p].size();
      for (const Candidate& candidate : candidates[p]) {
        if (candidate.target == target) continue;
        const double atLeast = std::max(candidate.atLeast, costOfTwo(point, target, p, candidate.target));
        if (atLeast < best) left[p].push_back({candidate.target, atLeast});
      }
      if (left[p].empty()) return false;
      const auto isCheaper = [](const Candidate& a, const Candidate& b) { return a.atLeast < b.atLeast; };
      std::stable_sort(left[p].begin(), left[p].end(), isCheaper);
    }
    return true;
  }

  /// A rigid motion changes no distance, a level one no height either.
  double costOfTwo(std::size_t point, std::size_t target, std::size_t other, std::size_t otherTarget) const {
    const Eigen::Vector3d here = pairs[point].from - pairs[other].from;
    const Eigen::Vector3d there = pairs[target].to - pairs[otherTarget].to;
    const double weight = pairs[point].weight * pairs[other].weight / (pairs[point].weight + pairs[other].weight);
    if (!levelled) return weight * std::pow(here.norm() - there.norm(), 2);
    return weight * (std::pow(here.head<2>().norm() - there.head<2>().norm(), 2) + std::pow(here.z() - there.z(), 2));
  }

  std::vector<FitPair> pairs;
  bool levelled;
  Order naming, bestNaming;
  double givenSum = 0.0, best = 0.0;
  std::size_t comparisons = 0;
};

}  // namespace

std::optional<NextNaming> nextNaming(const std::vector<FitPair>& pairs, bool levelled) {
  return Search(pairs, levelled).run();
}

}  // namespace tiepoint::workbench::analysis
