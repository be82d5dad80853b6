#include "workbench/naming/pair_links.h"

#include <gmock/gmock.h>

#include "workbench/naming/hall.h"
#include "workbench/session/workbench_session.h"
#include "workbench/values/refusal.h"

namespace tiepoint::workbench {
namespace {

using namespace ZOR::reg;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;

/// What a fit of exact measurements of some tens of metres may leave.
constexpr double rounding = 1e-9;

class Survey {
 public:
  explicit Survey(const std::vector<StationPoints>& stations) : session(stations) { session.driven->addAllGroups(); }

  PairLinks links(const NamingLimits& limits = usualLimits) {
    Progress progress;
    return links(limits, progress);
  }
  PairLinks links(const NamingLimits& limits, Progress& progress) {
    const SessionState start = session.state();
    const Stations stations = stationsOf(start);
    const CommonTriangles common(stations, std::max(limits.side, limits.reach()));
    return findPairLinks(session.workbench, settingsOf(start), start, stations, common, limits, progress);
  }

  WorkbenchSession session;
};

TEST(PairLinksOfASurvey, JoinTwoStationsByTrianglesThatBothHave) {
  Survey survey({stationSeeing("A", {0, 1, 2, 3, 4, 5}, 0.0), stationSeeing("B", {2, 3, 4, 5, 6, 7}, 0.7)});
  const PairLinks pairs = survey.links();
  ASSERT_EQ(pairs.links.size(), 1u);
  const PairLink& link = pairs.links[0];
  EXPECT_EQ(link.first, 0u);
  EXPECT_EQ(link.second, 1u);
  ASSERT_TRUE(link.triangles);
  EXPECT_THAT(link.triangles->groups, ElementsAre(0, 1));
  EXPECT_LE(link.triangles->tolerance, 0.02);
  EXPECT_THAT(link.shared, UnorderedElementsAre(Pair(2, 6), Pair(3, 7), Pair(4, 8), Pair(5, 9)));
  EXPECT_LT(link.largestDiscrepancy, rounding);
  EXPECT_EQ(link.chance, 0.0) << "four points are no chance";
}

TEST(PairLinksOfASurvey, TakeNamesThatSufficeAsTheyAre) {
  const Targets seen{0, 1, 2, 3};
  Survey survey({named(stationSeeing("A", seen, 0.0), seen), named(stationSeeing("B", seen, 0.7), seen)});
  const PairLinks pairs = survey.links();
  ASSERT_EQ(pairs.links.size(), 1u);
  EXPECT_FALSE(pairs.links[0].triangles);
  EXPECT_EQ(pairs.links[0].shared.size(), 4u);
}

TEST(PairLinksOfASurvey, FindTrianglesWhereNamesDoNotSuffice) {
  const Targets seen{0, 1, 2, 3, 4};
  Survey survey({named(stationSeeing("A", seen, 0.0), seen, 2), named(stationSeeing("B", seen, 0.7), seen, 2)});
  const PairLinks pairs = survey.links();
  ASSERT_EQ(pairs.links.size(), 1u);
  EXPECT_TRUE(pairs.links[0].triangles);
  EXPECT_EQ(pairs.links[0].shared.size(), 5u);
}

TEST(PairLinksOfASurvey, AreNoneWhereStationsHaveNothingInCommon) {
  Survey survey({stationSeeing("A", {0, 1, 2, 3}, 0.0), stationSeeing("B", {5, 6, 7, 8}, 0.7)});
  const PairLinks pairs = survey.links();
  EXPECT_THAT(pairs.links, IsEmpty());
  EXPECT_TRUE(pairs.aboveLimit.empty());
}

TEST(PairLinksOfASurvey, AreNoneWithAMirrorImage) {
  Survey survey({stationSeeing("A", {0, 1, 2, 3, 4, 5}, 0.0), mirrored(stationSeeing("B", {0, 1, 2, 3, 4, 5}, 0.7))});
  EXPECT_THAT(survey.links().links, IsEmpty());
}

TEST(PairLinksOfASurvey, AreSortedByTheNamesThatTheyShare) {
  Survey survey({stationSeeing("A", {0, 1, 2, 3, 4, 5}, 0.0), stationSeeing("B", {0, 1, 2, 3}, 0.7),
                 stationSeeing("C", {0, 1, 2, 3, 4, 5}, 1.9)});
  const PairLinks pairs = survey.links();
  ASSERT_EQ(pairs.links.size(), 3u);
  EXPECT_EQ(pairs.links[0].first, 0u);
  EXPECT_EQ(pairs.links[0].second, 2u);
  EXPECT_EQ(pairs.links[0].shared.size(), 6u);
  EXPECT_EQ(pairs.links[1].shared.size(), 4u);
  EXPECT_EQ(pairs.links[2].shared.size(), 4u);
  EXPECT_LE(pairs.links[1].largestDiscrepancy, pairs.links[2].largestDiscrepancy);
}

TEST(PairLinksOfASurvey, OfThreePointsSayHowManyChanceWouldMake) {
  Survey survey(
      {stationSeeing("A", {0, 1, 2, 3, 4, 5}, 0.0), noisy(stationSeeing("B", {0, 2, 5, 6, 7, 8, 9}, 0.7), 0.002)});
  const PairLinks pairs = survey.links();
  ASSERT_EQ(pairs.links.size(), 1u);
  EXPECT_THAT(pairs.links[0].shared, UnorderedElementsAre(Pair(0, 6), Pair(2, 7), Pair(5, 8)));
  EXPECT_GT(pairs.links[0].chance, 0.0);
  EXPECT_LT(pairs.links[0].chance, 1.0);
}

TEST(PairLinksOfASurvey, NameFurtherPointsThatFallOnOneSpot) {
  // The triangle of the three farthest agrees within the sides' tolerance, that of the others doesn't.
  const NamingLimits wide{0.05, 0.004, 0.1, 0.05};
  StationPoints station = stationSeeing("B", {0, 5, 6, 7, 3}, 0.7);
  station.points[4].position.z += 0.02;
  Survey survey({stationSeeing("A", {0, 5, 6, 7, 3}, 0.0), station});
  const PairLinks pairs = survey.links(wide);
  ASSERT_EQ(pairs.links.size(), 1u);
  EXPECT_EQ(pairs.links[0].shared.size(), 5u);
  EXPECT_GT(pairs.links[0].largestDiscrepancy, 0.001);
}

TEST(PairLinksOfASurvey, TellWhatWasAboveTheLimitOfStationsWithoutALink) {
  const NamingLimits strict{0.001, 0.5, 0.1, 0.02};
  const Targets seen{0, 1, 2, 3, 4};
  Survey survey({stationSeeing("A", seen, 0.0), noisy(stationSeeing("B", seen, 0.7), 0.05)});
  const PairLinks pairs = survey.links(strict);
  EXPECT_THAT(pairs.links, IsEmpty());
  ASSERT_EQ(pairs.aboveLimit.size(), 2u);
  EXPECT_GT(pairs.aboveLimit.at(0), 0.001);
  EXPECT_LT(pairs.aboveLimit.at(0), 0.2);
  EXPECT_EQ(pairs.aboveLimit.at(0), pairs.aboveLimit.at(1));
}

TEST(PairLinksOfASurvey, TellTheLeastOfWhatWasAboveTheLimit) {
  // The names are off by some millimetres, the triangles of all points by decimetres.
  const NamingLimits strict{0.0005, 0.5, 0.1, 0.02};
  const Targets seen{0, 3, 5, 6, 7};
  StationPoints off = noisy(stationSeeing("B", seen, 0.7), 0.003);
  off.points[3].position.z += 0.3;
  off.points[4].position.x += 0.3;
  Survey survey({named(stationSeeing("A", seen, 0.0), seen, 3), named(off, seen, 3)});
  const PairLinks pairs = survey.links(strict);
  ASSERT_THAT(pairs.links, IsEmpty());
  EXPECT_GT(pairs.aboveLimit.at(0), 0.0005);
  EXPECT_LT(pairs.aboveLimit.at(0), 0.01);
}

TEST(PairLinksOfASurvey, LeaveOutThePointsThatTheUserExcluded) {
  const Targets seen{0, 1, 2, 3, 4};
  Survey survey({stationSeeing("A", seen, 0.0), stationSeeing("B", seen, 0.7)});
  survey.session.driven->excludePoints({1});
  const PairLinks pairs = survey.links();
  ASSERT_EQ(pairs.links.size(), 1u);
  EXPECT_THAT(pairs.links[0].shared, UnorderedElementsAre(Pair(0, 5), Pair(2, 7), Pair(3, 8), Pair(4, 9)));
}

TEST(PairLinksOfASurvey, FindTheWayPastTrianglesThatRepeatInTheStation) {
  // Four targets of a square have many equal triangles, which void a matching by all of them.
  std::vector<OdGePoint3d> targets = hall;
  for (const OdGePoint3d& corner :
       {OdGePoint3d(60, 0, 1), OdGePoint3d(63, 0, 1), OdGePoint3d(63, 4, 1), OdGePoint3d(60, 4, 1)}) {
    targets.push_back(corner);
  }
  const Targets seen{0, 3, 5, 6, 7, 10, 11, 12, 13};
  Survey survey({stationSeeing("A", targets, seen, 0.0), stationSeeing("B", targets, seen, 0.7)});
  const PairLinks pairs = survey.links();
  ASSERT_EQ(pairs.links.size(), 1u);
  EXPECT_EQ(pairs.links[0].shared.size(), 9u);
  EXPECT_LT(pairs.links[0].largestDiscrepancy, rounding);
}

TEST(PairLinksOfASurvey, StandAloneWithOneStation) {
  Survey survey({stationSeeing("A", allTargets, 0.0)});
  EXPECT_THAT(survey.links().links, IsEmpty());
}

TEST(PairLinksOfASurvey, EndWhenTheWorkIsCancelled) {
  struct Cancelled : Progress {
    bool isCancelled() const override { return true; }
  } cancelled;
  Survey survey({stationSeeing("A", allTargets, 0.0), stationSeeing("B", allTargets, 0.7)});
  try {
    survey.links(usualLimits, cancelled);
    FAIL();
  } catch (const Refused& refused) {
    EXPECT_EQ(refused.refusal().kind, RefusalKind::cancelled);
  }
}

}  // namespace
}  // namespace tiepoint::workbench
