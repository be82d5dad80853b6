#include "workbench/picture/marks.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace tiepoint::workbench::picture {
namespace {

/// Ten pixels for a unit, from above.
Projection tenPixels() {
  View view;
  view.setState({{20, 15, 1}, {20, 15, 0}, {0, 1, 0}, 40, 30, 400, 300});
  return Projection(view, {0, 0, 400, 300});
}

TEST(Marks, LeaveOutLinesThatTheViewShowsAsADot) {
  const auto lines = linesOn(tenPixels(), {{1, {2, 1, 0}, {0, 1, 0}}, {1, {1, 1, 1}, {1, 1, -1}}});
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_DOUBLE_EQ(lines[0].from.x, 20.0);
  EXPECT_DOUBLE_EQ(lines[0].from.y, 290.0);
  EXPECT_DOUBLE_EQ(lines[0].to.x, 0.0);
  EXPECT_EQ(lines[0].color, (Rgb{255, 0, 0}));
}

TEST(Marks, LeaveOutLinesWithoutAPlace) {
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_TRUE(linesOn(tenPixels(), {{1, {std::nan(""), 0, 0}, {1, 0, 0}}, {1, {0, 0, 0}, {infinity, 0, 0}}}).empty());
}

TEST(Marks, HaveThinnerLinesWhenTheyAreSmall) {
  const auto crossOf = [](double length) { return std::vector<PageLine>{{{0, 0}, {length, 0}, {}}}; };
  EXPECT_DOUBLE_EQ(lineWidthFor(crossOf(20)), 1.3);
  EXPECT_DOUBLE_EQ(lineWidthFor(crossOf(16)), 1.04);
  EXPECT_DOUBLE_EQ(lineWidthFor(crossOf(4)), 0.8);
  EXPECT_DOUBLE_EQ(lineWidthFor({}), 0.8);
}

TEST(Marks, ArrowsBeginAtTheTargetAndAreEnlarged) {
  const Residual residual{{1, 2, 3}, {1.01, 2, 2.98}, 5, "T1", "note"};
  EXPECT_NEAR(arrowTip(residual, 200).x, 3.0, 1e-12);
  EXPECT_NEAR(arrowTip(residual, 200).y, 2.0, 1e-12);
  EXPECT_NEAR(arrowTip(residual, 200).z, -1.0, 1e-12);
  const auto arrows = arrowsOn(tenPixels(), {residual}, 200);
  ASSERT_EQ(arrows.size(), 1u);
  EXPECT_NEAR(arrows[0].from.x, 10.0, 1e-9);
  EXPECT_NEAR(arrows[0].to.x, 30.0, 1e-9);
  EXPECT_NEAR(arrows[0].to.y, arrows[0].from.y, 1e-9);
  EXPECT_EQ(arrows[0].note, "note");
  EXPECT_EQ(arrows[0].color, (Rgb{0, 0, 255}));
}

TEST(Marks, ArrowsWithoutAPlaceAreLeftOut) {
  EXPECT_TRUE(arrowsOn(tenPixels(), {{{0, 0, 0}, {std::nan(""), 0, 0}, 1, "T1", ""}}, 10).empty());
}

}  // namespace
}  // namespace tiepoint::workbench::picture
