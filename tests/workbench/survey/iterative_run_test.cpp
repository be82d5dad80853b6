#include "workbench/survey/iterative_run.h"

#include <gmock/gmock.h>

#include "workbench/survey/drawn_stations.h"
#include "workbench/survey/refusal_of.h"

namespace tiepoint::workbench {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class IterativeRuns : public DrawnStations {
 protected:
  IterativeRun run() { return runIterative(begin(), request, findings, progress); }
  void storeTwo() { store({hallFrom("A", 0, {"T1", "T2", "T3", "T4"}), hallFrom("B", 100, {"T1", "T2", "T3", "T4"})}); }
  std::vector<FindingKind> found() const {
    std::vector<FindingKind> kinds;
    for (const Finding& finding : findings.all()) kinds.push_back(finding.kind);
    return kinds;
  }

  RegistrationRequest request;
  Findings findings;
  ToldProgress progress;
};

TEST_F(IterativeRuns, TellHowTheLoopEnded) {
  storeTwo();
  request.maxIterations = 5000;
  request.convergence = 1e-6;
  const IterativeRun result = run();
  EXPECT_TRUE(result.registered);
  ASSERT_TRUE(result.course);
  EXPECT_TRUE(result.course->converged());
  EXPECT_EQ(result.course->limit, 5000u);
  EXPECT_EQ(result.course->criterion, 1e-6);
  EXPECT_THAT(result.links.components, IsEmpty());
  EXPECT_THAT(found(), IsEmpty());
}

TEST_F(IterativeRuns, TakeTheLimitsOfTheSessionWhereTheRequestHasNone) {
  storeTwo();
  workbench.profile().set(registrationSection, "MaxIterations", 7);
  const IterativeRun result = run();
  ASSERT_TRUE(result.course);
  EXPECT_EQ(result.course->limit, 7u);
  EXPECT_EQ(result.course->criterion, 0.001);
  request.convergence = 1000.0;
  EXPECT_EQ(run().course->limit, 7u) << "each for itself";
  EXPECT_EQ(run().course->criterion, 1000.0);
}

TEST_F(IterativeRuns, ThatTheirLimitEndedAreFound) {
  storeTwo();
  request.maxIterations = 1;
  const IterativeRun result = run();
  EXPECT_TRUE(result.registered);
  ASSERT_TRUE(result.course);
  EXPECT_FALSE(result.course->converged());
  ASSERT_THAT(found(), ElementsAre(FindingKind::notConverged));
  EXPECT_EQ(findings.all()[0].count, 1u);
  EXPECT_EQ(findings.all()[0].severity, Severity::warning);
}

TEST_F(IterativeRuns, OfPartsThatDontHangTogetherAreFoundAndGoOn) {
  store({hallFrom("A", 0, {"T1", "T2", "T3", "T4", "X"}), hallFrom("B", 100, {"T1", "T2", "T3", "T4"}),
         hallFrom("C", 5, {"U1", "U2", "U3", "U4", "X"}), hallFrom("D", 7, {"U1", "U2", "U3", "U4"})});
  request.convergence = 1000.0;
  const IterativeRun result = run();
  EXPECT_TRUE(result.registered);
  ASSERT_THAT(found(), ElementsAre(FindingKind::notConnected));
  EXPECT_THAT(findings.all()[0].components, ElementsAre(ElementsAre("A", "B"), ElementsAre("C", "D")));
  ASSERT_EQ(result.links.components.size(), 2u);
  ASSERT_EQ(result.links.links.size(), 1u);
  EXPECT_THAT(result.links.links[0].names, ElementsAre("X"));
}

TEST_F(IterativeRuns, NeedTwoGroups) {
  store({hallFrom("A", 0, {"T1", "T2", "T3", "T4"})});
  const IterativeRun result = run();
  EXPECT_FALSE(result.registered);
  EXPECT_FALSE(result.course);
  EXPECT_THAT(found(), IsEmpty());
  EXPECT_THAT(progress.stages, IsEmpty());
}

TEST_F(IterativeRuns, OfAProfileWithLimitsThatCantBeAreRefused) {
  storeTwo();
  workbench.profile().set(registrationSection, "MaxIterations", 0);
  const Refusal refusal = refusalOf([&] { run(); });
  EXPECT_EQ(refusal.kind, RefusalKind::profileLimits);
  EXPECT_EQ(refusal.count, 0u);
  EXPECT_EQ(refusal.value, 0.001);
  request.maxIterations = 5;
  EXPECT_TRUE(run().registered) << "the request's limit goes before the profile's";
}

TEST_F(IterativeRuns, ShowASignOfLifeWithoutANumberOfSteps) {
  storeTwo();
  run();
  EXPECT_THAT(progress.stages, ElementsAre(Stage::iterating));
  EXPECT_THAT(progress.steps, ElementsAre(std::pair(0u, 0u)));
  EXPECT_EQ(progress.open, 0);
}

TEST_F(IterativeRuns, CanBeCancelledBeforeTheLoop) {
  storeTwo();
  ToldProgress cancelled(0);
  DrivenSession& session = begin();
  EXPECT_EQ(refusalOf([&] { runIterative(session, request, findings, cancelled); }).kind, RefusalKind::cancelled);
  EXPECT_THAT(session.state().registeredGroups, IsEmpty());
  EXPECT_EQ(cancelled.open, 0);
}

/// A session whose report doesn't tell how the loop ended.
class SilentSession : public MirroredSession {
 public:
  using MirroredSession::MirroredSession;
  std::wstring getResultsReport() override { return L"<html></html>"; }
};

TEST_F(IterativeRuns, WhoseReportDoesNotTellTheirEndAreFound) {
  storeTwo();
  SilentSession silent(workbench.newSession());
  DrivenSession session(silent);
  session.addAllGroups();
  const IterativeRun result = runIterative(session, request, findings, progress);
  EXPECT_TRUE(result.registered);
  EXPECT_FALSE(result.course);
  EXPECT_THAT(found(), ElementsAre(FindingKind::courseUnknown));
}

}  // namespace
}  // namespace tiepoint::workbench
