#include "workbench/geometry/links.h"

#include <gmock/gmock.h>

#include "workbench/session_states.h"

namespace tiepoint::workbench {
namespace {

using testing::ElementsAre;

TEST(DescribeLinks, TwoGroupsWithTwoCommonNamesAreTwoPartsThatLackOne) {
  StateBuilder b;
  b.group("A").points({"P1", "P2", "Q"}).group("B").points({"P2", "P1", "R"}).allInactive();
  const LinkReport report = describeLinks(b.state, {});
  ASSERT_EQ(report.components.size(), 2u);
  EXPECT_FALSE(report.components[0].cluster);
  EXPECT_THAT(report.components[0].groups, ElementsAre(0));
  EXPECT_THAT(report.components[1].groups, ElementsAre(1));
  ASSERT_EQ(report.links.size(), 1u);
  EXPECT_EQ(report.links[0].first, 0u);
  EXPECT_EQ(report.links[0].second, 1u);
  EXPECT_THAT(report.links[0].names, ElementsAre("P1", "P2"));
}

TEST(DescribeLinks, AClusterSharesTheNamesOfAllItsGroups) {
  StateBuilder b;
  b.group("A").points({"P1", "P2", "P3", "X"}).group("B").points({"P1", "P2", "P3", "Y"}).group("C").points({"X", "Y"});
  const LinkReport report = describeLinks(b.state, {{0, {0, 1}}});
  ASSERT_EQ(report.components.size(), 2u);
  EXPECT_EQ(report.components[0].cluster, 0u);
  EXPECT_THAT(report.components[0].groups, ElementsAre(0, 1));
  ASSERT_EQ(report.links.size(), 1u);
  EXPECT_THAT(report.links[0].names, ElementsAre("X", "Y"));
}

TEST(DescribeLinks, ThePairWithTheMostNamesComesFirst) {
  StateBuilder b;
  b.group("A").points({"P1"}).group("B").points({"P1", "Q1", "Q2"}).group("C").points({"Q1", "Q2"});
  const LinkReport report = describeLinks(b.state, {});
  ASSERT_EQ(report.links.size(), 2u);
  EXPECT_THAT(report.links[0].names, ElementsAre("Q1", "Q2"));
  EXPECT_THAT(report.links[1].names, ElementsAre("P1"));
}

TEST(DescribeLinks, PartsThatShareNothingMakeNoLink) {
  StateBuilder b;
  b.group("A").points({"P1"}).group("B").points({"Q1"});
  EXPECT_TRUE(describeLinks(b.state, {}).links.empty());
}

TEST(DescribeLinks, ExcludedPointsShareNothingAndAnExcludedGroupIsNoPart) {
  StateBuilder b;
  b.group("A").points({"P1", "P2"}).group("B").points({"P1", "P2"}).last().included = false;
  b.group("C").point("P1").last().included = false;
  const LinkReport report = describeLinks(b.state, {});
  ASSERT_EQ(report.components.size(), 2u);
  EXPECT_THAT(report.links.at(0).names, ElementsAre("P1"));
}

TEST(DescribeLinks, SeveralBaseGroupsAreOnePart) {
  StateBuilder b;
  b.group("Base1", true).points({"P1"}).group("A").points({"P1", "P2"}).group("Base2", true).points({"P2"});
  const LinkReport report = describeLinks(b.state, {});
  ASSERT_EQ(report.components.size(), 2u);
  EXPECT_THAT(report.components[0].groups, ElementsAre(0, 2));
  EXPECT_THAT(report.components[1].groups, ElementsAre(1));
  EXPECT_THAT(report.links.at(0).names, ElementsAre("P1", "P2"));
}

}  // namespace
}  // namespace tiepoint::workbench
