// The triangles of one station's points, to see which stations can share targets at all.
#pragma once

#include <Eigen/Dense>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace tiepoint::workbench {

struct Triangle {
  /// Ascending, drawing units.
  std::array<double, 3> sides{};
  /// Indices of the corners in the station's points; corner k lies opposite side k.
  std::array<std::uint32_t, 3> corners{};
};

/// A triangle lower than this part of its longest side doesn't say how a station lies.
inline constexpr double flattestTriangle = 0.02;

/// Ascending by the longest side. Left out are triangles with a side that isn't finite, and those
/// that aren't higher than `flattest` times their longest side; below 0 none is too flat.
std::vector<Triangle> stationTriangles(const std::vector<Eigen::Vector3d>& points, double flattest);

/// Calls `visit` for each pair of triangles whose sides, the shortest with the shortest and so on,
/// differ by at most `tolerance` each. Ends when it returns false.
void forEachEqualPair(const std::vector<Triangle>& first, const std::vector<Triangle>& second, double tolerance,
                      const std::function<bool(const Triangle&, const Triangle&)>& visit);

/// How far apart two triangles lie, their sides seen as points in space.
double sidesApart(const Triangle& a, const Triangle& b);

/// How many pairs of triangles lie less than `tolerance` apart. Counts up to `most`.
std::size_t countEqualPairs(const std::vector<Triangle>& first, const std::vector<Triangle>& second, double tolerance,
                            std::size_t most);

}  // namespace tiepoint::workbench
