// Both matchings step by step as they are told, with the comparison of all pairs and the plain
// naming.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>
#include <vector>

#include "matching/plain_naming.h"
#include "matching/plain_row_clusters.h"

namespace tiepoint::testing {

inline ZOR::reg::RowTable plainTableOf(const std::vector<std::array<double, 3>>& rows) {
  ZOR::reg::RowTable table(static_cast<Eigen::Index>(rows.size()), 3);
  Eigen::Index row = 0;
  for (const auto& values : rows) table.row(row++) << values[0], values[1], values[2];
  return table;
}

inline ZOR::reg::NamingChanges matchByDistancePlainly(const ZOR::reg::RefPointList& points,
                                                      const ZOR::reg::GroupTransforms& transforms, double tolerance) {
  std::vector<ZOR::reg::RefPoint> candidates;
  std::vector<std::array<double, 3>> rows;
  bool anyToName = false;
  for (const ZOR::reg::RefPoint& point : points) {
    if (transforms.count(point.groupId) == 0) continue;
    candidates.push_back(point);
    const OdGePoint3d place = apply(transforms.at(point.groupId), point.position);
    rows.push_back({place.x, place.y, place.z});
    anyToName = anyToName || point.autoNamed || !point.named;
  }
  ZOR::reg::NamingChanges changes;
  if (!anyToName) return changes;
  std::uint64_t label = 0;
  for (const auto& cluster : clusterRowsPlainly(plainTableOf(rows), tolerance)) {
    std::set<ZOR::reg::CommonPointId> manual, all;
    bool anyUnnamed = false;
    for (const std::uint64_t row : cluster) {
      const ZOR::reg::RefPoint& point = candidates[row];
      if (point.named) all.insert(point.commonId);
      if (point.named && !point.autoNamed) manual.insert(point.commonId);
      anyUnnamed = anyUnnamed || !point.named;
    }
    if (manual.size() > 1) return {};
    if (!anyUnnamed) continue;
    for (const std::uint64_t row : cluster) {
      const ZOR::reg::RefPoint& point = candidates[row];
      if (all.size() != 1) {
        changes.newAssignments[point.id] = label;
      } else if (!point.named || point.autoNamed) {
        changes.existingAssignments[point.id] = *all.begin();
      }
    }
    if (all.size() != 1) ++label;
  }
  return changes;
}

/// A side and the id of the corner opposite.
using PlainSide = std::pair<double, ZOR::reg::RefPointId>;

inline std::array<PlainSide, 3> plainTriangle(const ZOR::reg::RefPoint& a, const ZOR::reg::RefPoint& b,
                                              const ZOR::reg::RefPoint& c) {
  const auto length = [](const OdGePoint3d& p, const OdGePoint3d& q) {
    const double dx = p.x - q.x;
    const double dy = p.y - q.y;
    const double dz = p.z - q.z;
    return std::sqrt(dy * dy + dz * dz + dx * dx);
  };
  std::array<PlainSide, 3> sides{{{length(c.position, b.position), a.id},
                                  {length(c.position, a.position), b.id},
                                  {length(b.position, a.position), c.id}}};
  std::stable_sort(sides.begin(), sides.end(), [](const auto& p, const auto& q) { return p.first < q.first; });
  return sides;
}

inline ZOR::reg::NamingChanges matchByTrianglesPlainly(const ZOR::reg::RefPointList& points, double sideTolerance,
                                                       double minSideDifference) {
  std::map<ZOR::reg::GroupId, std::map<ZOR::reg::RefPointId, ZOR::reg::RefPoint>> groups;
  bool anyUnnamed = false;
  for (const ZOR::reg::RefPoint& point : points) {
    groups[point.groupId][point.id] = point;
    anyUnnamed = anyUnnamed || !point.named;
  }
  if (points.size() < 6 || groups.size() < 2 || !anyUnnamed) return {};

  std::vector<std::array<PlainSide, 3>> triangles;
  std::vector<std::array<double, 3>> rows;
  std::vector<std::uint64_t> tags;
  const auto differ = [&](double a, double b) { return std::abs(a - b) > minSideDifference; };
  for (const auto& [group, members] : groups) {
    for (auto a = members.begin(); a != members.end(); ++a) {
      for (auto b = std::next(a); b != members.end(); ++b) {
        for (auto c = std::next(b); c != members.end(); ++c) {
          const auto t = plainTriangle(a->second, b->second, c->second);
          if (!differ(t[0].first, t[1].first) || !differ(t[0].first, t[2].first) || !differ(t[1].first, t[2].first)) {
            continue;
          }
          triangles.push_back(t);
          rows.push_back({t[0].first, t[1].first, t[2].first});
          tags.push_back(group);
        }
      }
    }
  }
  PlainNaming naming(points);
  for (const auto& cluster : clusterRowsByTagPlainly(plainTableOf(rows), tags, sideTolerance)) {
    for (const std::size_t column : {0U, 1U, 2U}) {
      std::list<ZOR::reg::RefPointId> members;
      for (const std::uint64_t row : cluster) members.push_back(triangles[row][column].second);
      if (!naming.unite(members)) return {};
    }
  }
  return naming.changes();
}

}  // namespace tiepoint::testing
