#include "workbench/report/asked_tables.h"

#include <gtest/gtest.h>

#include "workbench/report/adjusted_hall.h"

namespace tiepoint::workbench {
namespace {

const LengthFormat metres(Unit::metre);

TEST(CarriedTable, IsEmptyWithoutPoints) { EXPECT_EQ(carriedTable(adjustedHall(), metres), ""); }

TEST(CarriedTable, HasPlacesWithTheirStandardDeviations) {
  Registration registration = adjustedHall();
  analysis::CarriedPosition& point = resultOf(registration).carried.emplace_back();
  point.point.station = 1;
  point.position = {1.5, -2.0, 30.25};
  point.covariance.diagonal() = Eigen::Vector3d(1e-6, 4e-6, 9e-6);
  EXPECT_EQ(carriedTable(registration, metres),
            "Carried points in the common system (m; sigmas: mm)\n"
            "  group         x          y          z  sigma x  sigma y  sigma z\n"
            "  S2     1.500000  -2.000000  30.250000    1.000    2.000    3.000\n");
}

TEST(TraceTables, AreEmptyWithoutMeasurements) { EXPECT_EQ(traceTables(adjustedHall(), metres, {}), ""); }

TEST(TraceTables, HaveTheEffectOnEveryStation) {
  Registration registration = adjustedHall();
  analysis::Trace& trace = resultOf(registration).traces.emplace_back();
  trace.observation = 6;
  trace.stations.push_back({1, {1, 0.003, 0.0002}, {1, 0.001, 0.0001}, 0.0015});
  trace.stations.push_back({2, {2, 0.0005, 0.0}, {2, 0.0002, 0.0}, 0.0003});
  EXPECT_EQ(traceTables(registration, metres, {}),
            "Effect of T3 in S2 (mm; rotation at 10 m): of an error that its test doesn't find, and of leaving it\n"
            "  out\n"
            "  group  shift  rotation  shift without  rotation without  target without\n"
            "  S2     3.000     2.000          1.000             1.000           1.500\n"
            "  S3     0.500     0.000          0.200             0.000           0.300\n");
}

TEST(TraceTables, SayThatAnErrorMayHaveAnyEffect) {
  Registration registration = adjustedHall();
  resultOf(registration).traces.emplace_back().observation = 6;
  resultOf(registration).traces.emplace_back().observation = 7;
  EXPECT_EQ(traceTables(registration, metres, {}),
            "Effect of T3 in S2: it takes no part, or isn't controlled: an error may have any effect\n"
            "\n"
            "Effect of T4 in S2: it takes no part, or isn't controlled: an error may have any effect\n");
}

}  // namespace
}  // namespace tiepoint::workbench
