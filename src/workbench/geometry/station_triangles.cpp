#include "workbench/geometry/station_triangles.h"

#include <algorithm>
#include <cmath>
#include <tuple>
#include <utility>

namespace tiepoint::workbench {

namespace {

bool isFlat(const std::array<double, 3>& sides, double flattest) {
  const double half = (sides[0] + sides[1] + sides[2]) / 2.0;
  const double square = half * (half - sides[0]) * (half - sides[1]) * (half - sides[2]);
  const double height = 2.0 * std::sqrt(std::max(square, 0.0)) / sides[2];
  return !(height > flattest * sides[2]);
}

Triangle triangleOf(const std::vector<Eigen::Vector3d>& points, const std::array<std::uint32_t, 3>& corners) {
  const auto side = [&](std::size_t i, std::size_t j) { return (points[corners[i]] - points[corners[j]]).norm(); };
  std::array<std::pair<double, std::uint32_t>, 3> opposite{
      std::pair(side(1, 2), corners[0]), std::pair(side(0, 2), corners[1]), std::pair(side(0, 1), corners[2])};
  std::sort(opposite.begin(), opposite.end());
  Triangle triangle;
  for (std::size_t k = 0; k < 3; ++k) std::tie(triangle.sides[k], triangle.corners[k]) = opposite[k];
  return triangle;
}

}  // namespace

std::vector<Triangle> stationTriangles(const std::vector<Eigen::Vector3d>& points, double flattest) {
  std::vector<Triangle> triangles;
  const auto count = static_cast<std::uint32_t>(points.size());
  for (std::uint32_t a = 0; a < count; ++a) {
    for (std::uint32_t b = a + 1; b < count; ++b) {
      for (std::uint32_t c = b + 1; c < count; ++c) {
        const Triangle triangle = triangleOf(points, {a, b, c});
        if (std::isfinite(triangle.sides[2]) && !isFlat(triangle.sides, flattest)) triangles.push_back(triangle);
      }
    }
  }
  std::sort(triangles.begin(), triangles.end(),
            [](const Triangle& a, const Triangle& b) { return a.sides[2] < b.sides[2]; });
  return triangles;
}

void forEachEqualPair(const std::vector<Triangle>& first, const std::vector<Triangle>& second, double tolerance,
                      const std::function<bool(const Triangle&, const Triangle&)>& visit) {
  auto low = second.begin();
  for (const Triangle& a : first) {
    while (low != second.end() && low->sides[2] < a.sides[2] - tolerance) ++low;
    for (auto b = low; b != second.end() && b->sides[2] <= a.sides[2] + tolerance; ++b) {
      if (std::abs(a.sides[0] - b->sides[0]) > tolerance || std::abs(a.sides[1] - b->sides[1]) > tolerance) continue;
      if (!visit(a, *b)) return;
    }
  }
}

double sidesApart(const Triangle& a, const Triangle& b) {
  return std::hypot(a.sides[0] - b.sides[0], a.sides[1] - b.sides[1], a.sides[2] - b.sides[2]);
}

std::size_t countEqualPairs(const std::vector<Triangle>& first, const std::vector<Triangle>& second, double tolerance,
                            std::size_t most) {
  std::size_t count = 0;
  forEachEqualPair(first, second, tolerance, [&](const Triangle& a, const Triangle& b) {
    if (sidesApart(a, b) < tolerance) ++count;
    return count < most;
  });
  return count;
}

}  // namespace tiepoint::workbench
