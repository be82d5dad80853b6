#include <gmock/gmock.h>

#include "workbench/geometry/links.h"
#include "workbench/session_states.h"

namespace tiepoint::workbench {
namespace {

using testing::ElementsAre;

TEST(ActiveLinks, ThreeCommonNamesHangTogetherAndTwoDont) {
  StateBuilder b;
  b.group("A").points({"P1", "P2", "P3"}).group("B").points({"P1", "P2", "P3", "Q1", "Q2"});
  b.group("C").points({"Q1", "Q2", "R1"});
  const LinkReport report = activeLinks(b.state);
  ASSERT_EQ(report.components.size(), 2u);
  EXPECT_THAT(report.components[0].groups, ElementsAre(0, 1));
  EXPECT_THAT(report.components[1].groups, ElementsAre(2));
  EXPECT_FALSE(report.components[0].cluster);
  ASSERT_EQ(report.links.size(), 1u);
  EXPECT_THAT(report.links[0].names, ElementsAre("Q1", "Q2"));
}

TEST(ActiveLinks, JoinedGroupsCountAsOneWhateverTheirOrder) {
  StateBuilder b;
  // C hangs on A and B together only; D hangs on C.
  b.group("D").points({"R1", "R2", "R3"}).group("C").points({"P1", "Q1", "Q2", "R1", "R2", "R3"});
  b.group("A").points({"X1", "X2", "X3", "P1"}).group("B").points({"X1", "X2", "X3", "Q1", "Q2"});
  const LinkReport report = activeLinks(b.state);
  ASSERT_EQ(report.components.size(), 1u);
  EXPECT_THAT(report.components[0].groups, ElementsAre(0, 1, 2, 3));
  EXPECT_TRUE(report.links.empty());
}

TEST(ActiveLinks, SeveralBasesAreOneGroup) {
  StateBuilder b;
  b.group("A").points({"P1", "P2", "P3"}).group("B1", true).points({"P1", "P2"}).group("B2", true).points({"P3"});
  const LinkReport report = activeLinks(b.state);
  ASSERT_EQ(report.components.size(), 1u);
  EXPECT_THAT(report.components[0].groups, ElementsAre(0, 1, 2));
}

TEST(ActiveLinks, PointsOutOfUseDontCount) {
  StateBuilder b;
  b.group("A").points({"P1", "P2", "P3"}).group("B").points({"P1", "P2"}).point("P3").inactive();
  EXPECT_EQ(activeLinks(b.state).components.size(), 2u);
  b.allInactive();
  EXPECT_TRUE(activeLinks(b.state).components.empty());
}

}  // namespace
}  // namespace tiepoint::workbench
