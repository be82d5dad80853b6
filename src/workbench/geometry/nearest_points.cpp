#include "workbench/geometry/nearest_points.h"

#include <algorithm>

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

/// Of the largest coordinate: thousands of times what one transformation rounds off.
constexpr double roundingPart = 1e-12;

/// What the search needs of a point, side by side in memory.
struct Row {
  Eigen::Vector3d position;
  CommonPointId name = 0;
  bool isNamed = false;
};

std::vector<Row> rowsAlongX(const std::vector<PlacedPoint>& placed) {
  std::vector<Row> rows;
  rows.reserve(placed.size());
  for (const PlacedPoint& p : placed) rows.push_back({p.position, p.point->record.commonId, p.point->record.named});
  std::sort(rows.begin(), rows.end(), [](const Row& a, const Row& b) { return a.position.x() < b.position.x(); });
  return rows;
}

double largestCoordinate(const std::vector<PlacedPoint>& placed) {
  double largest = 0.0;
  for (const PlacedPoint& p : placed) largest = std::max(largest, p.position.cwiseAbs().maxCoeff());
  return largest;
}

}  // namespace

NearestPoints nearestPoints(const std::vector<PlacedPoint>& placed, double maxDistance) {
  const auto isFinite = [](const PlacedPoint& p) { return p.position.allFinite(); };
  if (!std::all_of(placed.begin(), placed.end(), isFinite)) return {};
  const std::vector<Row> rows = rowsAlongX(placed);
  NearestPoints nearest{maxDistance, maxDistance};
  for (auto a = rows.begin(); a != rows.end(); ++a) {
    for (auto b = std::next(a); b != rows.end(); ++b) {
      const bool bothNamed = a->isNamed && b->isNamed;
      if (b->position.x() - a->position.x() > std::max(nearest.toUnnamed, nearest.betweenNames)) break;
      if (bothNamed && a->name == b->name) continue;
      double& distance = bothNamed ? nearest.betweenNames : nearest.toUnnamed;
      distance = std::min(distance, (a->position - b->position).norm());
    }
  }
  const double rounding = roundingPart * largestCoordinate(placed);
  return {std::max(nearest.toUnnamed - rounding, 0.0), std::max(nearest.betweenNames - rounding, 0.0)};
}

}  // namespace tiepoint::workbench
