#include "workbench/naming/match_reasons.h"

#include <Eigen/Dense>
#include <algorithm>
#include <cmath>
#include <optional>

#include "workbench/geometry/close_points.h"
#include "workbench/geometry/station_triangles.h"
#include "workbench/naming/point_reasons.h"

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

/// Fewer points have no two triangles without a common corner.
constexpr std::size_t minPoints = 6;

Finding note(FindingKind kind, double limit = 0.0) {
  Finding finding{kind, Severity::note};
  finding.limit = limit;
  return finding;
}

struct GroupShape {
  std::string name;
  std::vector<Eigen::Vector3d> points;
  std::vector<bool> isNamed;
  std::vector<Triangle> triangles;
};

bool isUsable(const Triangle& triangle, double minSideDifference) {
  const auto& [a, b, c] = triangle.sides;
  return b - a > minSideDifference && c - b > minSideDifference;
}

std::vector<GroupShape> shapesOf(const SessionState& state, const GroupIdSet& groups, double minSideDifference) {
  std::map<GroupId, GroupShape> shapes;
  for (const SessionPoint& point : state.points) {
    if (groups.count(point.record.groupId) == 0) continue;
    GroupShape& shape = shapes[point.record.groupId];
    shape.name = state.group(point.record.groupId).name;
    shape.points.emplace_back(point.record.position.x, point.record.position.y, point.record.position.z);
    shape.isNamed.push_back(point.record.named);
  }
  std::vector<GroupShape> result;
  for (auto& [group, shape] : shapes) {
    for (const Triangle& triangle : stationTriangles(shape.points, -1.0)) {
      if (isUsable(triangle, minSideDifference)) shape.triangles.push_back(triangle);
    }
    result.push_back(std::move(shape));
  }
  return result;
}

struct EqualTriangles {
  bool areThere = false;
  /// One of them has a corner without a name.
  bool haveUnnamed = false;
  /// Two groups: a triangle of the first has the sides of several in the second.
  std::optional<std::vector<std::string>> repeated;
};

bool hasUnnamed(const GroupShape& shape, const Triangle& triangle) {
  return std::any_of(triangle.corners.begin(), triangle.corners.end(),
                     [&](std::uint32_t corner) { return !shape.isNamed[corner]; });
}

/// Looks at the names of the one's corners; those of the other come when the two change places.
void compare(const GroupShape& one, const GroupShape& other, double tolerance, EqualTriangles& equal) {
  std::map<const Triangle*, std::size_t> counts;
  forEachEqualPair(one.triangles, other.triangles, tolerance, [&](const Triangle& a, const Triangle& b) {
    if (!(sidesApart(a, b) < tolerance)) return true;
    equal.areThere = true;
    equal.haveUnnamed = equal.haveUnnamed || hasUnnamed(one, a);
    if (++counts[&a] < 2) return true;
    equal.repeated = {one.name, other.name};
    return false;
  });
}

EqualTriangles compareAll(const std::vector<GroupShape>& shapes, double tolerance) {
  EqualTriangles equal;
  for (const GroupShape& one : shapes) {
    for (const GroupShape& other : shapes) {
      if (&one == &other) continue;
      compare(one, other, tolerance, equal);
      if (equal.repeated) return equal;
    }
  }
  return equal;
}

/// What can be said without a look at the shapes.
std::optional<Finding> reasonNotStarted(const SessionState& state, const GroupIdSet& groups) {
  std::size_t count = 0;
  GroupIdSet present;
  bool anyUnnamed = false;
  for (const SessionPoint& point : state.points) {
    if (groups.count(point.record.groupId) == 0) continue;
    ++count;
    present.insert(point.record.groupId);
    anyUnnamed = anyUnnamed || !point.record.named;
  }
  if (count < minPoints) {
    Finding few = note(FindingKind::fewPoints);
    few.count = count;
    few.atLeast = minPoints;
    return few;
  }
  if (present.size() < 2) return note(FindingKind::oneGroup);
  if (!anyUnnamed) return note(FindingKind::nothingUnnamed);
  return std::nullopt;
}

// --- Closeness.

bool isManual(const PlacedPoint& placed) { return placed.point->record.named && !placed.point->record.autoNamed; }

/// Two names of the user's in one cluster.
std::optional<Finding> conflictIn(const SessionState& state, const PointCluster& cluster, double tolerance) {
  const auto one = std::find_if(cluster.begin(), cluster.end(), isManual);
  if (one == cluster.end()) return std::nullopt;
  const auto other = std::find_if(std::next(one), cluster.end(), [&](const PlacedPoint& placed) {
    return isManual(placed) && placed.point->record.commonId != one->point->record.commonId;
  });
  if (other == cluster.end()) return std::nullopt;
  const bool isLost =
      std::any_of(cluster.begin(), cluster.end(), [](const PlacedPoint& p) { return !p.position.allFinite(); });
  if (isLost) return notFiniteReasons(state).front();
  Finding conflict = note(FindingKind::conflict, tolerance);
  conflict.points = {one->point->name, other->point->name};
  // Points between them may lead from the one to the other.
  conflict.value = areClose(*one, *other, tolerance) ? 0.0 : 1.0;
  return conflict;
}

}  // namespace

Finding whyNoTriangles(const SessionState& state, const GroupIdSet& groups, double sideTolerance,
                       double minSideDifference) {
  if (const auto reason = reasonNotStarted(state, groups)) return *reason;
  const std::vector<GroupShape> shapes = shapesOf(state, groups, minSideDifference);
  const auto hasTriangles = [](const GroupShape& shape) { return !shape.triangles.empty(); };
  if (std::count_if(shapes.begin(), shapes.end(), hasTriangles) < 2) {
    return note(FindingKind::noUsableTriangle, minSideDifference);
  }
  const EqualTriangles equal = compareAll(shapes, sideTolerance);
  if (!equal.areThere) return note(FindingKind::noEqualTriangles, sideTolerance);
  if (!equal.haveUnnamed && !equal.repeated) return note(FindingKind::onlyNamed, sideTolerance);
  Finding contradiction = note(FindingKind::contradiction, sideTolerance);
  contradiction.groups = equal.repeated.value_or(std::vector<std::string>());
  return contradiction;
}

Finding reasonNothingClose(const SessionState& state, const std::map<GroupId, OdGeMatrix3d>& toCommon,
                           double tolerance) {
  if (toCommon.empty()) return note(FindingKind::notSolved);
  const std::vector<PlacedPoint> placed = placedPoints(state, toCommon);
  if (std::all_of(placed.begin(), placed.end(), isManual)) return note(FindingKind::namedByFiles);
  for (const PointCluster& cluster : closePointClusters(placed, tolerance)) {
    if (const auto conflict = conflictIn(state, cluster, tolerance)) return *conflict;
  }
  return note(FindingKind::nothingClose, tolerance);
}

}  // namespace tiepoint::workbench
