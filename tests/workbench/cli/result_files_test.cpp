// The matrices, transformations and reports that tiepoint register writes.
#include <gmock/gmock.h>

#include <sstream>

#include "workbench/cli/survey_files.h"

namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;
using tiepoint::testing::onWindows;

class ResultFilesOfRegister : public SurveyFiles {
 protected:
  ResultFilesOfRegister() {
    // From here to the base: a turn by 90 degrees about Z, then a shift by (10, -2.5, 0.125).
    write("turned.txt", "P1 2.5 10 -0.125\nP2 2.5 0 -0.125\nP3 12.5 10 -0.125\nP4 2.5 10 9.875\n");
  }
  std::vector<std::string> withBase(std::vector<std::string> more) const {
    more.insert(more.begin(), {"register", "--base", "base", "base.txt", "turned.txt"});
    return more;
  }
  /// The one line that a mistake gets.
  std::string refusal(const std::vector<std::string>& arguments, int status) const {
    const ProcessResult result = run(arguments);
    EXPECT_EQ(result.status, status);
    EXPECT_THAT(result.out, IsEmpty());
    return result.err;
  }
  std::vector<std::string> namesIn(const std::string& name) const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path() / name)) {
      names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
  }
};

// --- Options.

TEST_F(ResultFilesOfRegister, AFormatOrAKindThatThereIsntIsRefused) {
  EXPECT_EQ(refusal(withBase({"--matrices", "out", "--matrix-format", "ptx"}), 2),
            "tiepoint: --matrix-format ptx: unknown; choose plain, 4x4 or trf\n");
  EXPECT_EQ(refusal(withBase({"--report", "r.html", "--report-kind", "all"}), 2),
            "tiepoint: --report-kind all: unknown; choose results, points or groups\n");
  EXPECT_FALSE(exists("out"));
}

TEST_F(ResultFilesOfRegister, AFormatOrAKindGoesWithAPlaceToWrite) {
  EXPECT_EQ(refusal(withBase({"--matrix-format", "trf"}), 2), "tiepoint: --matrix-format needs --matrices FOLDER\n");
  EXPECT_EQ(refusal(withBase({"--report-kind", "points"}), 2), "tiepoint: --report-kind needs --report FILE\n");
}

TEST_F(ResultFilesOfRegister, AFolderThatIsntThereIsNamed) {
  EXPECT_EQ(refusal(withBase({"--transforms", "no/t.json"}), 3),
            "tiepoint: --transforms no/t.json: there is no folder no; create it first\n");
  EXPECT_EQ(refusal(withBase({"--report", "no/r.html"}), 3),
            "tiepoint: --report no/r.html: there is no folder no; create it first\n");
}

// --- Matrices.

TEST_F(ResultFilesOfRegister, PlainMatricesHoldTheJsonsNumbersAndTheBasesIdentity) {
  const json result = runJson(withBase({"--matrices", "out/plain"}));
  EXPECT_EQ(result["matrixFiles"], json({pathIn("out/plain", "base.txt"), pathIn("out/plain", "turned.txt")}));
  EXPECT_THAT(namesIn("out/plain"), ElementsAre("base.txt", "turned.txt"));
  EXPECT_EQ(read("out/plain/base.txt"), "1 0 0 0\n0 1 0 0\n0 0 1 0\n0 0 0 1\n");

  std::istringstream numbers(read("out/plain/turned.txt"));
  for (std::size_t row = 0; row < 4; ++row) {
    for (std::size_t column = 0; column < 4; ++column) {
      std::string text;
      numbers >> text;
      EXPECT_EQ(std::stod(text), result["groups"][1]["transform"]["matrix"][row][column]) << row << ", " << column;
    }
  }
  std::string more;
  EXPECT_FALSE(numbers >> more);
}

TEST_F(ResultFilesOfRegister, APlainMatrixBringsAStationToTheBase) {
  ASSERT_EQ(run(withBase({"--matrices", "out"})).status, 0);
  double m[4][4];
  std::istringstream numbers(read("out/turned.txt"));
  for (auto& row : m) {
    for (double& value : row) numbers >> value;
  }
  // P2 as the station has it, and as the base has it.
  const double p[4] = {2.5, 0.0, -0.125, 1.0};
  const double expected[4] = {10.0, 0.0, 0.0, 1.0};
  for (int row = 0; row < 4; ++row) {
    EXPECT_NEAR(m[row][0] * p[0] + m[row][1] * p[1] + m[row][2] * p[2] + m[row][3] * p[3], expected[row], 1e-9);
  }
}

TEST_F(ResultFilesOfRegister, TheModulesMatricesAreTransposedAndLeaveOutTheBase) {
  ASSERT_EQ(run(withBase({"--matrices", "out", "--matrix-format", "4x4"})).status, 0);
  EXPECT_THAT(namesIn("out"), ElementsAre("turned.txt"));
  const std::string text = readText("out/turned.txt");
  EXPECT_THAT(text, StartsWith("VERSION\t=\t1\nMATRIX\t=\n"));
  EXPECT_THAT(text, EndsWith("  0.00000000e+00    0.00000000e+00    0.00000000e+00    1.00000000e+00\n"));

  std::istringstream lines(text.substr(text.find("=\n") + 2));
  double first[4], second[4];
  lines >> first[0] >> first[1] >> first[2] >> first[3] >> second[0] >> second[1] >> second[2] >> second[3];
  const json matrix = runJson(withBase({}))["groups"][1]["transform"]["matrix"];
  EXPECT_NEAR(first[1], matrix[1][0], 1e-7) << "the rotation's first column stands in the first row";
  EXPECT_NEAR(second[0], matrix[0][1], 1e-7);
  EXPECT_GT(std::abs(first[1] - second[0]), 1.9) << "the two differ in sign, so the test can tell them apart";
  EXPECT_NEAR(first[3], matrix[0][3], 1e-6);
}

TEST_F(ResultFilesOfRegister, TheTrfFormatIsTheModules) {
  ASSERT_EQ(run(withBase({"--matrices", "out", "--matrix-format", "trf"})).status, 0);
  EXPECT_THAT(namesIn("out"), ElementsAre("turned.txt"));
  EXPECT_THAT(read("out/turned.txt"), StartsWith("ROT_X:\t\t"));
  EXPECT_THAT(readText("out/turned.txt"), HasSubstr("\nSHIFT_Z:\t+0.125000\n"));
}

TEST_F(ResultFilesOfRegister, AMatrixFileIsReplacedOnlyWhenForced) {
  std::filesystem::create_directory(folder.path() / "out");
  write("out/turned.txt", "mine");
  EXPECT_EQ(refusal(withBase({"--matrices", "out", "--common-points", "common.txt"}), 3),
            "tiepoint: --matrices: " + pathIn("out", "turned.txt") + ": the file exists; --force replaces it\n");
  EXPECT_EQ(read("out/turned.txt"), "mine");
  EXPECT_FALSE(exists("out/base.txt"));
  EXPECT_FALSE(exists("common.txt")) << "nothing is written before it is known that all may be";
  for (const char* format : {"plain", "4x4", "trf"}) {
    write("out/turned.txt", "mine");
    EXPECT_EQ(run(withBase({"--matrices", "out", "--matrix-format", format, "--force"})).status, 0) << format;
    EXPECT_THAT(read("out/turned.txt"), Not(HasSubstr("mine"))) << format;
  }
}

TEST_F(ResultFilesOfRegister, AMatrixNeverReplacesTheSurveyItself) {
  EXPECT_EQ(
      refusal(withBase({"--matrices", ".", "--force"}), 3),
      "tiepoint: --matrices: " + pathIn(".", "base.txt") + ": this command reads that file; choose another path\n");
  EXPECT_EQ(refusal(withBase({"--transforms", "base.txt", "--force"}), 3),
            "tiepoint: --transforms: base.txt: this command reads that file; choose another path\n");
  EXPECT_EQ(read("base.txt"), baseLines);
}

TEST_F(ResultFilesOfRegister, AMatrixThatCantBeWrittenIsNamed) {
  std::filesystem::create_directories(folder.path() / "out/turned.txt");
  for (const char* format : {"plain", "4x4", "trf"}) {
    const ProcessResult result = run(withBase({"--matrices", "out", "--matrix-format", format, "--force"}));
    EXPECT_EQ(result.status, 3) << format;
    EXPECT_THAT(result.err, StartsWith("tiepoint: --matrices: ")) << format;
    EXPECT_THAT(result.err, HasSubstr(pathIn("out", "turned.txt"))) << format;
  }
}

TEST_F(ResultFilesOfRegister, AFolderThatCantBeMadeIsNamed) {
  write("out", "a file");
  for (const char* format : {"plain", "4x4", "trf"}) {
    EXPECT_THAT(refusal(withBase({"--matrices", "out", "--matrix-format", format}), 3),
                StartsWith("tiepoint: --matrices out: the folder can't be created"))
        << format;
  }
}

TEST_F(ResultFilesOfRegister, AFolderThatTakesNoFilesIsNamed) {
  std::filesystem::create_directory(folder.path() / "out");
  std::filesystem::permissions(folder.path() / "out", std::filesystem::perms(0555));
  ProcessSetup setup;
  setup.withoutRights = true;
  const ProcessResult result = run(withBase({"--matrices", "out", "--matrix-format", "4x4"}), setup);
  if (onWindows) GTEST_SKIP() << "rights are another matter there";
  EXPECT_EQ(result.status, 3);
  EXPECT_THAT(result.err, HasSubstr("out/turned.txt"));
  EXPECT_THAT(namesIn("out"), IsEmpty());
}

TEST_F(ResultFilesOfRegister, WithoutAFolderForTemporaryFilesTheModulesMatricesArentWritten) {
  if (onWindows) GTEST_SKIP() << "the system names that folder there";
  const ProcessResult result =
      runProgram("/usr/bin/env", {"TMPDIR=" + folder.file("none"), TIEPOINT_PROGRAM, "register", "--method", "pairwise",
                                  "--base", "base", folder.file("base.txt"), folder.file("turned.txt"), "--matrices",
                                  folder.file("out"), "--matrix-format", "4x4"});
  EXPECT_EQ(result.status, 3);
  EXPECT_THAT(result.err, StartsWith("tiepoint: the folder for temporary files can't be used: "));
  EXPECT_FALSE(exists("out/turned.txt"));
}

TEST_F(ResultFilesOfRegister, ACyrillicGroupHasAFileOfItsName) {
  write("Цех.txt", shiftedLines);
  for (const char* format : {"plain", "4x4"}) {
    const std::string out = std::string("out_") + format;
    ASSERT_EQ(run({"register", "base.txt", "Цех.txt", "--matrices", out, "--matrix-format", format}).status, 0);
    EXPECT_TRUE(exists(out + "/Цех.txt")) << format;
  }
}

TEST_F(ResultFilesOfRegister, ASurveyThatCantBeRegisteredWritesNone) {
  write("far.txt", "Q1 0 0 0\nQ2 1 0 0\nQ3 0 1 0\n");
  EXPECT_EQ(
      run({"register", "base.txt", "far.txt", "--matrices", "out", "--transforms", "t.json", "--report", "r.html"})
          .status,
      1);
  EXPECT_FALSE(exists("out"));
  EXPECT_FALSE(exists("t.json"));
  EXPECT_FALSE(exists("r.html"));
}

TEST_F(ResultFilesOfRegister, TheSummaryNamesWhatWasWritten) {
  const ProcessResult result = run(withBase({"--matrices", "out", "--transforms", "t.json", "--report", "r.html"}));
  EXPECT_THAT(result.out,
              EndsWith("\n2 matrix files written: " + pathIn("out", "base.txt") + ", " + pathIn("out", "turned.txt") +
                       "\ntransformations written to t.json\nreport written to r.html\n"));
}

// --- What the module leaves unwritten.

TEST_F(ResultFilesOfRegister, AGroupAfterWhichNoFileCanBeNamedIsToldBeforeAnythingIsWritten) {
  if (onWindows) GTEST_SKIP() << "no file bears such a name there";
  write("a:b.txt", shiftedLines);
  EXPECT_EQ(refusal({"register", "base.txt", "a:b.txt", "--matrices", "out", "--matrix-format", "4x4"}, 3),
            "tiepoint: --matrices out: no file can be named after the group a:b; rename the group\n");
  EXPECT_FALSE(exists("out"));
}

/// Smaller than a matrix of the module's, which has some 320 bytes, and than any report; enough for
/// the line that tells of it.
constexpr unsigned long tooSmall = 200;

TEST_F(ResultFilesOfRegister, AMatrixThatTheModuleCantWriteToItsEndIsNamed) {
  if (onWindows) GTEST_SKIP() << "no limit on the size of files there";
  ProcessSetup setup;
  setup.largestFile = tooSmall;
  const ProcessResult result =
      run(withBase({"--method", "pairwise", "--quiet", "--matrices", "out", "--matrix-format", "4x4"}), setup);
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.err,
            "tiepoint: out/turned.txt: the module didn't write this matrix, or not completely; is the disk full?\n");
  EXPECT_FALSE(exists("out/turned.txt"));
}

TEST_F(ResultFilesOfRegister, AReportThatTheModuleCantWriteToItsEndIsNamed) {
  if (onWindows) GTEST_SKIP() << "no limit on the size of files there";
  ProcessSetup setup;
  setup.largestFile = tooSmall;
  write("r.html", "mine");
  const ProcessResult result =
      run(withBase({"--method", "pairwise", "--quiet", "--report", "r.html", "--force"}), setup);
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.err,
            "tiepoint: r.html: the module didn't write this report, or not completely; is the disk full?\n");
  EXPECT_EQ(read("r.html"), "mine");
}

TEST_F(ResultFilesOfRegister, ACloudOrAFileOfWeightsIsntReplacedEither) {
  write("cloud.xyz", "1 2 3\n");
  write("weights.txt", "turned P1 0.5\n");
  EXPECT_EQ(refusal(withBase({"--cloud", "turned=cloud.xyz", "--report", "cloud.xyz", "--force"}), 3),
            "tiepoint: --report: cloud.xyz: this command reads that file; choose another path\n");
  EXPECT_EQ(refusal(withBase({"--weights", "weights.txt", "--report", "weights.txt", "--force"}), 3),
            "tiepoint: --report: weights.txt: this command reads that file; choose another path\n");
}

// --- Transformations.

TEST_F(ResultFilesOfRegister, TheTransformationsAgreeWithTheJsonSummary) {
  write("thin.txt", "P1 0 0 0\nP2 1 0 0\n");
  const json summary = runJson(withBase({"thin.txt", "--unit", "m", "--transforms", "t.json"}));
  EXPECT_EQ(summary["transformsFile"], "t.json");
  const json file = json::parse(read("t.json"));
  EXPECT_EQ(file["convention"]["unit"], "m");
  EXPECT_EQ(file["method"], "adjust");
  EXPECT_EQ(file["discrepancies"], summary["discrepancies"]);
  EXPECT_EQ(file["atBase"], summary["atBase"]);
  ASSERT_EQ(file["groups"].size(), 3u);
  EXPECT_EQ(file["groups"][0]["base"], true);
  const json& turned = file["groups"][1];
  const json& matrix = summary["groups"][1]["transform"]["matrix"];
  for (std::size_t row = 0; row < 3; ++row) {
    for (std::size_t column = 0; column < 3; ++column) EXPECT_EQ(turned["rotation"][row][column], matrix[row][column]);
    EXPECT_EQ(turned["translation"][row], matrix[row][3]);
  }
  EXPECT_EQ(turned["points"][2]["name"], "P3");
  EXPECT_EQ(turned["points"][2]["discrepancy"], summary["points"][6]["discrepancy"]);
  EXPECT_EQ(turned["points"][2]["atBase"], summary["points"][6]["atBase"]);
  EXPECT_EQ(file["groups"][2]["name"], "thin");
  EXPECT_EQ(file["groups"][2]["registered"], false);
}

TEST_F(ResultFilesOfRegister, TransformationsAndReportsAreReplacedOnlyWhenForced) {
  write("t.json", "mine");
  write("r.html", "mine");
  EXPECT_EQ(refusal(withBase({"--transforms", "t.json"}), 3),
            "tiepoint: --transforms: t.json: the file exists; --force replaces it\n");
  EXPECT_EQ(refusal(withBase({"--report", "r.html"}), 3),
            "tiepoint: --report: r.html: the file exists; --force replaces it\n");
  EXPECT_EQ(run(withBase({"--transforms", "t.json", "--report", "r.html", "--force"})).status, 0);
  EXPECT_THAT(read("t.json"), StartsWith("{\n  \"convention\": {"));
  EXPECT_THAT(read("r.html"), StartsWith("<!DOCTYPE html>"));
}

TEST_F(ResultFilesOfRegister, OneFileCantBeTwoThings) {
  EXPECT_EQ(refusal(withBase({"--transforms", "x", "--report", "./x"}), 2),
            "tiepoint: --transforms and --report: both would write ./x; give them different files\n");
  EXPECT_EQ(refusal(withBase({"--common-points", "x", "--transforms", "x.txt", "--force"}), 2),
            "tiepoint: --common-points and --transforms: both would write x.txt; give them different files\n");
  EXPECT_FALSE(exists("x"));
  EXPECT_FALSE(exists("x.txt"));
}

TEST_F(ResultFilesOfRegister, AMatrixIsntWrittenOverAnotherResult) {
  std::filesystem::create_directory(folder.path() / "out");
  EXPECT_EQ(refusal(withBase({"--matrices", "out", "--transforms", "out/turned.txt", "--force"}), 2),
            "tiepoint: --transforms and --matrices: both would write " + pathIn("out", "turned.txt") +
                "; give them different files\n");
  EXPECT_THAT(namesIn("out"), IsEmpty());
}

TEST_F(ResultFilesOfRegister, AFolderInTheFilesPlaceIsSeenAsSuch) {
  std::filesystem::create_directory(folder.path() / "out");
  EXPECT_EQ(refusal(withBase({"--report", "out", "--force"}), 3),
            "tiepoint: --report: out: this is a folder; name a file in it\n");
}

TEST_F(ResultFilesOfRegister, APipeOrADeviceIsntReplaced) {
  if (onWindows) GTEST_SKIP() << "named pipes have no place among files there";
  ASSERT_EQ(runProgram("/usr/bin/mkfifo", {folder.file("pipe")}).status, 0);
  EXPECT_EQ(refusal(withBase({"--transforms", "pipe", "--force"}), 3),
            "tiepoint: --transforms: pipe: not an ordinary file; choose another path\n");
  EXPECT_TRUE(std::filesystem::is_fifo(folder.path() / "pipe"));
}

// --- Reports.

TEST_F(ResultFilesOfRegister, TheReportOfTheResultsIsTheOneThatIsWrittenUnasked) {
  ASSERT_EQ(run(withBase({"--method", "pairwise", "--report", "r.html"})).status, 0);
  EXPECT_THAT(read("r.html"), HasSubstr("<p><h4>Method of registration</h4></p><p>Pairwise with base</p>"));
  EXPECT_THAT(readText("r.html"), EndsWith("<hr></body></html>\n"));
  ASSERT_EQ(run(withBase({"--method", "pairwise", "--report", "r2.html", "--report-kind", "results"})).status, 0);
  EXPECT_EQ(read("r2.html"), read("r.html"));
}

TEST_F(ResultFilesOfRegister, TheReportOfTheIterativeMethodTellsItsSettings) {
  ASSERT_EQ(run(withBase({"--method", "iterative", "--max-iterations", "777", "--report", "r.html"})).status, 0);
  EXPECT_THAT(read("r.html"), HasSubstr("<p>Iterative with base</p>"));
  EXPECT_THAT(read("r.html"), HasSubstr(" / 777</p>"));
}

TEST_F(ResultFilesOfRegister, TheReportOfPointsHoldsEveryPoint) {
  ASSERT_EQ(run(withBase({"--method", "pairwise", "--report", "r.html", "--report-kind", "points"})).status, 0);
  const std::string text = read("r.html");
  EXPECT_THAT(text, HasSubstr("<caption>Reference points information</caption>"));
  EXPECT_THAT(text, HasSubstr("<tr><td><b>P1</b></td><td><b>base</b></td>"));
  EXPECT_THAT(text, HasSubstr("<tr><td>P4</td><td>turned</td><td>2.5</td><td>10</td><td>9.875</td>"));
}

TEST_F(ResultFilesOfRegister, TheReportOfGroupsHoldsEveryGroup) {
  ASSERT_EQ(run(withBase({"--method", "pairwise", "--report", "r.html", "--report-kind", "groups"})).status, 0);
  EXPECT_THAT(read("r.html"), HasSubstr("<tr><td><b>base</b></td><td><b>P1<br>P2<br>P3<br>P4<br></b></td></tr>"
                                        "<tr><td>turned</td><td>P1<br>P2<br>P3<br>P4<br></td></tr>"));
}

}  // namespace
