// Triangles of points by their sides.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "matching/row_clusters.h"
#include "records/tables.h"

namespace ZOR::reg {

/// The corners of one triangle; the k-th lies opposite the k-th side.
using TriangleCorners = std::array<RefPointId, 3>;

/// Triangles whose corners can be told apart: no two sides are nearly equal.
struct TriangleTable {
  /// Three lengths a row, ascending; drawing units.
  RowTable sides;
  std::vector<TriangleCorners> corners;
  /// The group of each triangle.
  std::vector<GroupId> groups;
};

/// All triangles within each group, group after group in ascending id, the triples of a group in
/// the lexicographic order of their ids. Kept are those of which any two sides differ by more than
/// `minSideDifference`.
TriangleTable buildTriangles(const RefPointList& points, double minSideDifference);

}  // namespace ZOR::reg
