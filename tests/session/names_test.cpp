#include <gtest/gtest.h>

#include "support/session_builder.h"
#include "workbench/view/recording_draw.h"

namespace {

using namespace ZOR::reg;
using namespace tiepoint::testing;

using Ids = std::set<std::uint64_t>;
using Texts = std::vector<std::string>;

Session twoStations() { return Session({{"A", triangle("T1", "T2", "T3")}, {"B", triangle("T1", "T2", "T4", 5)}}); }

/// A rename with its outputs.
struct Rename {
  Rename(Session& session, RefPointId point, const std::string& name)
      : done(session->renamePoint(point, name, group, out.inactiveGroups, out.inactivePoints)) {}
  GroupId group = 990;
  Outputs out;
  bool done;
};

TEST(Names, AGroupKeepsItsOwnNameOnly) {
  Session session = twoStations();
  Outputs out;
  for (const char* refused : {"A", "B", "Lpt7", "a.b", "", "a:b"}) {
    EXPECT_FALSE(session->renameGroup(0, refused, out.points)) << refused;
    EXPECT_EQ(out.points, Ids{992}) << refused;
  }
  EXPECT_FALSE(session->renameGroup(5, "unknown", out.points));
  EXPECT_TRUE(session->renameGroup(0, "lpt", out.points));
  EXPECT_EQ(out.points, (Ids{0, 1, 2}));
  EXPECT_TRUE(session->renameGroup(1, "A", out.points));
  EXPECT_EQ(out.points, (Ids{3, 4, 5}));
}

TEST(Names, AGroupOutsideTheSessionIsRenamedWithoutPoints) {
  Session session = twoStations();
  Outputs out;
  session->removeGroups({1}, out.points, out.inactiveGroups, out.inactivePoints);
  EXPECT_TRUE(session->renameGroup(1, "C", out.points));
  EXPECT_EQ(out.points, Ids{});
}

TEST(Names, APointNameMayHoldASlashButNoBlankOrTab) {
  Session session = twoStations();
  for (const char* refused : {"", "T 9", "T\t9", " "}) {
    const Rename rename(session, 0, refused);
    EXPECT_FALSE(rename.done) << refused;
    EXPECT_EQ(rename.group, 990u) << refused;
    EXPECT_EQ(rename.out.inactivePoints, Ids{994}) << refused;
  }
  const Rename rename(session, 3, "T/9");
  EXPECT_TRUE(rename.done);
  EXPECT_EQ(rename.group, 1u);
}

TEST(Names, AGroupMayNotHaveTwoPointsOfOneName) {
  Session session = twoStations();
  const Rename taken(session, 1, "T1");
  EXPECT_FALSE(taken.done);
  EXPECT_EQ(taken.group, 0u);
  EXPECT_EQ(taken.out.inactivePoints, Ids{994});
  const Rename own(session, 1, "T2");
  EXPECT_FALSE(own.done);
  EXPECT_EQ(session.commonNames(), (Texts{"0:T1", "1:T2", "2:T3", "3:T4"}));
}

TEST(Names, AGroupMayHaveManyUnidentifiedPoints) {
  Session session = twoStations();
  EXPECT_TRUE(Rename(session, 0, "?").done);
  EXPECT_TRUE(Rename(session, 1, "?").done);
  EXPECT_TRUE(Rename(session, 1, "?").done);
  EXPECT_TRUE(session->hasUnnamedPoints());
}

TEST(Names, ANameOfAnotherGroupJoinsTheTwoAndTheOldNameVanishes) {
  Session session = twoStations();
  ASSERT_EQ(session.inactivePoints(), (Ids{0, 1, 2, 3, 4, 5}));
  const Rename rename(session, 5, "T3");
  EXPECT_TRUE(rename.done);
  EXPECT_EQ(rename.out.inactivePoints, Ids{});
  EXPECT_EQ(session.commonNames(), (Texts{"0:T1", "1:T2", "2:T3"}));
}

TEST(Names, ANameThatAnotherPointStillBearsStays) {
  Session session = twoStations();
  EXPECT_TRUE(Rename(session, 0, "X").done);
  EXPECT_EQ(session.commonNames(), (Texts{"0:T1", "1:T2", "2:T3", "3:T4", "4:X"}));
}

TEST(Names, ANewNameTakesTheSmallestFreeId) {
  Session session = twoStations();
  EXPECT_TRUE(Rename(session, 2, "T4").done);  // T3 with id 2 vanishes
  EXPECT_EQ(session.commonNames(), (Texts{"0:T1", "1:T2", "3:T4"}));
  EXPECT_TRUE(Rename(session, 0, "new").done);
  EXPECT_EQ(session.commonNames(), (Texts{"0:T1", "1:T2", "3:T4", "2:new"}));
}

TEST(Names, OnlyTheSessionsPointsKeepAName) {
  // The point of B outside the session goes on with id 0, which has lost its name; the next new
  // name takes that id over.
  Session session({{"A", {{"T1", 0, 0, 0}}}, {"B", {{"T1", 1, 0, 0}}}});
  Outputs out;
  session->removeGroups({1}, out.points, out.inactiveGroups, out.inactivePoints);
  EXPECT_TRUE(Rename(session, 0, "X").done);
  EXPECT_EQ(session.commonNames(), Texts{"1:X"});
  EXPECT_TRUE(Rename(session, 0, "Y").done);
  EXPECT_EQ(session.commonNames(), Texts{"0:Y"});
}

TEST(Names, APointThatTheSessionDoesNotHoldIsRefused) {
  Session session = twoStations();
  EXPECT_FALSE(Rename(session, 77, "X").done);
  EXPECT_EQ(session.commonNames(), (Texts{"0:T1", "1:T2", "2:T3", "3:T4"}));
}

TEST(Names, AfterASolveARenameShowsTheMarkersUnregistered) {
  Session session({{"A", triangle("T1", "T2", "T3")}, {"B", triangle("T1", "T2", "T3", 5)}});
  Outputs out;
  session->setBaseGroups({0}, out.groups, out.points, out.inactiveGroups, out.inactivePoints);
  std::map<RefPointId, double> discrepancies;
  ASSERT_TRUE(session->registerPairwise(discrepancies));
  const auto positionOfLast = [&] {
    tiepoint::workbench::RecordingDraw draw(session.document().view());
    draw.draw(*session.document().drawables().front().drawable);
    return draw.texts()[3].position;
  };
  EXPECT_NEAR(positionOfLast().x, 1.0, 1e-12);
  session->renameGroup(1, "C", out.points);
  EXPECT_EQ(positionOfLast(), OdGePoint3d(6.0, 0.0, 0.0));
}

}  // namespace
