#include "matching/row_tree.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <map>
#include <random>

#include "matching/plain_row_clusters.h"
#include "solver/arbitrary.h"

namespace tiepoint::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ZOR::reg::LinkForest;
using ZOR::reg::PlacedRow;
using ZOR::reg::RowClusters;

using Rows = std::vector<PlacedRow>;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double largest = std::numeric_limits<double>::max();
constexpr double smallest = std::numeric_limits<double>::denorm_min();

void add(Rows& rows, double x, double y, double z, std::uint64_t tag) { rows.push_back({x, y, z, rows.size(), tag}); }

RowClusters clustersByTree(const Rows& rows, double threshold) {
  LinkForest forest(rows.size());
  ZOR::reg::RowTree(rows, rows.size()).tieCloseRows(threshold, forest);
  std::map<LinkForest::Index, std::vector<std::uint64_t>> byRoot;
  for (const PlacedRow& row : rows) byRoot[forest.rootOf(row.row)].push_back(row.row);
  RowClusters clusters;
  for (const auto& entry : byRoot) {
    if (entry.second.size() > 1) clusters.push_back(entry.second);
  }
  return clusters;
}

bool agreesWithPlainScan(const Rows& rows, double threshold) {
  ZOR::reg::RowTable table(static_cast<Eigen::Index>(rows.size()), 3);
  std::vector<std::uint64_t> tags;
  for (const PlacedRow& row : rows) {
    table.row(static_cast<Eigen::Index>(row.row)) << row.x, row.y, row.z;
    tags.push_back(row.tag);
  }
  return clustersByTree(rows, threshold) == clusterRowsByTagPlainly(table, tags, threshold);
}

TEST(RowTree, OfNoRowsTiesNothing) { EXPECT_THAT(clustersByTree({}, 1.0), IsEmpty()); }

TEST(RowTree, LeavesTheRowsBehindItsCountAlone) {
  Rows rows;
  for (std::uint64_t tag = 0; tag < 3; ++tag) add(rows, 0.0, 0.0, 0.0, tag);
  LinkForest forest(3);
  ZOR::reg::RowTree(rows, 2).tieCloseRows(1.0, forest);
  EXPECT_TRUE(forest.areTied(0, 1));
  EXPECT_FALSE(forest.areTied(0, 2));
}

/// A line of rows one apart, each of another tag.
Rows fence(std::size_t count) {
  Rows rows;
  for (std::size_t i = 0; i < count; ++i) add(rows, static_cast<double>(i), 0.0, 0.0, i);
  return rows;
}

TEST(RowTree, TiesNothingAtTheThreshold) {
  EXPECT_THAT(clustersByTree(fence(100), 1.0), IsEmpty());
  EXPECT_THAT(clustersByTree(fence(100), std::nextafter(1.0, 2.0)), ElementsAre(SizeIs(100)));
}

TEST(RowTree, TiesACrowdOfOneTagOnlyThroughAnother) {
  Rows rows = fence(100);
  for (PlacedRow& row : rows) row.tag = 7;
  EXPECT_THAT(clustersByTree(rows, 1000.0), IsEmpty());
  rows[50].tag = 8;
  EXPECT_THAT(clustersByTree(rows, 1000.0), ElementsAre(SizeIs(100)));
  EXPECT_THAT(clustersByTree(rows, 10.5), ElementsAre(SizeIs(21)));
}

/// Two crowds that lie apart, each smaller than the threshold, all rows of one within the threshold
/// of all of the other.
TEST(RowTree, TiesTwoCrowdsByTheirTagsAlone) {
  for (const std::uint64_t tagsOfA : {1U, 2U, 3U, 5U}) {
    for (const std::uint64_t tagsOfB : {1U, 2U, 3U, 5U}) {
      for (const std::uint64_t shift : {0U, 1U, 4U}) {
        Rows rows;
        for (std::uint64_t i = 0; i < 60; ++i) add(rows, 0.001 * static_cast<double>(i), 0.0, 0.0, i % tagsOfA);
        for (std::uint64_t i = 0; i < 60; ++i) add(rows, 1.0, 0.001 * static_cast<double>(i), 0.0, shift + i % tagsOfB);
        EXPECT_TRUE(agreesWithPlainScan(rows, 2.0)) << tagsOfA << ' ' << tagsOfB << ' ' << shift;
        EXPECT_TRUE(agreesWithPlainScan(rows, 0.97)) << tagsOfA << ' ' << tagsOfB << ' ' << shift;
        EXPECT_TRUE(agreesWithPlainScan(rows, 0.01)) << tagsOfA << ' ' << tagsOfB << ' ' << shift;
      }
    }
  }
}

/// Crowds on a grid, some of one tag, so that whole boxes are close to whole boxes.
RC_GTEST_PROP(RowTree, AgreesWithThePlainScanOnCrowds, (std::uint64_t seed)) {
  std::mt19937_64 random(seed);
  std::uniform_real_distribution<double> place(0.0, 0.01);
  Rows rows;
  const int crowds = arbitraryBetween(2, 6);
  for (int crowd = 0; crowd < crowds; ++crowd) {
    const double x = arbitraryBetween(0, 3);
    const double y = arbitraryBetween(0, 3);
    const auto firstTag = arbitraryBetween<std::uint64_t>(0, 3);
    const auto tags = arbitraryBetween<std::uint64_t>(1, 4);
    const auto count = arbitraryBetween<std::uint64_t>(1, 60);
    for (std::uint64_t i = 0; i < count; ++i) add(rows, x + place(random), y + place(random), 0.0, firstTag + i % tags);
  }
  for (const double threshold : {0.5, 1.005, 1.02, 1.42, 2.1}) RC_ASSERT(agreesWithPlainScan(rows, threshold));
}

std::uint64_t arbitraryTag(std::size_t row) { return onceIn(8) ? row + 100 : arbitraryBetween<std::uint64_t>(0, 3); }

/// Values that meet each other in thresholds and in roundings.
RC_GTEST_PROP(RowTree, AgreesWithThePlainScanOnHostileTables, ()) {
  const std::vector<std::vector<double>> palettes{
      {0.0, -0.0, 1.0, 2.0, 3.0, 4.0, 5.0, 8.0},
      {0.1, 0.2, 0.3, 0.30000000000000004, 0.4, 0.7, 1000000.1, 1000000.2},
      {0.0, smallest, 1e-170, 1e-162, 1.4e-154, 1.49e-154, 1.5e-154, 1.6e-154, 3e-154, 2.3e-308},
      {0.0, 9e153, 1.3e154, -1.3e154, 1.35e154, 2e154, -2e154, 4e154, 1e300, -1e300, largest, -largest},
      {0.0, 1.0, 2.0, 10.0, 20.0, 1e12, -1e15}};
  const std::vector<double> thresholds{smallest,
                                       1e-200,
                                       1e-162,
                                       1.5e-154,
                                       2.5e-154,
                                       0.1,
                                       0.2,
                                       1.0,
                                       1.5,
                                       2.0,
                                       3.0,
                                       5.0,
                                       1e6,
                                       9e153,
                                       1.4e154,
                                       1e200,
                                       largest,
                                       infinity,
                                       1.0000000000000002,
                                       0.30000000000000004};
  const std::vector<double> palette = *rc::gen::elementOf(palettes);
  const auto value = [&] { return palette[arbitraryBetween<std::size_t>(0, palette.size() - 1)]; };
  Rows rows;
  const auto count = arbitraryBetween<std::size_t>(0, 120);
  for (std::size_t i = 0; i < count; ++i) {
    const double x = value();
    const double y = value();
    add(rows, x, y, value(), arbitraryTag(i));
  }
  RC_ASSERT(agreesWithPlainScan(rows, *rc::gen::elementOf(thresholds)));
}

RC_GTEST_PROP(RowTree, AgreesWithThePlainScanOnSpreadRows, (std::uint64_t seed)) {
  std::mt19937_64 random(seed);
  std::uniform_real_distribution<double> place(0.0, 1.0);
  const double height = *rc::gen::elementOf(std::vector<double>{0.0, 0.1, 1.0});
  Rows rows;
  for (std::size_t i = 0; i < 300; ++i) {
    const double x = place(random);
    const double y = place(random);
    add(rows, x, y, height * place(random), arbitraryTag(i));
  }
  for (const double threshold : {0.01, 0.05, 0.1, 0.2, 0.4, 1.0}) RC_ASSERT(agreesWithPlainScan(rows, threshold));
}

}  // namespace
}  // namespace tiepoint::testing
