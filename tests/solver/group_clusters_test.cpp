#include "solver/group_clusters.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <limits>
#include <numeric>
#include <random>

#include "solver/arbitrary.h"
#include "solver/builders.h"
#include "solver/plain_group_clusters.h"
#include "solver/solve_input.h"

namespace ZOR::reg {

inline bool operator==(const GroupMerge& a, const GroupMerge& b) {
  return a.survivor == b.survivor && a.absorbed == b.absorbed;
}
inline std::ostream& operator<<(std::ostream& out, const GroupMerge& merge) {
  return out << '(' << merge.survivor << ", " << merge.absorbed << ')';
}

}  // namespace ZOR::reg

namespace tiepoint::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using ZOR::reg::CommonPointIdSet;
using ZOR::reg::formOneCluster;
using ZOR::reg::GroupClusters;
using ZOR::reg::GroupIdSet;
using ZOR::reg::GroupMerge;
using ZOR::reg::GroupMerges;
using ZOR::reg::GroupNameSets;

/// The outputs start with something in them, which every run has to take out.
struct Found {
  explicit Found(const GroupNameSets& names) { ZOR::reg::findGroupClusters(names, clusters, mergeLists); }
  GroupClusters clusters{{77, {77}}};
  std::map<GroupId, GroupMerges> mergeLists{{77, {{77, 78}}}};
};

struct FoundPlainly {
  explicit FoundPlainly(const GroupNameSets& names) { findGroupClustersPlainly(names, clusters, mergeLists); }
  GroupClusters clusters;
  std::map<GroupId, GroupMerges> mergeLists;
};

bool agreesWithPlainScan(const GroupNameSets& names) {
  const Found found(names);
  const FoundPlainly plain(names);
  return found.clusters == plain.clusters && found.mergeLists == plain.mergeLists;
}

TEST(GroupClusters, AreNoneWithoutGroups) {
  const Found found((GroupNameSets()));
  EXPECT_THAT(found.clusters, IsEmpty());
  EXPECT_THAT(found.mergeLists, IsEmpty());
}

TEST(GroupClusters, AreNoneForOneGroupWhichIsNotReadyToRegister) {
  const GroupNameSets names{{5, {1, 2, 3, 4}}};
  const Found found(names);
  EXPECT_THAT(found.clusters, IsEmpty());
  EXPECT_THAT(found.mergeLists, IsEmpty());
  EXPECT_FALSE(formOneCluster(names, found.clusters));
}

TEST(GroupClusters, AreNoneForTwoGroupsWithTwoCommonNames) {
  const Found found({{0, {1, 2, 3}}, {1, {2, 3, 4}}});
  EXPECT_THAT(found.clusters, IsEmpty());
  EXPECT_THAT(found.mergeLists, IsEmpty());
}

TEST(GroupClusters, LinkTwoGroupsWithThreeCommonNames) {
  const GroupNameSets names{{3, {1, 2, 3}}, {8, {1, 2, 3, 4}}};
  const Found found(names);
  EXPECT_THAT(found.clusters, ElementsAre(Pair(0, GroupIdSet{3, 8})));
  EXPECT_THAT(found.mergeLists, ElementsAre(Pair(3, GroupMerges{{3, 8}})));
  EXPECT_TRUE(formOneCluster(names, found.clusters));
}

TEST(GroupClusters, LeaveOutAGroupThatSharesTwoNamesWithTheUnion) {
  // Groups 0 and 1 share 1, 2, 3; group 2 has 4 and 5 of group 1 and nothing of group 0.
  const GroupNameSets names{{0, {1, 2, 3}}, {1, {1, 2, 3, 4, 5}}, {2, {4, 5, 6}}};
  const Found found(names);
  EXPECT_THAT(found.clusters, ElementsAre(Pair(0, GroupIdSet{0, 1})));
  EXPECT_THAT(found.mergeLists, ElementsAre(Pair(0, GroupMerges{{0, 1}})));
  EXPECT_FALSE(formOneCluster(names, found.clusters));
}

TEST(GroupClusters, LinkAGroupThatSharesThreeNamesWithTheUnionAndWithNeitherGroupAlone) {
  // Group 2 has 4 and 5 of group 1 and 6 of group 0.
  const GroupNameSets names{{0, {1, 2, 3, 6}}, {1, {1, 2, 3, 4, 5}}, {2, {4, 5, 6}}};
  const Found found(names);
  EXPECT_THAT(found.clusters, ElementsAre(Pair(0, GroupIdSet{0, 1, 2})));
  EXPECT_THAT(found.mergeLists, ElementsAre(Pair(0, GroupMerges{{0, 1}, {0, 2}})));
  EXPECT_TRUE(formOneCluster(names, found.clusters));
}

TEST(GroupClusters, LinkTwoUnionsOfWhichTheSecondSurvivorIsAbsorbedLater) {
  const Found found({{0, {1, 2, 3, 10, 11}}, {1, {1, 2, 3, 12}}, {2, {4, 5, 6, 10}}, {3, {4, 5, 6, 11, 12}}});
  EXPECT_THAT(found.clusters, ElementsAre(Pair(0, GroupIdSet{0, 1, 2, 3})));
  EXPECT_THAT(found.mergeLists, ElementsAre(Pair(0, GroupMerges{{0, 1}, {2, 3}, {0, 2}})));
}

TEST(GroupClusters, FuseTheSmallestPairFirstHoweverManyNamesAnotherShares) {
  const Found found({{0, {1, 2, 3}}, {1, {1, 2, 3, 4, 5, 6, 7}}, {2, {1, 2, 3, 4, 5, 6, 7}}});
  EXPECT_THAT(found.mergeLists, ElementsAre(Pair(0, GroupMerges{{0, 1}, {0, 2}})));
}

TEST(GroupClusters, GoBackToASmallerGroupThatTheUnionLinksTo) {
  // Group 0 links to nothing until 2 and 3 are one; then it takes them in before 1 can link.
  const Found found({{0, {10, 11, 12}}, {1, {20, 21, 22}}, {2, {1, 2, 3, 10, 20}}, {3, {1, 2, 3, 11, 12, 21, 22}}});
  EXPECT_THAT(found.mergeLists, ElementsAre(Pair(0, GroupMerges{{2, 3}, {0, 2}, {0, 1}})));
}

TEST(GroupClusters, GoBackToALargeGroupTimeAndAgain) {
  // Group 0 shares two names with the first and one with the second of each pair after it.
  const Found found({{0, {1, 2, 3, 4, 5, 6, 7, 8, 9}},
                     {1, {1, 2, 50, 51, 52}},
                     {2, {3, 50, 51, 52}},
                     {3, {4, 5, 60, 61, 62}},
                     {4, {6, 60, 61, 62}},
                     {5, {7, 8, 70, 71, 72}},
                     {6, {9, 70, 71, 72}}});
  EXPECT_THAT(found.mergeLists, ElementsAre(Pair(0, GroupMerges{{1, 2}, {0, 1}, {3, 4}, {0, 3}, {5, 6}, {0, 5}})));
}

TEST(GroupClusters, AreNoneForGroupsWithoutNames) {
  const Found found({{0, {}}, {1, {}}, {2, {}}});
  EXPECT_THAT(found.clusters, IsEmpty());
  EXPECT_THAT(found.mergeLists, IsEmpty());
}

TEST(GroupClusters, LinkByNamesAndGroupsWhoseIdsAreFarApart) {
  const CommonPointId last = std::numeric_limits<CommonPointId>::max();
  for (const CommonPointId large : {last, last - 1, last / 2}) {
    const Found found({{7, {0, 5, large}}, {last, {0, 1, 5, large}}});
    EXPECT_THAT(found.mergeLists, ElementsAre(Pair(7, GroupMerges{{7, last}})));
  }
}

TEST(GroupClusters, AreNumberedInTheOrderOfTheirSmallestGroups) {
  const Found found({{4, {1, 2, 3}}, {6, {7, 8, 9}}, {9, {7, 8, 9}}, {11, {1, 2, 3}}, {12, {4, 5, 6}}});
  EXPECT_THAT(found.clusters, ElementsAre(Pair(0, GroupIdSet{4, 11}), Pair(1, GroupIdSet{6, 9})));
  EXPECT_THAT(found.mergeLists, ElementsAre(Pair(4, GroupMerges{{4, 11}}), Pair(6, GroupMerges{{6, 9}})));
}

TEST(GroupClusters, AreNotReadyWhenThereAreTwoThoughTheyHoldEveryGroup) {
  const GroupNameSets names{{0, {1, 2, 3}}, {1, {1, 2, 3}}, {2, {4, 5, 6}}, {3, {4, 5, 6}}};
  EXPECT_FALSE(formOneCluster(names, Found(names).clusters));
}

TEST(GroupClusters, AreNoneForASessionWithoutActivePoints) {
  RefPointList workingPoints;
  ZOR::reg::PointDiscrepancies pointDiscrepancies;
  ZOR::reg::prepareSolvePoints({leftOut(measured(1, 0, 0, {1, 0, 0}))}, workingPoints, pointDiscrepancies);
  const GroupNameSets names = ZOR::reg::collectGroupNames(workingPoints);
  EXPECT_THAT(names, IsEmpty());
  EXPECT_FALSE(formOneCluster(names, Found(names).clusters));
}

TEST(GroupNames, AreTheNamesOfEachGroupOnce) {
  EXPECT_THAT(ZOR::reg::collectGroupNames(
                  {measured(1, 4, 9, {}), measured(2, 2, 9, {}), measured(3, 4, 8, {}), measured(4, 4, 9, {})}),
              ElementsAre(Pair(2, CommonPointIdSet{9}), Pair(4, CommonPointIdSet{8, 9})));
}

// Laws: the same fusions in the same order as the scan that starts again.

GroupNameSets arbitraryNames(int largestGroupCount, CommonPointId nameCount, int largestSetSize) {
  GroupNameSets names;
  const int groupCount = arbitraryBetween(0, largestGroupCount);
  for (int g = 0; g < groupCount; ++g) {
    CommonPointIdSet& set = names[arbitraryBetween<GroupId>(0, 999)];
    const int size = arbitraryBetween(0, largestSetSize);
    for (int i = 0; i < size; ++i) set.insert(arbitraryBetween<CommonPointId>(0, nameCount - 1));
  }
  return names;
}

RC_GTEST_PROP(GroupClusters, AgreeWithThePlainScanOnSmallSets, ()) {
  RC_ASSERT(agreesWithPlainScan(arbitraryNames(14, 20, 6)));
}

RC_GTEST_PROP(GroupClusters, AgreeWithThePlainScanOnSparseSets, ()) {
  RC_ASSERT(agreesWithPlainScan(arbitraryNames(30, 60, 10)));
}

RC_GTEST_PROP(GroupClusters, AgreeWithThePlainScanOnDenseSets, ()) {
  RC_ASSERT(agreesWithPlainScan(arbitraryNames(12, 12, 12)));
}

/// Random tables by the thousand, most of them near the edge where groups link late: unions of
/// several groups, some of them large, meet small and large groups before and after them.
TEST(GroupClusters, AgreeWithThePlainScanOnThousandsOfTables) {
  std::mt19937 random(20240229);
  for (int round = 0; round < 4000; ++round) {
    const auto groupCount = 2 + random() % 24;
    const auto nameCount = 6 + random() % 60;
    const auto setSize = 1 + random() % 9;
    GroupNameSets names;
    for (std::size_t g = 0; g < groupCount; ++g) {
      CommonPointIdSet& set = names[g];
      const auto growth = random() % 12;
      const auto size = growth == 0 ? 10 * setSize : growth < 4 ? 3 * setSize : setSize;
      for (std::size_t i = 0; i < size; ++i) set.insert(random() % nameCount);
    }
    ASSERT_TRUE(agreesWithPlainScan(names)) << "round " << round;
  }
}

/// Link k of the chain shares one name with link k - 2 and two with link k - 1: links fuse only with
/// the union of the two before, once the first two share three.
GroupNameSets chainOfLateLinks(const std::vector<GroupId>& order) {
  GroupNameSets names;
  for (std::size_t k = 0; k < order.size(); ++k) {
    const CommonPointId own = 10 * k;
    names[order[k]] = {own, own + 1, own + 2, own + 3};
    if (k >= 1) names[order[k]].insert({own - 10, own - 9});
    if (k == 1) names[order[k]].insert(own - 7);
    if (k >= 2) names[order[k]].insert(own - 18);
  }
  return names;
}

std::vector<GroupId> ascendingIds(std::size_t count) {
  std::vector<GroupId> ids(count);
  std::iota(ids.begin(), ids.end(), GroupId{0});
  return ids;
}

TEST(GroupClusters, AgreeWithThePlainScanOnAnAscendingChain) {
  const GroupNameSets names = chainOfLateLinks(ascendingIds(40));
  EXPECT_TRUE(agreesWithPlainScan(names));
  EXPECT_TRUE(formOneCluster(names, Found(names).clusters));
}

TEST(GroupClusters, AgreeWithThePlainScanOnADescendingChainWhereEachGroupAbsorbsAllBefore) {
  std::vector<GroupId> ids = ascendingIds(40);
  std::reverse(ids.begin(), ids.end());
  const GroupNameSets names = chainOfLateLinks(ids);
  EXPECT_TRUE(agreesWithPlainScan(names));
  const Found found(names);
  EXPECT_EQ(found.mergeLists.at(0).front(), (GroupMerge{38, 39}));
  EXPECT_EQ(found.mergeLists.at(0).back(), (GroupMerge{0, 1}));
}

TEST(GroupClusters, AgreeWithThePlainScanOnShuffledChains) {
  std::mt19937 random(7);
  for (int round = 0; round < 50; ++round) {
    std::vector<GroupId> ids = ascendingIds(30);
    for (std::size_t i = ids.size() - 1; i > 0; --i) std::swap(ids[i], ids[random() % (i + 1)]);
    ASSERT_TRUE(agreesWithPlainScan(chainOfLateLinks(ids))) << "round " << round;
  }
}

TEST(GroupClusters, AgreeWithThePlainScanWhereAllGroupsShareAllNames) {
  GroupNameSets names;
  for (GroupId g = 0; g < 40; ++g) names[g] = {1, 2, 3, 4, 5};
  EXPECT_TRUE(agreesWithPlainScan(names));
}

TEST(GroupClusters, AgreeWithThePlainScanWhereAllGroupsShareTwoNamesAndPairsShareMore) {
  GroupNameSets names;
  for (GroupId g = 0; g < 40; ++g) names[g] = {1, 2, 100 + g / 2, 200 + g / 4, 300 + g};
  EXPECT_TRUE(agreesWithPlainScan(names));
}

}  // namespace
}  // namespace tiepoint::testing
