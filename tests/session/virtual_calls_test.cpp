// What a session asks of itself through its virtual table: a class derived from it sees it.
#include <gtest/gtest.h>

#include "support/session_builder.h"

namespace {

using namespace ZOR::reg;
using namespace tiepoint::testing;
using Ids = std::set<std::uint64_t>;

class DerivedRegistrator : public MultiRegistrator {
 public:
  int zooms = 0;
  GroupIdSet shownAtZoom;
  int exclusions = 0;
  GroupIdSet excluded;
  const RefPointIdSet* excludedPoints = nullptr;
  const GroupIdSet* inactiveGroups = nullptr;
  const RefPointIdSet* inactivePoints = nullptr;

  void zoomToAll() override { ++zooms; }
  void excludeGroups(const GroupIdSet& groups, RefPointIdSet& pointsOut, GroupIdSet& groupsOut,
                     RefPointIdSet& inactiveOut) override {
    ++exclusions;
    excluded = groups;
    excludedPoints = &pointsOut;
    inactiveGroups = &groupsOut;
    inactivePoints = &inactiveOut;
  }
};

class VirtualCalls : public ::testing::Test {
 protected:
  VirtualCalls() {
    for (const char* name : {"A", "B"}) host.document().storeGroup(name, triangle("T1", "T2", "T3"));
    for (const char* name : {"C", "D"}) host.document().storeGroup(name, triangle("U1", "U2", "U3"));
    std::map<GroupId, std::string> available;
    session.getAvailableGroups(available);
  }

  bool add(const GroupIdSet& groups) {
    std::list<RefPoint> added;
    return session.addGroups(groups, added, out.inactiveGroups, out.inactivePoints);
  }

  SessionHost host;
  DerivedRegistrator session;
  Outputs out;
};

TEST_F(VirtualCalls, TheFirstGroupsAreZoomedToByTheDerivedClass) {
  const tiepoint::workbench::ViewState before = host.document().view().state();
  ASSERT_TRUE(add({0}));
  EXPECT_EQ(session.zooms, 1);
  EXPECT_EQ(host.document().view().state().target, before.target);
  EXPECT_EQ(host.document().view().state().width, before.width);
}

TEST_F(VirtualCalls, FurtherGroupsAreNotZoomedTo) {
  ASSERT_TRUE(add({0}));
  ASSERT_TRUE(add({1}));
  EXPECT_FALSE(add({0, 1}));
  EXPECT_EQ(session.zooms, 1);
}

TEST_F(VirtualCalls, KeepingAClusterHandsTheOthersAndItsOutputsToTheDerivedClass) {
  ASSERT_TRUE(add({0, 1, 2, 3}));
  std::map<RefPointId, double> discrepancies;
  ASSERT_FALSE(session.registerPairwise(discrepancies));
  session.keepGroupCluster(1, out.points, out.inactiveGroups, out.inactivePoints);
  EXPECT_EQ(session.exclusions, 1);
  EXPECT_EQ(session.excluded, (Ids{0, 1}));
  EXPECT_EQ(session.excludedPoints, &out.points);
  EXPECT_EQ(session.inactiveGroups, &out.inactiveGroups);
  EXPECT_EQ(session.inactivePoints, &out.inactivePoints);
}

TEST_F(VirtualCalls, KeepingAClusterThatThereIsNotAsksForNothing) {
  ASSERT_TRUE(add({0, 1, 2, 3}));
  std::map<RefPointId, double> discrepancies;
  session.keepGroupCluster(0, out.points, out.inactiveGroups, out.inactivePoints);
  session.registerPairwise(discrepancies);
  session.keepGroupCluster(2, out.points, out.inactiveGroups, out.inactivePoints);
  EXPECT_EQ(session.exclusions, 0);
}

TEST_F(VirtualCalls, KeepingTheOnlyClusterExcludesNoGroupThoughSomeAreInNoCluster) {
  // E and F share two names with each other and one with the others: too few to be linked.
  host.document().storeGroup("E", triangle("T1", "V1", "V2"));
  host.document().storeGroup("F", triangle("T2", "V1", "V2"));
  std::map<GroupId, std::string> available;
  session.getAvailableGroups(available);
  ASSERT_TRUE(add({0, 1, 4, 5}));
  std::map<RefPointId, double> discrepancies;
  ASSERT_FALSE(session.registerPairwise(discrepancies));
  session.keepGroupCluster(0, out.points, out.inactiveGroups, out.inactivePoints);
  EXPECT_EQ(session.exclusions, 1);
  EXPECT_EQ(session.excluded, Ids{});
}

}  // namespace
