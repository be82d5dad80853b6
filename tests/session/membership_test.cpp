#include <gtest/gtest.h>

#include "support/session_builder.h"
#include "workbench/view/recording_draw.h"

namespace {

using namespace ZOR::reg;
using namespace tiepoint::testing;

using Ids = std::set<std::uint64_t>;

/// What the markers of the session show in the active document.
tiepoint::workbench::RecordingDraw drawn(Session& session) {
  tiepoint::workbench::RecordingDraw draw(session.document().view());
  for (const auto& entry : session.document().drawables()) draw.draw(*entry.drawable);
  return draw;
}

TEST(Membership, NothingIsAddedForAnEmptySetOrBeforeAnythingWasRead) {
  Session session;
  std::list<RefPoint> added(1);
  Outputs out;
  EXPECT_FALSE(session->addGroups({}, added, out.inactiveGroups, out.inactivePoints));
  EXPECT_FALSE(session->addGroups({0}, added, out.inactiveGroups, out.inactivePoints));
  EXPECT_EQ(added.size(), 1u);
  EXPECT_EQ(out.inactiveGroups, Ids{993});
  EXPECT_EQ(out.inactivePoints, Ids{994});
}

TEST(Membership, ASetWhollyInsideTheSessionIsRefusedAndVisibilityStays) {
  Session session({{"A", triangle("T1", "T2", "T3")}, {"B", triangle("T1", "T2", "T3", 5)}});
  session->setGroupsVisible({1}, false);
  ASSERT_EQ(drawn(session).texts().size(), 3u);
  std::list<RefPoint> added(1);
  Outputs out;
  EXPECT_FALSE(session->addGroups({0, 1}, added, out.inactiveGroups, out.inactivePoints));
  EXPECT_EQ(added.size(), 1u);
  EXPECT_EQ(out.inactivePoints, Ids{994});
  EXPECT_EQ(drawn(session).texts().size(), 3u);
}

TEST(Membership, AFurtherGroupJoinsAndBothBecomeVisible) {
  Session session;
  session.document().storeGroup("A", triangle("T1", "T2", "T3"));
  session.document().storeGroup("B", triangle("T1", "T2", "T3", 5));
  std::map<GroupId, std::string> available;
  session->getAvailableGroups(available);
  std::list<RefPoint> added;
  Outputs out;
  ASSERT_TRUE(session->addGroups({0}, added, out.inactiveGroups, out.inactivePoints));
  EXPECT_EQ(out.inactiveGroups, Ids{0});
  EXPECT_EQ(out.inactivePoints, (Ids{0, 1, 2}));
  session->setGroupsVisible({0}, false);
  ASSERT_TRUE(session->addGroups({0, 1}, added, out.inactiveGroups, out.inactivePoints));
  ASSERT_EQ(added.size(), 3u);
  EXPECT_EQ(added.front().id, 3u);
  EXPECT_EQ(out.inactiveGroups, Ids{});
  EXPECT_EQ(out.inactivePoints, Ids{});
  EXPECT_EQ(drawn(session).texts().size(), 6u);
}

TEST(Membership, TheFirstGroupsBringTheViewToThem) {
  Session session({{"A", {{"T1", 0, 0, 0}, {"T2", 20, 10, 0}}}});
  EXPECT_DOUBLE_EQ(session.document().view().fieldWidth(), 22.0);
  EXPECT_DOUBLE_EQ(session.document().view().fieldHeight(), 11.0);
  EXPECT_EQ(session.document().view().target().x, 10.0);
  EXPECT_EQ(session.document().view().target().y, 5.0);
}

TEST(Membership, RemovingGroupsGivesTheirPointsAndSucceedsAlsoWithoutAMatch) {
  Session session({{"A", triangle("T1", "T2", "T3")}, {"B", triangle("T1", "T2", "T3", 5)}});
  Outputs out;
  EXPECT_FALSE(session->removeGroups({}, out.points, out.inactiveGroups, out.inactivePoints));
  EXPECT_EQ(out.points, Ids{992});
  EXPECT_TRUE(session->removeGroups({77}, out.points, out.inactiveGroups, out.inactivePoints));
  EXPECT_EQ(out.points, Ids{});
  EXPECT_TRUE(session->removeGroups({1}, out.points, out.inactiveGroups, out.inactivePoints));
  EXPECT_EQ(out.points, (Ids{3, 4, 5}));
  EXPECT_EQ(out.inactiveGroups, Ids{0});
  EXPECT_EQ(out.inactivePoints, (Ids{0, 1, 2}));
}

TEST(Membership, AGroupThatComesBackIsAsItWasRead) {
  Session session({{"A", triangle("T1", "T2", "T3")}, {"B", triangle("T1", "T2", "T3", 5)}});
  Outputs out;
  GroupId group = 0;
  session->renamePoint(3, "X", group, out.inactiveGroups, out.inactivePoints);
  session->setBaseGroups({1}, out.groups, out.points, out.inactiveGroups, out.inactivePoints);
  session->setPointsWeight({3}, 0.25, out.inactiveGroups, out.inactivePoints);
  session->excludePoints({4}, out.groups, out.inactiveGroups, out.inactivePoints);
  session->removeGroups({1}, out.points, out.inactiveGroups, out.inactivePoints);
  std::list<RefPoint> added;
  ASSERT_TRUE(session->addGroups({1}, added, out.inactiveGroups, out.inactivePoints));
  ASSERT_EQ(added.size(), 3u);
  EXPECT_EQ(added.front().commonId, 0u);
  EXPECT_EQ(added.front().weight, 1.0);
  for (const RefPoint& point : added) {
    EXPECT_TRUE(point.included);
    EXPECT_FALSE(point.inBase);
  }
  EXPECT_EQ(out.inactivePoints, Ids{});
}

TEST(Membership, RemovingPointsTellsWhichGroupsVanish) {
  Session session({{"A", triangle("T1", "T2", "T3")}, {"B", triangle("T1", "T2", "T3", 5)}});
  Outputs out;
  EXPECT_FALSE(session->removePoints({}, out.groups, out.inactiveGroups, out.inactivePoints));
  EXPECT_EQ(out.groups, Ids{991});
  ASSERT_TRUE(session->removePoints({0, 3, 4, 5}, out.groups, out.inactiveGroups, out.inactivePoints));
  EXPECT_EQ(out.groups, Ids{1});
  EXPECT_EQ(out.inactiveGroups, Ids{0});
  EXPECT_EQ(out.inactivePoints, (Ids{1, 2}));
  EXPECT_EQ(drawn(session).texts().size(), 2u);
}

TEST(Membership, TheThirtyFirstGroupHasTheColourOfTheFirst) {
  std::vector<std::pair<std::string, std::vector<Target>>> stations;
  for (int i = 0; i < 31; ++i) stations.push_back({"G" + std::to_string(i), {{"T", 1.0 * i, 0, 0}}});
  Session session(stations);
  const auto draw = drawn(session);
  ASSERT_EQ(draw.lines().size(), 93u);
  EXPECT_EQ(draw.lines()[0].color, 1);
  EXPECT_EQ(draw.lines()[3 * 29].color, 240);
  EXPECT_EQ(draw.lines()[3 * 30].color, 1);
}

}  // namespace
