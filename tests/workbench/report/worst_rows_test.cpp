#include "workbench/report/worst_rows.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numeric>

namespace tiepoint::workbench {
namespace {

/// So many values, the last the largest.
std::vector<double> rising(std::size_t count) {
  std::vector<double> values(count);
  std::iota(values.begin(), values.end(), 0.0);
  return values;
}

TEST(WorstRows, OfTwoHundredAreAllInTheirOrder) {
  const std::vector<std::size_t> rows = rowsToShow(rising(200), false);
  ASSERT_EQ(rows.size(), 200u);
  EXPECT_EQ(rows.front(), 0u);
  EXPECT_EQ(rows.back(), 199u);
}

TEST(WorstRows, OfMoreAreTheFortyWorstTheWorstFirst) {
  const std::vector<std::size_t> rows = rowsToShow(rising(201), false);
  ASSERT_EQ(rows.size(), 40u);
  EXPECT_EQ(rows.front(), 200u);
  EXPECT_EQ(rows.back(), 161u);
}

TEST(WorstRows, AreAllWhenAllAreAskedFor) {
  const std::vector<std::size_t> rows = rowsToShow(rising(201), true);
  ASSERT_EQ(rows.size(), 201u);
  EXPECT_EQ(rows.front(), 0u);
}

TEST(WorstRows, KeepTheOrderOfEqualOnesAndTakeNotANumberForTheWorst) {
  std::vector<double> badness(300, 1.0);
  badness[250] = std::nan("");
  badness[260] = 2.0;
  const std::vector<std::size_t> rows = rowsToShow(badness, false);
  ASSERT_EQ(rows.size(), 40u);
  EXPECT_EQ(rows[0], 250u);
  EXPECT_EQ(rows[1], 260u);
  EXPECT_EQ(rows[2], 0u);
  EXPECT_EQ(rows[39], 37u);
}

TEST(WorstRows, TheRestIsCountedWithTheOptionThatShowsIt) {
  EXPECT_EQ(restLine(40, 200, "point"), "  and 160 more points; --all-points shows them\n");
  EXPECT_EQ(restLine(40, 41, "group"), "  and 1 more group; --all-points shows them\n");
  EXPECT_EQ(restLine(7, 7, "point"), "");
}

}  // namespace
}  // namespace tiepoint::workbench
