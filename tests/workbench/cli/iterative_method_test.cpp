// tiepoint register --method iterative, from the outside.
#include <gmock/gmock.h>

#include "workbench/cli/survey_files.h"

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class IterativeMethod : public SurveyFiles {
 protected:
  std::vector<std::string> iteratively(std::vector<std::string> more) const {
    more.insert(more.begin(), {"register", "--method", "iterative"});
    return more;
  }
  /// The one line that a mistake gets.
  std::string mistake(const std::vector<std::string>& arguments) const {
    const ProcessResult result = run(arguments);
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.out, IsEmpty());
    return result.err;
  }
};

// --- Options.

TEST_F(IterativeMethod, ItsOptionsAreRefusedBesideThePairwiseMethod) {
  EXPECT_EQ(mistake({"register", "base.txt", "--max-iterations", "5"}),
            "tiepoint: --max-iterations needs --method iterative\n");
  EXPECT_EQ(mistake({"register", "base.txt", "--convergence", "1e-6"}),
            "tiepoint: --convergence needs --method iterative\n");
}

TEST_F(IterativeMethod, ItsLimitsMustBeAboveZero) {
  EXPECT_EQ(mistake(iteratively({"base.txt", "--max-iterations", "0"})),
            "tiepoint: --max-iterations 0: must be at least 1\n");
  EXPECT_EQ(mistake(iteratively({"base.txt", "--convergence", "0"})),
            "tiepoint: --convergence 0: must be a length above 0, in drawing units\n");
  EXPECT_EQ(mistake(iteratively({"base.txt", "--convergence", "-0.5"})),
            "tiepoint: --convergence -0.5: must be a length above 0, in drawing units\n");
  EXPECT_EQ(mistake(iteratively({"base.txt", "--convergence", "nan"})),
            "tiepoint: --convergence nan: must be a length above 0, in drawing units\n");
  EXPECT_EQ(mistake(iteratively({"base.txt", "--convergence", "inf"})),
            "tiepoint: --convergence inf: must be a length above 0, in drawing units\n");
}

TEST_F(IterativeMethod, LimitsThatAreNoNumbersAreRefused) {
  EXPECT_THAT(mistake(iteratively({"base.txt", "--max-iterations", "many"})), HasSubstr("--max-iterations"));
  EXPECT_THAT(mistake(iteratively({"base.txt", "--max-iterations", "1.5"})), HasSubstr("--max-iterations"));
  EXPECT_THAT(mistake(iteratively({"base.txt", "--convergence", "1mm"})), HasSubstr("--convergence"));
}

TEST_F(IterativeMethod, AClusterIsKeptByThePairwiseMethodOnly) {
  EXPECT_EQ(mistake(iteratively({"base.txt", "--keep-cluster", "0"})),
            "tiepoint: --keep-cluster needs --method adjust or pairwise; the iterative method registers all groups: "
            "leave some "
            "out with --exclude GROUP\n");
}

TEST_F(IterativeMethod, AProfileWhoseLimitsAreZeroIsNamed) {
  write("profile.json", R"({"PointClouds\\Registration": {"MaxIterations": 0}})");
  const ProcessResult result = run(iteratively({"base.txt", "shifted.txt", "--profile", "profile.json"}));
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(
      result.err,
      HasSubstr("tiepoint: the profile limits the run to 0 iterations and a criterion of 0.001; both must be above 0"));
}

// --- Runs.

TEST_F(IterativeMethod, TwoStationsGiveTheShiftBetweenThem) {
  // The target at the base's origin isn't held by it, so it takes some passes even without noise.
  const json result = runJson(
      iteratively({"--base", "base", "base.txt", "shifted.txt", "--max-iterations", "1000", "--convergence", "1e-12"}));
  EXPECT_EQ(result["outcome"], "registered");
  EXPECT_EQ(result["method"], "iterative with base");
  const json shift = result["groups"][1]["transform"]["shift"];
  EXPECT_NEAR(shift[0], -100.0, 1e-9);
  EXPECT_NEAR(shift[1], -200.0, 1e-9);
  EXPECT_NEAR(shift[2], -300.0, 1e-9);
  EXPECT_TRUE(result["groups"][0]["transform"].is_null());
  EXPECT_EQ(result["iterations"]["limit"], 1000);
  EXPECT_EQ(result["iterations"]["criterion"], 1e-12);
  EXPECT_EQ(result["iterations"]["converged"], true);
}

TEST_F(IterativeMethod, StationsThatCoincideConvergeInTheSecondPass) {
  write("same.txt", baseLines);
  const ProcessResult result = run(iteratively({"base.txt", "same.txt"}));
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.err, IsEmpty());
  EXPECT_THAT(result.out, HasSubstr("Registered iteratively: 8 of 8 points in use\nIteration 1 of at most 100 moved "
                                    "the merged targets by "));
  EXPECT_THAT(result.out, HasSubstr("; the criterion is 0.001 (drawing units)\n"));
}

TEST_F(IterativeMethod, TheLimitsAreTheProfilesUnlessTheyAreGiven) {
  write("profile.json", R"({"PointClouds\\Registration": {"MaxIterations": 7, "ConvergenceCriteria": 0.5}})");
  const json ofProfile = runJson(iteratively({"base.txt", "shifted.txt", "--profile", "profile.json"}));
  EXPECT_EQ(ofProfile["iterations"]["limit"], 7);
  EXPECT_EQ(ofProfile["iterations"]["criterion"], 0.5);
  const json given = runJson(iteratively(
      {"base.txt", "shifted.txt", "--profile", "profile.json", "--max-iterations", "9", "--convergence", "0.25"}));
  EXPECT_EQ(given["iterations"]["limit"], 9);
  EXPECT_EQ(given["iterations"]["criterion"], 0.25);
}

TEST_F(IterativeMethod, ThePairwiseMethodHasNoIterations) {
  EXPECT_TRUE(runJson({"register", "base.txt", "shifted.txt"})["iterations"].is_null());
}

TEST_F(IterativeMethod, ARunThatItsLimitEndedSaysSo) {
  // The stations differ by a quarter turn; the second pass still moves the targets by far more than 0.001.
  write("turned.txt", "P1 0 0 0\nP2 0 10 0\nP3 -10 0 0\nP4 0 0 10\n");
  const ProcessResult result = run(iteratively({"base.txt", "turned.txt", "--max-iterations", "1"}));
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err,
            "tiepoint: warning: not converged: stopped by the limit of 1 iterations; see the summary, raise "
            "--max-iterations, or use the pairwise method\n");
  EXPECT_THAT(
      result.out,
      HasSubstr(
          "Not converged: stopped by the limit of 1 iterations. The last pass still moved the merged targets by\n"));
  EXPECT_THAT(result.out, HasSubstr("; the criterion is 0.001 (drawing units). A small movement per pass"));
  EXPECT_THAT(result.out, HasSubstr("--method pairwise, which doesn't have this"));
}

TEST_F(IterativeMethod, TheMovementOfARunThatDidntConvergeIsAboveItsCriterion) {
  write("turned.txt", "P1 0 0 0\nP2 0 10 0\nP3 -10 0 0\nP4 0 0 10\n");
  const json iterations =
      runJson(iteratively({"--quiet", "base.txt", "turned.txt", "--max-iterations", "1"}))["iterations"];
  EXPECT_EQ(iterations["converged"], false);
  EXPECT_EQ(iterations["actual"], 1);
  EXPECT_EQ(iterations["limit"], 1);
  EXPECT_GT(iterations["movement"], 0.001);
}

TEST_F(IterativeMethod, GroupsThatDontHangTogetherAreWarnedOf) {
  // A and B share three names, C and D three others, and B and C only one.
  write("A.txt", "P1 0 0 0\nP2 10 0 0\nP3 0 10 0\n");
  write("B.txt", "P1 0 0 5\nP2 10 0 5\nP3 0 10 5\nX 3 3 3\n");
  write("C.txt", "Q1 0 0 0\nQ2 10 0 0\nQ3 0 10 0\nX 3 3 3\n");
  write("D.txt", "Q1 0 0 7\nQ2 10 0 7\nQ3 0 10 7\n");
  const ProcessResult text = run(iteratively({"A.txt", "B.txt", "C.txt", "D.txt", "--max-iterations", "5000"}));
  EXPECT_EQ(text.status, 0);
  EXPECT_THAT(
      text.err,
      HasSubstr("tiepoint: warning: the groups aren't connected: A, B | C, D; the iterative method goes on, but these "
                "sets share fewer than 3 names with one another, so how they lie to one another means little\n"));
  const json result = runJson(iteratively({"A.txt", "B.txt", "C.txt", "D.txt", "--max-iterations", "5000"}));
  EXPECT_EQ(result["outcome"], "registered");
  EXPECT_EQ(result["parts"],
            json::parse(R"([{"cluster":null,"groups":["A","B"]},{"cluster":null,"groups":["C","D"]}])"));
  EXPECT_EQ(result["links"], json::parse(R"([{"parts":[0,1],"commonNames":["X"]}])"));
}

TEST_F(IterativeMethod, GroupsThatHangTogetherHaveNoParts) {
  const json result = runJson(iteratively({"base.txt", "shifted.txt"}));
  EXPECT_THAT(result["parts"], IsEmpty());
  EXPECT_EQ(run({"register", "base.txt", "shifted.txt"}).err, "");
}

TEST_F(IterativeMethod, OneStationAloneHasNothingToJoin) {
  const ProcessResult result = run(iteratively({"base.txt"}));
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.out, HasSubstr("Not registered: there is only one group, base, and nothing to join it with.\n"));
}

TEST_F(IterativeMethod, ABaseThatSharesTooLittleIsntLeftOutInSilence) {
  write("third.txt", shiftedLines);
  const ProcessResult result = run(iteratively(
      {"--base", "base", "base.txt", "shifted.txt", "third.txt", "--exclude", "base:P1", "--exclude", "base:P2"}));
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err,
            "tiepoint: not registered: the base shares fewer than 3 points with the other groups; choose another base "
            "or none\n");
}

TEST_F(IterativeMethod, CoordinatesThatAreFarTooLargeAreRefusedAndWriteNothing) {
  write("huge.txt", "P1 1e308 0 0\nP2 -1e308 0 0\nP3 0 1e308 0\nP4 0 0 1e308\n");
  const ProcessResult result = run(iteratively(
      {"--base", "base", "base.txt", "huge.txt", "--matrices", "out", "--transforms", "t.json", "--report", "r.html"}));
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.err, HasSubstr("isn't a rigid motion; are its coordinates far too large?\n"));
  EXPECT_FALSE(exists("out"));
  EXPECT_FALSE(exists("t.json"));
  EXPECT_FALSE(exists("r.html"));
}

TEST_F(IterativeMethod, WithoutATerminalThereIsNoSpinner) {
  const ProcessResult result = run(iteratively({"base.txt", "shifted.txt", "--max-iterations", "1000"}));
  EXPECT_THAT(result.err, Not(HasSubstr("\r")));
}

// --- The examples.

const std::string hall = EXAMPLES_FOLDER "/plant_hall";

json hallRun(const std::vector<std::string>& more) {
  std::vector<std::string> arguments{"register", "--json", "--quiet", "--base", "S1"};
  for (const char* station : {"S1", "S2", "S3", "S4", "S5"}) arguments.push_back(hall + "/nxyz/" + station + ".txt");
  arguments.push_back("--nxyzw");
  for (const char* station : {"S6", "S7", "S8"}) arguments.push_back(hall + "/nxyzw/" + station + ".txt");
  arguments.insert(arguments.end(), {"--exclude", "S4:T13"});
  arguments.insert(arguments.end(), more.begin(), more.end());
  const ProcessResult result = runTiepoint(arguments);
  EXPECT_EQ(result.status, 0) << result.err;
  return json::parse(result.out);
}

TEST(IterativePlantHall, DoesntConvergeWithinTheDefaultLimit) {
  const json iterations = hallRun({"--method", "iterative"})["iterations"];
  EXPECT_EQ(iterations["actual"], 100);
  EXPECT_EQ(iterations["limit"], 100);
  EXPECT_EQ(iterations["converged"], false);
}

TEST(IterativePlantHall, NoPointStandsOutWhileTheStationsStillMove) {
  const json moving = hallRun({"--method", "iterative", "--max-iterations", "100"});
  EXPECT_EQ(moving["iterations"]["converged"], false);
  EXPECT_TRUE(moving["standOut"].is_null()) << moving["standOut"];
}

/// The two methods weigh the same measurements, of 1 mm noise, differently; at the far end of the
/// hall, some 60 m away, that is a few times the noise. Unconverged stations miss by metres.
constexpr double withinNoise = 0.010;

TEST(IterativePlantHall, AgreesWithThePairwiseMethodOnceItHasConverged) {
  const json iterative = hallRun({"--method", "iterative", "--max-iterations", "50000", "--convergence", "1e-9"});
  EXPECT_EQ(iterative["iterations"]["converged"], true);
  const json pairwise = hallRun({"--method", "pairwise"});
  ASSERT_EQ(iterative["points"].size(), pairwise["points"].size());
  for (std::size_t i = 0; i < pairwise["points"].size(); ++i) {
    const json& a = iterative["points"][i]["registered"];
    const json& b = pairwise["points"][i]["registered"];
    if (b.is_null()) continue;
    for (std::size_t k = 0; k < 3; ++k) EXPECT_NEAR(a[k], b[k], withinNoise) << pairwise["points"][i];
  }
}

TEST(IterativeLidar18, HasTheKnownRmsAtTheReferenceStation) {
  const ProcessResult result =
      runTiepoint({"register", "--method", "iterative", "--unit", "m", "--base", "reference", "--max-iterations",
                   "100000", "--convergence", "1e-12", EXAMPLES_FOLDER "/lidar18/reference.txt",
                   EXAMPLES_FOLDER "/lidar18/unregistered.txt"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.out, HasSubstr("\nRMS at the base: 50.525 mm over 18 points\n"));
}

}  // namespace
