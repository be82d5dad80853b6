#include "workbench/report/look_list.h"

#include <gtest/gtest.h>

#include <limits>

#include "workbench/report/adjusted_hall.h"

namespace tiepoint::workbench {
namespace {

const LengthFormat metres(Unit::metre);
const TableOptions allRows{true, false};

void reject(Registration& registration, std::size_t observation, double p) {
  observationOf(registration, observation).p = p;
  observationOf(registration, observation).rejected = true;
}

/// As the adjustment tells of a measurement that nothing checks.
void leaveUncontrolled(Registration& registration, std::size_t observation) {
  analysis::AdjustedObservation& told = observationOf(registration, observation);
  told.leastRedundancy = 1e-16;
  told.statistic = told.p = told.detectable = std::nullopt;
  told.rejected.reset();
  told.leftOut.reset();
}

TEST(LookTable, IsEmptyWhereAllIsFine) { EXPECT_EQ(lookTable(adjustedHall(), metres, {}), ""); }

TEST(LookTable, ListsTheSuspectFirstThenTheRejectedThoseWithoutControlAndThoseWithLittle) {
  Registration registration = adjustedHall();
  makeSuspect(registration);
  observationOf(registration, 0).leastRedundancy = 0.05;
  leaveUncontrolled(registration, 3);
  reject(registration, 5, 1e-4);
  reject(registration, 10, 1e-9);
  EXPECT_EQ(lookTable(registration, metres, {}),
            "Measurements that need a look (mm): error: from where all others see the target; detectable: the\n"
            "  error that a test finds with a probability of 80 %\n"
            "  group  point   error  discrepancy  detectable\n"
            "  S2     T3     60.000       40.000       6.000  <- suspect\n"
            "  S3     T3      4.000        2.000       6.000  rejected\n"
            "  S2     T2      4.000        2.000       6.000  rejected\n"
            "  S1     T4          -        2.000        none  not controlled\n"
            "  S1     T1      4.000        2.000       6.000  hardly controlled\n");
}

TEST(LookTable, OfEqualProbabilitiesShowsTheLargerStatisticFirst) {
  Registration registration = adjustedHall();
  reject(registration, 5, 0.0);
  reject(registration, 9, 0.0);
  observationOf(registration, 9).statistic = 5000.0;
  const std::vector<LookedAt> rows = measurementsToLookAt(registration);
  ASSERT_EQ(rows.size(), 2u);
  EXPECT_EQ(rows[0].point, 9u);
  EXPECT_EQ(rows[1].point, 5u);
}

TEST(LookTable, OfHardlyControlledOnesShowsTheLeastControlledFirst) {
  Registration registration = adjustedHall();
  observationOf(registration, 2).leastRedundancy = 0.09;
  observationOf(registration, 8).leastRedundancy = 0.02;
  observationOf(registration, 9).leastRedundancy = 0.1;
  const std::vector<LookedAt> rows = measurementsToLookAt(registration);
  ASSERT_EQ(rows.size(), 2u);
  EXPECT_EQ(rows[0].point, 8u);
  EXPECT_EQ(rows[1].point, 2u);
}

TEST(LookTable, CountsAMeasurementWhoseRedundancyIsNoNumberAsUncontrolled) {
  Registration registration = adjustedHall();
  observationOf(registration, 2).leastRedundancy = std::numeric_limits<double>::quiet_NaN();
  ASSERT_EQ(measurementsToLookAt(registration).size(), 1u);
  EXPECT_EQ(measurementsToLookAt(registration)[0].reason, LookReason::uncontrolled);
}

TEST(LookTable, ShowsEightRowsAndCountsTheRest) {
  Registration registration = adjustedHall();
  for (const std::size_t o : {0u, 1u, 2u, 3u, 4u, 5u, 6u, 7u, 8u}) reject(registration, o, 1e-5);
  leaveUncontrolled(registration, 9);
  observationOf(registration, 10).leastRedundancy = 0.01;
  observationOf(registration, 11).leastRedundancy = 0.02;
  const std::string text = lookTable(registration, metres, {});
  EXPECT_NE(text.find("  and 1 more rejected, 1 more not controlled and 2 more hardly controlled; --all-points shows "
                      "them\n"),
            std::string::npos);
  EXPECT_EQ(text.find("S3"), std::string::npos);
  const std::string all = lookTable(registration, metres, allRows);
  EXPECT_NE(all.find("  S3     T4"), std::string::npos);
  EXPECT_EQ(all.find(" more "), std::string::npos);
}

TEST(LookTable, HasAControlTargetUnderThatName) {
  Registration registration = adjustedHall();
  makeControlSuspect(registration);
  EXPECT_NE(lookTable(registration, metres, {}).find("  control  T2     35.000       20.000       6.000  <- suspect\n"),
            std::string::npos);
}

TEST(LookTable, IsEmptyWithoutRedundancy) {
  Registration registration = adjustedHall();
  leaveUncontrolled(registration, 3);
  resultOf(registration).redundancy = 0;
  EXPECT_EQ(lookTable(registration, metres, {}), "");
}

TEST(LookTable, RejectsNothingThatIsRounding) {
  Registration registration = adjustedHall();
  reject(registration, 3, 1e-9);
  std::get<Registered>(registration.outcome).largest.reset();
  EXPECT_EQ(lookTable(registration, metres, {}), "");
}

TEST(Suspect, IsShownOnlyWhereItStandsOut) {
  Registration registration = adjustedHall();
  makeSuspect(registration);
  ASSERT_TRUE(suspectOf(registration));
  EXPECT_EQ(suspectOf(registration)->point, 6u);
  EXPECT_EQ(nameOf(registration, *suspectOf(registration)), "T3 in S2");
  std::get<Registered>(registration.outcome).outlier.reset();
  EXPECT_FALSE(suspectOf(registration));
}

TEST(Suspect, OfTheControlNeedsNoPointThatStandsOut) {
  Registration registration = adjustedHall();
  makeControlSuspect(registration);
  ASSERT_TRUE(suspectOf(registration));
  EXPECT_EQ(nameOf(registration, *suspectOf(registration)), "the given place of T2");
  std::get<Registered>(registration.outcome).largest.reset();
  EXPECT_FALSE(suspectOf(registration));
}

TEST(Suspect, HasARivalWhereOneOtherMeasurementAloneTellsAgainstIt) {
  Registration registration = adjustedHall();
  makeSuspect(registration);
  EXPECT_EQ(rivalOf(registration, *suspectOf(registration)), std::nullopt);
  resultOf(registration).observations[10].reset();
  EXPECT_EQ(rivalOf(registration, *suspectOf(registration)), "S1");
  resultOf(registration).observations[2].reset();
  registration.adjustment->network.targets[2].control.emplace();
  EXPECT_EQ(rivalOf(registration, *suspectOf(registration)), "its given place");
}

TEST(Suspect, OfTheControlMayHaveAStationAsItsRival) {
  Registration registration = adjustedHall();
  makeControlSuspect(registration);
  EXPECT_EQ(rivalOf(registration, *suspectOf(registration)), std::nullopt);
  resultOf(registration).observations[1].reset();
  resultOf(registration).observations[9].reset();
  EXPECT_EQ(rivalOf(registration, *suspectOf(registration)), "S2");
}

}  // namespace
}  // namespace tiepoint::workbench
