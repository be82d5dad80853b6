#include "workbench/survey/cloud_moves.h"

#include <gmock/gmock.h>

#include <filesystem>

#include "workbench/survey/drawn_stations.h"
#include "workbench/survey/refusal_of.h"
#include "workbench/temporary_folder.h"

namespace tiepoint::workbench {
namespace {

using testing::ElementsAre;
namespace fs = std::filesystem;

/// A motion along x.
OdGeMatrix3d shift(double east) {
  OdGeMatrix3d motion;
  motion(0, 3) = east;
  return motion;
}

class CloudMoves : public DrawnStations {
 protected:
  CloudMoves() {
    writeBytes(hall, "1 2 3\n");
    writeBytes(yard, "# from the yard\n4 5 6 rest\n");
  }

  OdDbDatabasePtr database() { return workbench.requireActiveDocument().database(); }
  void add(const std::vector<CloudRequest>& clouds) {
    workbench.inTransaction([&] { addClouds(*database(), clouds); });
  }
  std::vector<std::string> cloudNames() {
    std::vector<std::string> names;
    for (const CloudReport& cloud : cloudsIn(*database())) names.push_back(cloud.name + "=" + cloud.source);
    return names;
  }

  const TemporaryFolder folder;
  const std::string hall = folder.file("hall.xyz"), yard = folder.file("yard.xyz");
  Progress progress;
};

TEST_F(CloudMoves, TheFilesOfCloudsBecomeAbsolute) {
  const std::string roundabout = folder.file("no/../hall.xyz");
  fs::create_directory(folder.path() / "no");
  const std::vector<CloudRequest> clouds = cloudsToAdd({{"S1", roundabout}, {"S2", hall}});
  ASSERT_EQ(clouds.size(), 2u);
  EXPECT_EQ(clouds[0].name, "S1");
  EXPECT_EQ(fs::path(clouds[0].path), fs::path(hall));
  EXPECT_EQ(fs::path(clouds[1].path), fs::path(hall)) << "two clouds may have one file";
}

TEST_F(CloudMoves, ACloudIsAddedOnce) {
  const Refusal refusal = refusalOf([&] { cloudsToAdd({{"S1", hall}, {"S1", yard}}); });
  EXPECT_EQ(refusal.kind, RefusalKind::cloudTwice);
  EXPECT_EQ(refusal.field, Field::cloud);
  EXPECT_EQ(refusal.given, "S1=" + yard);
  EXPECT_EQ(refusal.name, "S1");
}

TEST_F(CloudMoves, ACloudHasAnOrdinaryFile) {
  const Refusal refusal = refusalOf([&] { cloudsToAdd({{"S1", folder.file("none.xyz")}}); });
  EXPECT_EQ(refusal.kind, RefusalKind::cloudFileMissing);
  EXPECT_EQ(refusal.given, folder.file("none.xyz"));
  EXPECT_EQ(refusal.name, "S1");
  EXPECT_EQ(refusalOf([&] { cloudsToAdd({{"S1", folder.file("")}}); }).kind, RefusalKind::cloudFileMissing);
}

TEST_F(CloudMoves, CloudsComeIntoTheDrawingUnmovedAndInOrder) {
  add({{"S2", yard}, {"S1", hall}});
  EXPECT_THAT(cloudNames(), ElementsAre("S2=" + yard, "S1=" + hall));
  EXPECT_EQ(cloudsIn(*database())[0].matrix, OdGeMatrix3d());
}

TEST_F(CloudMoves, ACloudWithTheSameFileIsThereAlready) {
  add({{"S1", hall}});
  add({{"S1", hall}, {"S2", yard}});
  EXPECT_THAT(cloudNames(), ElementsAre("S1=" + hall, "S2=" + yard));
}

TEST_F(CloudMoves, ACloudWithAnotherFileIsRefusedAndAddsNone) {
  add({{"S1", hall}});
  const Refusal refusal = refusalOf([&] { add({{"S2", yard}, {"S1", yard}}); });
  EXPECT_EQ(refusal.kind, RefusalKind::cloudTaken);
  EXPECT_EQ(refusal.given, yard);
  EXPECT_EQ(refusal.name, "S1");
  EXPECT_EQ(refusal.other, hall);
  EXPECT_THAT(cloudNames(), ElementsAre("S1=" + hall)) << "the transaction was undone";
}

TEST_F(CloudMoves, AMoveIsPlannedByTheGroupOfTheCloudsName) {
  add({{"moved", hall}, {"base", hall}, {"apart", hall}, {"other", hall}});
  std::vector<GroupOutcome> groups(3);
  groups[0].name = "base";
  groups[0].inBase = true;
  groups[1].name = "moved";
  groups[1].toCommon = shift(1);
  groups[2].name = "apart";
  const std::vector<CloudReport> planned = plannedMoves(*database(), groups);
  ASSERT_EQ(planned.size(), 4u);
  EXPECT_EQ(planned[0].move, CloudMove::moved);
  EXPECT_EQ(planned[1].move, CloudMove::base);
  EXPECT_EQ(planned[2].move, CloudMove::notRegistered);
  EXPECT_EQ(planned[3].move, CloudMove::noGroup);
  EXPECT_EQ(planned[0].matrix, OdGeMatrix3d()) << "only planned";
}

TEST_F(CloudMoves, ACloudsNameMeansWhatASessionShowsOfIt) {
  add({{"S\u00C5", hall}});
  std::vector<GroupOutcome> groups(1);
  groups[0].name = "S\u00C5";
  groups[0].toCommon = shift(1);
  EXPECT_EQ(plannedMoves(*database(), groups)[0].move, CloudMove::moved);
}

/// Two stations, 100 apart, with a cloud each and one of no group; west goes onto the base east.
class AppliedMoves : public CloudMoves {
 protected:
  AppliedMoves() {
    store({hallFrom("east", 0, {"T1", "T2", "T3", "T4"}), hallFrom("west", 100, {"T1", "T2", "T3", "T4"})});
    add({{"east", hall}, {"west", yard}, {"other", hall}});
    DrivenSession& session = begin();
    session.setBase({session.state().groups[0].id});
    EXPECT_TRUE(session.registerPairwise());
    operations = &session.operations();
    groups.resize(2);
    groups[0].name = "east";
    groups[0].inBase = true;
    groups[1].name = "west";
    groups[1].toCommon = shift(-100);
  }

  std::vector<CloudReport> apply(bool force) {
    std::vector<CloudReport> clouds = plannedMoves(*database(), groups);
    workbench.inTransaction([&] { applyMoves(*database(), *operations, clouds, force); });
    return clouds;
  }

  ZOR::reg::iMultiRegistrator* operations = nullptr;
  std::vector<GroupOutcome> groups;
};

TEST_F(AppliedMoves, MoveTheCloudsOfRegisteredGroupsAlone) {
  const std::vector<CloudReport> clouds = apply(false);
  ASSERT_EQ(clouds.size(), 3u);
  EXPECT_NEAR(clouds[1].matrix(0, 3), -100.0, 1e-9);
  EXPECT_EQ(clouds[0].matrix, OdGeMatrix3d());
  EXPECT_EQ(clouds[2].matrix, OdGeMatrix3d());
  EXPECT_NEAR(cloudsIn(*database())[1].matrix(0, 3), -100.0, 1e-9) << "the drawing's own";
}

TEST_F(AppliedMoves, AreNotDoneTwiceUnlessForced) {
  apply(false);
  const Refusal refusal = refusalOf([&] { apply(false); });
  EXPECT_EQ(refusal.kind, RefusalKind::cloudMovedBefore);
  EXPECT_EQ(refusal.field, Field::apply);
  EXPECT_EQ(refusal.name, "west");
  EXPECT_NEAR(cloudsIn(*database())[1].matrix(0, 3), -100.0, 1e-9);
  EXPECT_NEAR(apply(true)[1].matrix(0, 3), -200.0, 1e-9);
}

/// Reports as a delivery has them, and a folder for copies.
class CloudCopies : public CloudMoves {
 protected:
  CloudCopies() {
    clouds.resize(2);
    clouds[0].name = "S1";
    clouds[0].source = hall;
    clouds[0].matrix = shift(10);
    clouds[1].name = "S2";
    clouds[1].source = yard;
  }

  std::vector<CloudReport> clouds;
  const std::string copies = folder.file("a/copies");
};

TEST_F(CloudCopies, StandUnderTheFilesOwnNamesInAFolderThatIsMade) {
  writeCopies(clouds, copies, false, progress);
  EXPECT_EQ(readBytes(copies + "/hall.xyz"), "11 2 3\n");
  EXPECT_EQ(readBytes(copies + "/yard.xyz"), "# from the yard\n4 5 6 rest\n");
  ASSERT_TRUE(clouds[0].copy && clouds[1].copy);
  EXPECT_EQ(clouds[0].copy->path, copyPath(clouds[0], copies));
  EXPECT_EQ(clouds[0].copy->points, 1u);
  EXPECT_EQ(clouds[0].copy->otherLines, 0u);
  EXPECT_EQ(clouds[1].copy->otherLines, 1u);
}

TEST_F(CloudCopies, AreNotMadeOfACloudWithoutAFile) {
  clouds[0].source.clear();
  writeCopies(clouds, copies, false, progress);
  EXPECT_FALSE(clouds[0].copy);
  EXPECT_TRUE(clouds[1].copy);
}

TEST_F(CloudCopies, OfOneFileNameCollide) {
  fs::create_directory(folder.path() / "b");
  clouds[1].source = folder.file("b/hall.xyz");
  writeBytes(clouds[1].source, "4 5 6\n");
  const Refusal refusal = refusalOf([&] { writeCopies(clouds, copies, true, progress); });
  EXPECT_EQ(refusal.kind, RefusalKind::copiesCollide);
  EXPECT_EQ(refusal.field, Field::moved);
  EXPECT_EQ(refusal.given, copyPath(clouds[1], copies));
  EXPECT_EQ(readBytes(copies + "/hall.xyz"), "11 2 3\n") << "the first stays";
}

TEST_F(CloudCopies, ReplaceOthersOnlyWhenForced) {
  fs::create_directories(fs::u8path(copies));
  writeBytes(copies + "/hall.xyz", "old");
  const Refusal refusal = refusalOf([&] { writeCopies(clouds, copies, false, progress); });
  EXPECT_EQ(refusal.kind, RefusalKind::cloudFile);
  EXPECT_EQ(refusal.given, copyPath(clouds[0], copies));
  EXPECT_EQ(refusal.name, "S1");
  EXPECT_NE(refusal.cause, "");
  EXPECT_EQ(readBytes(copies + "/hall.xyz"), "old");
  writeCopies(clouds, copies, true, progress);
  EXPECT_EQ(readBytes(copies + "/hall.xyz"), "11 2 3\n");
}

TEST_F(CloudCopies, OfACloudWithoutPointsAreRefused) {
  writeBytes(yard, "no points here\n");
  const Refusal refusal = refusalOf([&] { writeCopies(clouds, copies, false, progress); });
  EXPECT_EQ(refusal.kind, RefusalKind::cloudFile);
  EXPECT_EQ(refusal.name, "S2");
  EXPECT_FALSE(fs::exists(fs::u8path(copies + "/yard.xyz")));
}

TEST_F(CloudCopies, NeedAFolderThatCanBeMade) {
  EXPECT_EQ(refusalOf([&] { writeCopies(clouds, hall, false, progress); }).kind, RefusalKind::folderNotMade);
}

TEST_F(CloudCopies, TellHowFarTheyAre) {
  ToldProgress told;
  writeCopies(clouds, copies, false, told);
  EXPECT_THAT(told.stages, ElementsAre(Stage::movingClouds));
  EXPECT_THAT(told.steps, ElementsAre(std::pair(0u, 2u), std::pair(1u, 2u)));
  EXPECT_EQ(told.open, 0);
}

TEST_F(CloudCopies, CanBeCancelledBetweenTwoFiles) {
  ToldProgress told(1);
  EXPECT_EQ(refusalOf([&] { writeCopies(clouds, copies, false, told); }).kind, RefusalKind::cancelled);
  EXPECT_TRUE(clouds[0].copy);
  EXPECT_FALSE(clouds[1].copy);
  EXPECT_FALSE(fs::exists(fs::u8path(copies + "/yard.xyz")));
  EXPECT_EQ(told.open, 0) << "the stage has ended";
}

}  // namespace
}  // namespace tiepoint::workbench
