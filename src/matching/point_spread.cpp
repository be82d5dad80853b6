#include "matching/point_spread.h"

#include <algorithm>
#include <boost/math/special_functions/trunc.hpp>
#include <cmath>
#include <map>

namespace ZOR::reg {

namespace {

constexpr std::size_t binCount = 10;
/// Fewer make no distribution.
constexpr std::size_t minDistances = 3;

double distanceBetween(const OdGePoint3d& a, const OdGePoint3d& b) {
  const OdGeVector3d d = a - b;
  return std::sqrt(d.x * d.x + d.y * d.y + d.z * d.z);
}

/// The value cut, not rounded, to the decimals of `scale`.
double cutTo(double value, double scale, double unit) { return boost::math::trunc(value * scale) * unit; }

/// The largest value; one that isn't finite wins, wherever it stands.
double largestOf(const std::vector<double>& values) {
  const auto odd = std::find_if(values.begin(), values.end(), [](double v) { return !std::isfinite(v); });
  return odd != values.end() ? *odd : *std::max_element(values.begin(), values.end());
}

}  // namespace

bool collectSpreadDistances(const RefPointList& points, const GroupTransforms& groupTransforms,
                            const CommonPoints& commonPoints, std::vector<double>& distances) {
  distances.clear();
  if (groupTransforms.empty()) return false;
  std::map<CommonPointId, std::vector<OdGePoint3d>> byName;
  for (const RefPoint& point : points) {
    if (!point.active || commonPoints.count(point.commonId) == 0) continue;
    const auto transform = groupTransforms.find(point.groupId);
    if (transform != groupTransforms.end()) byName[point.commonId].push_back(apply(transform->second, point.position));
  }
  for (const auto& entry : byName) {
    const std::vector<OdGePoint3d>& bearers = entry.second;
    for (std::size_t i = 0; i < bearers.size(); ++i) {
      for (std::size_t j = i + 1; j < bearers.size(); ++j) distances.push_back(distanceBetween(bearers[i], bearers[j]));
    }
  }
  return true;
}

double maxSpread(const std::vector<double>& distances) {
  return distances.empty() ? 0.0 : cutTo(largestOf(distances), 1e7, 1e-7);
}

void spreadHistogram(const std::vector<double>& distances, std::vector<std::uint64_t>& binCounts,
                     std::vector<double>& binEdges) {
  binCounts.clear();
  binEdges.clear();
  if (distances.size() < minDistances) return;
  const double high = largestOf(distances);
  // Edges that aren't finite can't be cut; this raises the error that they would raise.
  if (!std::isfinite(high)) boost::math::trunc(high);
  const double low = *std::min_element(distances.begin(), distances.end());
  const double width = (high - low) / static_cast<double>(binCount);

  binCounts.assign(binCount, 0);
  for (double d : distances) {
    const double inBins = (d - low) / width;
    // The largest stands in the last bin, and whatever rounding puts behind it, or into none at all
    // where the width is too small for a number.
    const bool isBeforeLast = d != high && inBins < static_cast<double>(binCount - 1);
    ++binCounts[isBeforeLast ? static_cast<std::size_t>(inBins) : binCount - 1];
  }
  for (std::size_t i = 0; i <= binCount; ++i) {
    binEdges.push_back(cutTo(static_cast<double>(i) * width + low, 1e6, 1e-6));
  }
}

}  // namespace ZOR::reg
