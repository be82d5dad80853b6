#include "workbench/picture/box_grid.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

namespace tiepoint::workbench::picture {
namespace {

TEST(Box, OverlapsNoneThatItOnlyTouches) {
  const Box box{0, 0, 10, 10};
  EXPECT_TRUE(overlap(box, {9, 9, 20, 20}));
  EXPECT_FALSE(overlap(box, {10, 0, 20, 10}));
  EXPECT_FALSE(overlap(box, {0, 10, 10, 20}));
  EXPECT_TRUE(overlap(box, {2, 2, 3, 3}));
}

TEST(Box, HoldsWhatLiesWithinItsRim) {
  const Box box{0, 0, 10, 10};
  EXPECT_TRUE(contains(box, Box{0, 0, 10, 10}));
  EXPECT_FALSE(contains(box, Box{0, 0, 10.5, 10}));
  EXPECT_TRUE(contains(box, PagePoint{10, 0}));
  EXPECT_FALSE(contains(box, PagePoint{5, -1}));
}

TEST(Box, GivesItsSpotNearestToAnother) {
  const Box box{0, 0, 10, 10};
  EXPECT_EQ(nearestPoint(box, {-5, 4}).x, 0.0);
  EXPECT_EQ(nearestPoint(box, {-5, 4}).y, 4.0);
  EXPECT_EQ(nearestPoint(box, {20, 30}).x, 10.0);
  EXPECT_EQ(nearestPoint(box, {20, 30}).y, 10.0);
}

/// Boxes of all sizes, also beyond the grid's area and without any extent.
Box anyBox() {
  const auto number = [](int low, int high) { return *rc::gen::inRange(low, high) * 0.5; };
  const double left = number(-100, 500);
  const double top = number(-100, 500);
  return {left, top, left + number(0, 200), top + number(0, 200)};
}

RC_GTEST_PROP(BoxGrid, CountsAsManyOverlapsAsAComparisonWithEveryBox, ()) {
  BoxGrid grid({0, 0, 200, 150});
  std::vector<Box> all;
  const int count = *rc::gen::inRange(0, 40);
  for (int i = 0; i < count; ++i) {
    all.push_back(anyBox());
    grid.add(all.back());
  }
  const Box asked = anyBox();
  std::size_t expected = 0;
  for (const Box& box : all) expected += overlap(box, asked) ? 1 : 0;
  RC_ASSERT(grid.overlapping(asked) == expected);
}

}  // namespace
}  // namespace tiepoint::workbench::picture
