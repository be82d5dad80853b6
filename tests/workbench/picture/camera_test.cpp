#include "workbench/picture/camera.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>

namespace tiepoint::workbench::picture {
namespace {

constexpr double rounding = 1e-12;

/// A hall of 20 x 10 x 4 around (100, 200, 2).
const std::vector<OdGePoint3d> hall{{90, 195, 0}, {110, 205, 4}, {90, 205, 0}, {110, 195, 4}};

ViewState cameraFrom(Direction direction, const std::vector<OdGePoint3d>& places = hall) {
  return cameraOn(places, looksFrom(direction, places), 240, 140, 20.0);
}

View viewOf(const ViewState& state) {
  View view;
  view.setState(state);
  return view;
}

TEST(Camera, FromAboveFitsTheLengthAndTheWidth) {
  const ViewState state = cameraFrom(Direction::top);
  // 20 units on 200 pixels, 10 on 100: a tenth of a unit for a pixel both ways.
  EXPECT_NEAR(state.width, 24.0, rounding);
  EXPECT_NEAR(state.height, 14.0, rounding);
  EXPECT_NEAR(state.target.x, 100.0, rounding);
  EXPECT_NEAR(state.target.y, 200.0, rounding);
  EXPECT_NEAR(state.target.z, 2.0, rounding);
  EXPECT_EQ(state.pixelWidth, 240);
  EXPECT_EQ(state.pixelHeight, 140);
  const View view = viewOf(state);
  EXPECT_EQ(view.direction(), OdGeVector3d(0, 0, 1));
  EXPECT_EQ(view.xAxis(), OdGeVector3d(1, 0, 0));
}

TEST(Camera, FromTheFrontHasXToTheRightAndZUp) {
  const ViewState state = cameraFrom(Direction::front);
  EXPECT_NEAR(state.width, 24.0, rounding);
  const View view = viewOf(state);
  EXPECT_EQ(view.direction(), OdGeVector3d(0, -1, 0));
  EXPECT_EQ(view.xAxis(), OdGeVector3d(1, 0, 0));
}

TEST(Camera, FromTheSideHasYToTheRightAndZUp) {
  const ViewState state = cameraFrom(Direction::side);
  // 10 units on 200 pixels, 4 on 100: the length decides.
  EXPECT_NEAR(state.width, 12.0, rounding);
  EXPECT_NEAR(state.height, 7.0, rounding);
  const View view = viewOf(state);
  EXPECT_EQ(view.direction(), OdGeVector3d(1, 0, 0));
  EXPECT_EQ(view.xAxis(), OdGeVector3d(0, 1, 0));
}

TEST(Camera, IsometricallyShowsAllAxesAtOneLength) {
  const OdGeMatrix3d toView = viewOf(cameraFrom(Direction::iso)).viewingMatrix();
  for (int axis = 0; axis < 3; ++axis) {
    EXPECT_NEAR(std::hypot(toView(0, axis), toView(1, axis)), std::sqrt(2.0 / 3.0), rounding);
  }
  // X and y both go to the right, z up.
  EXPECT_GT(toView(0, 0), 0.0);
  EXPECT_GT(toView(0, 1), 0.0);
  EXPECT_NEAR(toView(0, 2), 0.0, rounding);
  EXPECT_GT(toView(1, 2), 0.0);
}

TEST(Camera, FittedLooksAcrossTheWidestSpread) {
  // A wall that stands on the line y = x: longest along (1, 1, 0), then along z, flat across.
  const std::vector<OdGePoint3d> wall{{0, 0, 0}, {30, 30, 0}, {0, 0, 8}, {30, 30, 8}};
  const View view = viewOf(cameraFrom(Direction::fit, wall));
  const double half = std::sqrt(0.5);
  EXPECT_NEAR(std::abs(view.direction().x), half, 1e-9);
  EXPECT_NEAR(view.direction().x, -view.direction().y, 1e-9);
  EXPECT_NEAR(view.xAxis().x, half, 1e-9);
  EXPECT_NEAR(view.xAxis().y, half, 1e-9);
}

TEST(Camera, FittedLooksDownOnASinglePlace) {
  const View view = viewOf(cameraFrom(Direction::fit, {{7, 8, 9}, {7, 8, 9}}));
  EXPECT_EQ(view.direction(), OdGeVector3d(0, 0, 1));
  EXPECT_EQ(view.xAxis(), OdGeVector3d(1, 0, 0));
}

TEST(Camera, ShowsASinglePlaceInAFieldOfAboutOneUnit) {
  const ViewState state = cameraFrom(Direction::top, {{7, 8, 9}});
  EXPECT_NEAR(state.width, 1.2, rounding);
  EXPECT_NEAR(state.target.x, 7.0, rounding);
  EXPECT_NEAR(state.target.y, 8.0, rounding);
}

TEST(Camera, ShowsPlacesOnALine) {
  const ViewState state = cameraFrom(Direction::top, {{0, 0, 0}, {0, 10, 0}});
  EXPECT_NEAR(state.height, 14.0, rounding);
  for (const Direction direction : {Direction::front, Direction::side, Direction::iso, Direction::fit}) {
    EXPECT_NO_THROW(viewOf(cameraFrom(direction, {{0, 0, 0}, {0, 0, 10}})));
    EXPECT_NO_THROW(viewOf(cameraFrom(direction, {{1, 1, 1}, {4, 4, 4}, {9, 9, 9}})));
  }
}

TEST(Camera, ProjectsThePlacesOntoThePage) {
  const View view = viewOf(cameraFrom(Direction::top));
  const Projection projection(view, {10, 50, 250, 190});
  const PagePoint lowerLeft = projection.onPage({90, 195, 0});
  const PagePoint upperRight = projection.onPage({110, 205, 4});
  EXPECT_NEAR(lowerLeft.x, 30.0, 1e-9);
  EXPECT_NEAR(lowerLeft.y, 170.0, 1e-9);
  EXPECT_NEAR(upperRight.x, 230.0, 1e-9);
  EXPECT_NEAR(upperRight.y, 70.0, 1e-9);
}

TEST(Camera, KnowsAPlaceThatCannotBeShown) {
  EXPECT_TRUE(canBeShown({1, 2, 3}));
  EXPECT_TRUE(canBeShown({-1e100, 1e100, 1e-310}));
  EXPECT_FALSE(canBeShown({1, std::nan(""), 3}));
  EXPECT_FALSE(canBeShown({1, 2, std::numeric_limits<double>::infinity()}));
  EXPECT_FALSE(canBeShown({-2e100, 2, 3}));
}

TEST(Camera, ShowsPlacesThatNoLengthTellsApartAsASingleOne) {
  EXPECT_NEAR(cameraFrom(Direction::top, {{0, 0, 0}, {3e-310, 1e-310, 0}}).width, 1.2, rounding);
}

RC_GTEST_PROP(Camera, KeepsAllPlacesOutOfTheMargin, ()) {
  const double far = *rc::gen::element(0.0, 1e3, 4.5e6);
  const auto coordinate = [&] { return far + *rc::gen::inRange(-1000, 1001) * 0.01; };
  std::vector<OdGePoint3d> places;
  const int count = *rc::gen::inRange(1, 8);
  places.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) places.push_back({coordinate(), coordinate(), coordinate()});
  const auto direction =
      *rc::gen::element(Direction::top, Direction::front, Direction::side, Direction::iso, Direction::fit);
  const Projection projection(viewOf(cameraFrom(direction, places)), {0, 0, 240, 140});
  for (const OdGePoint3d& place : places) {
    const PagePoint point = projection.onPage(place);
    RC_ASSERT(contains(Box{20, 20, 220, 120}.grownBy(0.01), point));
  }
}

}  // namespace
}  // namespace tiepoint::workbench::picture
