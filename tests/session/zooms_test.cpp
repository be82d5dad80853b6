#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/session_builder.h"

namespace {

using namespace ZOR::reg;
using namespace tiepoint::testing;
using tiepoint::workbench::ViewState;

/// A view from above at another place, so that a test sees whether it has moved.
const ViewState somewhere{{100, 100, 50}, {100, 100, 0}, {0, 1, 0}, 40, 30, 800, 600};

void expectView(Session& session, const OdGePoint3d& position, const OdGePoint3d& target, double width, double height) {
  const ViewState& state = session.document().view().state();
  EXPECT_EQ(state.position, position);
  EXPECT_EQ(state.target, target);
  EXPECT_EQ(state.width, width);
  EXPECT_EQ(state.height, height);
}

/// For a view whose axes don't lie along the drawing's.
void expectSlantedView(Session& session, const OdGePoint3d& position, const OdGePoint3d& target, double width,
                       double height) {
  const ViewState& state = session.document().view().state();
  // The camera's matrices are rounded; its distances here are of the order of 100.
  constexpr double rounding = 1e-12;
  EXPECT_NEAR(state.position.x, position.x, rounding);
  EXPECT_NEAR(state.position.y, position.y, rounding);
  EXPECT_NEAR(state.position.z, position.z, rounding);
  EXPECT_NEAR(state.target.x, target.x, rounding);
  EXPECT_NEAR(state.target.y, target.y, rounding);
  EXPECT_NEAR(state.target.z, target.z, rounding);
  EXPECT_NEAR(state.width, width, rounding);
  EXPECT_NEAR(state.height, height, rounding);
}

void expectViewLeftAlone(Session& session) { expectView(session, {100, 100, 50}, {100, 100, 0}, 40, 30); }

TEST(Zooms, AGroupFillsTheViewWithATenthOfFreeSpace) {
  Session session({{"A", {{"T1", 0, 0, 7}, {"T2", 20, 10, 3}}}, {"B", {{"T1", 500, 500, 0}}}});
  session.document().view().setState(somewhere);
  const auto redraws = session.host.redraws;
  session->zoomToGroup(0);
  expectView(session, {10, 5, 50}, {10, 5, 49}, 22, 11);
  EXPECT_EQ(session.host.redraws, redraws + 1);
}

TEST(Zooms, AllVisibleGroupsAreLookedAtAndHiddenOnesAreNot) {
  Session session({{"A", {{"T1", 0, 0, 0}, {"T2", 20, 10, 0}}}, {"B", {{"T1", 500, 500, 0}}}});
  session.document().view().setState(somewhere);
  session->setGroupsVisible({1}, false);
  session->zoomToAll();
  expectView(session, {10, 5, 50}, {10, 5, 49}, 22, 11);
}

TEST(Zooms, ASingleSpotIsNoZoom) {
  Session session({{"A", {{"T1", 3, 4, 5}}}, {"B", {{"T1", 3, 4, 5}, {"T2", 3, 4, 9}}}});
  session.document().view().setState(somewhere);
  session->zoomToGroup(0);
  expectViewLeftAlone(session);
  // Two points one above the other are one spot when seen from above.
  session->zoomToGroup(1);
  expectViewLeftAlone(session);
}

TEST(Zooms, NothingToLookAtLeavesTheView) {
  Session session({{"A", {{"T1", 3, 4, 5}}}});
  session.document().view().setState(somewhere);
  session->zoomToGroup(9);
  session->setGroupsVisible({0}, false);
  session->zoomToAll();
  expectViewLeftAlone(session);
}

/// A view whose sides make the aspect 44 x (1 / 71) another number than 44 / 71.
const ViewState oddAspect{{100, 100, 50}, {100, 100, 0}, {0, 1, 0}, 44, 71, 800, 600};

TEST(Zooms, AnExtentWithoutWidthTakesTheViewsWidthTimesTheInverseOfItsHeight) {
  Session session({{"A", {{"T1", 5, 0, 0}, {"T2", 5, 13, 0}}}});
  session.document().view().setState(oddAspect);
  session->zoomToGroup(0);
  // 44 / 71 x 13 x 1.1 would be 8.861971830985917.
  expectView(session, {5, 6.5, 50}, {5, 6.5, 49}, 8.861971830985919, 14.3);
}

TEST(Zooms, AnExtentWithoutHeightTakesTheViewsHeightTimesTheInverseOfItsWidth) {
  Session session({{"A", {{"T1", 0, 5, 0}, {"T2", 13, 5, 0}}}});
  session.document().view().setState(oddAspect);
  session->zoomToGroup(0);
  // 71 / 44 x 13 x 1.1 would be 23.075000000000003.
  expectView(session, {6.5, 5, 50}, {6.5, 5, 49}, 14.3, 23.075000000000006);
}

TEST(Zooms, ARotatedViewMeasuresAlongItsOwnAxes) {
  // From the front: x to the right, z up, the viewer at y = -50.
  Session session({{"A", {{"T1", 0, 0, 0}, {"T2", 20, 7, 10}}}});
  session.document().view().setState({{0, -50, 0}, {0, 0, 0}, {0, 0, 1}, 40, 30, 800, 600});
  session->zoomToGroup(0);
  expectView(session, {10, -50, 5}, {10, -49, 5}, 22, 11);
  EXPECT_EQ(session.document().view().upVector(), OdGeVector3d(0, 0, 1));
}

TEST(Zooms, AViewTurnedByAQuarterSwapsWidthAndHeight) {
  // From above with x up on the screen.
  Session session({{"A", {{"T1", 0, 0, 0}, {"T2", 20, 10, 0}}}});
  session.document().view().setState({{100, 100, 50}, {100, 100, 0}, {1, 0, 0}, 40, 30, 800, 600});
  session->zoomToGroup(0);
  expectView(session, {10, 5, 50}, {10, 5, 49}, 11, 22);
}

TEST(Zooms, AViewTurnedByAnyAngleMeasuresAlongItsOwnAxes) {
  // From above, turned so that the screen's x runs along (0.8, 0.6) and its y along (-0.6, 0.8). The
  // point (10, 5) lies at (11, -2) there, seen from the first; the middle between them is (5, 2.5).
  Session session({{"A", {{"T1", 0, 0, 0}, {"T2", 10, 5, 0}}}});
  session.document().view().setState({{0, 0, 50}, {0, 0, 0}, {-0.6, 0.8, 0}, 40, 30, 800, 600});
  session->zoomToGroup(0);
  expectSlantedView(session, {5, 2.5, 50}, {5, 2.5, 49}, 12.1, 2.2);
}

TEST(Zooms, AViewFromAboveAtASlantKeepsItsDistanceFromTheViewPlane) {
  // The viewer looks along (0, 0.6, -0.8); the screen's y runs along (0, 0.8, 0.6). Of (4, 10, 5) the
  // screen shows (4, 11), 2 above the plane through the origin, towards the viewer.
  Session session({{"A", {{"T1", 0, 0, 0}, {"T2", 4, 10, 5}}}});
  session.document().view().setState({{0, -30, 40}, {0, 0, 0}, {0, 0, 1}, 40, 30, 800, 600});
  session->zoomToGroup(0);
  // The middle (2, 5.5) on the screen, in the plane through the eye: (2, 4.4, 3.3) + 50 x (0, -0.6, 0.8).
  expectSlantedView(session, {2, -25.6, 43.3}, {2, -25, 42.5}, 4.4, 12.1);
}

TEST(Zooms, OnlyTheActiveViewOfSeveralIsSet) {
  Session session({{"A", {{"T1", 0, 0, 0}, {"T2", 20, 10, 0}}}});
  tiepoint::workbench::View& first = session.document().view();
  first.setState(somewhere);
  tiepoint::workbench::View& second = session.document().transientViews().addView();
  second.setState(somewhere);
  session.document().transientViews().activate(second);
  session->zoomToAll();
  EXPECT_EQ(first.fieldWidth(), 40.0);
  EXPECT_NEAR(second.fieldWidth(), 22.0, 1e-12);
}

TEST(Zooms, WithoutAViewNothingHappens) {
  Session session({{"A", triangle("T1", "T2", "T3")}});
  session.document().transientViews().removeView(session.document().view());
  const auto redraws = session.host.redraws;
  session->zoomToAll();
  session->zoomToGroup(0);
  session->zoomToPoint(0);
  EXPECT_EQ(session.host.redraws, redraws);
}

TEST(Zooms, AddingTheFirstGroupsLooksAtThem) {
  Session session;
  session.host.document().storeGroup("A", {{"T1", 0, 0, 0}, {"T2", 20, 10, 0}});
  session.document().view().setState(somewhere);
  session.addAllGroups();
  expectView(session, {10, 5, 50}, {10, 5, 49}, 22, 11);
}

TEST(Zooms, APointInASlantedViewKeepsDirectionUpAndField) {
  Session session({{"A", {{"T1", 7, 8, 9}}}});
  session.document().view().setState({{0, -30, 40}, {0, 0, 0}, {0, 0, 1}, 40, 30, 800, 600});
  session->zoomToPoint(0);
  expectSlantedView(session, {7, -22, 49}, {7, 8, 9}, 40, 30);
  EXPECT_EQ(session.document().view().upVector(), OdGeVector3d(0, 0, 1));
}

TEST(Zooms, APointMovesTheEyeByTheSameDistanceAsTheTarget) {
  Session session({{"A", {{"T1", 3, 4, 5}}}});
  session.document().view().setState(somewhere);
  const auto redraws = session.host.redraws;
  session->zoomToPoint(0);
  expectView(session, {3, 4, 55}, {3, 4, 5}, 40, 30);
  EXPECT_EQ(session.host.redraws, redraws + 1);
}

TEST(Zooms, APointOfAHiddenGroupIsNotLookedAt) {
  Session session({{"A", {{"T1", 3, 4, 5}}}});
  session.document().view().setState(somewhere);
  session->setGroupsVisible({0}, false);
  session->zoomToPoint(0);
  expectViewLeftAlone(session);
}

TEST(Zooms, APointThatTheSessionDoesNotHoldMovesTheViewToTheOrigin) {
  Session session({{"A", {{"T1", 3, 4, 5}}}});
  session.document().view().setState(somewhere);
  session->zoomToPoint(77);
  expectView(session, {0, 0, 50}, {0, 0, 0}, 40, 30);
}

TEST(Zooms, RegisteredPointsAreLookedAtWhereTheyLieNow) {
  Session session({{"A", triangle("T1", "T2", "T3")}, {"B", triangle("T1", "T2", "T3", 500)}});
  Outputs out;
  session->setBaseGroups({0}, out.groups, out.points, out.inactiveGroups, out.inactivePoints);
  std::map<RefPointId, double> discrepancies;
  ASSERT_TRUE(session->registerPairwise(discrepancies));
  session.document().view().setState(somewhere);
  session->zoomToGroup(1);
  const ViewState& state = session.document().view().state();
  EXPECT_NEAR(state.target.x, 6.0, 1e-9);
  EXPECT_NEAR(state.target.y, 3.5, 1e-9);
  session->zoomToPoint(4);
  EXPECT_NEAR(state.target.x, 11.0, 1e-9);
  EXPECT_NEAR(state.target.y, 0.0, 1e-9);
}

TEST(Zooms, APointWithoutAPlaceIsPassedOver) {
  Session session({{"A", {{"T1", 0, 0, 0}, {"T2", 20, 10, 0}, {"T3", std::nan(""), 0, 0}}}});
  session.document().view().setState(somewhere);
  session->zoomToGroup(0);
  expectView(session, {10, 5, 50}, {10, 5, 49}, 22, 11);
}

TEST(Zooms, WithoutADocumentNothingHappens) {
  Session session({{"A", triangle("T1", "T2", "T3")}});
  session.host.closeDocument();
  const auto redraws = session.host.redraws;
  session->zoomToAll();
  session->zoomToGroup(0);
  session->zoomToPoint(0);
  EXPECT_EQ(session.host.redraws, redraws);
}

TEST(Zooms, APointWithoutAPlaceLeavesTheView) {
  Session session({{"A",
                    {{"T1", std::nan(""), 0, 0},
                     {"T2", 0, std::numeric_limits<double>::infinity(), 0},
                     {"T3", 0, 0, -std::numeric_limits<double>::infinity()}}}});
  session.document().view().setState(somewhere);
  const auto redraws = session.host.redraws;
  for (const RefPointId point : {0u, 1u, 2u}) session->zoomToPoint(point);
  expectViewLeftAlone(session);
  EXPECT_EQ(session.host.redraws, redraws);
}

TEST(Zooms, PlacesAtTheEndOfTheNumbersRangeLeaveTheView) {
  constexpr double largest = std::numeric_limits<double>::max();
  Session session({{"A", {{"T1", largest, 0, 0}, {"T2", -largest, 1, 0}}},
                   {"B", {{"T1", largest, 0, 0}, {"T2", largest / 2, 1, 0}}}});
  session.document().view().setState(somewhere);
  const auto redraws = session.host.redraws;
  // The width is beyond the range, and so is twice the middle.
  session->zoomToGroup(0);
  session->zoomToGroup(1);
  expectViewLeftAlone(session);
  EXPECT_EQ(session.host.redraws, redraws);
}

}  // namespace
