#include "workbench/survey/delivery.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <stdexcept>

#include "workbench/clouds/drawing_clouds.h"
#include "workbench/survey/drawn_stations.h"
#include "workbench/survey/refusal_of.h"
#include "workbench/temporary_folder.h"

namespace tiepoint::workbench {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Key;
using testing::StartsWith;
namespace fs = std::filesystem;

/// Two stations, 100 apart; B goes onto the base A, pairwise. Clouds of both have files.
class Delivery : public DrawnStations {
 protected:
  Delivery() {
    store({hallFrom("A", 0, {"T1", "T2", "T3", "T4"}), hallFrom("B", 100, {"T1", "T2", "T3", "T4"})});
    writeBytes(cloudFile, "101 2 3\n");
    request.base = {"A"};
    request.method = RegistrationMethod::pairwise;
  }

  /// Solves first where nobody has.
  void deliverIt() {
    if (!survey) solveThem();
    deliver(workbench, *survey, resolved, outputs, progress);
  }
  void solveThem() { survey = registerSurvey(workbench, resolved, findings, progress); }
  const Registration& registration() const { return survey->registration; }

  /// An output of others, whose turn is noted.
  OutputFile output(Field field, const std::string& name) {
    return {{field, folder.file(name)}, [this, name] {
              turns.push_back(name);
              return "content of " + name;
            }};
  }
  /// An output that can't be made.
  OutputFile failing(Field field, const std::string& name) {
    return {{field, folder.file(name)}, []() -> std::string { throw Refused({RefusalKind::pictureFailed}); }};
  }
  void askForClouds() {
    request.changes.clouds = {{"B", cloudFile}};
    resolved.clouds = request.changes.clouds;
  }
  void askForCommonPoints() {
    resolved.commonPoints = CommonPointsTarget{"common", OutputTarget{Field::commonPoints, folder.file("common.txt")}};
  }

  std::vector<std::string> groupsInDrawing() {
    std::vector<std::string> names;
    const OdDbDatabasePtr database = workbench.requireActiveDocument().database();
    for (const StoredGroup& group : storedGroups(*database)) names.emplace_back(group.name.begin(), group.name.end());
    return names;
  }
  std::vector<DrawingCloud> cloudsInDrawing() { return cloudsOf(*workbench.requireActiveDocument().database()); }
  bool isThere(const std::string& name) const { return fs::exists(fs::u8path(folder.file(name))); }

  const TemporaryFolder folder;
  const std::string cloudFile = folder.file("cloud.xyz");
  ResolvedRequest resolved;
  RegistrationRequest& request = resolved.request;
  std::vector<OutputFile> outputs;
  std::vector<std::string> turns;
  Findings findings;
  ToldProgress progress;
  std::unique_ptr<OpenSurvey> survey;
};

TEST_F(Delivery, OfNothingChangesNothing) {
  deliverIt();
  EXPECT_THAT(folder.names(), ElementsAre("cloud.xyz"));
  EXPECT_THAT(groupsInDrawing(), ElementsAre("A", "B"));
  EXPECT_THAT(registration().files.matrices, IsEmpty());
  EXPECT_EQ(registration().storedGroup, "");
}

TEST_F(Delivery, OfASurveyThatIsntRegisteredDoesNothing) {
  request.exclude = {choiceOf("B")};
  askForClouds();
  request.changes.store = "merged";
  outputs = {output(Field::report, "report.html")};
  request.base.clear();
  deliverIt();
  EXPECT_FALSE(registration().registered());
  EXPECT_THAT(turns, IsEmpty());
  EXPECT_THAT(cloudsInDrawing(), IsEmpty());
  EXPECT_THAT(groupsInDrawing(), ElementsAre("A", "B"));
}

TEST_F(Delivery, WritesTheFilesOfOthersInTheOrderOfTheirFields) {
  outputs = {output(Field::picture, "map.png"), output(Field::transforms, "t.json"), output(Field::report, "r.html"),
             output(Field::matrices, "B.txt"), output(Field::matrices, "A.txt")};
  deliverIt();
  EXPECT_THAT(turns, ElementsAre("B.txt", "A.txt", "t.json", "r.html", "map.png")) << "matrices as they were given";
  EXPECT_EQ(readBytes(folder.file("map.png")), "content of map.png");
  EXPECT_EQ(registration().files.picture, folder.file("map.png"));
  EXPECT_EQ(registration().files.transforms, folder.file("t.json"));
  EXPECT_EQ(registration().files.report, folder.file("r.html"));
  EXPECT_THAT(registration().files.matrices, ElementsAre(folder.file("B.txt"), folder.file("A.txt")));
}

TEST_F(Delivery, WritesTheCommonPointsBeforeAllElse) {
  askForCommonPoints();
  outputs = {failing(Field::transforms, "t.json")};
  EXPECT_EQ(refusalOf([&] { deliverIt(); }).kind, RefusalKind::pictureFailed);
  const std::string content = readBytes(folder.file("common.txt"));
  EXPECT_EQ(std::count(content.begin(), content.end(), '\n'), 4);
  EXPECT_THAT(content, StartsWith("T1"));
  EXPECT_EQ(registration().files.commonPoints, folder.file("common.txt"));
}

TEST_F(Delivery, ThatFailsWritesNoFurtherFile) {
  outputs = {failing(Field::transforms, "t.json"), output(Field::matrices, "B.txt"), output(Field::report, "r.html")};
  EXPECT_EQ(refusalOf([&] { deliverIt(); }).kind, RefusalKind::pictureFailed);
  EXPECT_THAT(turns, ElementsAre("B.txt"));
  EXPECT_THAT(folder.names(), ElementsAre("B.txt", "cloud.xyz"));
  EXPECT_EQ(registration().files.transforms, "");
}

TEST_F(Delivery, ThatFailsLeavesTheDrawingAsItWas) {
  askForClouds();
  request.changes.apply = true;
  request.changes.store = "merged";
  outputs = {failing(Field::report, "r.html")};
  EXPECT_EQ(refusalOf([&] { deliverIt(); }).kind, RefusalKind::pictureFailed);
  EXPECT_THAT(cloudsInDrawing(), IsEmpty());
  EXPECT_THAT(groupsInDrawing(), ElementsAre("A", "B"));
}

TEST_F(Delivery, ThatFailsForAnotherReasonLeavesTheDrawingAsItWasToo) {
  request.changes.store = "merged";
  outputs = {{{Field::report, folder.file("r.html")}, []() -> std::string { throw std::runtime_error("full"); }}};
  EXPECT_THROW(deliverIt(), std::runtime_error);
  EXPECT_THAT(groupsInDrawing(), ElementsAre("A", "B"));
}

TEST_F(Delivery, ReplacesAFileOnlyWhenForced) {
  writeBytes(folder.file("r.html"), "old");
  outputs = {output(Field::report, "r.html")};
  EXPECT_EQ(refusalOf([&] { deliverIt(); }).kind, RefusalKind::targetExists);
  EXPECT_EQ(readBytes(folder.file("r.html")), "old");
  resolved.replacing.force = true;
  deliverIt();
  EXPECT_EQ(readBytes(folder.file("r.html")), "content of r.html");
}

TEST_F(Delivery, AddsCloudsAndLeavesThemUnmovedUnlessAsked) {
  askForClouds();
  deliverIt();
  ASSERT_EQ(cloudsInDrawing().size(), 1u);
  EXPECT_EQ(cloudsInDrawing()[0].matrix, OdGeMatrix3d());
  ASSERT_EQ(registration().clouds.size(), 1u);
  EXPECT_EQ(registration().clouds[0].name, "B");
  EXPECT_EQ(registration().clouds[0].move, CloudMove::notAsked);
}

TEST_F(Delivery, MovesCloudsAndWritesTheirCopies) {
  askForClouds();
  request.changes.apply = true;
  request.outputs.moved = folder.file("moved");
  deliverIt();
  ASSERT_EQ(registration().clouds.size(), 1u);
  EXPECT_EQ(registration().clouds[0].move, CloudMove::moved);
  EXPECT_NEAR(cloudsInDrawing()[0].matrix(0, 3), -100.0, 1e-9);
  ASSERT_TRUE(registration().clouds[0].copy);
  EXPECT_EQ(registration().clouds[0].copy->points, 1u);
  EXPECT_TRUE(isThere("moved/cloud.xyz"));
}

TEST_F(Delivery, NeverPutsACopyOverAFileThatTheRequestReads) {
  askForClouds();
  request.changes.apply = true;
  request.outputs.moved = folder.file("");
  resolved.replacing = {{cloudFile}, true};
  request.outputs.force = true;
  const Refusal refusal = refusalOf([&] { deliverIt(); });
  EXPECT_EQ(refusal.kind, RefusalKind::targetIsRead);
  EXPECT_EQ(refusal.field, Field::moved);
  EXPECT_EQ(readBytes(cloudFile), "101 2 3\n");
  EXPECT_THAT(cloudsInDrawing(), IsEmpty());
}

TEST_F(Delivery, NeverPutsAResultOverACopy) {
  askForClouds();
  request.changes.apply = true;
  request.outputs.moved = folder.file("out");
  resolved.targets = {{Field::report, folder.file("out/cloud.xyz")}};
  resolved.replacing.force = request.outputs.force = true;
  const Refusal refusal = refusalOf([&] { deliverIt(); });
  EXPECT_EQ(refusal.kind, RefusalKind::sameTarget);
  EXPECT_EQ(refusal.field, Field::report);
  EXPECT_EQ(refusal.otherField, Field::moved);
  EXPECT_FALSE(isThere("out"));
  EXPECT_THAT(cloudsInDrawing(), IsEmpty());
}

TEST_F(Delivery, TwoCopiesOfOneNameAreToldAsSuch) {
  fs::create_directory(folder.path() / "sub");
  writeBytes(folder.file("sub/cloud.xyz"), "1 2 3\n");
  request.changes.clouds = {{"A", cloudFile}, {"B", folder.file("sub/cloud.xyz")}};
  resolved.clouds = request.changes.clouds;
  request.changes.apply = true;
  request.outputs.moved = folder.file("out");
  EXPECT_EQ(refusalOf([&] { deliverIt(); }).kind, RefusalKind::copiesCollide);
}

TEST_F(Delivery, ThatIsCancelledWhileCloudsAreCopiedLeavesTheDrawingAsItWas) {
  askForClouds();
  request.changes.apply = true;
  request.outputs.moved = folder.file("moved");
  outputs = {output(Field::report, "r.html")};
  solveThem();
  ToldProgress cancelled(0);
  const auto action = [&] { deliver(workbench, *survey, resolved, outputs, cancelled); };
  EXPECT_EQ(refusalOf(action).kind, RefusalKind::cancelled);
  EXPECT_THAT(cancelled.stages, ElementsAre(Stage::movingClouds));
  EXPECT_THAT(cloudsInDrawing(), IsEmpty());
  EXPECT_FALSE(isThere("moved/cloud.xyz"));
  EXPECT_THAT(turns, IsEmpty());
}

TEST_F(Delivery, DoesNotMoveACloudTwice) {
  askForClouds();
  request.changes.apply = true;
  deliverIt();
  EXPECT_EQ(refusalOf([&] { deliverIt(); }).kind, RefusalKind::cloudMovedBefore);
  EXPECT_NEAR(cloudsInDrawing()[0].matrix(0, 3), -100.0, 1e-9);
  request.outputs.force = true;
  deliverIt();
  EXPECT_NEAR(cloudsInDrawing()[0].matrix(0, 3), -200.0, 1e-9);
}

TEST_F(Delivery, StoresTheMergedTargets) {
  request.changes.store = "merged";
  deliverIt();
  EXPECT_EQ(registration().storedGroup, "merged");
  EXPECT_THAT(groupsInDrawing(), ElementsAre("A", "B", "merged"));
}

TEST_F(Delivery, WritesTheReportThatIsAskedFor) {
  request.outputs.report = folder.file("r.html");
  deliverIt();
  EXPECT_THAT(readBytes(folder.file("r.html")), testing::HasSubstr("</html>"));
  EXPECT_EQ(registration().files.report, folder.file("r.html"));
}

/// The module's own matrices.
class DeliveryOfMatrices : public Delivery {
 protected:
  DeliveryOfMatrices() {
    request.outputs.matrices = folder.file("m");
    request.outputs.matrixFormat = MatrixFormat::fourByFour;
  }
};

TEST_F(DeliveryOfMatrices, MakesTheFolderAndLeavesOutTheBase) {
  deliverIt();
  EXPECT_FALSE(isThere("m/A.txt"));
  const std::string matrix = readBytes(folder.file("m/B.txt"));
  EXPECT_EQ(std::count(matrix.begin(), matrix.end(), '\n'), 6);
  ASSERT_EQ(registration().files.matrices.size(), 1u);
  EXPECT_EQ(fs::path(registration().files.matrices[0]), fs::path(folder.file("m/B.txt")));
}

TEST_F(DeliveryOfMatrices, OfThePlainFormatAreOthers) {
  request.outputs.matrixFormat = std::nullopt;
  deliverIt();
  EXPECT_TRUE(isThere("m")) << "the folder for them";
  EXPECT_THAT(registration().files.matrices, IsEmpty());
}

TEST_F(DeliveryOfMatrices, AreRefusedBeforeAnythingIsDoneWhereOneStandsInTheWay) {
  fs::create_directory(folder.path() / "m");
  writeBytes(folder.file("m/B.txt"), "old");
  askForCommonPoints();
  request.changes.store = "merged";
  const Refusal refusal = refusalOf([&] { deliverIt(); });
  EXPECT_EQ(refusal.kind, RefusalKind::targetExists);
  EXPECT_EQ(refusal.field, Field::matrices);
  EXPECT_FALSE(isThere("common.txt"));
  EXPECT_EQ(readBytes(folder.file("m/B.txt")), "old");
  EXPECT_THAT(groupsInDrawing(), ElementsAre("A", "B"));
}

TEST_F(DeliveryOfMatrices, TheBasesPlaceIsFreeButInThePlainFormat) {
  fs::create_directory(folder.path() / "m");
  writeBytes(folder.file("m/A.txt"), "old");
  EXPECT_NO_THROW(deliverIt());
  request.outputs.matrixFormat = MatrixFormat::plain;
  fs::remove(folder.path() / "m" / "B.txt");
  EXPECT_EQ(refusalOf([&] { deliverIt(); }).kind, RefusalKind::targetExists);
}

TEST_F(DeliveryOfMatrices, CantStandWhereAnotherResultIs) {
  resolved.targets = {{Field::report, folder.file("m/B.txt")}};
  const Refusal refusal = refusalOf([&] { deliverIt(); });
  EXPECT_EQ(refusal.kind, RefusalKind::sameTarget);
  EXPECT_EQ(refusal.field, Field::report);
  EXPECT_EQ(refusal.otherField, Field::matrices);
}

TEST_F(DeliveryOfMatrices, CantStandWhereACopyOfACloudWillBe) {
  const std::string likeAMatrix = folder.file("B.txt");
  writeBytes(likeAMatrix, "101 2 3\n");
  request.changes.clouds = {{"B", likeAMatrix}};
  resolved.clouds = request.changes.clouds;
  request.changes.apply = true;
  request.outputs.moved = request.outputs.matrices;
  const Refusal refusal = refusalOf([&] { deliverIt(); });
  EXPECT_EQ(refusal.kind, RefusalKind::sameTarget);
  EXPECT_EQ(refusal.field, Field::matrices);
  EXPECT_FALSE(isThere("m"));
}

TEST_F(DeliveryOfMatrices, OfAGroupAfterWhichNoFileCanBeNamedAreRefused) {
  store({hallFrom("C|", 50, {"T1", "T2", "T3", "T4"})});
  const Refusal refusal = refusalOf([&] { deliverIt(); });
  EXPECT_EQ(refusal.kind, RefusalKind::groupNotPortable);
  EXPECT_EQ(refusal.name, "C|");
  EXPECT_FALSE(isThere("m"));
  request.outputs.matrices.clear();
  EXPECT_NO_THROW(deliverIt()) << "its name matters to matrices alone";
}

/// A session that refuses to store, and writes no matrices.
class UnwillingSession : public MirroredSession {
 public:
  using MirroredSession::MirroredSession;
  bool storeCommonPoints(std::string) override { return false; }
  bool saveAllMatrices(std::string, std::uint64_t) override { return false; }
};

class DeliveryOfUnwilling : public DeliveryOfMatrices {
 protected:
  DeliveryOfUnwilling() {
    solveThem();
    auto unwilling = std::make_unique<OpenSurvey>(std::make_unique<UnwillingSession>(workbench.newSession()));
    unwilling->session().addAllGroups();
    EXPECT_TRUE(unwilling->session().registerPairwise());
    unwilling->registration = survey->registration;
    survey = std::move(unwilling);
  }
};

TEST_F(DeliveryOfUnwilling, RefusesAMatrixThatIsntWhole) {
  const Refusal refusal = refusalOf([&] { deliverIt(); });
  EXPECT_EQ(refusal.kind, RefusalKind::matrixCutShort);
  EXPECT_EQ(refusal.field, Field::matrices);
  EXPECT_EQ(fs::path(refusal.given), fs::path(folder.file("m/B.txt")));
  EXPECT_FALSE(isThere("m/B.txt"));
}

TEST_F(DeliveryOfUnwilling, RefusesANameThatTheSessionDoesNotStore) {
  askForClouds();
  request.changes.store = "merged";
  const Refusal refusal = refusalOf([&] { deliverIt(); });
  EXPECT_EQ(refusal.kind, RefusalKind::storeNameForbidden);
  EXPECT_EQ(refusal.field, Field::store);
  EXPECT_EQ(refusal.given, "merged");
  EXPECT_EQ(registration().storedGroup, "");
  EXPECT_THAT(cloudsInDrawing(), IsEmpty());
}

TEST_F(Delivery, ShowsTheRegisteredGroupsAloneForAWhile) {
  store({hallFrom("thin", 50, {"T1", "T2"})});
  solveThem();
  const auto use = [&](const ShownGroups& shown, const std::vector<const OdGiDrawable*>& drawables) {
    EXPECT_THAT(shown, ElementsAre(Key(0), Key(1)));
    EXPECT_EQ(shown.at(1).points, 4u);
    EXPECT_FALSE(drawables.empty());
    EXPECT_THAT(survey->session().state().visibleGroups, ElementsAre(0, 1));
    return std::string("drawn");
  };
  EXPECT_EQ(withRegisteredShown(workbench, *survey, use), "drawn");
  EXPECT_THAT(survey->session().state().visibleGroups, ElementsAre(0, 1, 2));
}

}  // namespace
}  // namespace tiepoint::workbench
