#include "workbench/geometry/point_spread.h"

#include <algorithm>
#include <cmath>

namespace tiepoint::workbench {

namespace {

constexpr std::size_t binCount = 10;
/// Fewer make no distribution.
constexpr std::size_t minDistances = 3;

std::vector<double> distancesOf(const std::vector<std::vector<Eigen::Vector3d>>& pointsOfTargets) {
  std::vector<double> distances;
  for (const std::vector<Eigen::Vector3d>& points : pointsOfTargets) {
    for (std::size_t i = 0; i < points.size(); ++i) {
      for (std::size_t j = i + 1; j < points.size(); ++j) distances.push_back((points[i] - points[j]).norm());
    }
  }
  return distances;
}

double cutTo(double value, double scale, double unit) { return std::trunc(value * scale) * unit; }

void countInBins(const std::vector<double>& distances, double low, double high, PointSpread& spread) {
  const double width = (high - low) / static_cast<double>(binCount);
  spread.counts.assign(binCount, 0);
  for (const double distance : distances) {
    const double inBins = (distance - low) / width;
    const bool isBeforeLast = distance != high && inBins < static_cast<double>(binCount - 1);
    ++spread.counts[isBeforeLast ? static_cast<std::size_t>(inBins) : binCount - 1];
  }
  for (std::size_t i = 0; i <= binCount; ++i) {
    spread.edges.push_back(cutTo(static_cast<double>(i) * width + low, 1e6, 1e-6));
  }
}

}  // namespace

PointSpread spreadOf(const std::vector<std::vector<Eigen::Vector3d>>& pointsOfTargets) {
  const std::vector<double> distances = distancesOf(pointsOfTargets);
  if (std::any_of(distances.begin(), distances.end(), [](double d) { return !std::isfinite(d); })) return {};
  PointSpread spread;
  spread.largest = 0.0;
  if (distances.empty()) return spread;
  const auto [low, high] = std::minmax_element(distances.begin(), distances.end());
  spread.largest = cutTo(*high, 1e7, 1e-7);
  if (distances.size() >= minDistances) countInBins(distances, *low, *high, spread);
  return spread;
}

}  // namespace tiepoint::workbench
