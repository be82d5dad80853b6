#include "workbench/view/recording_draw.h"

#include <gtest/gtest.h>

#include "workbench/view/test_drawable.h"

using namespace tiepoint::workbench;

namespace {

View viewOf(const ViewState& state) {
  View view;
  view.setState(state);
  return view;
}

/// The view's field of 100 x 75 on 800 x 600 pixels: an eighth of a unit to the pixel.
View topView() { return View(); }

void drawLine(OdGiViewportDraw& draw, const OdGePoint3d& from, const OdGePoint3d& to) {
  const OdGePoint3d ends[2] = {from, to};
  draw.geometry().worldLine(ends);
}

}  // namespace

TEST(RecordingDraw, KeepsLinesInTheOrderDrawnWithTheColourOfTheMoment) {
  const TestDrawable drawable([](OdGiViewportDraw& draw) {
    draw.subEntityTraits().setColor(1);
    drawLine(draw, {1.0, 2.0, 3.0}, {4.0, 5.0, 6.0});
    drawLine(draw, {7.0, 8.0, 9.0}, {10.0, 11.0, 12.0});
    draw.subEntityTraits().setColor(5);
    drawLine(draw, {0.0, 0.0, 0.0}, {0.0, 0.0, 1.0});
  });
  RecordingDraw draw(topView());
  draw.draw(drawable);
  ASSERT_EQ(draw.lines().size(), 3u);
  EXPECT_EQ(draw.lines()[0].color, 1);
  EXPECT_EQ(draw.lines()[0].from, OdGePoint3d(1.0, 2.0, 3.0));
  EXPECT_EQ(draw.lines()[0].to, OdGePoint3d(4.0, 5.0, 6.0));
  EXPECT_EQ(draw.lines()[1].color, 1);
  EXPECT_EQ(draw.lines()[1].from, OdGePoint3d(7.0, 8.0, 9.0));
  EXPECT_EQ(draw.lines()[2].color, 5);
  EXPECT_EQ(draw.lines()[2].to, OdGePoint3d(0.0, 0.0, 1.0));
}

TEST(RecordingDraw, KeepsTextsAsTheyWereAskedFor) {
  const TestDrawable drawable([](OdGiViewportDraw& draw) {
    draw.subEntityTraits().setColor(3);
    draw.geometry().text({1.0, 2.0, 3.0}, {0.0, 0.0, 1.0}, {1.0, 0.0, 0.0}, 2.5, 0.0, 0.0, OdString(L"T17"));
  });
  RecordingDraw draw(topView());
  draw.draw(drawable);
  ASSERT_EQ(draw.texts().size(), 1u);
  EXPECT_EQ(draw.texts()[0].color, 3);
  EXPECT_EQ(draw.texts()[0].position, OdGePoint3d(1.0, 2.0, 3.0));
  EXPECT_EQ(draw.texts()[0].normal, OdGeVector3d(0.0, 0.0, 1.0));
  EXPECT_EQ(draw.texts()[0].direction, OdGeVector3d(1.0, 0.0, 0.0));
  EXPECT_EQ(draw.texts()[0].height, 2.5);
  EXPECT_EQ(draw.texts()[0].text, OdString(L"T17"));
}

TEST(RecordingDraw, StartsEveryDrawableInColourSeven) {
  const TestDrawable red([](OdGiViewportDraw& draw) {
    draw.subEntityTraits().setColor(1);
    drawLine(draw, {0.0, 0.0, 0.0}, {1.0, 0.0, 0.0});
  });
  const TestDrawable plain([](OdGiViewportDraw& draw) { drawLine(draw, {0.0, 0.0, 0.0}, {0.0, 1.0, 0.0}); });
  RecordingDraw draw(topView());
  draw.draw(plain);
  draw.draw(red);
  draw.draw(plain);
  ASSERT_EQ(draw.lines().size(), 3u);
  EXPECT_EQ(draw.lines()[0].color, 7);
  EXPECT_EQ(draw.lines()[1].color, 1);
  EXPECT_EQ(draw.lines()[2].color, 7);
}

TEST(RecordingDraw, AsksForNoViewportDrawWhenTheWorldDrawWasEnough) {
  TestDrawable drawable([](OdGiViewportDraw& draw) { drawLine(draw, {0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}); });
  drawable.drawsTheSameInEveryView = true;
  RecordingDraw draw(topView());
  draw.draw(drawable);
  EXPECT_TRUE(draw.lines().empty());
}

TEST(RecordingDraw, CanBeTakenForTheViewThatItDrawsIn) {
  RecordingDraw draw(topView());
  EXPECT_EQ(draw.x(OdGsViewImpl::desc()), static_cast<OdRxObject*>(&draw));
}

TEST(RecordingDraw, GivesTheMatricesAndVectorsOfItsView) {
  ViewState front;
  front.position = {0.0, -10.0, 0.0};
  front.up = {0.0, 0.0, 1.0};
  const View view = viewOf(front);
  const RecordingDraw draw(view);
  EXPECT_EQ(draw.worldToEyeMatrix(), view.viewingMatrix());
  EXPECT_EQ(draw.worldToDeviceMatrix(), view.deviceMatrix());
  EXPECT_EQ(draw.viewDirection(), OdGeVector3d(0.0, -1.0, 0.0));
  EXPECT_EQ(draw.xAxis(), OdGeVector3d(1.0, 0.0, 0.0));
}

TEST(RecordingDraw, TellsTheDrawingUnitsOfOnePixel) { EXPECT_EQ(RecordingDraw(topView()).pixelSize(), 0.125); }

TEST(RecordingDraw, HalvesThePixelSizeWithTheField) {
  ViewState nearer;
  nearer.width = 50.0;
  nearer.height = 37.5;
  EXPECT_EQ(RecordingDraw(viewOf(nearer)).pixelSize(), 0.0625);
}

TEST(RecordingDraw, GivesAPositivePixelSizeFromEverySide) {
  // The inverse of the device matrix is worked out in doubles; the field stays the same.
  constexpr double rounding = 1e-12;
  for (const OdGePoint3d& eye : {OdGePoint3d{0.0, 0.0, -5.0}, OdGePoint3d{7.0, 0.0, 0.0}, OdGePoint3d{0.0, 9.0, 0.0},
                                 OdGePoint3d{1.0, 2.0, 3.0}, OdGePoint3d{-4.0, 1.0, -2.0}}) {
    ViewState state;
    state.position = eye;
    state.up = eye.y == 9.0 ? OdGeVector3d{0.0, 0.0, 1.0} : OdGeVector3d{0.0, 1.0, 0.0};
    EXPECT_NEAR(RecordingDraw(viewOf(state)).pixelSize(), 0.125, rounding);
  }
}
