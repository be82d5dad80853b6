#include "workbench/session/results.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "workbench/session_states.h"

namespace tiepoint::workbench {
namespace {

/// A group that is shifted by 10 in x against its base.
class ShiftedGroup : public testing::Test {
 protected:
  ShiftedGroup() {
    builder.group("Base", true).point("P1", {0, 0, 0}).point("P2", {5, 0, 0}).point("P3", {0, 5, 0});
    builder.group("A").point("P1", {-10, 0, 3}).point("P2", {-5, 4, 0}).point("P3", {-10, 5, 0});
    OdGeMatrix3d shift;
    shift(0, 3) = 10.0;
    solved.toCommon.emplace(1, shift);
    builder.state.discrepancies = {{3, 1.5}, {4, 2.0}};
    solved.fitted = {{"P1", {0, 0, 1.5}, 1.0}, {"P2", {5, 2, 0}, 1.0}, {"P3", {0, 5, 0}, 1.0}};
  }

  StateBuilder builder;
  SolvedTransforms solved;
};

TEST_F(ShiftedGroup, RegisteredPositionsGoThroughTheGroupsMotion) {
  const Results results = describeResults(builder.state, solved);
  EXPECT_EQ(results.rows.points[3].registered, OdGePoint3d(0, 0, 3));
  EXPECT_FALSE(results.rows.points[0].registered) << "the base has no transformation";
  EXPECT_EQ(results.rows.groups[1].toCommon->operator()(0, 3), 10.0);
  EXPECT_FALSE(results.rows.groups[0].toCommon);
}

TEST_F(ShiftedGroup, APointWithoutAnEntryLiesOnItsTarget) {
  const Results results = describeResults(builder.state, solved);
  EXPECT_EQ(results.rows.points[3].discrepancy, 1.5);
  EXPECT_EQ(results.rows.points[5].discrepancy, 0.0);
  EXPECT_FALSE(results.rows.points[0].discrepancy);
}

TEST_F(ShiftedGroup, APointWithoutAnEntryBesideItsTargetTookNoPartInTheFit) {
  solved.fitted[2].position.y = 5.001;
  const Results results = describeResults(builder.state, solved);
  EXPECT_FALSE(results.rows.points[5].discrepancy);
  EXPECT_FALSE(results.rows.points[5].residual);
  EXPECT_EQ(results.rows.groups[1].discrepancies->count, 2u);
}

TEST_F(ShiftedGroup, TheResidualIsTheRegisteredPointMinusItsTarget) {
  const Results results = describeResults(builder.state, solved);
  EXPECT_EQ(results.rows.points[3].residual, OdGeVector3d(0, 0, 1.5));
  EXPECT_EQ(results.rows.points[4].residual, OdGeVector3d(0, 2, 0));
  EXPECT_EQ(results.rows.points[5].residual, OdGeVector3d(0, 0, 0));
  EXPECT_FALSE(results.rows.points[0].residual) << "a base point has no discrepancy";
}

TEST_F(ShiftedGroup, ATargetAtAnotherDistanceThanTheDiscrepancyGivesNoResidual) {
  solved.fitted[0].position.z = 1.500001;
  const Results results = describeResults(builder.state, solved);
  EXPECT_EQ(results.rows.points[3].discrepancy, 1.5);
  EXPECT_FALSE(results.rows.points[3].residual);
}

TEST_F(ShiftedGroup, OfTwoTargetsOfOneNameTheOneAtTheDiscrepancyCounts) {
  solved.fitted.push_back({"P1", {0, 0, 9}, 1.0});
  solved.fitted.insert(solved.fitted.begin(), {"P1", {0, 0, -9}, 1.0});
  EXPECT_EQ(describeResults(builder.state, solved).rows.points[3].residual, OdGeVector3d(0, 0, 1.5));
}

TEST_F(ShiftedGroup, FarFromTheOriginAResidualMayBeOffByTheRoundingOfCoordinates) {
  const double far = 4.5e6;
  builder.state.points[3].record.position = {far - 10, 0, 0};
  // The next number below: 9e-10 away.
  solved.fitted[0].position = {far - 1.5 - 2e-9, 0, 0};
  EXPECT_TRUE(describeResults(builder.state, solved).rows.points[3].residual);
  solved.fitted[0].position = {far - 1.5 - 1e-6, 0, 0};
  EXPECT_FALSE(describeResults(builder.state, solved).rows.points[3].residual);
}

TEST_F(ShiftedGroup, ThePointsOfSeveralBasesLieBesideTheirMean) {
  builder.group("Base2", true).point("P1", {0, 0, 6});
  builder.last().weight = 0.5;
  builder.state.discrepancies[0] = 2.0;
  builder.state.discrepancies[6] = 4.0;
  const Results results = describeResults(builder.state, solved);
  EXPECT_EQ(results.rows.points[0].residual, OdGeVector3d(0, 0, -2));
  EXPECT_EQ(results.rows.points[6].residual, OdGeVector3d(0, 0, 4));
  EXPECT_FALSE(results.rows.points[1].residual);
}

TEST_F(ShiftedGroup, TheMeanCountsTheExactPointsToo) {
  const Results results = describeResults(builder.state, solved);
  EXPECT_DOUBLE_EQ(results.rows.groups[1].discrepancies->mean, 3.5 / 3.0);
  EXPECT_DOUBLE_EQ(results.discrepancies->mean, 3.5 / 3.0);
  EXPECT_DOUBLE_EQ(results.atBase->mean, 7.0 / 3.0);
}

TEST_F(ShiftedGroup, TheProtocolStatesTheDiscrepanciesAndTheStationsThatHaveOne) {
  builder.group("B").point("P1", {-10, 0, 1.5}).point("P4", {7, 7, 7}).inactive();
  builder.group("C").point("P2").inactive();
  builder.state.discrepancies[6] = 2.5;
  solved.toCommon.emplace(2, solved.toCommon.at(1));
  const Results results = describeResults(builder.state, solved);
  ASSERT_TRUE(results.protocol);
  EXPECT_EQ(results.protocol->stations, 2u);
  EXPECT_EQ(results.protocol->discrepancies.count, 4u);
  EXPECT_DOUBLE_EQ(results.protocol->discrepancies.mean, 1.5);
  EXPECT_DOUBLE_EQ(results.protocol->discrepancies.value, std::sqrt(12.5 / 4.0));
  EXPECT_EQ(results.protocol->discrepancies.largest, 2.5);
}

TEST_F(ShiftedGroup, WithoutADiscrepancyThereIsNothingForAProtocol) {
  builder.allInactive();
  builder.state.discrepancies.clear();
  EXPECT_FALSE(describeResults(builder.state, solved).protocol);
}

TEST_F(ShiftedGroup, TheRmsCountsTheExactPointsToo) {
  const Results results = describeResults(builder.state, solved);
  ASSERT_TRUE(results.rows.groups[1].discrepancies);
  EXPECT_EQ(results.rows.groups[1].discrepancies->count, 3u);
  EXPECT_DOUBLE_EQ(results.rows.groups[1].discrepancies->value, std::sqrt((2.25 + 4.0) / 3.0));
  EXPECT_EQ(results.rows.groups[1].discrepancies->largest, 2.0);
  EXPECT_FALSE(results.rows.groups[0].discrepancies);
}

TEST_F(ShiftedGroup, DistancesAtTheBaseAreToItsOwnMeasurements) {
  const Results results = describeResults(builder.state, solved);
  EXPECT_EQ(results.rows.points[3].atBase, 3.0);
  EXPECT_EQ(results.rows.points[4].atBase, 4.0);
  EXPECT_EQ(results.rows.points[5].atBase, 0.0);
  EXPECT_DOUBLE_EQ(results.atBase->value, 5.0 / std::sqrt(3.0));
}

TEST_F(ShiftedGroup, ABaseMeasuredTwiceIsTakenAtItsWeightedMean) {
  builder.group("Base2", true).point("P1", {0, 0, 6});
  builder.last().weight = 0.5;
  const Results results = describeResults(builder.state, solved);
  EXPECT_EQ(results.rows.points[3].atBase, 1.0) << "(0, 0, 3) against (0, 0, (1 x 0 + 0.5 x 6) / 1.5)";
}

TEST_F(ShiftedGroup, AnInactivePointHasAPlaceButNoDistances) {
  builder.group("A2").point("P1", {1, 1, 1}).inactive();
  solved.toCommon.emplace(2, OdGeMatrix3d());
  const Results results = describeResults(builder.state, solved);
  EXPECT_EQ(results.rows.points[6].registered, OdGePoint3d(1, 1, 1));
  EXPECT_FALSE(results.rows.points[6].discrepancy);
  EXPECT_FALSE(results.rows.points[6].atBase);
}

TEST_F(ShiftedGroup, OfAPointThatWeighsLessThanNothingNoDiscrepancyIsKnown) {
  builder.group("A2").point("P1", {0, 0, 1.5}).last().weight = -1.0;
  solved.toCommon.emplace(2, OdGeMatrix3d());
  EXPECT_FALSE(describeResults(builder.state, solved).rows.points[6].discrepancy);
  EXPECT_FALSE(describeResults(builder.state, solved).rows.points[6].residual);
}

TEST_F(ShiftedGroup, WithoutABaseThereIsNoDistanceAtTheBase) {
  for (SessionPoint& point : builder.state.points) point.record.inBase = false;
  EXPECT_FALSE(describeResults(builder.state, solved).atBase);
}

TEST_F(ShiftedGroup, TheRowsHoldWhatTheSessionHolds) {
  builder.group("B").point("Q", {1, 2, 3}).inactive().last().weight = 0.5;
  const Outcomes rows = outcomesOf(builder.state);
  ASSERT_EQ(rows.groups.size(), 3u);
  EXPECT_EQ(rows.groups[0].name, "Base");
  EXPECT_TRUE(rows.groups[0].inBase);
  EXPECT_EQ(rows.groups[1].points, 3u);
  EXPECT_EQ(rows.groups[1].active, 3u);
  EXPECT_EQ(rows.groups[2].points, 1u);
  EXPECT_EQ(rows.groups[2].active, 0u);
  const PointOutcome& point = rows.points[6];
  EXPECT_EQ(point.id, 6u);
  EXPECT_EQ(point.group, 2u);
  EXPECT_EQ(point.name, "Q");
  EXPECT_EQ(point.position, OdGePoint3d(1, 2, 3));
  EXPECT_EQ(point.weight, 0.5);
  EXPECT_EQ(point.reason, Reason::loneName);
  EXPECT_FALSE(rows.points[0].reason);
}

TEST_F(ShiftedGroup, ARowKnowsItsGroupByItsIndexThoughIdsAreMissing) {
  builder.state.groups[1].id = 40;
  for (std::size_t i = 3; i < 6; ++i) builder.state.points[i].record.groupId = 40;
  const Outcomes rows = outcomesOf(builder.state);
  EXPECT_EQ(rows.points[5].group, 1u);
  EXPECT_EQ(rows.groups[1].id, 40u);
}

TEST_F(ShiftedGroup, TargetsAndSpreadAreTakenOver) {
  solved.targets = {{"P1", {1, 2, 3}, 0.5}};
  solved.spread.largest = 0.25;
  solved.spread.counts = {1, 2};
  const Results results = describeResults(builder.state, solved);
  ASSERT_EQ(results.targets.size(), 1u);
  EXPECT_EQ(results.targets[0].name, "P1");
  EXPECT_EQ(results.spread.largest, 0.25);
  EXPECT_EQ(results.spread.counts, (std::vector<std::uint64_t>{1, 2}));
}

TEST_F(ShiftedGroup, ADiscrepancyThatIsNoNumberStaysSeenInTheRms) {
  builder.state.discrepancies[4] = std::nan("");
  const Results results = describeResults(builder.state, solved);
  EXPECT_TRUE(std::isnan(results.discrepancies->value));
  EXPECT_TRUE(std::isnan(results.discrepancies->largest));
  EXPECT_EQ(results.discrepancies->count, 3u);
  EXPECT_EQ(results.largest, 3u) << "the largest of the numbers";
}

TEST_F(ShiftedGroup, ABasePointThatIsOutSaysNothingOfItsTarget) {
  builder.state.points[0].record.active = false;
  const Results results = describeResults(builder.state, solved);
  EXPECT_FALSE(results.rows.points[3].atBase);
  EXPECT_TRUE(results.rows.points[4].atBase);
  EXPECT_EQ(results.atBase->count, 2u);
}

TEST(AState, OfNothingHasNoRowsAndNoResults) {
  const Results results = describeResults({}, {});
  EXPECT_TRUE(results.rows.groups.empty());
  EXPECT_TRUE(results.rows.points.empty());
  EXPECT_FALSE(results.discrepancies);
  EXPECT_FALSE(results.largest);
}

/// Six points with the given discrepancies.
Results resultsOf(const std::vector<double>& discrepancies) {
  StateBuilder b;
  b.group("A");
  SolvedTransforms solved;
  solved.toCommon.emplace(0, OdGeMatrix3d());
  for (std::size_t i = 0; i < discrepancies.size(); ++i) {
    b.point("P" + std::to_string(i));
    b.state.discrepancies[i] = discrepancies[i];
  }
  return describeResults(b.state, solved);
}

TEST(Outlier, TheFirstLargestIsMarked) { EXPECT_EQ(resultsOf({1, 3, 2, 3, 1, 1}).largest, 1u); }

/// How the last of the points compares with all of them.
std::optional<Outlier> lastOf(const std::vector<double>& discrepancies) {
  const Results results = resultsOf(discrepancies);
  return standOut(results, results.rows.points, discrepancies.size() - 1);
}

TEST(Outlier, NoPointStandsOutBeforeItIsJudged) { EXPECT_FALSE(resultsOf({1, 1, 1, 1, 1, 100}).outlier); }

TEST(Outlier, IsComparedWithTheMedianOfAll) {
  const auto outlier = lastOf({1, 2, 2, 2, 1, 12});
  ASSERT_TRUE(outlier);
  EXPECT_EQ(outlier->point, 5u);
  EXPECT_EQ(outlier->timesMedian, 6.0);
}

TEST(Outlier, WhereMostPointsFitExactlyThereIsNoMedianToCompareItWith) {
  const auto outlier = lastOf({0, 0, 0, 0, 0, 0, 1});
  ASSERT_TRUE(outlier);
  EXPECT_FALSE(outlier->timesMedian);
}

TEST(Outlier, TheMedianOfAnEvenCountLiesBetweenTheTwoInTheMiddle) {
  EXPECT_EQ(lastOf({1, 1, 1, 3, 3, 20})->timesMedian, 10.0);
}

TEST(Outlier, NeedNotHaveTheLargestDiscrepancy) { EXPECT_EQ(lastOf({9, 2, 2, 2, 1, 4})->timesMedian, 2.0); }

TEST(Outlier, IsNoneAmongTheRoundingOfNumbers) {
  // The points span 1000: a hundred-millionth of it is 1e-5.
  const auto largestOf = [](double discrepancy) {
    StateBuilder b;
    b.group("A").point("P0", {0, 0, 0}).point("P1", {1000, 0, 0});
    b.state.discrepancies[1] = discrepancy;
    SolvedTransforms solved;
    solved.toCommon.emplace(0, OdGeMatrix3d());
    return describeResults(b.state, solved).largest;
  };
  EXPECT_FALSE(largestOf(0.9e-5));
  EXPECT_EQ(largestOf(1.1e-5), 1u);
}

TEST(Outlier, ValuesThatAreNotFiniteHaveNoSay) {
  const double infinity = std::numeric_limits<double>::infinity();
  const std::vector<double> discrepancies{1, 1, infinity, std::nan(""), 1, 1, 1, 9};
  EXPECT_EQ(resultsOf(discrepancies).largest, 7u);
  EXPECT_EQ(lastOf(discrepancies)->timesMedian, 9.0);
}

TEST(Outlier, IsNoneWhereAllDiscrepanciesAreRounding) { EXPECT_FALSE(lastOf({0, 0, 0})); }

}  // namespace
}  // namespace tiepoint::workbench
