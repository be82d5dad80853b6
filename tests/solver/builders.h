// Points, sets of targets and results as the solver's tests need them.
#pragma once

#include <gmock/gmock.h>

#include <vector>

#include "records/tables.h"
#include "solver/finish_solve.h"
#include "solver/rigid_fit.h"
#include "solver/solve_results.h"

namespace tiepoint::testing {

using ZOR::reg::CommonPointId;
using ZOR::reg::GroupId;
using ZOR::reg::PointMatrix;
using ZOR::reg::RefPoint;
using ZOR::reg::RefPointId;
using ZOR::reg::RefPointList;
using ZOR::reg::RigidTransform;

/// A named point that takes part in the solve.
inline RefPoint measured(RefPointId id, GroupId group, CommonPointId name, const OdGePoint3d& position,
                         double weight = 1.0) {
  RefPoint point;
  point.id = id;
  point.groupId = group;
  point.commonId = name;
  point.position = position;
  point.weight = weight;
  point.named = true;
  return point;
}

inline RefPoint inBase(RefPoint point) {
  point.inBase = true;
  return point;
}

inline RefPointList inBase(RefPointList points) {
  for (RefPoint& point : points) point.inBase = true;
  return points;
}

/// Switched off by the user.
inline RefPoint leftOut(RefPoint point) {
  point.included = false;
  point.active = false;
  return point;
}

inline PointMatrix rowsOf(const std::vector<OdGePoint3d>& points) {
  PointMatrix rows(static_cast<Eigen::Index>(points.size()), 3);
  Eigen::Index row = 0;
  for (const OdGePoint3d& p : points) rows.row(row++) << p.x, p.y, p.z;
  return rows;
}

inline OdGePoint3d rowAt(const PointMatrix& points, Eigen::Index row) {
  return {points(row, 0), points(row, 1), points(row, 2)};
}

inline Eigen::VectorXd valuesOf(const std::vector<double>& values) {
  return Eigen::Map<const Eigen::VectorXd>(values.data(), static_cast<Eigen::Index>(values.size()));
}

/// Six targets on the axes about their centre. Their covariance with themselves is diagonal, so
/// the fit of two such crosses that differ by whole numbers is exact to the last bit.
inline std::vector<OdGePoint3d> crossAbout(const OdGePoint3d& c) {
  return {{c.x + 4, c.y, c.z}, {c.x - 4, c.y, c.z}, {c.x, c.y + 2, c.z},
          {c.x, c.y - 2, c.z}, {c.x, c.y, c.z + 1}, {c.x, c.y, c.z - 1}};
}

/// The cross as a station's points: names from 0, ids from `firstId`.
inline RefPointList crossOfStation(RefPointId firstId, GroupId group, const OdGePoint3d& centre, double weight = 1.0) {
  RefPointList points;
  CommonPointId name = 0;
  for (const OdGePoint3d& p : crossAbout(centre))
    points.push_back(measured(firstId + name, group, name, p, weight)), ++name;
  return points;
}

inline RefPointList join(std::initializer_list<RefPointList> lists) {
  RefPointList all;
  for (const RefPointList& list : lists) all.insert(all.end(), list.begin(), list.end());
  return all;
}

/// What a session keeps of its solves.
struct SolveMembers : ZOR::reg::SolveResults {
  ZOR::reg::PointDiscrepancies pointDiscrepancies;
};

template <typename Map>
std::vector<typename Map::key_type> keysOf(const Map& map) {
  std::vector<typename Map::key_type> keys;
  for (const auto& entry : map) keys.push_back(entry.first);
  return keys;
}

MATCHER_P2(IsNearPoint, expected, tolerance, "") {
  return std::abs(arg.x - expected.x) <= tolerance && std::abs(arg.y - expected.y) <= tolerance &&
         std::abs(arg.z - expected.z) <= tolerance;
}

}  // namespace tiepoint::testing

/// How a failed test shows a point.
inline void PrintTo(const OdGePoint3d& p, std::ostream* out) {
  *out << '(' << p.x << ", " << p.y << ", " << p.z << ')';
}
