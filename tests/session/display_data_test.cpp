#include "session/display_data.h"

#include <gtest/gtest.h>

namespace {

using namespace ZOR::reg;

RefPoint pointOf(GroupId group, RefPointId id, double x, CommonPointId name) {
  RefPoint point;
  point.groupId = group;
  point.id = id;
  point.commonId = name;
  point.position = {x, 0, 0};
  return point;
}

TEST(DisplayData, ColoursFollowTheOrderOfTheGroupsAndStartAgain) {
  const std::vector<std::uint8_t> colors{1, 2, 3};
  RefPointList points;
  for (const GroupId group : {40U, 10U, 30U, 20U}) points.push_back(pointOf(group, group, 0, 0));
  const DisplayGroups display = displayOf(points, {}, {}, colors);
  EXPECT_EQ(display.at(10).color, 1);
  EXPECT_EQ(display.at(20).color, 2);
  EXPECT_EQ(display.at(30).color, 3);
  EXPECT_EQ(display.at(40).color, 1);
}

TEST(DisplayData, ExcludedPointsAreDrawnAndMissingNamesAreEmpty) {
  RefPointList points{pointOf(0, 5, 1, 0), pointOf(0, 6, 2, 9)};
  points.front().included = false;
  const DisplayGroups display = displayOf(points, {{0, "A"}}, {{0, "T1"}}, {1});
  ASSERT_EQ(display.at(0).points.size(), 2u);
  EXPECT_EQ(display.at(0).name, OdString(L"A"));
  EXPECT_EQ(display.at(0).points.front().name, OdString(L"T1"));
  EXPECT_EQ(display.at(0).points.front().id, 5u);
  EXPECT_EQ(display.at(0).points.back().name, OdString());
}

TEST(DisplayData, AnIdThatStandsTwiceShowsItsFirstName) {
  const DisplayGroups display = displayOf({pointOf(0, 0, 1, 3)}, {}, {{3, "first"}, {3, "second"}}, {1});
  EXPECT_EQ(display.at(0).points.front().name, OdString(L"first"));
}

TEST(DisplayData, ANarrowNameIsReadAsWindows1251) {
  const DisplayGroups display = displayOf({pointOf(0, 0, 1, 0)}, {{0, "\xC0"}}, {{0, "\xFF"}}, {1});
  EXPECT_EQ(display.at(0).name, OdString(L"\u0410"));
  EXPECT_EQ(display.at(0).points.front().name, OdString(L"\u044F"));
}

TEST(DisplayData, MarkersMoveOnlyInGroupsThatHaveATransformation) {
  DisplayGroups display = displayOf({pointOf(0, 0, 1, 0), pointOf(1, 1, 1, 0)}, {}, {}, {1});
  RigidTransform shift;
  shift.translation = {10, 20, 30};
  moveMarkers({{1, shift}}, display);
  EXPECT_EQ(display.at(0).points.front().position, OdGePoint3d(1, 0, 0));
  EXPECT_EQ(display.at(1).points.front().position, OdGePoint3d(11, 20, 30));
}

TEST(DisplayData, RestrictionKeepsTheVisibleGroups) {
  const DisplayGroups display = displayOf({pointOf(0, 0, 1, 0), pointOf(1, 1, 1, 0)}, {}, {}, {1});
  const DisplayGroups shown = restrictedTo({1, 7}, display);
  ASSERT_EQ(shown.size(), 1u);
  EXPECT_EQ(shown.begin()->first, 1u);
}

}  // namespace
