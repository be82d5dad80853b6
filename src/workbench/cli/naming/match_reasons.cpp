#include "workbench/cli/naming/match_reasons.h"

#include <fmt/format.h>

#include <Eigen/Dense>
#include <algorithm>
#include <optional>

#include "workbench/cli/naming/station_triangles.h"

namespace tiepoint::workbench::cli {

using namespace ZOR::reg;

namespace {

/// Fewer points have no two triangles without a common corner.
constexpr std::size_t fewestPoints = 6;

struct GroupShape {
  std::string name;
  std::vector<Eigen::Vector3d> points;
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
  /// A triangle of one group that has the sides of several in another.
  std::optional<std::string> repeated;
};

void compare(const GroupShape& one, const GroupShape& other, double tolerance, EqualTriangles& equal) {
  std::map<const Triangle*, std::size_t> counts;
  forEachEqualPair(one.triangles, other.triangles, tolerance, [&](const Triangle& a, const Triangle&) {
    equal.areThere = true;
    if (++counts[&a] < 2) return true;
    equal.repeated = fmt::format("a triangle of {} has the sides of several in {}", one.name, other.name);
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
std::optional<MatchReason> whyNotBegun(const SessionState& state, const GroupIdSet& groups) {
  std::size_t count = 0;
  GroupIdSet present;
  bool anyUnnamed = false;
  for (const SessionPoint& point : state.points) {
    if (groups.count(point.record.groupId) == 0) continue;
    ++count;
    present.insert(point.record.groupId);
    anyUnnamed = anyUnnamed || !point.record.named;
  }
  if (count < fewestPoints) {
    return MatchReason{"too-few-points",
                       fmt::format("there are {} points; {} at least are needed", count, fewestPoints)};
  }
  if (present.size() < 2) return MatchReason{"one-group", "there is one group only, and nothing to compare it with"};
  if (!anyUnnamed) return MatchReason{"nothing-unnamed", "every point has a name already"};
  return std::nullopt;
}

// --- Closeness.

struct PlacedPoint {
  Eigen::Vector3d place;
  const SessionPoint* point = nullptr;
};

std::vector<PlacedPoint> placedPoints(const SessionState& state, const std::map<GroupId, OdGeMatrix3d>& toCommon) {
  std::vector<PlacedPoint> placed;
  for (const SessionPoint& point : state.points) {
    const auto motion = toCommon.find(point.record.groupId);
    if (motion == toCommon.end()) continue;
    OdGePoint3d place = point.record.position;
    place.p_transform(motion->second);
    placed.push_back({{place.x, place.y, place.z}, &point});
  }
  std::sort(placed.begin(), placed.end(),
            [](const PlacedPoint& a, const PlacedPoint& b) { return a.place.x() < b.place.x(); });
  return placed;
}

bool isManual(const RefPoint& point) { return point.named && !point.autoNamed; }

/// Two names of the user's on one spot.
std::optional<MatchReason> conflictOf(const std::vector<PlacedPoint>& placed, double tolerance) {
  for (auto a = placed.begin(); a != placed.end(); ++a) {
    if (!isManual(a->point->record)) continue;
    for (auto b = std::next(a); b != placed.end() && b->place.x() - a->place.x() < tolerance; ++b) {
      if (!isManual(b->point->record) || b->point->record.commonId == a->point->record.commonId) continue;
      if (!((a->place - b->place).norm() < tolerance)) continue;
      const bool inOrder = a->point->record.id < b->point->record.id;
      return MatchReason{"conflict",
                         fmt::format("the points {} and {} lie within {:g} of one another, but their names "
                                     "come from the files and differ; one such spot voids the whole matching",
                                     (inOrder ? a : b)->point->name, (inOrder ? b : a)->point->name, tolerance)};
    }
  }
  return std::nullopt;
}

}  // namespace

MatchReason whyNoTriangles(const SessionState& state, const GroupIdSet& groups, double sideTolerance,
                           double minSideDifference) {
  if (const auto reason = whyNotBegun(state, groups)) return *reason;
  const std::vector<GroupShape> shapes = shapesOf(state, groups, minSideDifference);
  const auto hasTriangles = [](const GroupShape& shape) { return !shape.triangles.empty(); };
  if (std::count_if(shapes.begin(), shapes.end(), hasTriangles) < 2) {
    return {"no-usable-triangle",
            fmt::format("fewer than two groups have a triangle whose sides all differ by more than {:g}",
                        minSideDifference)};
  }
  const EqualTriangles equal = compareAll(shapes, sideTolerance);
  if (!equal.areThere) {
    return {"no-equal-triangles",
            fmt::format("no two groups have triangles whose sides agree within {:g}", sideTolerance)};
  }
  return {"contradiction",
          fmt::format("equal triangles contradict one another{}, and one contradiction voids the whole matching; the "
                      "layout repeats itself, or {:g} is too wide or too narrow a tolerance",
                      equal.repeated ? ": " + *equal.repeated : "", sideTolerance)};
}

MatchReason whyNothingClose(const SessionState& state, const std::map<GroupId, OdGeMatrix3d>& toCommon,
                            double tolerance) {
  if (toCommon.empty())
    return {"not-solved", "no group is registered yet: closeness needs names that join some groups"};
  const std::vector<PlacedPoint> placed = placedPoints(state, toCommon);
  const bool allManual =
      std::all_of(placed.begin(), placed.end(), [](const PlacedPoint& point) { return isManual(point.point->record); });
  if (allManual) return {"nothing-unnamed", "every point of the registered groups has a name from its file"};
  if (const auto conflict = conflictOf(placed, tolerance)) return *conflict;
  return {"nothing-close", fmt::format("no point without a name lies within {:g} of another", tolerance)};
}

}  // namespace tiepoint::workbench::cli
