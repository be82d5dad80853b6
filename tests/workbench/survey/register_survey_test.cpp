#include "workbench/survey/register_survey.h"

#include <gmock/gmock.h>

#include <cmath>
#include <filesystem>

#include "workbench/survey/drawn_stations.h"
#include "workbench/survey/refusal_of.h"
#include "workbench/temporary_folder.h"

namespace tiepoint::workbench {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// What the roundings of a solve may leave of a shift by 100.
constexpr double rounding = 1e-9;

/// Stations that are in the drawing already, registered pairwise unless a test says otherwise.
class RegisterSurvey : public DrawnStations {
 protected:
  RegisterSurvey() { request.method = RegistrationMethod::pairwise; }

  Registration registerThem() {
    survey.reset();
    survey = registerSurvey(workbench, resolved, findings, progress);
    return survey->registration;
  }
  void storeTwo() { store({hallFrom("A", 0, {"T1", "T2", "T3", "T4"}), hallFrom("B", 100, {"T1", "T2", "T3", "T4"})}); }

  ResolvedRequest resolved;
  RegistrationRequest& request = resolved.request;
  Findings findings;
  ToldProgress progress;
  std::unique_ptr<OpenSurvey> survey;
};

TEST_F(RegisterSurvey, GivesARowForEachGroupAndPoint) {
  storeTwo();
  request.base = {"A"};
  const Registration registration = registerThem();
  ASSERT_TRUE(registration.registered());
  EXPECT_TRUE(registration.usesBase);
  ASSERT_EQ(registration.groups.size(), 2u);
  EXPECT_TRUE(registration.groups[0].inBase);
  EXPECT_FALSE(registration.groups[0].toCommon);
  ASSERT_TRUE(registration.groups[1].toCommon);
  EXPECT_NEAR((*registration.groups[1].toCommon)(0, 3), -100.0, rounding);
  ASSERT_EQ(registration.points.size(), 8u);
  ASSERT_TRUE(registration.points[5].registered);
  EXPECT_NEAR(registration.points[5].registered->x, 8.0, rounding);
  EXPECT_EQ(registration.registered()->targets.size(), 4u);
}

TEST_F(RegisterSurvey, UsesNoBaseWhereNoneIsAskedFor) {
  storeTwo();
  EXPECT_FALSE(registerThem().usesBase);
}

TEST_F(RegisterSurvey, TellsWhatItWasAskedFor) {
  storeTwo();
  request.document = "hall.tpd";
  request.method = RegistrationMethod::iterative;
  resolved.import.messages = {"taken in"};
  const Registration registration = registerThem();
  EXPECT_EQ(registration.document, "hall.tpd");
  EXPECT_EQ(registration.method, RegistrationMethod::iterative);
  EXPECT_TRUE(registration.iterations);
  EXPECT_THAT(registration.import.messages, ElementsAre("taken in"));
}

TEST_F(RegisterSurvey, LeavesItsSessionOpen) {
  storeTwo();
  registerThem();
  EXPECT_THAT(survey->session().state().registeredGroups, ElementsAre(0, 1));
}

TEST_F(RegisterSurvey, KnowsWhereAnInstrumentStood) {
  storeTwo();
  const Registration registration = registerThem();
  EXPECT_TRUE(registration.groups[0].originIsAmongPoints);
  EXPECT_FALSE(registration.groups[1].originIsAmongPoints);
}

TEST_F(RegisterSurvey, OfGroupsThatDontHangTogetherTellsWhatTheyLack) {
  store({hallFrom("A", 0, {"T1", "T2", "T3"}), hallFrom("B", 100, {"T1", "T2", "U3", "U4"})});
  const Registration registration = registerThem();
  EXPECT_TRUE(std::holds_alternative<NotConnected>(registration.outcome));
  EXPECT_EQ(registration.links.components.size(), 2u);
  ASSERT_EQ(registration.links.links.size(), 1u);
  EXPECT_THAT(registration.links.links[0].names, ElementsAre("T1", "T2"));
  EXPECT_EQ(registration.groups.size(), 2u);
  EXPECT_EQ(registration.points.size(), 7u);
  EXPECT_FALSE(registration.groups[1].toCommon);
}

TEST_F(RegisterSurvey, OfABaseThatSharesTooLittleTellsTheLinks) {
  store({hallFrom("A", 0, {"T1", "T2", "V3"}), hallFrom("B", 100, {"T1", "T2", "T3", "T4"}),
         hallFrom("C", 50, {"T1", "T2", "T3", "T4"})});
  request.base = {"A"};
  const Registration registration = registerThem();
  EXPECT_TRUE(std::holds_alternative<BaseNotShared>(registration.outcome));
  EXPECT_FALSE(registration.usesBase);
  EXPECT_FALSE(registration.links.components.empty());
}

TEST_F(RegisterSurvey, OfANamingThatIsntCertainTellsItsReasons) {
  store({hallFrom("A", 0, {"T1", "", ""}), hallFrom("B", 100, {"T1", ""})});
  request.naming.how = Naming::automatic;
  const Registration registration = registerThem();
  EXPECT_TRUE(std::holds_alternative<NotNamed>(registration.outcome));
  ASSERT_TRUE(registration.naming);
  EXPECT_TRUE(registration.naming->isRefused);
  EXPECT_FALSE(registration.naming->reasons.empty());
  EXPECT_THAT(registration.links.components, IsEmpty()) << "names that weren't found link nothing";
  EXPECT_EQ(registration.points.size(), 5u);
}

TEST_F(RegisterSurvey, OfAnEmptyDrawingIsRefused) {
  const Refusal refusal = refusalOf([&] { registerThem(); });
  EXPECT_EQ(refusal.kind, RefusalKind::drawingEmpty);
  EXPECT_EQ(refusal.field, Field::document);
}

TEST_F(RegisterSurvey, OfAPointInUseWithoutAPlaceIsRefused) {
  storeTwo();
  StationPoints odd = hallFrom("C", 50, {"T1", "T2", "T3", "T4"});
  odd.points[2].position.y = std::nan("");
  store({odd});
  EXPECT_EQ(refusalOf([&] { registerThem(); }).kind, RefusalKind::notFinite);
  request.exclude = {choiceOf("C")};
  EXPECT_TRUE(registerThem().registered()) << "once it is out";
}

TEST_F(RegisterSurvey, OfCoordinatesThatGiveNoRigidMotionIsRefused) {
  StationPoints huge = hallFrom("B", 0, {"T1", "T2", "T3", "T4"});
  for (MeasuredPoint& point : huge.points) point.position.x = point.position.x * 1e307 + 1e306;
  store({hallFrom("A", 0, {"T1", "T2", "T3", "T4"}), huge});
  request.base = {"A"};
  const Refusal refusal = refusalOf([&] { registerThem(); });
  EXPECT_EQ(refusal.kind, RefusalKind::notRigid);
  EXPECT_EQ(refusal.name, "B");
}

TEST_F(RegisterSurvey, FindsAGroupThatTakesNoPart) {
  storeTwo();
  store({hallFrom("thin", 50, {"T1", "T2"})});
  const Registration registration = registerThem();
  EXPECT_TRUE(registration.registered());
  ASSERT_EQ(registration.findings.size(), 1u);
  EXPECT_EQ(registration.findings[0].kind, FindingKind::groupNotRegistered);
  EXPECT_THAT(registration.findings[0].groups, ElementsAre("thin"));
  request.exclude = {choiceOf("thin")};
  EXPECT_EQ(registerThem().findings.size(), 1u) << "nothing new of a group that was left out on purpose";
}

TEST_F(RegisterSurvey, FindsABaseThatTakesNoPart) {
  storeTwo();
  store({hallFrom("Z", 50, {"U1", "U2", "U3", "U4"})});
  request.base = {"A", "Z"};
  const Registration registration = registerThem();
  EXPECT_TRUE(registration.registered());
  ASSERT_EQ(registration.findings.size(), 1u);
  EXPECT_EQ(registration.findings[0].kind, FindingKind::baseTakesNoPart);
  EXPECT_THAT(registration.findings[0].groups, ElementsAre("Z"));
}

TEST_F(RegisterSurvey, HoldsWhatWasFoundBeforeToo) {
  storeTwo();
  findings.add({FindingKind::readingStopped});
  store({hallFrom("thin", 50, {"T1", "T2"})});
  const Registration registration = registerThem();
  ASSERT_EQ(registration.findings.size(), 2u);
  EXPECT_EQ(registration.findings[0].kind, FindingKind::readingStopped);
}

TEST_F(RegisterSurvey, FindsATargetTwiceAndAnotherUnit) {
  StationPoints wide = hallFrom("B", 0, {"T1", "T2", "T3", "T4"});
  for (MeasuredPoint& point : wide.points)
    point.position = {point.position.x * 1000.0, point.position.y * 1000.0, point.position.z * 1000.0};
  StationPoints twice = hallFrom("A", 0, {"T1", "T2", "T3", "T4"});
  twice.points.push_back({"T1", {0, 0, 0}});
  store({twice, wide});
  std::vector<FindingKind> kinds;
  for (const Finding& finding : registerThem().findings) kinds.push_back(finding.kind);
  EXPECT_THAT(kinds, ElementsAre(FindingKind::nameTwice, FindingKind::otherUnit));
}

TEST_F(RegisterSurvey, NamesNoOutlierWhileTheStationsStillMove) {
  // Five stations at one place, each with a little noise; one of them saw T5 elsewhere.
  std::vector<StationPoints> stations;
  for (const char* name : {"A", "B", "C", "D", "E"}) {
    stations.push_back(hallFrom(name, 0, {"T1", "T2", "T3", "T4", "T5"}));
    stations.back().points[stations.size() - 1].position.z += 0.001;
  }
  stations[2].points[4].position.y += 0.5;
  store(stations);
  const Registration pairwise = registerThem();
  ASSERT_TRUE(pairwise.registered()->outlier);
  EXPECT_EQ(pairwise.points[pairwise.registered()->outlier->point].name, "T5");
  request.method = RegistrationMethod::iterative;
  request.maxIterations = 1;
  request.convergence = 1e-12;
  const Registration moving = registerThem();
  ASSERT_TRUE(moving.registered());
  EXPECT_FALSE(moving.registered()->outlier);
  EXPECT_TRUE(moving.registered()->largest) << "that one is a fact";
}

TEST_F(RegisterSurvey, OffersSmallerMarkersForAPictureAlone) {
  storeTwo();
  registerThem();
  EXPECT_EQ(workbench.profile().get(registrationSection, "SizeLabel"), std::nullopt);
  request.outputs.pictureArea = 100.0;
  registerThem();
  EXPECT_EQ(workbench.profile().get(registrationSection, "SizeLabel"), ProfileValue(2));
}

TEST_F(RegisterSurvey, CanBeCancelledInEachOfItsStages) {
  store({hallFrom("A", 0, {"", "", "", ""}), hallFrom("B", 100, {"", "", "", ""})});
  request.naming.how = Naming::automatic;
  request.method = RegistrationMethod::iterative;
  registerThem();
  EXPECT_THAT(progress.stages, ElementsAre(Stage::naming, Stage::iterating));
  for (std::size_t at = 0; at < progress.steps.size(); ++at) {
    ToldProgress cancelled(at);
    const auto action = [&] { registerSurvey(workbench, resolved, findings, cancelled); };
    EXPECT_EQ(refusalOf(action).kind, RefusalKind::cancelled) << at;
    EXPECT_EQ(cancelled.open, 0) << at;
  }
}

/// Stations in files, and a drawing that may not be there yet. The first two files hang together, as do the
/// last two.
class RegisterFiles : public testing::Test {
 protected:
  RegisterFiles() {
    writeBytes(first, "T1 0 0 0\nT2 8 0 0\nT3 0 6 0\nT4 0 0 4\n");
    writeBytes(second, "T1 1 0 0\nT2 9 0 0\nT3 1 6 0\nT4 1 0 4\n");
    writeBytes(third, "U1 0 0 0\nU2 8 0 0\nU3 0 6 0\n");
    writeBytes(fourth, "U1 1 0 0\nU2 9 0 0\nU3 1 6 0\n");
    request.files = {{Layout::nxyz, {first, second}}};
  }

  std::unique_ptr<OpenSurvey> run() {
    const ResolvedRequest resolved = resolve(workbench, request, findings);
    return registerSurvey(workbench, resolved, findings, progress);
  }
  /// Asks for a cluster that there isn't, with these files.
  RefusalKind refusalWith(const std::vector<std::string>& files) {
    request.files = {{Layout::nxyz, files}};
    request.keepCluster = 7;
    return refusalOf([&] { run(); }).kind;
  }
  std::vector<std::string> groupsInDrawing() {
    std::vector<std::string> names;
    const OdDbDatabasePtr database = workbench.requireActiveDocument().database();
    for (const StoredGroup& group : storedGroups(*database)) names.emplace_back(group.name.begin(), group.name.end());
    return names;
  }
  bool drawingIsThere() const { return std::filesystem::exists(std::filesystem::u8path(drawing)); }

  const TemporaryFolder folder;
  const std::string first = folder.file("first.txt"), second = folder.file("second.txt");
  const std::string third = folder.file("third.txt"), fourth = folder.file("fourth.txt");
  const std::string drawing = folder.file("hall.tpd");
  Workbench workbench{Workbench::Options{"", TSL_REGISTRATION}};
  RegistrationRequest request;
  Findings findings;
  Progress progress;
};

TEST_F(RegisterFiles, TakesThemIntoADrawingInMemoryWhenNoneIsAskedFor) {
  EXPECT_TRUE(run()->registration.registered());
  EXPECT_THAT(groupsInDrawing(), ElementsAre("first", "second"));
  EXPECT_THAT(folder.names(), SizeIs(4)) << "the four files";
}

TEST_F(RegisterFiles, MakesTheDrawingThatIsMissing) {
  request.document = drawing;
  const auto survey = run();
  EXPECT_TRUE(survey->registration.registered());
  EXPECT_EQ(survey->registration.import.files.size(), 2u);
  EXPECT_TRUE(drawingIsThere());
}

TEST_F(RegisterFiles, KeepsThemInTheDrawingOfASurveyThatIsntRegistered) {
  request.files = {{Layout::nxyz, {first, second, third, fourth}}};
  request.document = drawing;
  EXPECT_TRUE(std::holds_alternative<NotConnected>(run()->registration.outcome));
  EXPECT_THAT(groupsInDrawing(), ElementsAre("first", "second", "third", "fourth"));
}

TEST_F(RegisterFiles, LeavesNoDrawingBehindWhenTheRequestAsksForWhatThereIsnt) {
  request.document = drawing;
  EXPECT_EQ(refusalWith({first, second, third, fourth}), RefusalKind::noSuchCluster);
  EXPECT_FALSE(drawingIsThere());
  EXPECT_EQ(workbench.activeDocument(), nullptr);
}

TEST_F(RegisterFiles, LeavesNoDrawingInMemoryBehindEither) {
  EXPECT_EQ(refusalWith({first, second, third, fourth}), RefusalKind::noSuchCluster);
  EXPECT_EQ(workbench.activeDocument(), nullptr);
}

TEST_F(RegisterFiles, LeavesADrawingThatIsThereAsItWas) {
  request.document = drawing;
  run();
  workbench.closeDocument(workbench.requireActiveDocument().number());
  EXPECT_EQ(refusalWith({third, fourth}), RefusalKind::noSuchCluster);
  EXPECT_THAT(groupsInDrawing(), ElementsAre("first", "second"));
  workbench.closeDocument(workbench.requireActiveDocument().number());
  workbench.openDocument(drawing, false);
  EXPECT_THAT(groupsInDrawing(), ElementsAre("first", "second")) << "in the file too";
}

TEST_F(RegisterFiles, LeavesNoDrawingBehindWhenAFileChangesMeanwhile) {
  request.document = drawing;
  const ResolvedRequest resolved = resolve(workbench, request, findings);
  writeBytes(second, "T1 1 0 0\n");
  const auto action = [&] { registerSurvey(workbench, resolved, findings, progress); };
  EXPECT_EQ(refusalOf(action).kind, RefusalKind::fileChanged);
  EXPECT_FALSE(drawingIsThere());
  EXPECT_EQ(workbench.activeDocument(), nullptr);
}

}  // namespace
}  // namespace tiepoint::workbench
