#include "workbench/geometry/alignments.h"

#include <algorithm>
#include <array>
#include <limits>
#include <numeric>

namespace tiepoint::workbench {

namespace {

/// Passes of fitting onto what was found near: three corners alone place far points badly.
constexpr int refinements = 3;
/// Layouts as regular as a grid lay triangles on one another without end. Each trial looks at every
/// point of the station and every target.
constexpr std::size_t maxComparisons = 200000000;

Eigen::Isometry3d fit(const Placement& placement, const std::vector<Eigen::Vector3d>& points,
                      const std::vector<Eigen::Vector3d>& targets) {
  Eigen::Matrix3Xd from(3, static_cast<Eigen::Index>(placement.size()));
  Eigen::Matrix3Xd to(3, from.cols());
  Eigen::Index column = 0;
  for (const auto& [point, target] : placement) {
    from.col(column) = points[point];
    to.col(column++) = targets[target];
  }
  return Eigen::Isometry3d(Eigen::umeyama(from, to, false));
}

/// Each point on the target nearest to it, each target under the point nearest to it.
Placement matchNearest(const Eigen::Isometry3d& motion, const std::vector<Eigen::Vector3d>& points,
                       const std::vector<Eigen::Vector3d>& targets, double reach) {
  std::map<std::size_t, std::pair<double, std::size_t>> nearestPoint;
  for (std::size_t p = 0; p < points.size(); ++p) {
    const Eigen::Vector3d moved = motion * points[p];
    double best = reach * reach;
    std::size_t target = targets.size();
    for (std::size_t t = 0; t < targets.size(); ++t) {
      const double square = (targets[t] - moved).squaredNorm();
      if (square <= best) {
        best = square;
        target = t;
      }
    }
    if (target == targets.size()) continue;
    const auto [entry, isNew] = nearestPoint.try_emplace(target, best, p);
    if (!isNew && best < entry->second.first) entry->second = {best, p};
  }
  Placement placement;
  for (const auto& [target, found] : nearestPoint) placement.emplace(found.second, target);
  return placement;
}

class AlignmentSearch {
 public:
  AlignmentSearch(const TargetField& field_, const StationShape& station_, double reach_, std::size_t atLeast_,
                  std::size_t most_)
      : field(field_), station(station_), reach(reach_), atLeast(std::max<std::size_t>(atLeast_, 3)), most(most_) {}

  std::vector<Placement> run() {
    for (const TargetField::Seen& seen : field.stations) {
      // Two corners may each be half of `reach` off at both ends of a side.
      forEachEqualPair(seen.shape->triangles, station.triangles, reach,
                       [&](const Triangle& there, const Triangle& here) {
                         tryPair(seen, there, here);
                         return comparisons < maxComparisons && !isComplete();
                       });
    }
    std::stable_sort(found.begin(), found.end(),
                     [](const Placement& a, const Placement& b) { return a.size() > b.size(); });
    return std::move(found);
  }

 private:
  /// No way can lay more points than all.
  bool isComplete() const {
    const auto holdsAll = [&](const Placement& way) { return way.size() == station.points.size(); };
    return found.size() == most && std::all_of(found.begin(), found.end(), holdsAll);
  }

  /// Sides that are nearly equal to one another let the corners lie in several ways.
  void tryPair(const TargetField::Seen& seen, const Triangle& there, const Triangle& here) {
    std::array<std::size_t, 3> order{0, 1, 2};
    do {
      bool isEqual = true;
      for (std::size_t k = 0; k < 3; ++k) {
        isEqual = isEqual && std::abs(there.sides[k] - here.sides[order[k]]) <= reach;
      }
      if (!isEqual) continue;
      Placement corners;
      for (std::size_t k = 0; k < 3; ++k) corners[here.corners[order[k]]] = seen.target[there.corners[k]];
      tryCorners(corners);
    } while (std::next_permutation(order.begin(), order.end()));
  }

  void tryCorners(const Placement& corners) {
    const auto holds = [&](const Placement& known) {
      return std::includes(known.begin(), known.end(), corners.begin(), corners.end());
    };
    if (std::any_of(found.begin(), found.end(), holds)) return;
    comparisons += station.points.size() * field.targets.size();
    Placement placement = corners;
    for (int pass = 0; pass < refinements; ++pass) {
      Placement next =
          matchNearest(fit(placement, station.points, field.targets), station.points, field.targets, reach);
      if (next.size() < 3) return;
      if (next == placement) break;
      placement = std::move(next);
    }
    if (placement.size() < atLeast) return;
    const auto sameStory =
        std::find_if(found.begin(), found.end(), [&](const Placement& known) { return !areRivals(known, placement); });
    if (sameStory == found.end()) {
      found.push_back(std::move(placement));
      if (found.size() > most) dropSmallest();
    } else if (placement.size() > sameStory->size()) {
      *sameStory = std::move(placement);
    }
  }

  void dropSmallest() {
    found.erase(std::min_element(found.begin(), found.end(),
                                 [](const Placement& a, const Placement& b) { return a.size() < b.size(); }));
  }

  const TargetField& field;
  const StationShape& station;
  double reach;
  std::size_t atLeast;
  std::size_t most;
  std::size_t comparisons = 0;
  std::vector<Placement> found;
};

}  // namespace

bool areRivals(const Placement& one, const Placement& other) {
  std::size_t common = 0, conflicts = 0;
  for (const auto& [point, target] : one) {
    const auto there = other.find(point);
    if (there == other.end()) continue;
    ++(there->second == target ? common : conflicts);
  }
  return conflicts >= 2 || common < 3;
}

std::vector<Placement> alignments(const TargetField& field, const StationShape& station, double reach,
                                  std::size_t atLeast, std::size_t most) {
  return AlignmentSearch(field, station, reach, atLeast, most).run();
}

}  // namespace tiepoint::workbench
