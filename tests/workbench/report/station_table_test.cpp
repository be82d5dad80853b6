#include "workbench/report/station_table.h"

#include <gtest/gtest.h>

#include "workbench/report/adjusted_hall.h"

namespace tiepoint::workbench {
namespace {

const LengthFormat metres(Unit::metre);

bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

TEST(StationTable, HasStandardDeviationsTheDetectableErrorAndTheRedundancy) {
  Registration registration = adjustedHall();
  observationOf(registration, 5).detectable = 0.0085;
  EXPECT_EQ(stationTable(registration, metres, {}),
            "Stations (mm): standard deviations of the origin, of the rotation at 10 m and of the least certain\n"
            "  target; the detectable error of the least controlled target; redundant coordinates\n"
            "  group  origin  rotation  target  detectable  in  redundant\n"
            "  S1       base\n"
            "  S2      1.500     1.000   2.000       8.500  T2  6.0 of 12\n"
            "  S3      1.500     1.000   2.000       6.000  T1  6.0 of 12\n");
}

TEST(StationTable, TellsRotationsAtTenUnitsWhereTheUnitIsUnknown) {
  const std::string text = stationTable(adjustedHall(), LengthFormat(Unit::unknown), {});
  EXPECT_TRUE(has(text, "of the rotation at 10 drawing units and"));
  EXPECT_TRUE(has(text, "  S2     0.001500  0.001000  0.002000    0.006000  T1  6.0 of 12\n"));
}

TEST(StationTable, TellsRotationsAtTenMetresInMillimetresToo) {
  Registration registration = adjustedHall();
  for (const std::size_t s : {1u, 2u}) resultOf(registration).stations[s]->positionSigma = 1.5;
  EXPECT_TRUE(has(stationTable(registration, LengthFormat(Unit::millimetre), {}), "  S2      1.500     1.000 "));
}

TEST(StationTable, HasNoDetectableErrorWhereAnyMayHide) {
  Registration registration = adjustedHall();
  observationOf(registration, 10).detectable.reset();
  observationOf(registration, 11).detectable = 100.0;
  EXPECT_TRUE(
      has(stationTable(registration, metres, {}), "  S3      1.500     1.000   2.000        none  T3  6.0 of 12\n"));
}

TEST(StationTable, SaysThatAStationIsLevelAndThatItsNamesAreDoubtful) {
  Registration registration = adjustedHall();
  resultOf(registration).stations[1]->levelled = true;
  resultOf(registration).stations[1]->naming = analysis::NamingMargin{1.0, {{0, 2}, {2, 0}}, true};
  EXPECT_TRUE(has(stationTable(registration, metres, {}), "  6.0 of 12  level, names exchanged? T1 and T3\n"));
}

TEST(StationTable, SaysThatAGroupIsntRegistered) {
  Registration registration = adjustedHall();
  resultOf(registration).stations[2].reset();
  for (const std::size_t o : {8u, 9u, 10u, 11u}) resultOf(registration).observations[o].reset();
  EXPECT_TRUE(has(stationTable(registration, metres, {}), "\n  S3     not registered\n"));
  // A base that shares no target takes no part.
  for (const std::size_t o : {0u, 1u, 2u, 3u}) resultOf(registration).observations[o].reset();
  EXPECT_TRUE(has(stationTable(registration, metres, {}), "\n  S1     not registered\n"));
}

TEST(StationTable, HasNoStandardDeviationsThatNothingIsEstimatedFrom) {
  Registration registration = adjustedHall();
  resultOf(registration).varianceFactor.reset();
  EXPECT_TRUE(has(stationTable(registration, metres, {}), "  S2      1.500 "));
  resultOf(registration).scale = analysis::VarianceScale::aPosteriori;
  EXPECT_TRUE(
      has(stationTable(registration, metres, {}), "  S2          -         -       -       6.000  T1  6.0 of 12\n"));
}

TEST(StationTable, OfManyStationsShowsTheLeastCertain) {
  Registration registration = adjustedHall();
  for (std::size_t s = 3; s < 300; ++s) {
    registration.groups.emplace_back().name = "S" + std::to_string(s + 1);
    resultOf(registration).stations.emplace_back(fineStation())->largestPointSigma = 1e-3 * static_cast<double>(s);
  }
  const std::string text = stationTable(registration, metres, {});
  EXPECT_TRUE(has(text, "\n  S300 "));
  EXPECT_TRUE(has(text, "\n  S1 "));
  EXPECT_FALSE(has(text, "\n  S100 "));
  EXPECT_TRUE(has(text, "  and 260 more groups; --all-points shows them\n"));
  EXPECT_TRUE(has(stationTable(registration, metres, {true, false}), "\n  S100 "));
}

}  // namespace
}  // namespace tiepoint::workbench
