#include "workbench/picture/marks.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "workbench/picture/painted_sheet.h"

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

TEST(Marks, LeaveOutLinesThatAreTooShortToBeSeen) {
  EXPECT_TRUE(linesOn(tenPixels(), {{1, {1, 1, 0}, {1.02, 1, 0}}}).empty());
  EXPECT_EQ(linesOn(tenPixels(), {{1, {1, 1, 0}, {1.04, 1, 0}}}).size(), 1u);
}

TEST(Marks, KnowASpotWithoutAPlace) {
  EXPECT_TRUE(isFinite({1, -1e300}));
  EXPECT_FALSE(isFinite({std::nan(""), 0}));
  EXPECT_FALSE(isFinite({0, std::numeric_limits<double>::infinity()}));
  EXPECT_DOUBLE_EQ(distance({1, 2}, {4, 6}), 5.0);
}

constexpr Rgb yellow{255, 255, 0}, darkBlue{0, 0, 255}, red{255, 0, 0};

PageLine lineAt(double y, const Rgb& color) { return {{20, y}, {60, y}, color}; }

TEST(Marks, OfABrightColourHaveADarkerSeam) {
  PaintedSheet sheet;
  paintLines(sheet.canvas, {lineAt(50, yellow), lineAt(100, darkBlue)});
  // A line of 1.3 covers two rows in part; its seam, 1.3 wider, reaches into those beside them.
  EXPECT_NE(sheet.at(40, 48), "ffffff");
  EXPECT_NE(sheet.at(40, 51), "ffffff");
  EXPECT_LT(sheet.part(40, 48, 0), 255) << "darker than yellow";
  EXPECT_EQ(sheet.at(40, 98), "ffffff");
  EXPECT_NE(sheet.at(40, 99), "ffffff");
}

TEST(Marks, OneUponAnotherShowBehindIt) {
  PaintedSheet sheet;
  paintLines(sheet.canvas, {lineAt(50, red), lineAt(50, darkBlue), lineAt(100, darkBlue)});
  EXPECT_GT(sheet.part(40, 48, 0), sheet.part(40, 48, 2)) << "the lower one is wider, and red";
  EXPECT_GT(sheet.part(40, 49, 2), sheet.part(40, 49, 0)) << "the upper one is blue";
  EXPECT_EQ(sheet.at(40, 98), "ffffff") << "a single one is thin";
}

TEST(Marks, ThatOnlyCrossAreNotOneUponAnother) {
  PaintedSheet sheet;
  paintLines(sheet.canvas, {{{40, 30}, {40, 70}, red}, lineAt(50, darkBlue)});
  EXPECT_EQ(sheet.at(25, 48), "ffffff");
  EXPECT_EQ(sheet.at(38, 35), "ffffff");
}

TEST(Marks, GrowNoWiderThanThreeBelow) {
  const auto rowsOf = [](std::size_t lines) {
    PaintedSheet sheet;
    paintLines(sheet.canvas, std::vector<PageLine>(lines, lineAt(50, red)));
    return sheet.painted({40, 0, 41, 300});
  };
  EXPECT_LT(rowsOf(1), rowsOf(3));
  EXPECT_LT(rowsOf(3), rowsOf(4));
  EXPECT_EQ(rowsOf(4), rowsOf(9));
}

TEST(Marks, APlainArrowHasItsGroupsColour) {
  PaintedSheet sheet;
  paintArrows(sheet.canvas, {{{20, 50}, {80, 50}, darkBlue, ""}, {{20, 100}, {80, 100}, yellow, ""}}, 4.0);
  EXPECT_EQ(sheet.at(40, 50), "0000ff");
  EXPECT_EQ(sheet.at(40, 100), "727200") << "a bright one its seam's";
}

TEST(Marks, AnArrowThatStandsOutHasARingAndTheColourOfAlarm) {
  PaintedSheet sheet;
  paintArrows(sheet.canvas, {{{100, 100}, {180, 100}, darkBlue, "T1"}}, 1.3);
  EXPECT_EQ(sheet.at(140, 100), "b00020");
  EXPECT_EQ(sheet.at(100, 88), "b00020");
  EXPECT_EQ(sheet.at(100, 111), "b00020");
  EXPECT_EQ(sheet.at(100, 94), "ffffff") << "within the ring";
  EXPECT_EQ(sheet.at(140, 104), "ffffff");
}

TEST(Marks, AnArrowThatStandsOutLiesAboveThePlainOnes) {
  PaintedSheet sheet;
  paintArrows(sheet.canvas, {{{100, 100}, {180, 100}, red, "T1"}, {{150, 50}, {150, 150}, darkBlue, ""}}, 6.0);
  EXPECT_EQ(sheet.at(150, 100), "b00020");
  EXPECT_GT(sheet.part(150, 97, 0), 100) << "paper shines between the two";
  EXPECT_EQ(sheet.at(150, 92), "0000ff");
}

TEST(Marks, AStationIsATriangleWithADot) {
  PaintedSheet sheet(darkBlue);
  paintStation(sheet.canvas, {100, 100}, red);
  EXPECT_EQ(sheet.at(100, 100), "ffffff") << "the dot";
  EXPECT_EQ(sheet.at(97, 101), "ff0000") << "its colour";
  EXPECT_EQ(sheet.at(100, 96), "ff0000");
  EXPECT_GT(sheet.part(100, 104, 0), 200) << "paper around it";
  EXPECT_EQ(sheet.at(100, 110), "0000ff");
  EXPECT_EQ(sheet.at(94, 94), "0000ff") << "beside its top";
}

TEST(Marks, ASwatchIsACrossLikeTheMarkers) {
  PaintedSheet sheet;
  paintSwatch(sheet.canvas, {50, 50}, red);
  paintSwatch(sheet.canvas, {150, 50}, yellow);
  for (const auto& [x, y] : {std::pair(45, 50), std::pair(54, 49), std::pair(50, 45), std::pair(49, 54)}) {
    EXPECT_EQ(sheet.at(x, y), "ff0000") << x << ' ' << y;
    EXPECT_EQ(sheet.at(x + 100, y), "ffff00") << x << ' ' << y;
  }
  EXPECT_EQ(sheet.at(57, 50), "ffffff");
  EXPECT_EQ(sheet.at(53, 53), "ffffff");
  EXPECT_EQ(sheet.at(46, 48), "ffffff");
  EXPECT_NE(sheet.at(146, 48), "ffffff") << "a bright one has a seam";
}

}  // namespace
}  // namespace tiepoint::workbench::picture
