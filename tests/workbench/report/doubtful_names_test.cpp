#include "workbench/report/doubtful_names.h"

#include <gtest/gtest.h>

#include "workbench/report/adjusted_hall.h"

namespace tiepoint::workbench {
namespace {

/// T1 and T3 of S2 exchanged, with a margin in units of the sums of squares.
Registration withMargin(double margin) {
  Registration registration = adjustedHall();
  resultOf(registration).stations[1]->naming = analysis::NamingMargin{margin, {{0, 2}, {2, 0}}, true};
  return registration;
}

/// T1 and T3 of S2 lie where the other should be, 20 m off.
Registration withExchangedPoints() {
  Registration registration = adjustedHall();
  makeSuspect(registration);
  observationOf(registration, 6).leftOut->error = {19.0, 0.5, 0.0};
  observationOf(registration, 4).leftOut->error = {-21.0, 0.0, 0.0};
  return registration;
}

TEST(DoubtfulNames, AreThoseThatFitNearlyAsWell) {
  const auto names = doubtfulNames(withMargin(13.0), 1);
  ASSERT_TRUE(names);
  EXPECT_EQ(exchangeText(*names), "T1 and T3");
  EXPECT_FALSE(names->fitsBetter);
  EXPECT_FALSE(doubtfulNames(withMargin(14.0), 1));
}

TEST(DoubtfulNames, MayFitBetter) { EXPECT_TRUE(doubtfulNames(withMargin(-0.5), 1)->fitsBetter); }

TEST(DoubtfulNames, AreJudgedByTheEstimatedVarianceWhereNoneIsGiven) {
  Registration registration = withMargin(13e-6);
  resultOf(registration).scale = analysis::VarianceScale::aPosteriori;
  resultOf(registration).varianceFactor = 1e-6;
  EXPECT_TRUE(doubtfulNames(registration, 1));
  resultOf(registration).varianceFactor = 0.9e-6;
  EXPECT_FALSE(doubtfulNames(registration, 1));
}

TEST(DoubtfulNames, OfMeasurementsWithoutNoiseAreThoseThatFitToRounding) {
  Registration registration = withMargin(1e-19);
  resultOf(registration).scale = analysis::VarianceScale::aPosteriori;
  resultOf(registration).varianceFactor = 1e-30;
  EXPECT_TRUE(doubtfulNames(registration, 1));
}

TEST(DoubtfulNames, AreNoneWhereNoOtherWayIsKnown) {
  Registration registration = adjustedHall();
  EXPECT_FALSE(doubtfulNames(registration, 1));
  // The base.
  EXPECT_FALSE(doubtfulNames(registration, 0));
  resultOf(registration).stations[1]->naming = analysis::NamingMargin{0.0, {}, true};
  EXPECT_FALSE(doubtfulNames(registration, 1));
}

TEST(DoubtfulNames, OfMoreThanTwoAreToldInTheirOrder) {
  EXPECT_EQ(exchangeText({{{"T1", "T2"}, {"T2", "T3"}, {"T3", "T1"}}, false}), "T1 for T2, T2 for T3, T3 for T1");
  EXPECT_EQ(exchangeText({{{"T1", "T2"}, {"T2", "T3"}, {"T3", "T4"}, {"T4", "T1"}}, false}),
            "T1 for T2, T2 for T3, T3 for T4 and 1 more");
}

TEST(ExchangedWith, FindsThePointThatLiesWhereTheSuspectShould) {
  const Registration registration = withExchangedPoints();
  EXPECT_EQ(exchangedWith(registration, *suspectOf(registration)), 4u);
}

TEST(ExchangedWith, AllowsForThePullOfBothAtTheStation) {
  Registration registration = withExchangedPoints();
  observationOf(registration, 6).leftOut->error = {35.0, 8.0, 0.0};
  observationOf(registration, 4).leftOut->error = {-33.0, -9.0, 0.0};
  EXPECT_EQ(exchangedWith(registration, *suspectOf(registration)), 4u);
}

TEST(ExchangedWith, NeedsAnErrorAlongTheLineBetweenThePoints) {
  Registration registration = withExchangedPoints();
  registration.points[4].registered = OdGePoint3d(10, -15, 0);
  EXPECT_EQ(exchangedWith(registration, *suspectOf(registration)), std::nullopt);
  // The other way.
  registration.points[4].registered = OdGePoint3d(40, 0, 0);
  EXPECT_EQ(exchangedWith(registration, *suspectOf(registration)), std::nullopt);
}

TEST(ExchangedWith, NeedsAnErrorAsLargeAsThePointsAreApart) {
  Registration registration = withExchangedPoints();
  registration.points[4].registered = OdGePoint3d(-20, 0, 0);
  EXPECT_EQ(exchangedWith(registration, *suspectOf(registration)), std::nullopt);
  registration.points[4].registered = OdGePoint3d(14, 0, 0);
  EXPECT_EQ(exchangedWith(registration, *suspectOf(registration)), std::nullopt);
}

TEST(ExchangedWith, NeedsTheOppositeErrorOfTheOther) {
  Registration registration = withExchangedPoints();
  observationOf(registration, 4).leftOut->error = {21.0, 0.0, 0.0};
  EXPECT_EQ(exchangedWith(registration, *suspectOf(registration)), std::nullopt);
}

TEST(ExchangedWith, LooksAtTheSuspectsOwnStationAlone) {
  Registration registration = withExchangedPoints();
  std::swap(resultOf(registration).observations[4], resultOf(registration).observations[8]);
  EXPECT_EQ(exchangedWith(registration, *suspectOf(registration)), std::nullopt);
}

}  // namespace
}  // namespace tiepoint::workbench
