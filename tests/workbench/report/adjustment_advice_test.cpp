#include "workbench/report/adjustment_advice.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "workbench/report/adjusted_hall.h"

namespace tiepoint::workbench {
namespace {

analysis::NamingMargin exchange(double margin) { return {margin, {{0, 2}, {2, 0}}, true}; }

void leaveUncontrolled(Registration& registration, std::size_t observation) {
  observationOf(registration, observation).leastRedundancy = 0.0;
}

TEST(AdjustmentAdvice, IsNoneWhereAllIsFine) { EXPECT_EQ(adviceText(adjustedHall()), ""); }

TEST(AdjustmentAdvice, IsToMeasureTheSuspectAgain) {
  Registration registration = adjustedHall();
  makeSuspect(registration);
  EXPECT_EQ(adviceText(registration), "Measure T3 in S2 again, or compare a run with --exclude S2:T3\n");
}

TEST(AdjustmentAdvice, IsToMeasureBothWhereOneOfTwoIsWrong) {
  Registration registration = adjustedHall();
  makeSuspect(registration);
  resultOf(registration).observations[2].reset();
  EXPECT_EQ(adviceText(registration), "Measure T3 in S2 and S3 again, or compare a run with --exclude S2:T3\n");
}

TEST(AdjustmentAdvice, IsToWaitWithOtherRejectedOnes) {
  Registration registration = adjustedHall();
  makeSuspect(registration);
  observationOf(registration, 10).rejected = true;
  EXPECT_EQ(adviceText(registration),
            "Measure T3 in S2 again, or compare a run with --exclude S2:T3; judge the other rejected ones only\n"
            "  after that, as one bad measurement pulls many\n");
}

TEST(AdjustmentAdvice, IsToCheckAGivenPlace) {
  Registration registration = adjustedHall();
  makeControlSuspect(registration);
  EXPECT_EQ(adviceText(registration), "Check the given place of T2, or compare a run without it\n");
  for (const std::size_t o : {1u, 5u}) resultOf(registration).observations[o].reset();
  EXPECT_EQ(adviceText(registration),
            "Check the given place of T2 and the measurement in S3, or compare a run without it\n");
}

TEST(AdjustmentAdvice, IsToCheckNamesThatWereMeasuredInOneAnothersPlaces) {
  Registration registration = adjustedHall();
  makeSuspect(registration);
  observationOf(registration, 6).leftOut->error = {20.0, 0.0, 0.0};
  observationOf(registration, 4).leftOut->error = {-20.0, 0.0, 0.0};
  EXPECT_EQ(adviceText(registration),
            "Check the names of T3 and T1 in S2: each was measured where the other should be\n");
}

TEST(AdjustmentAdvice, IsToCheckNamesThatFitBetterExchangedInsteadOfMeasuringAgain) {
  Registration registration = adjustedHall();
  makeSuspect(registration);
  resultOf(registration).stations[1]->naming = exchange(-5.0);
  EXPECT_EQ(adviceText(registration), "Check the names of T1 and T3 in S2: exchanged, they fit better\n");
}

TEST(AdjustmentAdvice, OnOtherNamesStandsBesideTheSuspect) {
  Registration registration = adjustedHall();
  makeSuspect(registration);
  resultOf(registration).stations[1]->naming = exchange(5.0);
  EXPECT_EQ(adviceText(registration),
            "Measure T3 in S2 again, or compare a run with --exclude S2:T3\n"
            "Check the names of T1 and T3 in S2: exchanged, they fit nearly as well\n");
}

TEST(AdjustmentAdvice, IsToAddATargetOffTheLine) {
  Registration registration = adjustedHall();
  resultOf(registration).stations[1]->geometry = 0.009;
  EXPECT_EQ(adviceText(registration), "The targets of S2 lie nearly on one line: add one off it\n");
  resultOf(registration).stations[2]->geometry = 0.0;
  EXPECT_EQ(adviceText(registration), "The targets of S2 and S3 lie nearly on one line: add one each off it\n");
}

TEST(AdjustmentAdvice, IsOneMoreTargetForTheStationThatGivesWay) {
  Registration registration = adjustedHall();
  for (const std::size_t o : {0u, 4u, 9u}) leaveUncontrolled(registration, o);
  // The base stands firm, and S2 has less that is redundant than S3.
  resultOf(registration).stations[1]->redundancy = 2.0;
  EXPECT_EQ(adviceText(registration), "One more common target in S2 would control T1 and T2\n");
}

TEST(AdjustmentAdvice, OnManyStationsIsOneLine) {
  Registration registration = adjustedHall();
  for (const std::size_t o : {4u, 9u}) leaveUncontrolled(registration, o);
  registration.groups.emplace_back().name = "S4";
  registration.adjustment->network.stations.emplace_back();
  resultOf(registration).stations.emplace_back(fineStation())->redundancy = 0.1;
  addAdjustedPoint(registration, 3, 3);
  leaveUncontrolled(registration, 12);
  resultOf(registration).stations[1]->redundancy = 2.0;
  resultOf(registration).observations[5].reset();
  EXPECT_EQ(adviceText(registration),
            "One more common target in each of S2, S3 and S4 would control what isn't controlled there\n");
}

TEST(AdjustmentAdvice, IsFourLinesAtMost) {
  Registration registration = adjustedHall();
  makeSuspect(registration);
  resultOf(registration).stations[1]->naming = exchange(1.0);
  resultOf(registration).stations[2]->naming = exchange(1.0);
  resultOf(registration).stations[1]->geometry = 0.0;
  leaveUncontrolled(registration, 9);
  const std::string text = adviceText(registration);
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 4);
  EXPECT_NE(text.find("nearly on one line"), std::string::npos);
  EXPECT_EQ(text.find("would control"), std::string::npos);
}

}  // namespace
}  // namespace tiepoint::workbench
