#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <cmath>

#include "solver/arbitrary.h"
#include "solver/builders.h"
#include "solver/pairwise.h"
#include "solver/plain_pairwise.h"
#include "solver/rigid_motions.h"
#include "solver/solve_input.h"

namespace tiepoint::testing {
namespace {

using ZOR::reg::formOneCluster;
using ZOR::reg::GroupClusters;
using ZOR::reg::GroupMerges;

/// The session's points, ready to solve.
struct Survey {
  explicit Survey(RefPointList points) : sessionPoints(std::move(points)) {
    prepareSolvePoints(sessionPoints, workingPoints, mergedDiscrepancies);
    names = ZOR::reg::collectGroupNames(workingPoints);
    std::map<GroupId, GroupMerges> mergeLists;
    findGroupClusters(names, clusters, mergeLists);
    if (isReady()) merges = mergeLists.begin()->second;
  }
  bool isReady() const { return formOneCluster(names, clusters); }

  SolveMembers solved() const {
    SolveMembers members;
    members.pointDiscrepancies = mergedDiscrepancies;
    solvePairwise(workingPoints, merges, sessionPoints, members, members.pointDiscrepancies);
    return members;
  }
  SolveMembers solvedPlainly() const {
    SolveMembers members;
    members.pointDiscrepancies = mergedDiscrepancies;
    solvePairwisePlainly(workingPoints, merges, sessionPoints, members);
    return members;
  }

  RefPointList sessionPoints;
  RefPointList workingPoints;
  ZOR::reg::PointDiscrepancies mergedDiscrepancies;
  ZOR::reg::GroupNameSets names;
  GroupClusters clusters;
  GroupMerges merges;
};

bool areEqual(const std::vector<RigidTransform>& a, const std::vector<RigidTransform>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const RigidTransform& x, const RigidTransform& y) {
    return x.rotation == y.rotation && x.translation == y.translation;
  });
}

bool areEqual(const ZOR::reg::GroupTransforms& a, const ZOR::reg::GroupTransforms& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto& x, const auto& y) {
    return x.first == y.first && x.second.rotation == y.second.rotation && x.second.translation == y.second.translation;
  });
}

bool areEqual(const ZOR::reg::CommonPoints& a, const ZOR::reg::CommonPoints& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto& x, const auto& y) {
    return x.first == y.first && x.second.position == y.second.position && x.second.weight == y.second.weight;
  });
}

bool isFinite(const SolveMembers& members) {
  for (const auto& [name, common] : members.commonPoints) {
    if (!std::isfinite(common.position.x + common.position.y + common.position.z + common.weight)) return false;
  }
  return true;
}

/// One station's measurement of a target, as careless as files can be: few distinct coordinates, so
/// that origins, lines and planes come often, and weights that are zero or negative.
RefPoint carelessPoint(RefPointId id, GroupId group) {
  const auto coordinate = [] { return static_cast<double>(arbitraryBetween(-2, 2)); };
  const double x = coordinate();
  const double y = coordinate();
  const double z = coordinate();
  RefPoint point = measured(id, group, arbitraryBetween<CommonPointId>(0, 8), {x, y, z},
                            *rc::gen::element(1.0, 1.0, 0.5, 0.25, 0.75, -0.125));
  point.named = !onceIn(10);
  return onceIn(8) ? leftOut(point) : point;
}

RefPointList carelessSession() {
  RefPointList points;
  const auto stations = arbitraryBetween<GroupId>(2, 6);
  for (GroupId group = 0; group < stations; ++group) {
    const bool isBase = onceIn(4);
    const int count = arbitraryBetween(5, 12);
    for (int i = 0; i < count; ++i) {
      points.push_back(carelessPoint(points.size(), group));
      points.back().inBase = isBase;
    }
  }
  return points;
}

// No tolerance: a product with a selection matrix only copies finite numbers, so both ways hand the
// same numbers in the same order to the same fit.
RC_GTEST_PROP(PairwiseLaws, AgreesToTheLastBitWithSelectionsAsDenseMatrices, ()) {
  const Survey survey(carelessSession());
  RC_PRE(survey.isReady());
  const SolveMembers plain = survey.solvedPlainly();
  RC_PRE(isFinite(plain));
  const SolveMembers sparse = survey.solved();
  RC_ASSERT(sparse.registrationMethod == plain.registrationMethod);
  RC_ASSERT(areEqual(sparse.solverTable, plain.solverTable));
  RC_ASSERT(areEqual(sparse.groupTransforms, plain.groupTransforms));
  RC_ASSERT(areEqual(sparse.commonPoints, plain.commonPoints));
  RC_ASSERT(sparse.pointDiscrepancies == plain.pointDiscrepancies);
}

/// The corners of a box, off the origin. No three are on one line, so that every fit is firm.
const std::vector<OdGePoint3d> corners{{10, 20, 5},  {40, 20, 5},  {10, 60, 5},  {40, 60, 5},
                                       {10, 20, 25}, {40, 20, 25}, {10, 60, 25}, {40, 60, 25}};

/// Stations that see all corners or lack up to three of them, from their own places, with errors of up
/// to 0.05.
RefPointList soundSession() {
  RefPointList points;
  const auto stations = arbitraryBetween<GroupId>(2, 5);
  for (GroupId group = 0; group < stations; ++group) {
    const RigidTransform toStation = arbitraryMotion(50.0);
    const auto firstMissing = arbitraryBetween<CommonPointId>(0, 7);
    const auto missing = arbitraryBetween<CommonPointId>(0, 3);
    for (CommonPointId name = 0; name < corners.size(); ++name) {
      if ((name + 8 - firstMissing) % 8 < missing) continue;
      const Eigen::Vector3d error = arbitraryVector(0.05);
      const OdGePoint3d& c = corners[name];
      const OdGePoint3d seen = apply(toStation, {c.x + error.x(), c.y + error.y(), c.z + error.z()});
      points.push_back(measured(points.size(), group, name, seen, *rc::gen::element(1.0, 0.5, 0.25)));
    }
  }
  return points;
}

RefPointList withStationMoved(RefPointList points, GroupId station, const RigidTransform& motion) {
  for (RefPoint& point : points) {
    if (point.groupId == station) point.position = apply(motion, point.position);
  }
  return points;
}

/// Coordinates within 300 round at 2^-53 of that in each of some tens of operations, and a fit over
/// common points 20 apart passes on ten times as much to the farthest point.
constexpr double invarianceRounding = 1e-10;

RC_GTEST_PROP(PairwiseLaws, DiscrepanciesStayWhenAStationIsMovedRigidly, ()) {
  const RefPointList points = soundSession();
  const GroupId station = arbitraryBetween<GroupId>(0, points.back().groupId);
  const Survey before(points);
  const Survey after(withStationMoved(points, station, arbitraryMotion(50.0)));
  RC_PRE(before.isReady());
  SolveMembers solvedBefore = before.solved();
  SolveMembers solvedAfter = after.solved();
  for (const RefPoint& point : points) {
    // One without an entry has the discrepancy 0.0.
    const double discrepancyBefore = solvedBefore.pointDiscrepancies[point.id];
    const double discrepancyAfter = solvedAfter.pointDiscrepancies[point.id];
    RC_ASSERT(std::abs(discrepancyBefore - discrepancyAfter) <= invarianceRounding);
  }
}

RC_GTEST_PROP(PairwiseLaws, CommonPointsStayWhenAStationOtherThanTheFirstIsMovedRigidly, ()) {
  const RefPointList points = soundSession();
  const GroupId station = arbitraryBetween<GroupId>(1, points.back().groupId);
  const Survey before(points);
  const Survey after(withStationMoved(points, station, arbitraryMotion(50.0)));
  RC_PRE(before.isReady());
  const SolveMembers solvedBefore = before.solved();
  const SolveMembers solvedAfter = after.solved();
  for (const auto& [name, common] : solvedBefore.commonPoints) {
    const OdGeVector3d shift = common.position - solvedAfter.commonPoints.at(name).position;
    RC_ASSERT(std::sqrt(shift.x * shift.x + shift.y * shift.y + shift.z * shift.z) <= invarianceRounding);
  }
}

RC_GTEST_PROP(PairwiseLaws, NothingDependsOnTheOrderOfTheList, ()) {
  RefPointList points = soundSession();
  const Survey before(points);
  RC_PRE(before.isReady());
  const SolveMembers solvedBefore = before.solved();
  points.reverse();
  const SolveMembers solvedAfter = Survey(points).solved();
  RC_ASSERT(areEqual(solvedBefore.groupTransforms, solvedAfter.groupTransforms));
  RC_ASSERT(areEqual(solvedBefore.commonPoints, solvedAfter.commonPoints));
  RC_ASSERT(solvedBefore.pointDiscrepancies == solvedAfter.pointDiscrepancies);
}

}  // namespace
}  // namespace tiepoint::testing
