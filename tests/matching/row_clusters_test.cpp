#include "matching/row_clusters.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <array>
#include <limits>
#include <numeric>
#include <random>

#include "matching/plain_row_clusters.h"
#include "matching/row_links.h"

namespace tiepoint::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ZOR::reg::RowClusters;
using ZOR::reg::RowTable;

using Row = std::array<double, 3>;
using Rows = std::vector<Row>;
using Tags = std::vector<std::uint64_t>;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double largest = std::numeric_limits<double>::max();
constexpr double smallest = std::numeric_limits<double>::denorm_min();

RowTable tableOf(const Rows& rows) {
  RowTable table(static_cast<Eigen::Index>(rows.size()), 3);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    for (std::size_t column = 0; column < 3; ++column) {
      table(static_cast<Eigen::Index>(i), static_cast<Eigen::Index>(column)) = rows[i][column];
    }
  }
  return table;
}

/// The output starts with something in it, which every run has to take out.
RowClusters clustersOf(const Rows& rows, double threshold) {
  RowClusters clusters{{77, 78}};
  ZOR::reg::clusterRows(tableOf(rows), threshold, clusters);
  return clusters;
}

RowClusters clustersByTag(const Rows& rows, const Tags& tags, double threshold) {
  RowClusters clusters{{77, 78}};
  ZOR::reg::clusterRowsByTag(tableOf(rows), tags, threshold, clusters);
  return clusters;
}

Rows onLine(const std::vector<double>& places) {
  Rows rows;
  for (const double place : places) rows.push_back({place, 0.0, 0.0});
  return rows;
}

Rows swapped(Rows rows, std::size_t column, std::size_t other) {
  for (Row& row : rows) std::swap(row[column], row[other]);
  return rows;
}

TEST(RowClusters, OfAnEmptyTableAreNoneAndThoseHandedInAreGone) {
  EXPECT_THAT(clustersOf({}, 1.0), IsEmpty());
  EXPECT_THAT(clustersByTag({}, {}, 1.0), IsEmpty());
}

TEST(RowClusters, OfAnEmptyTableAreNoneForAThresholdThatIsNotANumber) {
  EXPECT_THAT(clustersOf({}, notANumber), IsEmpty());
  EXPECT_THAT(clustersByTag({}, {}, notANumber), IsEmpty());
}

TEST(RowClusters, AreNoneWhenNoTwoRowsAreCloserThanTheThreshold) {
  const Rows rows = onLine({0.0, 2.0, 4.5, -3.0});
  EXPECT_THAT(clustersOf(rows, 2.0), IsEmpty());
  EXPECT_THAT(clustersByTag(rows, {1, 2, 3, 4}, 2.0), IsEmpty());
}

TEST(RowClusters, LeaveNoLinkWhenNoTwoRowsAreCloserThanTheThreshold) {
  EXPECT_THAT(ZOR::reg::linkRows(tableOf(onLine({0.0, 2.0, 4.5})), 2.0), IsEmpty());
}

TEST(RowClusters, DoNotLinkRowsAtADistanceEqualToTheThreshold) {
  const Rows rows{{0.0, 0.0, 0.0}, {3.0, 4.0, 0.0}};
  EXPECT_THAT(clustersOf(rows, 5.0), IsEmpty());
  EXPECT_THAT(clustersByTag(rows, {1, 2}, 5.0), IsEmpty());
}

TEST(RowClusters, LinkRowsAtTheDistanceJustBelowTheThreshold) {
  const Rows rows{{0.0, 0.0, 0.0}, {3.0, 4.0, 0.0}};
  EXPECT_THAT(clustersOf(rows, std::nextafter(5.0, 6.0)), ElementsAre(ElementsAre(0, 1)));
}

/// In another order of the sum the distance is one digit in the last place shorter.
TEST(RowClusters, SumADistanceOverTheLastTwoColumnsFirst) {
  const Rows rows{{0.0, 0.0, 0.0}, {0.1, 0.4, 1.0}};
  constexpr double distance = 1.0816653826391969;
  EXPECT_THAT(clustersOf(rows, distance), IsEmpty());
  EXPECT_THAT(clustersOf(rows, std::nextafter(distance, 2.0)), ElementsAre(ElementsAre(0, 1)));
}

TEST(RowClusters, CompareInEveryColumn) {
  const Rows rows = onLine({0.0, 1.0, 3.0});
  for (const std::size_t column : {0U, 1U, 2U}) {
    EXPECT_THAT(clustersOf(swapped(rows, 0, column), 1.5), ElementsAre(ElementsAre(0, 1))) << column;
    EXPECT_THAT(clustersOf(swapped(rows, 0, column), 1.0), IsEmpty()) << column;
  }
}

TEST(RowClusters, AreNoneForAThresholdOfZeroEvenOfIdenticalRows) {
  const Rows rows{{1.0, 2.0, 3.0}, {1.0, 2.0, 3.0}};
  EXPECT_THAT(clustersOf(rows, 0.0), IsEmpty());
  EXPECT_THAT(clustersOf(rows, -0.0), IsEmpty());
  EXPECT_THAT(clustersOf(rows, -1.0), IsEmpty());
  EXPECT_THAT(clustersOf(rows, -infinity), IsEmpty());
  EXPECT_THAT(clustersByTag(rows, {1, 2}, 0.0), IsEmpty());
}

TEST(RowClusters, JoinTheEndsOfAChain) {
  const Rows rows = onLine({0.0, 1.0, 2.0});
  EXPECT_THAT(clustersOf(rows, 1.5), ElementsAre(ElementsAre(0, 1, 2)));
}

TEST(RowClusters, ComeInTheOrderOfTheirLowestRowsAndWithTheirRowsAscending) {
  const Rows rows = onLine({50.0, 9.0, 0.0, 8.9, 0.1, 50.1, 70.0, 8.8});
  EXPECT_THAT(clustersOf(rows, 0.15), ElementsAre(ElementsAre(0, 5), ElementsAre(1, 3, 7), ElementsAre(2, 4)));
}

TEST(RowClustersByTag, LeaveIdenticalRowsOfOneTagApart) {
  const Rows rows{{1.0, 2.0, 3.0}, {1.0, 2.0, 3.0}};
  EXPECT_THAT(clustersByTag(rows, {7, 7}, 1.0), IsEmpty());
}

TEST(RowClustersByTag, JoinIdenticalRowsOfOneTagThroughAThirdCloseToBoth) {
  const Rows rows{{1.0, 2.0, 3.0}, {1.0, 2.0, 3.0}, {1.0, 2.0, 3.5}};
  EXPECT_THAT(clustersByTag(rows, {7, 7, 8}, 1.0), ElementsAre(ElementsAre(0, 1, 2)));
}

TEST(RowClustersByTag, JoinManyRowsAtOneSpotAsSoonAsTwoTagsMeetThere) {
  const Rows rows(6, Row{1.0, 2.0, 3.0});
  EXPECT_THAT(clustersByTag(rows, {7, 7, 8, 9, 7, 8}, 1e-300), ElementsAre(ElementsAre(0, 1, 2, 3, 4, 5)));
}

TEST(RowClustersByTag, LinkARowToASpotThatHoldsItsOwnTagAndAnother) {
  const Rows rows{{0.0, 0.0, 0.0}, {0.0, 0.0, 0.0}, {0.5, 0.0, 0.0}, {-0.5, 0.0, 0.0}};
  EXPECT_THAT(clustersByTag(rows, {7, 8, 7, 8}, 0.75), ElementsAre(ElementsAre(0, 1, 2, 3)));
}

/// Rows spread over a box of the given sides.
Rows spreadRows(std::size_t count, const Row& sides, double middle, std::mt19937_64& random) {
  std::uniform_real_distribution<double> place(-0.5, 0.5);
  Rows rows(count);
  for (Row& row : rows) {
    for (std::size_t column = 0; column < 3; ++column) row[column] = middle + sides[column] * place(random);
  }
  return rows;
}

/// As many pairs as no memory could hold.
constexpr std::size_t crowd = 300000;

std::vector<std::uint64_t> numbersUpTo(std::size_t count) {
  std::vector<std::uint64_t> numbers(count);
  std::iota(numbers.begin(), numbers.end(), std::uint64_t{0});
  return numbers;
}

TEST(RowClusters, OfACrowdAtOneSpotTakeFewerLinksThanRows) {
  const Rows rows(crowd, Row{1.0, 2.0, 3.0});
  EXPECT_THAT(ZOR::reg::linkRows(tableOf(rows), 1.0), SizeIs(crowd - 1));
  EXPECT_TRUE(clustersOf(rows, 1.0) == RowClusters{numbersUpTo(crowd)});
  EXPECT_THAT(clustersOf(rows, 0.0), IsEmpty());
}

TEST(RowClustersByTag, OfACrowdAtOneSpotTakeFewerLinksThanRows) {
  const Rows rows(crowd, Row{1.0, 2.0, 3.0});
  Tags tags(crowd, 7);
  EXPECT_THAT(clustersByTag(rows, tags, 1.0), IsEmpty());
  tags.back() = 8;
  EXPECT_THAT(ZOR::reg::linkRowsByTag(tableOf(rows), tags, 1.0), SizeIs(crowd - 1));
  EXPECT_TRUE(clustersByTag(rows, tags, 1.0) == RowClusters{numbersUpTo(crowd)});
}

/// All different, and all within the threshold of one another: the comparison of all pairs would take
/// longer than a test may.
TEST(RowClusters, JoinACrowdOfDifferentRowsWithoutComparingAllPairs) {
  constexpr std::size_t million = 1000000;
  std::mt19937_64 random(3);
  const Rows rows = spreadRows(million, {1.0, 1.0, 1.0}, 0.0, random);
  EXPECT_TRUE(clustersOf(rows, 2.0) == RowClusters{numbersUpTo(million)});
  Tags tags(million, 7);
  for (std::size_t row = 0; row < million; ++row) tags[row] = rows[row][0] < 0.0 ? 7 : 8;
  EXPECT_TRUE(clustersByTag(rows, tags, 2.0) == RowClusters{numbersUpTo(million)});
}

/// One lost row stretches the cells until all others stand in one, without a height to tell them apart.
TEST(RowClusters, OfAFlatTableWithARowFarAwayAreFoundWithoutComparingAllPairs) {
  Rows rows;
  for (int x = 0; x < 1000; ++x) {
    for (int y = 0; y < 1000; ++y) rows.push_back({x * 1.0, y * 1.0, 0.0});
  }
  rows.push_back({1e15, 1e15, 0.0});
  EXPECT_THAT(clustersOf(rows, 1.0), IsEmpty());
  EXPECT_THAT(clustersOf(rows, 1.25), ElementsAre(SizeIs(1000000)));
}

TEST(RowClusters, OfACrowdWithoutNumbersTakeFewerLinksThanRows) {
  for (const double odd : {notANumber, infinity}) {
    const Rows rows(crowd, Row{1.0, odd, 3.0});
    EXPECT_THAT(ZOR::reg::linkRows(tableOf(rows), 1.0), SizeIs(crowd - 1)) << odd;
  }
  EXPECT_THAT(ZOR::reg::linkRows(tableOf(Rows(crowd, Row{1.0, 2.0, 3.0})), notANumber), SizeIs(crowd - 1));
}

TEST(RowClusters, TakeBothZerosAsOneSpot) {
  const Rows rows{{0.0, -0.0, 0.0}, {-0.0, 0.0, -0.0}, {0.0, 0.0, 0.0}};
  EXPECT_THAT(clustersOf(rows, smallest), ElementsAre(ElementsAre(0, 1, 2)));
}

TEST(RowClusters, JoinAllRowsForAThresholdThatIsNotANumber) {
  const Rows rows = onLine({0.0, 1e300, infinity});
  EXPECT_THAT(clustersOf(rows, notANumber), ElementsAre(ElementsAre(0, 1, 2)));
  EXPECT_THAT(clustersOf(onLine({0.0}), notANumber), IsEmpty());
}

TEST(RowClustersByTag, JoinAllRowsOfTwoTagsForAThresholdThatIsNotANumber) {
  const Rows rows = onLine({0.0, 10.0, 20.0, 30.0});
  EXPECT_THAT(clustersByTag(rows, {7, 7, 8, 7}, notANumber), ElementsAre(ElementsAre(0, 1, 2, 3)));
  EXPECT_THAT(clustersByTag(rows, {7, 7, 7, 7}, notANumber), IsEmpty());
}

TEST(RowClusters, LinkARowThatHoldsNotANumberToEveryRow) {
  const Rows rows{{0.0, 0.0, 0.0}, {100.0, 0.0, 0.0}, {0.0, notANumber, 0.0}, {infinity, 0.0, 0.0}};
  EXPECT_THAT(clustersOf(rows, 1.0), ElementsAre(ElementsAre(0, 1, 2, 3)));
  EXPECT_THAT(clustersOf(rows, -1.0), ElementsAre(ElementsAre(0, 1, 2, 3)));
}

TEST(RowClustersByTag, LinkARowThatHoldsNotANumberToTheRowsOfOtherTagsOnly) {
  const Rows rows{{notANumber, 0.0, 0.0}, {0.0, 0.0, 0.0}, {50.0, 0.0, 0.0}, {100.0, 0.0, 0.0}, {100.5, 0.0, 0.0}};
  EXPECT_THAT(clustersByTag(rows, {7, 7, 8, 9, 7}, 1.0), ElementsAre(ElementsAre(0, 2, 3, 4)));
  EXPECT_THAT(clustersByTag(rows, {7, 7, 7, 7, 7}, 1.0), IsEmpty());
}

TEST(RowClustersByTag, JoinRowsOfOneTagThatHoldNotANumberThroughARowOfAnother) {
  const Rows rows{{notANumber, 0.0, 0.0}, {0.0, notANumber, 0.0}, {5.0, 0.0, 0.0}};
  EXPECT_THAT(clustersByTag(rows, {7, 7, 8}, 1.0), ElementsAre(ElementsAre(0, 1, 2)));
  EXPECT_THAT(clustersByTag(rows, {7, 7, 7}, 1.0), IsEmpty());
}

TEST(RowClustersByTag, JoinEverythingThroughTwoTagsThatHoldNotANumber) {
  const Rows rows{{notANumber, 0.0, 0.0}, {0.0, 0.0, notANumber}, {50.0, 0.0, 0.0}, {100.0, 0.0, 0.0}};
  EXPECT_THAT(clustersByTag(rows, {7, 8, 7, 8}, 1.0), ElementsAre(ElementsAre(0, 1, 2, 3)));
}

TEST(RowClusters, LinkRowsWithTheSameInfinityInOneColumn) {
  const Rows rows{{infinity, 0.0, 0.0}, {-infinity, 0.0, 0.0}, {infinity, 9.0, 0.0}, {0.0, 9.0, 0.0}};
  for (const std::size_t column : {0U, 1U, 2U}) {
    EXPECT_THAT(clustersOf(swapped(rows, 0, column), 1.0), ElementsAre(ElementsAre(0, 2))) << column;
    EXPECT_THAT(clustersOf(swapped(rows, 0, column), infinity), ElementsAre(ElementsAre(0, 2))) << column;
    Rows below = swapped(rows, 0, column);
    for (Row& row : below) row[column] = -row[column];
    EXPECT_THAT(clustersOf(below, 1.0), ElementsAre(ElementsAre(0, 2))) << column;
    EXPECT_THAT(clustersByTag(swapped(rows, 0, column), {7, 8, 7, 8}, 1.0), IsEmpty()) << column;
  }
}

TEST(RowClusters, LinkNoRowAtAnInfiniteDistanceEvenForAnInfiniteThreshold) {
  EXPECT_THAT(clustersOf(onLine({0.0, infinity, -infinity}), infinity), IsEmpty());
}

TEST(RowClusters, LinkAllRowsAtFiniteDistancesForAnInfiniteThreshold) {
  EXPECT_THAT(clustersOf(onLine({0.0, 1e154, 1e10}), infinity), ElementsAre(ElementsAre(0, 1, 2)));
}

TEST(RowClusters, LinkNoRowsWhoseSquaredDistanceOverflows) {
  EXPECT_THAT(clustersOf(onLine({0.0, 1.4e154}), infinity), IsEmpty());
  EXPECT_THAT(clustersOf(onLine({largest, -largest}), infinity), IsEmpty());
  EXPECT_THAT(clustersOf(onLine({0.0, 1.3e154}), largest), ElementsAre(ElementsAre(0, 1)));
}

TEST(RowClusters, LinkRowsWhoseSquaredDistanceVanishes) {
  EXPECT_THAT(clustersOf(onLine({0.0, 1e-170}), 1e-200), ElementsAre(ElementsAre(0, 1)));
  EXPECT_THAT(clustersOf(onLine({0.0, 1e-150}), 1e-200), IsEmpty());
}

TEST(RowClusters, FindRowsAcrossTheSidesOfCells) {
  Rows rows;
  for (int i = 0; i < 50; ++i) rows.push_back({i * 0.9, i * -0.3, i * 0.2});
  EXPECT_THAT(clustersOf(rows, 1.0), ElementsAre(SizeIs(50)));
  EXPECT_THAT(clustersOf(swapped(rows, 0, 1), 1.0), ElementsAre(SizeIs(50)));
}

TEST(RowClusters, FindCloseRowsInATableOfAnyExtent) {
  const Rows rows{
      {-largest, -largest, 0.0}, {largest, largest, 0.0}, {5.0, 5.0, 5.0}, {5.0, 5.5, 5.0}, {5.0, 7.0, 5.0}};
  EXPECT_THAT(clustersOf(rows, 1.0), ElementsAre(ElementsAre(2, 3)));
}

bool agreesWithPlainScan(const Rows& rows, double threshold) {
  return clustersOf(rows, threshold) == clusterRowsPlainly(tableOf(rows), threshold);
}

bool agreesWithPlainScan(const Rows& rows, const Tags& tags, double threshold) {
  return clustersByTag(rows, tags, threshold) == clusterRowsByTagPlainly(tableOf(rows), tags, threshold);
}

/// Values that meet each other in thresholds, in roundings or in what isn't a number.
const std::vector<std::vector<double>> palettes{
    {0.0, -0.0, 1.0, 2.0, 3.0, 4.0, 5.0, 8.0},
    {0.1, 0.2, 0.3, 0.30000000000000004, 0.4, 0.7, 1000000.1, 1000000.2},
    {0.0, smallest, 1e-170, 1e-162, 1.4e-154, 1.49e-154, 1.5e-154, 1.6e-154, 3e-154, 2.3e-308},
    {0.0, 9e153, 1.3e154, -1.3e154, 1.35e154, 2e154, -2e154, 4e154, 1e300, -1e300, largest, -largest},
    {0.0, 1.0, infinity, -infinity},
    {0.0, 1.0, 2.0, 10.0, 20.0, 30.0, 40.0, 50.0, 60.0, 70.0, 80.0, infinity, notANumber},
    {0.0, 1.0, 1.0000000000000002, 0.9999999999999999, 2.0, 1e-16, 1e154, smallest, largest, infinity},
};
const std::vector<double> thresholds{0.0,
                                     -1.0,
                                     notANumber,
                                     infinity,
                                     -infinity,
                                     smallest,
                                     1e-200,
                                     1e-162,
                                     1.4e-154,
                                     1.5e-154,
                                     2.5e-154,
                                     1e-16,
                                     0.1,
                                     0.2,
                                     1.0,
                                     1.5,
                                     2.0,
                                     3.0,
                                     5.0,
                                     9e153,
                                     1.3e154,
                                     1.4e154,
                                     2e154,
                                     1e200,
                                     largest,
                                     1.0000000000000002,
                                     0.30000000000000004};

rc::Gen<Rows> hostileRows() {
  return rc::gen::mapcat(rc::gen::elementOf(palettes), [](const std::vector<double>& palette) {
    return rc::gen::container<Rows>(rc::gen::container<Row>(rc::gen::elementOf(palette)));
  });
}

/// Few tags, so that many rows share one.
Tags tagsFor(const Rows& rows) { return *rc::gen::container<Tags>(rows.size(), rc::gen::inRange<std::uint64_t>(0, 4)); }

RC_GTEST_PROP(RowClusters, AgreeWithThePlainScanOnHostileTables, ()) {
  const Rows rows = *hostileRows();
  RC_ASSERT(agreesWithPlainScan(rows, *rc::gen::elementOf(thresholds)));
}

RC_GTEST_PROP(RowClustersByTag, AgreeWithThePlainScanOnHostileTables, ()) {
  const Rows rows = *hostileRows();
  RC_ASSERT(agreesWithPlainScan(rows, tagsFor(rows), *rc::gen::elementOf(thresholds)));
}

Row someSides() {
  const auto side = rc::gen::elementOf(std::vector<double>{0.0, 0.01, 1.0, 10.0});
  return {*side, *side, *side};
}

RC_GTEST_PROP(RowClusters, AgreeWithThePlainScanOnSpreadRows, (std::uint64_t seed)) {
  std::mt19937_64 random(seed);
  const double middle = *rc::gen::elementOf(std::vector<double>{0.0, 1e6, -1e12});
  const Rows rows = spreadRows(250, someSides(), middle, random);
  for (const double threshold : {0.001, 0.02, 0.1, 0.3, 1.0}) RC_ASSERT(agreesWithPlainScan(rows, threshold));
}

RC_GTEST_PROP(RowClustersByTag, AgreeWithThePlainScanOnSpreadRows, (std::uint64_t seed)) {
  std::mt19937_64 random(seed);
  const Rows rows = spreadRows(250, someSides(), 0.0, random);
  const Tags tags = tagsFor(rows);
  for (const double threshold : {0.001, 0.02, 0.1, 0.3, 1.0}) RC_ASSERT(agreesWithPlainScan(rows, tags, threshold));
}

/// More pairs within reach than are compared one by one.
RC_GTEST_PROP(RowClustersByTag, AgreeWithThePlainScanOnCrowdedRows, (std::uint64_t seed)) {
  std::mt19937_64 random(seed);
  Rows rows = spreadRows(300, {1.0, 1.0, 1.0}, 0.0, random);
  // Twins, infinities and lost rows stand beside the crowd.
  rows[10] = rows[11] = rows[12];
  if (seed % 2 == 0) rows[20][1] = rows[21][1] = infinity;
  if (seed % 3 == 0) rows[30][2] = notANumber;
  const Tags tags = tagsFor(rows);
  for (const double threshold : {0.35, 0.8, 2.0}) {
    RC_ASSERT(agreesWithPlainScan(rows, threshold));
    RC_ASSERT(agreesWithPlainScan(rows, tags, threshold));
  }
}

/// The threshold is the distance of two rows, so that the very last digit decides.
RC_GTEST_PROP(RowClusters, AgreeWithThePlainScanAtADistanceOfTwoRows, (std::uint64_t seed)) {
  std::mt19937_64 random(seed);
  const double size = *rc::gen::elementOf(std::vector<double>{1.0, 1e-153, 1e-155, 1e153, 1e6});
  for (int repetition = 0; repetition < 50; ++repetition) {
    const Rows rows = spreadRows(2, {size, size, size}, 0.0, random);
    const double distance = plainRowDistance(tableOf(rows), 0, 1);
    RC_ASSERT(agreesWithPlainScan(rows, distance));
    RC_ASSERT(agreesWithPlainScan(rows, std::nextafter(distance, infinity)));
  }
}

}  // namespace
}  // namespace tiepoint::testing
