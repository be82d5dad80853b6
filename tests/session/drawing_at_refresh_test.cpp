// A host may draw at once when it is told to refresh: what it draws is the content after the change.
#include <gtest/gtest.h>

#include <cmath>

#include "session/recorded_session.h"

namespace {

using namespace ZOR::reg;
using namespace tiepoint::testing;

/// Solved positions are rounded in their last digits; the targets here lie on whole numbers.
double rounded(double coordinate) { return std::round(coordinate * 1e6) / 1e6 + 0.0; }

class DrawingAtRefresh : public ::testing::Test {
 protected:
  DrawingAtRefresh() {
    session.add({0, 1});
    session.host.drawsAtRefresh = true;
  }

  /// The labels of the one refresh of `action`: name and place.
  template <class Action>
  Calls drawnBy(Action&& action) {
    session.host.draws.clear();
    action();
    EXPECT_EQ(session.host.draws.size(), 1u);
    Calls labels;
    for (const tiepoint::workbench::RecordingDraw& draw : session.host.draws) {
      for (const tiepoint::workbench::DrawnText& text : draw.texts()) {
        const OdGePoint3d& p = text.position;
        labels.push_back(text.text.narrow() + " " + spelled(OdGePoint3d(rounded(p.x), rounded(p.y), rounded(p.z))));
      }
    }
    return labels;
  }

  RecordedSession session{twoStations()};
  Results& out = session.out;
  const Calls ofA{"T1 (1 0 0)", "T2 (11 0 0)", "T3 (1 7 2)"};
  const Calls ofB{"T1 (6 0 0)", "T2 (16 0 0)", "T3 (6 7 2)"};
};

TEST_F(DrawingAtRefresh, RemovedGroupsAreGone) {
  EXPECT_EQ(drawnBy([&] { session->removeGroups({0}, out.points, out.inactiveGroups, out.inactivePoints); }), ofB);
}

TEST_F(DrawingAtRefresh, AddedGroupsAreThere) {
  session->removeGroups({1}, out.points, out.inactiveGroups, out.inactivePoints);
  EXPECT_EQ(drawnBy([&] { session.add({1}); }), ofA + ofB);
}

TEST_F(DrawingAtRefresh, RemovedPointsAreGone) {
  EXPECT_EQ(drawnBy([&] {
              session->removePoints({0, 4}, out.groups, out.inactiveGroups, out.inactivePoints);
            }),
            asked("T2 (11 0 0)", "T3 (1 7 2)", "T1 (6 0 0)", "T3 (6 7 2)"));
}

TEST_F(DrawingAtRefresh, ARenamedPointBearsItsNewName) {
  EXPECT_EQ(drawnBy([&] { session->renamePoint(1, "N", out.group, out.inactiveGroups, out.inactivePoints); }),
            asked("T1 (1 0 0)", "N (11 0 0)", "T3 (1 7 2)") + ofB);
}

TEST_F(DrawingAtRefresh, RegisteredPointsLieWhereTheyWereMovedTo) {
  EXPECT_EQ(drawnBy([&] { ASSERT_TRUE(session.solve()); }), ofA + ofA);
}

TEST_F(DrawingAtRefresh, IterativelyRegisteredPointsLieWhereTheyWereMovedTo) {
  session->setBaseGroups({0}, out.groups, out.points, out.inactiveGroups, out.inactivePoints);
  EXPECT_EQ(drawnBy([&] { ASSERT_TRUE(session->registerIterative(100, 1e-9, out.discrepancies)); }), ofA + ofA);
}

TEST_F(DrawingAtRefresh, ARenamedGroupJumpsBackToWhereItWasMeasured) {
  session.solve();
  EXPECT_EQ(drawnBy([&] { session->renameGroup(1, "new", out.points); }), ofA + ofB);
}

TEST_F(DrawingAtRefresh, ClearedResultsBringTheMeasuredPlacesBack) {
  session.solve();
  EXPECT_EQ(drawnBy([&] { session->clearResults(); }), ofA + ofB);
}

TEST_F(DrawingAtRefresh, HiddenGroupsAreGoneAndShownOnesAreThere) {
  EXPECT_EQ(drawnBy([&] { session->setGroupsVisible({0}, false); }), ofB);
  EXPECT_EQ(drawnBy([&] { session->setGroupsVisible({0}, true); }), ofA + ofB);
}

TEST_F(DrawingAtRefresh, MatchedPointsBearTheirNewNames) {
  session->renamePoint(3, "?", out.group, out.inactiveGroups, out.inactivePoints);
  session->renamePoint(4, "?", out.group, out.inactiveGroups, out.inactivePoints);
  session->renamePoint(5, "?", out.group, out.inactiveGroups, out.inactivePoints);
  EXPECT_EQ(drawnBy([&] {
              session->matchAllGroupsByTriangles(0.001, 0.1, out.names, out.inactiveGroups, out.inactivePoints);
            }),
            ofA + ofB);
}

}  // namespace
