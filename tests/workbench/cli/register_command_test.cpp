// tiepoint register, from the outside.
#include <gmock/gmock.h>

#include "workbench/cli/survey_files.h"

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class RegisterCommand : public SurveyFiles {};

TEST_F(RegisterCommand, TwoStationsGiveTheShiftBetweenThem) {
  const json result = runJson({"register", "--base", "base", "base.txt", "shifted.txt"});
  EXPECT_EQ(result["outcome"], "registered");
  EXPECT_EQ(result["method"], "adjust with base");
  EXPECT_EQ(result["groups"][0]["name"], "base");
  EXPECT_TRUE(result["groups"][0]["base"]);
  EXPECT_TRUE(result["groups"][0]["transform"].is_null());
  const json shift = result["groups"][1]["transform"]["shift"];
  EXPECT_NEAR(shift[0], -100.0, 1e-9);
  EXPECT_NEAR(shift[1], -200.0, 1e-9);
  EXPECT_NEAR(shift[2], -300.0, 1e-9);
  EXPECT_NEAR(result["atBase"]["rms"], 0.0, 1e-9);
  EXPECT_EQ(result["atBase"]["points"], 4);
}

TEST_F(RegisterCommand, TheSummaryBeginsWithTheFilesAndWhatWasReadOfThem) {
  const ProcessResult result = run({"register", "--method", "pairwise", "base.txt", "shifted.txt"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.err, IsEmpty());
  EXPECT_THAT(result.out, StartsWith("Reference points\n"
                                     "  file         layout  lines  points  group\n"
                                     "  base.txt     NXYZ        4       4  base\n"
                                     "  shifted.txt  NXYZ        4       4  shifted\n"
                                     "\n"
                                     "Registered pairwise: 8 of 8 points in use\n"));
}

TEST_F(RegisterCommand, AGroupThatIsntTurnedHasNoAxis) {
  const ProcessResult result = run({"register", "base.txt", "shifted.txt", "--base", "base"});
  EXPECT_THAT(result.out, HasSubstr("  shifted  0.000000       -       -       -  -100.000000  -200.000000  "
                                    "-300.000000\n"));
}

TEST_F(RegisterCommand, TheAxesOfTheDiscrepanciesAreShownWhenTheyAreAskedFor) {
  // Each target is 6 mm up or down in turn, so each is 3 mm off the mean of both.
  write("low.txt", "P1 0 0 0\nP2 8 0 0\nP3 8 8 0\nP4 0 8 0\n");
  write("high.txt", "P1 0 0 0.006\nP2 8 0 -0.006\nP3 8 8 0.006\nP4 0 8 -0.006\n");
  const std::vector<std::string> pairwise{"register", "--method", "pairwise", "low.txt", "high.txt", "--unit", "m"};
  std::vector<std::string> withAxes = pairwise;
  withAxes.emplace_back("--axes");
  const ProcessResult asked = run(withAxes);
  EXPECT_THAT(asked.out, HasSubstr("\n  group  point  discrepancy     dx     dy      dz"));
  EXPECT_THAT(asked.out, HasSubstr("\n  high   P2           3.000  0.000  0.000  -3.000"));
  EXPECT_THAT(asked.out, HasSubstr("\nFor the protocol: mean 3.000 mm, RMS 3.000 mm, largest 3.000 mm over 8 points in "
                                   "2 stations\n"));
  EXPECT_THAT(run(pairwise).out, Not(HasSubstr("dx")));
}

TEST_F(RegisterCommand, PointsWithoutNamesAreToldHowToGetThem) {
  write("a.txt", "0 0 0\n10 0 0\n0 20 0\n");
  const ProcessResult result = run({"register", "--xyz", "a.txt"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "tiepoint: not registered: no point has a name; --match auto searches for names\n");
}

TEST_F(RegisterCommand, GroupsWithoutAPointToUseAreToldSo) {
  const ProcessResult result =
      run({"register", "base.txt", "shifted.txt", "--exclude", "base", "--exclude", "shifted"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "tiepoint: not registered: no group has a usable point; see the summary\n");
}

/// A cross about the origin, and one whose arms are 1.0003 mm longer in x and 3.0003 mm in y: what is
/// left over has no part in any turn or shift.
constexpr const char* crossLines = "W -10 0 0\nE 10 0 0\nS 0 -20 0\nN 0 20 0\n";
constexpr const char* widerCrossLines = "W -10.0010003 0 0\nE 10.0010003 0 0\nS 0 -20.0030003 0\nN 0 20.0030003 0\n";

TEST_F(RegisterCommand, TheSpreadIsDrawnInTenBins) {
  write("cross.txt", crossLines);
  write("wider.txt", widerCrossLines);
  const ProcessResult result = run({"register", "--unit", "m", "cross.txt", "wider.txt"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.out, HasSubstr("\n"
                                    "\n"
                                    "Spread (mm): distances between registered points of the same name; largest 3.000\n"
                                    "   from     to  distances\n"
                                    "  1.000  1.200          2  ##\n"
                                    "  1.200  1.400          0\n"
                                    "  1.400  1.600          0\n"
                                    "  1.600  1.800          0\n"
                                    "  1.800  2.000          0\n"
                                    "  2.000  2.200          0\n"
                                    "  2.200  2.400          0\n"
                                    "  2.400  2.600          0\n"
                                    "  2.600  2.800          0\n"
                                    "  2.800  3.000          2  ##\n"));
}

TEST_F(RegisterCommand, TheSpreadStandsInTheJsonInTheFilesUnit) {
  write("cross.txt", crossLines);
  write("wider.txt", widerCrossLines);
  const json spread = runJson({"register", "--unit", "m", "cross.txt", "wider.txt"})["spread"];
  EXPECT_NEAR(spread["largest"], 0.0030003, 1.1e-7) << "cut, not rounded, to seven decimals";
  ASSERT_EQ(spread["histogram"].size(), 10u);
  EXPECT_DOUBLE_EQ(spread["histogram"][0]["from"], 0.001);
  EXPECT_DOUBLE_EQ(spread["histogram"][0]["to"], 0.0012);
  EXPECT_EQ(spread["histogram"][0]["distances"], 2);
  EXPECT_EQ(spread["histogram"][5]["distances"], 0);
  EXPECT_DOUBLE_EQ(spread["histogram"][9]["to"], 0.003);
  EXPECT_EQ(spread["histogram"][9]["distances"], 2);
}

TEST_F(RegisterCommand, WhatIsNotRegisteredHasNoSpread) {
  EXPECT_TRUE(runJson({"register", "base.txt"}, 1)["spread"].is_null());
}

TEST_F(RegisterCommand, TheSpreadIsNotDrawnForFewerThanThreeDistances) {
  const ProcessResult result = run({"register", "--base", "base", "base.txt", "shifted.txt"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.out, Not(HasSubstr("Spread")));
  const json spread = runJson({"register", "--base", "base", "base.txt", "shifted.txt"})["spread"];
  EXPECT_EQ(spread, json({{"largest", 0.0}, {"histogram", json::array()}}));
}

TEST_F(RegisterCommand, OutputThatIsNoTerminalHasNoColours) {
  EXPECT_THAT(run({"register", "base.txt", "shifted.txt"}).out, Not(HasSubstr("\x1B")));
}

TEST_F(RegisterCommand, FilesOfAllLayoutsGoIntoOneRegistration) {
  write("weighted.txt", "P1 0 0 1 1\nP2 10 0 1 0.5\nP3 0 10 1 1\n");
  write("unnamed.txt", "1 2 3\n");
  write("unnamed_weighted.txt", "1 2 3 0.5\n");
  const json result = runJson({"register", "base.txt", "--nxyz", "shifted.txt", "--xyz", "unnamed.txt", "--xyzw",
                               "unnamed_weighted.txt", "--nxyzw", "weighted.txt"});
  ASSERT_EQ(result["import"]["files"].size(), 5u);
  EXPECT_EQ(result["import"]["files"][1]["layout"], "NXYZ");
  EXPECT_EQ(result["import"]["files"][2]["layout"], "XYZ");
  EXPECT_EQ(result["import"]["files"][3]["layout"], "XYZW");
  EXPECT_EQ(result["import"]["files"][4]["layout"], "NXYZW");
  EXPECT_EQ(result["points"][8]["reason"], "unnamed");
  EXPECT_EQ(result["points"][11]["weight"], 0.5);
  EXPECT_NEAR(result["groups"][4]["transform"]["shift"][2], -1.0, 1e-9);
}

TEST_F(RegisterCommand, ExcludedAndWeightlessPointsAreOutAndSaySo) {
  write("third.txt", baseLines);
  const ProcessResult result = run({"register", "base.txt", "shifted.txt", "third.txt", "--exclude", "base:P1",
                                    "--weight", "shifted:P2=0", "--exclude", "third"});
  EXPECT_EQ(result.status, 1) << "two points are left in common";
  EXPECT_THAT(result.out, HasSubstr("  base     excluded                                       P1\n"));
  EXPECT_THAT(result.out, HasSubstr("  shifted  weight 0                                       P2\n"));
  EXPECT_THAT(result.out, HasSubstr("  third    excluded                                       P1, P2, P3, P4\n"));
}

TEST_F(RegisterCommand, AFileOfWeightsCountsAndTheOptionGoesOverIt) {
  write("weights.txt", "# far away\nshifted P1 0.5\nshifted P2 0.25\n");
  const json result =
      runJson({"register", "base.txt", "shifted.txt", "--weights", "weights.txt", "--weight", "shifted:P2=1"});
  EXPECT_EQ(result["points"][4]["weight"], 0.5);
  EXPECT_EQ(result["points"][5]["weight"], 1.0);
}

TEST_F(RegisterCommand, GroupsThatDontHangTogetherAreToldWhatTheyLack) {
  write("far.txt", "P1 0 0 0\nQ1 1 0 0\nQ2 0 1 0\nQ3 0 0 1\n");
  write("far2.txt", "Q1 1 0 5\nQ2 0 1 5\nQ3 0 0 6\n");
  const ProcessResult result =
      run({"register", "--method", "pairwise", "base.txt", "shifted.txt", "far.txt", "far2.txt"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "tiepoint: not registered: the groups aren't connected; see the summary for what is missing\n");
  EXPECT_THAT(result.out, HasSubstr("  cluster 0  base, shifted\n  cluster 1  far, far2\n"));
  EXPECT_THAT(result.out, HasSubstr("  cluster 0 (base, shifted) and cluster 1 (far, far2)  1 common name (P1)  2 more "
                                    "needed\n"));
  EXPECT_THAT(result.out, HasSubstr("--keep-cluster NUMBER"));
}

TEST_F(RegisterCommand, AClusterCanBeKept) {
  write("far.txt", "P1 0 0 0\nQ1 1 0 0\nQ2 0 1 0\nQ3 0 0 1\n");
  write("far2.txt", "Q1 1 0 5\nQ2 0 1 5\nQ3 0 0 6\n");
  write("loner.txt", "P1 0 0 0\nP2 1 0 0\nQ1 0 0 1\n");
  const json result =
      runJson({"register", "base.txt", "shifted.txt", "far.txt", "far2.txt", "loner.txt", "--keep-cluster", "1"});
  EXPECT_EQ(result["outcome"], "registered");
  EXPECT_EQ(result["keptCluster"], 1);
  EXPECT_EQ(result["groups"][0]["active"], 0);
  EXPECT_FALSE(result["groups"][3]["transform"].is_null());
}

TEST_F(RegisterCommand, AClusterThatThereIsntIsAnUsageError) {
  write("far.txt", "Q1 1 0 0\nQ2 0 1 0\nQ3 0 0 1\n");
  write("far2.txt", "Q1 1 0 5\nQ2 0 1 5\nQ3 0 0 6\n");
  const ProcessResult result =
      run({"register", "base.txt", "shifted.txt", "far.txt", "far2.txt", "--keep-cluster", "7"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.err, "tiepoint: --keep-cluster 7: the clusters are 0 to 1\n");
}

TEST_F(RegisterCommand, ABaseThatSharesTooLittleIsntLeftOutInSilence) {
  write("third.txt", shiftedLines);
  const ProcessResult result = run({"register", "--base", "base", "base.txt", "shifted.txt", "third.txt", "--exclude",
                                    "base:P1", "--exclude", "base:P2"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err,
            "tiepoint: not registered: the base shares fewer than 3 points with the other groups; choose another base "
            "or none\n");
  EXPECT_THAT(result.out, HasSubstr("in a system of their own, leave out --base."));
}

TEST_F(RegisterCommand, AStationThatIsLeftOutIsWarnedOf) {
  write("thin.txt", "P1 0 0 0\nP2 1 0 0\n");
  const ProcessResult result = run({"register", "base.txt", "shifted.txt", "thin.txt"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, "tiepoint: warning: thin isn't registered; see the points not used\n");
  EXPECT_THAT(result.out, HasSubstr("  thin  the group has fewer than 3 shared points left  P1, P2\n"));
  EXPECT_THAT(result.out, HasSubstr("  thin     not registered\n"));
}

TEST_F(RegisterCommand, OneStationAloneHasNothingToJoin) {
  const ProcessResult result = run({"register", "base.txt"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "tiepoint: not registered: there is only one group; add a second one\n");
  EXPECT_THAT(result.out, HasSubstr("Not registered: there is only one group, base, and nothing to join it with.\n"));
}

TEST_F(RegisterCommand, QuietSaysNothingWhenAllIsWell) {
  write("thin.txt", "P1 0 0 0\nP2 1 0 0\n");
  const ProcessResult result = run({"register", "--quiet", "base.txt", "shifted.txt", "thin.txt"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.out, IsEmpty());
  EXPECT_THAT(result.err, IsEmpty());
}

// --- What is written.

TEST_F(RegisterCommand, CommonPointsGoToTheNamedFileWithOrWithoutItsEnding) {
  EXPECT_EQ(run({"register", "base.txt", "shifted.txt", "--common-points", "common.txt"}).status, 0);
  EXPECT_EQ(run({"register", "base.txt", "shifted.txt", "--common-points", "other"}).status, 0);
  EXPECT_EQ(readText("common.txt"),
            "P1 0.000000 0.000000 0.000000 1.00\nP2 10.000000 0.000000 0.000000 1.00\n"
            "P3 0.000000 10.000000 0.000000 1.00\nP4 0.000000 0.000000 10.000000 1.00\n");
  EXPECT_EQ(read("other.txt"), read("common.txt"));
}

TEST_F(RegisterCommand, NothingIsOverwrittenSilently) {
  write("common.txt", "mine");
  const std::vector<std::string> arguments{"register", "base.txt", "shifted.txt", "--common-points", "common.txt"};
  const ProcessResult refused = run(arguments);
  EXPECT_EQ(refused.status, 3);
  EXPECT_EQ(refused.err, "tiepoint: --common-points common.txt: common.txt: the file exists; --force replaces it\n");
  EXPECT_EQ(read("common.txt"), "mine");

  std::vector<std::string> forced = arguments;
  forced.push_back("--force");
  EXPECT_EQ(run(forced).status, 0);
  EXPECT_THAT(read("common.txt"), HasSubstr("P1 "));
}

TEST_F(RegisterCommand, CommonPointsNeverReplaceWhatTheCommandReads) {
  EXPECT_EQ(run({"register", "base.txt", "shifted.txt", "--common-points", "shifted.txt", "--force"}).err,
            "tiepoint: --common-points shifted.txt: shifted.txt: this command reads that file; choose another path\n");
  EXPECT_EQ(read("shifted.txt"), shiftedLines);
}

TEST_F(RegisterCommand, AFolderThatIsntThereIsNamed) {
  const ProcessResult result = run({"register", "base.txt", "shifted.txt", "--common-points", "out/common.txt"});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.err, "tiepoint: --common-points out/common.txt: there is no folder out; create it first\n");
}

TEST_F(RegisterCommand, MergedTargetsCanBeStoredAsAGroup) {
  ASSERT_EQ(run({"register", "--document", "d", "base.txt", "shifted.txt", "--store", "merged"}).status, 0);
  const json groups = runJson({"groups", "--document", "d", "--points"});
  EXPECT_EQ(groups["groups"][2]["name"], "merged");
  EXPECT_EQ(groups["groups"][2]["points"][1]["name"], "P2");
  EXPECT_NEAR(groups["groups"][2]["points"][1]["x"], 10.0, 1e-9);
  const ProcessResult again = run({"register", "--document", "d", "--store", "merged"});
  EXPECT_EQ(again.status, 1);
  EXPECT_EQ(again.err, "tiepoint: --store merged: the drawing already has a group of this name; choose another\n");
  const ProcessResult badName = run({"register", "--document", "d", "--store", "a.b"});
  EXPECT_EQ(badName.status, 1);
  EXPECT_EQ(badName.err,
            "tiepoint: --store a.b: a group can't have this name (none of <>/\\*|?:\". and no device name)\n");
}

// --- Clouds.

class RegisterClouds : public RegisterCommand {
 protected:
  RegisterClouds() {
    write("shifted.xyz", "100 200 300 17\n");
    write("base.xyz", "1 2 3 18\n");
  }
  const std::vector<std::string> applied{"register", "--document",    "d",       "--base",
                                         "base",     "--apply",       "--cloud", "shifted=shifted.xyz",
                                         "--cloud",  "base=base.xyz", "--moved", "out"};
  std::vector<std::string> with(std::vector<std::string> more) const {
    more.insert(more.begin(), applied.begin(), applied.end());
    return more;
  }
};

TEST_F(RegisterClouds, ApplyMovesTheCloudOfEachGroupAndWritesMovedCopies) {
  const ProcessResult result = run(with({"base.txt", "shifted.txt"}));
  ASSERT_EQ(result.status, 0) << result.err;
  EXPECT_THAT(result.out, HasSubstr("  shifted  moved "));
  EXPECT_THAT(result.out, HasSubstr("  base     stays: its group is the base "));
  EXPECT_EQ(read("out/base.xyz"), "1 2 3 18\n");

  double x = 1, y = 1, z = 1;
  int intensity = 0;
  ASSERT_EQ(std::sscanf(read("out/shifted.xyz").c_str(), "%lf %lf %lf %d", &x, &y, &z, &intensity), 4);
  EXPECT_NEAR(x, 0.0, 1e-9);
  EXPECT_NEAR(y, 0.0, 1e-9);
  EXPECT_NEAR(z, 0.0, 1e-9);
  EXPECT_EQ(intensity, 17);

  const json clouds = runJson({"clouds", "--document", "d"});
  EXPECT_EQ(clouds["clouds"][0]["name"], "shifted");
  EXPECT_EQ(clouds["clouds"][0]["source"], (folder.path() / "shifted.xyz").string());
  EXPECT_NEAR(clouds["clouds"][0]["matrix"][2][3], -300.0, 1e-9);
  EXPECT_EQ(clouds["clouds"][1]["matrix"], json::parse("[[1.0,0.0,0.0,0.0],[0.0,1.0,0.0,0.0],[0.0,0.0,1.0,0.0],"
                                                       "[0.0,0.0,0.0,1.0]]"));
}

TEST_F(RegisterClouds, ASecondApplyIsRefusedUnlessForced) {
  ASSERT_EQ(run(with({"base.txt", "shifted.txt"})).status, 0);
  const ProcessResult again = run({"register", "--document", "d", "--base", "base", "--apply"});
  EXPECT_EQ(again.status, 1);
  EXPECT_EQ(again.err, "tiepoint: cloud shifted was moved before; --force moves it again\n");
  EXPECT_NEAR(runJson({"clouds", "--document", "d"})["clouds"][0]["matrix"][2][3], -300.0, 1e-9);
  EXPECT_EQ(run({"register", "--document", "d", "--base", "base", "--apply", "--force"}).status, 0);
  EXPECT_NEAR(runJson({"clouds", "--document", "d"})["clouds"][0]["matrix"][2][3], -600.0, 1e-9);
}

TEST_F(RegisterClouds, AFolderThatCantBeMadeIsNamed) {
  write("out", "a file");
  const ProcessResult result = run(with({"base.txt", "shifted.txt"}));
  EXPECT_EQ(result.status, 3);
  EXPECT_THAT(result.err, HasSubstr("tiepoint: --moved out: the folder can't be created"));
}

TEST_F(RegisterClouds, WhatFailsAtTheEndLeavesTheDrawingAsItWas) {
  std::filesystem::create_directory(folder.path() / "out");
  write("out/shifted.xyz", "mine");
  const ProcessResult result = run(with({"base.txt", "shifted.txt", "--store", "merged"}));
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.err, "tiepoint: " + pathIn("out", "shifted.xyz") + ": the file exists; --force replaces it\n");
  EXPECT_EQ(runJson({"clouds", "--document", "d"})["clouds"].size(), 0u);
  EXPECT_EQ(runJson({"groups", "--document", "d"})["groups"].size(), 2u);
}

TEST_F(RegisterClouds, AMovedCopyNeverReplacesTheSurvey) {
  std::filesystem::create_directory(folder.path() / "clouds");
  write("clouds/shifted.txt", "100 200 300 17\n");
  const ProcessResult result = run({"register", "base.txt", "shifted.txt", "--base", "base", "--apply", "--cloud",
                                    "shifted=clouds/shifted.txt", "--moved", ".", "--force"});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.err, "tiepoint: --moved: " + pathIn(".", "shifted.txt") +
                            ": this command reads that file; choose another path\n");
  EXPECT_EQ(read("shifted.txt"), shiftedLines);
}

TEST_F(RegisterClouds, WithoutApplyNothingMoves) {
  const json result = runJson({"register", "base.txt", "shifted.txt", "--cloud", "shifted=shifted.xyz"});
  EXPECT_EQ(result["clouds"][0]["move"], "not-asked");
  EXPECT_EQ(run({"register", "base.txt", "shifted.txt", "--moved", "out"}).status, 2);
}

TEST_F(RegisterClouds, ACloudOfNoGroupOrNoFileIsRefused) {
  const ProcessResult unknown = run({"register", "base.txt", "shifted.txt", "--cloud", "shiftet=shifted.xyz"});
  EXPECT_EQ(unknown.status, 2);
  EXPECT_EQ(unknown.err,
            "tiepoint: --cloud shiftet=shifted.xyz: there is no group \"shiftet\"; did you mean \"shifted\"?\n");
  const ProcessResult missing = run({"register", "base.txt", "shifted.txt", "--cloud", "shifted=none.xyz"});
  EXPECT_EQ(missing.status, 3);
  EXPECT_EQ(missing.err, "tiepoint: none.xyz: there is no such file (cloud shifted)\n");
}

// --- The drawing.

TEST_F(RegisterCommand, ADrawingThatHoldsGroupsNeedsNoFiles) {
  ASSERT_EQ(run({"import", "--document", "d", "base.txt", "shifted.txt"}).status, 0);
  const json result = runJson({"register", "--document", "d"});
  EXPECT_EQ(result["outcome"], "registered");
  EXPECT_EQ(result["document"], "d");
  EXPECT_EQ(result["import"]["files"].size(), 0u);
}

TEST_F(RegisterCommand, FilesJoinWhatTheDrawingHolds) {
  ASSERT_EQ(run({"import", "--document", "d", "base.txt"}).status, 0);
  EXPECT_EQ(runJson({"register", "--document", "d", "shifted.txt"})["groups"].size(), 2u);
  EXPECT_EQ(runJson({"groups", "--document", "d"})["groups"].size(), 2u);
}

TEST_F(RegisterCommand, AnEmptyDrawingIsRefused) {
  ASSERT_EQ(run({"clouds", "--document", "d", "--add", "a=base.txt"}).status, 0);
  const ProcessResult result = run({"register", "--document", "d"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "tiepoint: the drawing holds no reference points; name files to import\n");
}

TEST_F(RegisterCommand, AMistypedBaseLeavesTheDrawingUnmade) {
  const ProcessResult result = run({"register", "--document", "d", "--base", "bse", "base.txt", "shifted.txt"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.err, "tiepoint: --base bse: there is no group \"bse\"; did you mean \"base\"?\n");
  EXPECT_FALSE(exists("d"));
}

TEST_F(RegisterCommand, AClusterThatNeedntBeKeptIsTold) {
  const ProcessResult result = run({"register", "base.txt", "shifted.txt", "--keep-cluster", "0"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, "tiepoint: warning: the groups are connected as they are; --keep-cluster changed nothing\n");
}

TEST_F(RegisterCommand, AKeptClusterWithoutTheBasesLosesThemAll) {
  write("base2.txt", "P1 0 0 0\nP2 10 0 0\nP3 0 10 0\n");
  write("far.txt", "Q1 1 0 0\nQ2 0 1 0\nQ3 0 0 1\n");
  write("far2.txt", "Q1 1 0 5\nQ2 0 1 5\nQ3 0 0 6\n");
  const ProcessResult result = run({"register", "base.txt", "base2.txt", "shifted.txt", "far.txt", "far2.txt", "--base",
                                    "base", "--base", "base2", "--keep-cluster", "1"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.err, HasSubstr("tiepoint: not registered: the base shares fewer than 3 points with the other "
                                    "groups; choose another base or none\n"));
}

TEST_F(RegisterCommand, SeveralBasesAreKeptWithTheirCluster) {
  write("base2.txt", "P1 0 0 0\nP2 10 0 0\nP3 0 10 0\n");
  write("far.txt", "Q1 1 0 0\nQ2 0 1 0\nQ3 0 0 1\n");
  write("far2.txt", "Q1 1 0 5\nQ2 0 1 5\nQ3 0 0 6\n");
  const json result = runJson({"register", "base.txt", "base2.txt", "shifted.txt", "far.txt", "far2.txt", "--base",
                               "base", "--base", "base2", "--keep-cluster", "0"});
  EXPECT_EQ(result["outcome"], "registered");
  EXPECT_EQ(result["groups"][1]["active"], 3);
  EXPECT_EQ(result["groups"][3]["active"], 0);
}

}  // namespace
