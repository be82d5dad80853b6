#include "workbench/survey/survey.h"

#include <gmock/gmock.h>

#include <stdexcept>

#include "workbench/io/text_encoding.h"
#include "workbench/temporary_folder.h"

namespace tiepoint::workbench {
namespace {

using testing::ElementsAre;

const std::vector<StationPoints> twoStations{
    {"east", {{"T1", {0, 0, 0}}, {"T2", {8, 0, 0}}, {"T3", {0, 8, 0}}, {"T4", {0, 0, 8}}}},
    {"west", {{"T1", {100, 0, 0}}, {"T2", {108, 0, 0}}, {"T3", {100, 8, 0}}, {"", {100, 0, 8}}}}};

class SurveyOfStations : public testing::Test {
 protected:
  /// Of the request; a kind that none of these can get where there is no refusal.
  RefusalKind refusalOf(const std::vector<StationPoints>& stations) {
    try {
      host.registerStations(stations, request);
    } catch (const Refused& refused) {
      return refused.refusal().kind;
    }
    return RefusalKind::pictureFailed;
  }

  SurveyHost host{SurveyHost::Options{"", TSL_REGISTRATION}};
  RegistrationRequest request;
};

TEST_F(SurveyOfStations, IsRegistered) {
  request.base = {"east"};
  const Registration registration = host.registerStations(twoStations, request);
  ASSERT_TRUE(registration.registered());
  EXPECT_NEAR((*registration.groups[1].toCommon)(0, 3), -100.0, 1e-9);
  EXPECT_EQ(registration.points.size(), 8u);
  EXPECT_EQ(registration.points[7].reason, Reason::unnamed);
}

TEST_F(SurveyOfStations, CanBeRegisteredAgainAndAgain) {
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(host.registerStations(twoStations, request).registered());
}

TEST_F(SurveyOfStations, ThatAreNotConnectedIsAnOutcome) {
  std::vector<StationPoints> apart = twoStations;
  for (MeasuredPoint& point : apart[1].points) point.name += "x";
  const Registration registration = host.registerStations(apart, request);
  EXPECT_TRUE(std::holds_alternative<NotConnected>(registration.outcome));
}

TEST_F(SurveyOfStations, WithTwoOfOneNameIsRefused) {
  EXPECT_EQ(refusalOf({twoStations[0], twoStations[0]}), RefusalKind::groupTwice);
}

TEST_F(SurveyOfStations, WithoutAnyIsRefused) { EXPECT_EQ(refusalOf({}), RefusalKind::drawingEmpty); }

TEST_F(SurveyOfStations, WithAPointThatThereIsntIsRefused) {
  request.exclude = {{{PointRef{"east", "T9"}}, "east:T9"}};
  EXPECT_EQ(refusalOf(twoStations), RefusalKind::noSuchPoint);
}

TEST_F(SurveyOfStations, DoesNotLookAtTheRequestsFilesAndDocument) {
  const TemporaryFolder folder;
  request.files = {{Layout::nxyz, {folder.file("none.txt")}}};
  request.document = folder.file("none.tpd");
  const Registration registration = host.registerStations(twoStations, request);
  EXPECT_TRUE(registration.registered());
  EXPECT_EQ(registration.document, "");
  EXPECT_TRUE(folder.names().empty());
}

TEST_F(SurveyOfStations, KeepsNamesOfEveryScript) {
  std::vector<StationPoints> stations = twoStations;
  for (StationPoints& station : stations) {
    station.name = "站 " + station.name;
    station.points[0].name = "測 1";
  }
  const Registration registration = host.registerStations(stations, request);
  ASSERT_TRUE(registration.registered());
  EXPECT_EQ(registration.groups[1].name, stations[1].name);
  EXPECT_EQ(registration.points[0].name, "測 1");
  EXPECT_EQ(registration.registered()->targets[0].name, "測 1");
}

TEST_F(SurveyOfStations, WithANameThatIsntUtf8IsRefusedAndLeavesNothing) {
  std::vector<StationPoints> stations = twoStations;
  stations[1].points[0].name = "\xFF";
  EXPECT_THROW(host.registerStations(stations, request), EncodingError);
  EXPECT_EQ(refusalOf({}), RefusalKind::drawingEmpty) << "the first station isn't left in a drawing";
  EXPECT_TRUE(host.registerStations(twoStations, request).registered());
}

TEST_F(SurveyOfStations, TellsWhatIsFound) {
  std::vector<StationPoints> stations = twoStations;
  stations.push_back({"thin", {{"T1", {0, 0, 0}}, {"T2", {8, 0, 0}}}});
  std::vector<FindingKind> told;
  Findings findings([&](const Finding& finding) { told.push_back(finding.kind); });
  Progress progress;
  const Registration registration = host.registerStations(stations, request, findings, progress);
  EXPECT_THAT(told, ElementsAre(FindingKind::groupNotRegistered));
  ASSERT_EQ(registration.findings.size(), 1u);
  EXPECT_THAT(registration.findings[0].groups, ElementsAre("thin"));
}

TEST_F(SurveyOfStations, TakesTheWeightsOfItsPoints) {
  std::vector<StationPoints> stations = twoStations;
  stations[0].points[1].weight = 0.0;
  const Registration registration = host.registerStations(stations, request);
  EXPECT_EQ(registration.points[1].weight, 0.0);
  EXPECT_FALSE(registration.points[1].active);
}

TEST_F(SurveyOfStations, HasOneHostAtATime) {
  EXPECT_THROW(SurveyHost(SurveyHost::Options{"", TSL_REGISTRATION}), std::logic_error);
  EXPECT_TRUE(host.registerStations(twoStations, request).registered()) << "the first goes on";
}

/// Remembers the stages, and ends the work at the first step.
class CancelledProgress : public Progress {
 public:
  void begin(Stage stage) override { stages.push_back(stage); }
  bool isCancelled() const override { return true; }

  std::vector<Stage> stages;
};

TEST_F(SurveyOfStations, CanBeCancelledWhileNamesAreLookedFor) {
  request.naming.how = Naming::automatic;
  Findings findings;
  CancelledProgress progress;
  try {
    host.registerStations(twoStations, request, findings, progress);
    FAIL();
  } catch (const Refused& refused) {
    EXPECT_EQ(refused.refusal().kind, RefusalKind::cancelled);
  }
  EXPECT_THAT(progress.stages, ElementsAre(Stage::naming));
}

TEST_F(SurveyOfStations, InFilesIsRegisteredTooAndLeavesNothingOpen) {
  const TemporaryFolder folder;
  writeBytes(folder.file("a.txt"), "T1 0 0 0\nT2 8 0 0\nT3 0 8 0\nT4 0 0 8\n");
  writeBytes(folder.file("b.txt"), "T1 1 0 0\nT2 9 0 0\nT3 1 8 0\nT4 1 0 8\n");
  request.files = {{Layout::nxyz, {folder.file("a.txt"), folder.file("b.txt")}}};
  Progress progress;
  for (int i = 0; i < 2; ++i) {
    Findings findings;
    EXPECT_TRUE(host.registerFiles(request, findings, progress).registered());
  }
}

TEST_F(SurveyOfStations, InADrawingLeavesItToOthers) {
  const TemporaryFolder folder;
  request.document = folder.file("hall.tpd");
  writeBytes(folder.file("a.txt"), "T1 0 0 0\nT2 8 0 0\nT3 0 8 0\nT4 0 0 8\n");
  writeBytes(folder.file("b.txt"), "T1 1 0 0\nT2 9 0 0\nT3 1 8 0\nT4 1 0 8\n");
  request.files = {{Layout::nxyz, {folder.file("a.txt"), folder.file("b.txt")}}};
  Findings findings;
  Progress progress;
  host.registerFiles(request, findings, progress);
  request.files.clear();
  EXPECT_TRUE(host.registerFiles(request, findings, progress).registered()) << "it holds the groups, and is closed";
  request.base = {"none"};
  EXPECT_THROW(host.registerFiles(request, findings, progress), Refused);
  request.base.clear();
  EXPECT_TRUE(host.registerFiles(request, findings, progress).registered()) << "after a refusal too";
}

}  // namespace
}  // namespace tiepoint::workbench
