// Residuals of surveys that the module itself has registered.
#include <gtest/gtest.h>

#include <cmath>

#include "workbench/survey/survey.h"

namespace tiepoint::workbench {
namespace {

/// The residual is formed once more from the digits that the solver formed the discrepancy from.
constexpr double rounding = 1e-9;

/// Six targets as a station shifted by `shift` sees them, each coordinate off by up to 1 mm.
StationPoints station(const std::string& name, const OdGeVector3d& shift, int seed) {
  const std::vector<OdGePoint3d> targets{{0, 0, 1}, {31, 2, 2}, {-7, 44, 0}, {29, 37, 9}, {14, 6, 12}, {3, 26, 5}};
  StationPoints made{name, {}};
  for (std::size_t i = 0; i < targets.size(); ++i) {
    const auto noise = [&](int axis) {
      return 0.001 * std::sin(12.9 * seed + 7.7 * static_cast<double>(i) + 3.1 * axis);
    };
    const OdGePoint3d p = targets[i] + shift + OdGeVector3d(noise(0), noise(1), noise(2));
    made.points.push_back({"T" + std::to_string(i + 1), {p.x, p.y, p.z}});
  }
  return made;
}

/// Of stations registered pairwise, unless a test says otherwise.
class Residuals : public testing::Test {
 protected:
  Residuals() { request.method = RegistrationMethod::pairwise; }

  Registration registered() { return host.registerStations(stations, request); }

  /// Every point with a discrepancy has a residual of its length; how many there are.
  static std::size_t haveTheDiscrepanciesAsLengths(const Registration& registration) {
    std::size_t count = 0;
    for (const PointOutcome& point : registration.points) {
      EXPECT_EQ(point.residual.has_value(), point.discrepancy.has_value()) << point.name;
      if (!point.residual || !point.discrepancy) continue;
      ++count;
      EXPECT_NEAR(std::hypot(point.residual->x, point.residual->y, point.residual->z), *point.discrepancy, rounding);
    }
    return count;
  }

  SurveyHost host{SurveyHost::Options{"", TSL_REGISTRATION}};
  RegistrationRequest request;
  std::vector<StationPoints> stations{station("east", {0, 0, 0}, 1), station("west", {100, 0, 0}, 2),
                                      station("south", {0, -50, 10}, 3), station("north", {3, 70, -4}, 4)};
};

TEST_F(Residuals, HaveTheDiscrepanciesAsLengths) {
  EXPECT_EQ(haveTheDiscrepanciesAsLengths(registered()), 24u);
  request.base = {"east"};
  EXPECT_EQ(haveTheDiscrepanciesAsLengths(registered()), 18u);
  request.method = RegistrationMethod::iterative;
  EXPECT_EQ(haveTheDiscrepanciesAsLengths(registered()), 18u);
}

TEST_F(Residuals, OfOneStationOverItsPointsCancelOut) {
  const Registration registration = registered();
  OdGeVector3d sum;
  for (const PointOutcome& point : registration.points) {
    if (point.group != 1) continue;
    sum = {sum.x + point.residual->x, sum.y + point.residual->y, sum.z + point.residual->z};
  }
  EXPECT_NEAR(sum.x, 0.0, rounding);
  EXPECT_NEAR(sum.y, 0.0, rounding);
  EXPECT_NEAR(sum.z, 0.0, rounding);
}

TEST_F(Residuals, PointFromTheMergedTargetToTheRegisteredPoint) {
  stations[1].points[0].position.z += 1.0;
  const Registration registration = registered();
  // Of a target that one of four stations saw a metre too high, that station's point lies above.
  EXPECT_GT(registration.points[6].residual->z, 0.2);
  EXPECT_LT(registration.points[0].residual->z, -0.05);
}

TEST_F(Residuals, AreThereForATargetThatAStationLeavesOut) {
  stations[1].points[0].position.z += 1.0;
  request.exclude = {{{PointRef{"west", "T1"}}, "west:T1"}};
  const Registration registration = registered();
  EXPECT_EQ(haveTheDiscrepanciesAsLengths(registration), 23u);
  EXPECT_FALSE(registration.points[6].residual);
  EXPECT_LT(*registration.points[0].discrepancy, 0.01);
}

TEST_F(Residuals, AreThereForATargetThatAStationLeavesOutIteratively) {
  request.method = RegistrationMethod::iterative;
  request.base = {"south"};
  request.exclude = {{{PointRef{"west", "T1"}}, "west:T1"}};
  EXPECT_EQ(haveTheDiscrepanciesAsLengths(registered()), 17u);
}

TEST_F(Residuals, FollowTheWeightsOfTheOtherPoints) {
  request.weights = {{{{PointRef{"west", "T1"}}}, 0.0}, {{{PointRef{"north", "T1"}}}, 0.25}};
  EXPECT_EQ(haveTheDiscrepanciesAsLengths(registered()), 23u);
}

TEST_F(Residuals, AreThereForSeveralBases) {
  request.base = {"east", "south"};
  request.exclude = {{{PointRef{"west", "T3"}}, "west:T3"}};
  EXPECT_EQ(haveTheDiscrepanciesAsLengths(registered()), 23u);
}

TEST_F(Residuals, AreThereForTargetsThatWereNamedByGeometry) {
  for (StationPoints& each : stations) {
    if (each.name == "north" || each.name == "east") continue;
    for (MeasuredPoint& point : each.points) point.name.clear();
  }
  request.naming.how = Naming::triangles;
  request.exclude = {{{PointRef{"north", "T3"}}, "north:T3"}};
  const Registration registration = registered();
  ASSERT_TRUE(registration.registered());
  EXPECT_EQ(haveTheDiscrepanciesAsLengths(registration), 23u);
}

TEST_F(Residuals, AreNotThereForAPointThatALaterOneOfItsNameReplaces) {
  stations[1].points.insert(stations[1].points.begin(), {"T1", {100, 0, 2}});
  const Registration registration = registered();
  EXPECT_EQ(haveTheDiscrepanciesAsLengths(registration), 24u);
  EXPECT_TRUE(registration.points[6].active);
  EXPECT_FALSE(registration.points[6].discrepancy);
  EXPECT_TRUE(registration.points[7].discrepancy);
}

TEST_F(Residuals, FarFromTheOriginHaveTheDiscrepanciesAsLengthsToo) {
  for (StationPoints& each : stations) {
    for (MeasuredPoint& point : each.points) {
      point.position.x += 500000.0;
      point.position.y += 4500000.0;
    }
  }
  request.base = {"east"};
  EXPECT_EQ(haveTheDiscrepanciesAsLengths(registered()), 18u);
}

TEST_F(Residuals, OfIterationsThatHaventConvergedAreNothingForAProtocol) {
  stations[1].points.erase(stations[1].points.begin());
  stations[2].points.pop_back();
  request.method = RegistrationMethod::iterative;
  request.convergence = 1e-14;
  request.maxIterations = 2;
  const Registration ended = registered();
  ASSERT_FALSE(ended.iterations->converged());
  EXPECT_TRUE(ended.registered()->discrepancies);
  EXPECT_FALSE(ended.registered()->protocol);
  request.convergence = 1e-3;
  request.maxIterations = 100;
  EXPECT_EQ(registered().registered()->protocol->stations, 4u);
}

}  // namespace
}  // namespace tiepoint::workbench
