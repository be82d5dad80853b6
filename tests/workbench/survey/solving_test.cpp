#include "workbench/survey/solving.h"

#include <gmock/gmock.h>

#include "workbench/survey/drawn_stations.h"
#include "workbench/survey/refusal_of.h"

namespace tiepoint::workbench {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using ZOR::reg::GroupIdSet;

class Solving : public DrawnStations {
 protected:
  Solve solveIt(DrivenSession& session) { return solve(session, request, registration, findings, progress); }
  Solve solveAll() { return solveIt(begin()); }

  /// A and B hang together, as do C and D; one name is in A and C.
  void storeTwoClusters() {
    store({hallFrom("A", 0, {"T1", "T2", "T3", "T4", "X"}), hallFrom("B", 100, {"T1", "T2", "T3", "T4"}),
           hallFrom("C", 5, {"U1", "U2", "U3", "U4", "X"}), hallFrom("D", 7, {"U1", "U2", "U3", "U4"})});
  }
  void storeTwo() { store({hallFrom("A", 0, {"T1", "T2", "T3", "T4"}), hallFrom("B", 100, {"T1", "T2", "T3", "T4"})}); }

  RegistrationRequest request;
  Registration registration;
  Findings findings;
  ToldProgress progress;
};

TEST_F(Solving, GroupsThatHangTogetherAreRegistered) {
  storeTwo();
  DrivenSession& session = begin();
  EXPECT_EQ(solveIt(session), Solve::registered);
  EXPECT_THAT(session.state().registeredGroups, ElementsAre(0, 1));
  EXPECT_EQ(registration.keptCluster, std::nullopt);
  EXPECT_FALSE(registration.iterations);
  EXPECT_THAT(findings.all(), IsEmpty());
}

TEST_F(Solving, GroupsThatDontHangTogetherAreNot) {
  storeTwoClusters();
  DrivenSession& session = begin();
  EXPECT_EQ(solveIt(session), Solve::notConnected);
  EXPECT_EQ(session.clusters().size(), 2u);
  EXPECT_THAT(findings.all(), IsEmpty());
}

TEST_F(Solving, OneGroupAloneHasNothingToJoin) {
  store({hallFrom("A", 0, {"T1", "T2", "T3", "T4"})});
  EXPECT_EQ(solveAll(), Solve::notConnected);
  request.method = RegistrationMethod::iterative;
  EXPECT_EQ(solveAll(), Solve::notConnected);
}

TEST_F(Solving, AClusterCanBeKept) {
  storeTwoClusters();
  request.keepCluster = 1;
  DrivenSession& session = begin();
  EXPECT_EQ(solveIt(session), Solve::registered);
  EXPECT_EQ(registration.keptCluster, 1u);
  EXPECT_THAT(session.state().registeredGroups, ElementsAre(2, 3));
  ASSERT_EQ(findings.all().size(), 1u);
  EXPECT_EQ(findings.all()[0].kind, FindingKind::clusterKept);
  EXPECT_EQ(findings.all()[0].count, 1u);
  EXPECT_THAT(findings.all()[0].groups, ElementsAre("A", "B"));
}

TEST_F(Solving, GroupsOutsideEveryClusterAreLeftOutWhenOneIsKept) {
  // Each of the two shares three names with others, but no three of them with any single one.
  store({hallFrom("A", 0, {"T1", "T2", "T3", "R", "S"}), hallFrom("B", 100, {"T1", "T2", "T3"}),
         hallFrom("first", 3, {"P", "Q", "R"}), hallFrom("second", 3, {"P", "Q", "S"})});
  request.keepCluster = 0;
  DrivenSession& session = begin();
  EXPECT_EQ(solveIt(session), Solve::registered);
  EXPECT_THAT(session.state().registeredGroups, ElementsAre(0, 1));
  ASSERT_EQ(findings.all().size(), 1u);
  EXPECT_THAT(findings.all()[0].groups, ElementsAre("first", "second"));
}

TEST_F(Solving, AClusterThatThereIsntIsRefused) {
  storeTwoClusters();
  request.keepCluster = 7;
  const Refusal refusal = refusalOf([&] { solveAll(); });
  EXPECT_EQ(refusal.kind, RefusalKind::noSuchCluster);
  EXPECT_EQ(refusal.field, Field::keepCluster);
  EXPECT_EQ(refusal.given, "7");
  EXPECT_EQ(refusal.count, 1u) << "the last";
  EXPECT_EQ(registration.keptCluster, std::nullopt);
}

TEST_F(Solving, WithoutClustersNoneIsKept) {
  store({hallFrom("A", 0, {"T1", "T2", "T3", "T4"})});
  request.keepCluster = 0;
  const Refusal refusal = refusalOf([&] { solveAll(); });
  EXPECT_EQ(refusal.kind, RefusalKind::noClusters);
  EXPECT_EQ(refusal.given, "0");
}

TEST_F(Solving, AClusterThatNeedntBeKeptIsFound) {
  storeTwo();
  request.keepCluster = 5;
  EXPECT_EQ(solveAll(), Solve::registered);
  EXPECT_EQ(registration.keptCluster, std::nullopt);
  ASSERT_EQ(findings.all().size(), 1u);
  EXPECT_EQ(findings.all()[0].kind, FindingKind::clusterNotNeeded);
}

TEST_F(Solving, SeveralBasesStayWithTheirCluster) {
  storeTwoClusters();
  request.base = {"A", "B"};
  request.keepCluster = 0;
  store({hallFrom("third", 50, {"T1", "T2", "T3", "T4"})});
  DrivenSession& session = begin();
  session.setBase({0, 1});
  EXPECT_EQ(solveIt(session), Solve::registered);
  EXPECT_THAT(pointsInUse(session.state()), testing::Contains("B:T1"));
  EXPECT_THAT(findings.all()[0].groups, ElementsAre("C", "D"));
}

/// The base A shares too little once two of its points are out; B and C share four.
class SolvingWithALostBase : public Solving {
 protected:
  SolvingWithALostBase() {
    storeTwo();
    store({hallFrom("C", 50, {"T1", "T2", "T3", "T4"})});
    request.base = {"A"};
  }
  DrivenSession& beginWithoutBase() {
    DrivenSession& session = begin();
    session.excludePoints({0, 1});
    session.setBase({0});
    return session;
  }
};

TEST_F(SolvingWithALostBase, SaysSoAndSolvesNothing) {
  for (const RegistrationMethod method : {RegistrationMethod::pairwise, RegistrationMethod::iterative}) {
    request.method = method;
    DrivenSession& session = beginWithoutBase();
    EXPECT_EQ(solveIt(session), Solve::baseNotShared);
    EXPECT_THAT(session.state().registeredGroups, IsEmpty());
    EXPECT_THAT(progress.stages, IsEmpty());
  }
}

TEST_F(SolvingWithALostBase, IsFineWhereNoneWasAskedFor) {
  request.base.clear();
  EXPECT_EQ(solveIt(beginWithoutBase()), Solve::registered);
}

TEST_F(Solving, ABaseOutsideTheKeptClusterIsLost) {
  storeTwoClusters();
  request.base = {"A"};
  request.keepCluster = 1;
  DrivenSession& session = begin();
  session.setBase({0});
  EXPECT_EQ(solveIt(session), Solve::baseNotShared);
  EXPECT_EQ(registration.keptCluster, 1u);
}

TEST_F(Solving, TheIterativeMethodLeavesItsCourseAndTheParts) {
  storeTwoClusters();
  request.method = RegistrationMethod::iterative;
  request.maxIterations = 3;
  EXPECT_EQ(solveAll(), Solve::registered);
  ASSERT_TRUE(registration.iterations);
  EXPECT_EQ(registration.iterations->limit, 3u);
  EXPECT_EQ(registration.links.components.size(), 2u);
}

TEST_F(Solving, TheIterativeMethodCanBeCancelled) {
  storeTwo();
  request.method = RegistrationMethod::iterative;
  DrivenSession& session = begin();
  ToldProgress cancelled(0);
  const Refusal refusal = refusalOf([&] { solve(session, request, registration, findings, cancelled); });
  EXPECT_EQ(refusal.kind, RefusalKind::cancelled);
  EXPECT_FALSE(registration.iterations);
}

/// A search for names stands behind the two stations; B's first target lies 0.5 beside its place.
class SolvingAfterNaming : public Solving {
 protected:
  SolvingAfterNaming() {
    StationPoints moved = hallFrom("B", 100, {"T1", "T2", "T3", "T4"});
    moved.points[0].position.y += 0.5;
    store({hallFrom("A", 0, {"T1", "T2", "T3", "T4"}), moved});
    naming = NamingReport();
    naming->steps.emplace_back();
    naming->limits.emplace().discrepancy = 1.0;
  }

  std::optional<NamingReport>& naming = registration.naming;
};

TEST_F(SolvingAfterNaming, ARefusedNamingIsntSolved) {
  naming->isRefused = true;
  DrivenSession& session = begin();
  EXPECT_EQ(solveIt(session), Solve::notNamed);
  EXPECT_THAT(session.state().registeredGroups, IsEmpty());
}

TEST_F(SolvingAfterNaming, ADiscrepancyAboveTheLimitRefusesTheNaming) {
  EXPECT_EQ(solveAll(), Solve::registered) << "all are below 1";
  EXPECT_FALSE(naming->isRefused);
  naming->limits->discrepancy = 0.1;
  EXPECT_EQ(solveAll(), Solve::notNamed);
  EXPECT_TRUE(naming->isRefused);
  ASSERT_EQ(naming->reasons.size(), 1u);
  EXPECT_EQ(naming->reasons[0].kind, FindingKind::solveAboveLimit);
  EXPECT_EQ(naming->reasons[0].limit, 0.1);
  EXPECT_GT(naming->reasons[0].value, 0.1);
}

TEST_F(SolvingAfterNaming, WeakLinksAreWarnedOfAndNothingElse) {
  Finding weak{FindingKind::weakLink, Severity::note};
  weak.groups = {"B"};
  naming->reasons = {Finding{FindingKind::stationAlone, Severity::note}, weak};
  EXPECT_EQ(solveAll(), Solve::registered);
  ASSERT_EQ(findings.all().size(), 1u);
  EXPECT_EQ(findings.all()[0].kind, FindingKind::weakLink);
  EXPECT_EQ(findings.all()[0].severity, Severity::warning);
  EXPECT_THAT(findings.all()[0].groups, ElementsAre("B"));
  EXPECT_EQ(naming->reasons[1].severity, Severity::note) << "the report keeps its own";
}

TEST_F(SolvingAfterNaming, WeakLinksOfARefusedNamingAreNotWarnedOf) {
  naming->reasons = {Finding{FindingKind::weakLink, Severity::note}};
  naming->limits->discrepancy = 0.1;
  EXPECT_EQ(solveAll(), Solve::notNamed);
  EXPECT_THAT(findings.all(), IsEmpty());
}

}  // namespace
}  // namespace tiepoint::workbench
