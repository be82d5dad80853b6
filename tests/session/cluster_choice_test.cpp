#include <gtest/gtest.h>

#include "support/session_builder.h"

namespace {

using namespace ZOR::reg;
using namespace tiepoint::testing;

using Ids = std::set<std::uint64_t>;

Session twoIslands() {
  return Session({{"A", triangle("T1", "T2", "T3")},
                  {"B", triangle("T1", "T2", "T3", 5)},
                  {"C", triangle("U1", "U2", "U3")},
                  {"D", triangle("U1", "U2", "U3", 5)}});
}

TEST(ClusterChoice, ARefusedRegistrationTellsWhatHangsTogether) {
  Session session = twoIslands();
  std::map<RefPointId, double> discrepancies{{1, 1.0}};
  EXPECT_FALSE(session->registerPairwise(discrepancies));
  EXPECT_TRUE(discrepancies.empty());
  std::map<std::uint64_t, GroupIdSet> clusters{{9, {9}}};
  session->getGroupClusters(clusters);
  EXPECT_EQ(clusters, (std::map<std::uint64_t, GroupIdSet>{{0, {0, 1}}, {1, {2, 3}}}));
}

TEST(ClusterChoice, KeepingOneClusterExcludesTheGroupsOfTheOthers) {
  Session session = twoIslands();
  std::map<RefPointId, double> discrepancies;
  session->registerPairwise(discrepancies);
  Outputs out;
  session->keepGroupCluster(1, out.points, out.inactiveGroups, out.inactivePoints);
  EXPECT_EQ(out.points, (Ids{0, 1, 2, 3, 4, 5}));
  EXPECT_EQ(out.inactiveGroups, (Ids{0, 1}));
  EXPECT_EQ(out.inactivePoints, (Ids{0, 1, 2, 3, 4, 5}));
  EXPECT_TRUE(session->registerPairwise(discrepancies));
}

TEST(ClusterChoice, AnUnknownClusterLeavesTheOutputsAlone) {
  Session session = twoIslands();
  Outputs out;
  session->keepGroupCluster(0, out.points, out.inactiveGroups, out.inactivePoints);
  EXPECT_EQ(out.points, Ids{992});
  std::map<RefPointId, double> discrepancies;
  session->registerPairwise(discrepancies);
  session->keepGroupCluster(2, out.points, out.inactiveGroups, out.inactivePoints);
  EXPECT_EQ(out.points, Ids{992});
  EXPECT_EQ(out.inactivePoints, Ids{994});
}

TEST(ClusterChoice, ANewSessionHasNoClusters) {
  Session session;
  std::map<std::uint64_t, GroupIdSet> clusters{{9, {9}}};
  session->getGroupClusters(clusters);
  EXPECT_TRUE(clusters.empty());
}

}  // namespace
