#include "workbench/picture/canvas.h"

#include <gmock/gmock.h>

#include "workbench/picture/painted_sheet.h"

namespace tiepoint::workbench::picture {
namespace {

using ::testing::IsEmpty;

constexpr Rgb red{255, 0, 0}, blue{0, 0, 255}, black{0, 0, 0};
const TextStyle plain{10.0, false, black, 0.0};

std::vector<std::string> wordsOf(const Canvas& canvas) {
  std::vector<std::string> words;
  for (const PaintedText& text : canvas.texts()) words.push_back(text.text);
  return words;
}

TEST(Canvas, ATextsBoxReachesFromItsCapitalsToBelowTheLine) {
  PaintedSheet sheet;
  const Box box = sheet.canvas.boxOf({20, 40}, "T13", plain);
  EXPECT_DOUBLE_EQ(box.left, 20.0);
  EXPECT_DOUBLE_EQ(box.top, 40.0 - 7.29);
  EXPECT_DOUBLE_EQ(box.bottom, 40.0 + 2.36);
  EXPECT_DOUBLE_EQ(box.right, 20.0 + sheet.canvas.widthOf("T13", plain));
}

TEST(Canvas, ATextsWidthGoesWithItsSizeAndItsWeight) {
  PaintedSheet sheet;
  const double width = sheet.canvas.widthOf("T13", plain);
  EXPECT_NEAR(width, 18.83, 0.01);
  EXPECT_DOUBLE_EQ(sheet.canvas.widthOf("T13", {20.0, false, black, 0.0}), 2.0 * width);
  EXPECT_GT(sheet.canvas.widthOf("T13", {10.0, true, black, 0.0}), width);
  EXPECT_EQ(sheet.canvas.widthOf("", plain), 0.0);
}

TEST(Canvas, ATextIsPaintedWithinItsBoxAlone) {
  PaintedSheet sheet;
  sheet.canvas.text({20, 40}, "Wgjq13", {20.0, false, red, 0.0});
  const Box box = sheet.canvas.texts()[0].box;
  EXPECT_GT(sheet.painted(box), 50);
  EXPECT_EQ(sheet.painted(wholeSheet), sheet.painted(box.grownBy(1.0)));
}

TEST(Canvas, TextsAreRememberedInTheirOrder) {
  PaintedSheet sheet;
  sheet.canvas.text({20, 40}, "second", plain);
  sheet.canvas.text({20, 20}, "", plain);
  sheet.canvas.text({20, 20}, "first", plain);
  EXPECT_THAT(wordsOf(sheet.canvas), ::testing::ElementsAre("second", "first")) << "an empty one isn't painted";
}

TEST(Canvas, ATextCanEndAtASpot) {
  PaintedSheet sheet;
  sheet.canvas.textEndingAt({200, 40}, "12.5", plain);
  ASSERT_EQ(sheet.canvas.texts().size(), 1u);
  EXPECT_DOUBLE_EQ(sheet.canvas.texts()[0].box.right, 200.0);
}

TEST(Canvas, AHaloShinesAroundTheLettersAlone) {
  const auto lightPixels = [](double halo) {
    PaintedSheet sheet(black);
    sheet.canvas.text({20, 40}, "T13", {20.0, false, black, halo});
    int light = 0;
    for (int y = 0; y < 80; ++y) {
      for (int x = 0; x < 100; ++x) light += sheet.part(x, y, 0) > 200 ? 1 : 0;
    }
    return light;
  };
  EXPECT_EQ(lightPixels(0.0), 0);
  EXPECT_GT(lightPixels(2.0), 50);
  EXPECT_GT(lightPixels(4.0), lightPixels(2.0));
}

TEST(Canvas, ATextLeavesNoBeginningForTheNextShape) {
  PaintedSheet sheet;
  sheet.canvas.text({20, 40}, "T", plain);
  sheet.canvas.fill({{200, 200}, {220, 200}, {220, 220}}, red);
  EXPECT_EQ(sheet.painted({60, 60, 190, 190}), 0) << "no edge leads from the text to the triangle";
}

TEST(Canvas, ABoxIsFilledToItsRim) {
  PaintedSheet sheet;
  sheet.canvas.fill(Box{10, 20, 30, 40}, red);
  for (const auto& [x, y] : {std::pair(10, 20), std::pair(29, 39)}) EXPECT_EQ(sheet.at(x, y), "ff0000");
  EXPECT_EQ(sheet.painted(wholeSheet), 20 * 20);
}

TEST(Canvas, ABoxIsOutlinedAllAroundAndNotFilled) {
  PaintedSheet sheet;
  sheet.canvas.outline(Box{10, 20, 30, 40}, red, 2.0);
  for (const auto& [x, y] : {std::pair(10, 30), std::pair(29, 30), std::pair(20, 20), std::pair(20, 39)}) {
    EXPECT_EQ(sheet.at(x, y), "ff0000") << x << ' ' << y;
  }
  EXPECT_EQ(sheet.painted({11, 21, 29, 39}), 0);
}

TEST(Canvas, AShapeIsFilledBetweenItsCorners) {
  PaintedSheet sheet;
  sheet.canvas.fill({{10, 10}, {50, 10}, {10, 50}}, blue);
  EXPECT_EQ(sheet.at(15, 15), "0000ff");
  EXPECT_EQ(sheet.at(45, 45), "ffffff") << "beyond the slanting edge";
}

TEST(Canvas, ALineIsAsWideAsItIsAskedToBe) {
  PaintedSheet sheet;
  sheet.canvas.line({10, 50}, {90, 50}, red, 4.0);
  for (int y = 48; y < 52; ++y) EXPECT_EQ(sheet.at(50, y), "ff0000") << y;
  EXPECT_EQ(sheet.painted(wholeSheet), 80 * 4);
}

TEST(Canvas, ADotIsFullAndARingIsNot) {
  PaintedSheet sheet;
  sheet.canvas.dot({50, 50}, 10.0, red);
  sheet.canvas.ring({150, 50}, 10.0, blue, 2.0);
  EXPECT_EQ(sheet.at(50, 50), "ff0000");
  EXPECT_EQ(sheet.at(58, 50), "ff0000");
  EXPECT_EQ(sheet.at(62, 50), "ffffff");
  EXPECT_EQ(sheet.at(150, 50), "ffffff");
  EXPECT_EQ(sheet.at(159, 50), "0000ff");
  EXPECT_EQ(sheet.at(150, 40), "0000ff");
  EXPECT_EQ(sheet.at(150, 37), "ffffff");
}

TEST(Canvas, AnArrowHasItsHeadWhereItEnds) {
  PaintedSheet sheet;
  sheet.canvas.arrow({20, 50}, {100, 50}, red, 2.0);
  // The head is ten long, and wider than the shaft of two.
  EXPECT_EQ(sheet.painted({30, 0, 31, 300}), 2);
  EXPECT_GE(sheet.painted({91, 0, 92, 300}), 6);
  EXPECT_EQ(sheet.painted({100, 0, 400, 300}), 0) << "nothing lies beyond the tip";
  EXPECT_EQ(sheet.painted({0, 0, 20, 300}), 0);
}

TEST(Canvas, AShortArrowIsAllHead) {
  PaintedSheet sheet;
  sheet.canvas.arrow({20, 50}, {24, 50}, red, 2.0);
  EXPECT_GT(sheet.painted(wholeSheet), 0);
  EXPECT_EQ(sheet.painted({20, 46, 24, 54}), sheet.painted(wholeSheet)) << "as short as it is";
}

TEST(Canvas, AnArrowPointsWhereItIsToldTo) {
  PaintedSheet sheet;
  sheet.canvas.arrow({50, 100}, {50, 20}, red, 2.0);
  EXPECT_EQ(sheet.painted({0, 90, 400, 91}), 2);
  EXPECT_GE(sheet.painted({0, 28, 400, 29}), 6);
}

TEST(Canvas, NothingIsPaintedOutsideOfAClip) {
  PaintedSheet sheet;
  sheet.canvas.beginClip({100, 100, 200, 200});
  sheet.canvas.fill(wholeSheet, red);
  sheet.canvas.endClip();
  EXPECT_EQ(sheet.painted(wholeSheet), 100 * 100);
  EXPECT_EQ(sheet.at(100, 100), "ff0000");
}

TEST(Canvas, AClipEnds) {
  PaintedSheet sheet;
  sheet.canvas.beginClip({100, 100, 200, 200});
  sheet.canvas.endClip();
  sheet.canvas.fill(Box{0, 0, 10, 10}, red);
  EXPECT_EQ(sheet.at(5, 5), "ff0000");
}

TEST(Canvas, AUnitMayBeSeveralPixels) {
  PaintedSheet sheet(paper, 2.0);
  sheet.canvas.fill(Box{10, 20, 20, 30}, red);
  EXPECT_EQ(sheet.at(20, 40), "ff0000");
  EXPECT_EQ(sheet.at(39, 59), "ff0000");
  EXPECT_EQ(sheet.painted(wholeSheet), 20 * 20);
  EXPECT_THAT(sheet.canvas.texts(), IsEmpty());
}

}  // namespace
}  // namespace tiepoint::workbench::picture
