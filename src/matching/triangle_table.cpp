#include "matching/triangle_table.h"

#include <cmath>
#include <map>
#include <utility>

namespace ZOR::reg {

namespace {

/// One triangle: side and opposite corner, in ascending order of the sides.
struct Triangle {
  std::array<double, 3> sides;
  TriangleCorners corners;
};

double sideLength(const OdGePoint3d& a, const OdGePoint3d& b) {
  const double dx = a.x - b.x;
  const double dy = a.y - b.y;
  const double dz = a.z - b.z;
  return std::sqrt(dy * dy + dz * dz + dx * dx);
}

/// Equal sides keep their order.
void sortBySide(Triangle& triangle) {
  const auto orderPair = [&](std::size_t first, std::size_t second) {
    if (!(triangle.sides[second] < triangle.sides[first])) return;
    std::swap(triangle.sides[first], triangle.sides[second]);
    std::swap(triangle.corners[first], triangle.corners[second]);
  };
  orderPair(0, 1);
  orderPair(1, 2);
  orderPair(0, 1);
}

bool cornersCanBeToldApart(const std::array<double, 3>& sides, double minSideDifference) {
  return std::abs(sides[0] - sides[1]) > minSideDifference && std::abs(sides[0] - sides[2]) > minSideDifference &&
         std::abs(sides[1] - sides[2]) > minSideDifference;
}

/// The points of one group in ascending id, with all distances between them.
class GroupPoints {
 public:
  explicit GroupPoints(const std::map<RefPointId, OdGePoint3d>& points) {
    for (const auto& [id, position] : points) {
      ids.push_back(id);
      positions.push_back(position);
    }
    distances.resize(ids.size() * ids.size());
    for (std::size_t i = 0; i < ids.size(); ++i) {
      for (std::size_t j = 0; j < ids.size(); ++j) {
        distances[i * ids.size() + j] = sideLength(positions[i], positions[j]);
      }
    }
  }

  std::size_t size() const { return ids.size(); }

  Triangle triangle(std::size_t a, std::size_t b, std::size_t c) const {
    Triangle triangle{{distance(c, b), distance(c, a), distance(b, a)}, {ids[a], ids[b], ids[c]}};
    sortBySide(triangle);
    return triangle;
  }

 private:
  double distance(std::size_t from, std::size_t to) const { return distances[from * ids.size() + to]; }

  std::vector<RefPointId> ids;
  std::vector<OdGePoint3d> positions;
  std::vector<double> distances;
};

template <class Use>
void forEachTriangle(const GroupPoints& group, Use use) {
  for (std::size_t a = 0; a < group.size(); ++a) {
    for (std::size_t b = a + 1; b < group.size(); ++b) {
      for (std::size_t c = b + 1; c < group.size(); ++c) use(group.triangle(a, b, c));
    }
  }
}

RowTable tableOf(const std::vector<std::array<double, 3>>& sides) {
  RowTable table(static_cast<Eigen::Index>(sides.size()), 3);
  Eigen::Index row = 0;
  for (const std::array<double, 3>& s : sides) table.row(row++) << s[0], s[1], s[2];
  return table;
}

}  // namespace

TriangleTable buildTriangles(const RefPointList& points, double minSideDifference) {
  std::map<GroupId, std::map<RefPointId, OdGePoint3d>> groupPoints;
  for (const RefPoint& point : points) groupPoints[point.groupId].emplace(point.id, point.position);

  TriangleTable table;
  std::vector<std::array<double, 3>> sides;
  for (const auto& entry : groupPoints) {
    forEachTriangle(GroupPoints(entry.second), [&, group = entry.first](const Triangle& triangle) {
      if (!cornersCanBeToldApart(triangle.sides, minSideDifference)) return;
      sides.push_back(triangle.sides);
      table.corners.push_back(triangle.corners);
      table.groups.push_back(group);
    });
  }
  table.sides = tableOf(sides);
  return table;
}

}  // namespace ZOR::reg
