// The files, the drawing and the clouds that tiepoint register --method adjust leaves behind.
#include <gmock/gmock.h>

#include <sstream>

#include "workbench/cli/adjusted_survey_files.h"

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

/// Half of the last of six decimals, and the rounding of a number that stands on the edge.
constexpr double sixDecimals = 5.1e-7;

class AdjustResults : public AdjustedSurveyFiles {
 protected:
  json registered(std::vector<std::string> more) const { return runJson(onBase(std::move(more))); }

  /// The numbers of a text, in their order.
  static std::vector<double> numbersOf(const std::string& text) {
    std::istringstream stream(text);
    std::vector<double> numbers;
    for (double number = 0.0; stream >> number;) numbers.push_back(number);
    return numbers;
  }
};

TEST_F(AdjustResults, PlainMatricesAreTheJsonsAndTheBasesIdentity) {
  const json result = registered({"--matrices", "out"});
  EXPECT_EQ(result["matrixFiles"],
            json({pathIn("out", "base.txt"), pathIn("out", "shifted.txt"), pathIn("out", "turned.txt")}));
  EXPECT_EQ(read("out/base.txt"), "1 0 0 0\n0 1 0 0\n0 0 1 0\n0 0 0 1\n");
  const std::vector<double> numbers = numbersOf(read("out/turned.txt"));
  ASSERT_EQ(numbers.size(), 16u);
  const json matrix = named(result["groups"], "turned")["transform"]["matrix"];
  for (std::size_t i = 0; i < 16; ++i) EXPECT_EQ(numbers[i], matrix[i / 4][i % 4]) << i;
}

TEST_F(AdjustResults, TransposedMatricesAreThatAndLeaveOutTheBase) {
  const json result = registered({"--matrices", "out", "--matrix-format", "4x4"});
  EXPECT_FALSE(exists("out/base.txt"));
  const std::string text = readText("out/turned.txt");
  ASSERT_THAT(text, StartsWith("VERSION\t=\t1\nMATRIX\t=\n"));
  const std::vector<double> numbers = numbersOf(text.substr(text.find("MATRIX\t=\n") + 9));
  ASSERT_EQ(numbers.size(), 16u);
  const Eigen::Matrix4d expected = motionOf(named(result["groups"], "turned")).matrix();
  EXPECT_GT(std::abs(expected(0, 1) - expected(1, 0)), 1.9) << "the two can be told apart";
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 3; ++column) {
      EXPECT_NEAR(numbers[static_cast<std::size_t>(4 * column + row)], expected(row, column), 1e-8);
    }
  }
  EXPECT_NEAR(numbers[3], expected(0, 3), 1e-7);
}

TEST_F(AdjustResults, TheTrfFormatHoldsTheShift) {
  const json result = registered({"--matrices", "out", "--matrix-format", "trf"});
  EXPECT_FALSE(exists("out/base.txt"));
  const std::string text = readText("out/turned.txt");
  EXPECT_THAT(text, StartsWith("ROT_X:\t\t"));
  const std::string label = "SHIFT_Z:\t";
  ASSERT_THAT(text, HasSubstr(label));
  EXPECT_NEAR(std::stod(text.substr(text.find(label) + label.size())),
              named(result["groups"], "turned")["transform"]["shift"][2], sixDecimals);
}

TEST_F(AdjustResults, TheTransformationsAreTheJsonsUnderTheNameOfTheMethod) {
  const json result = registered({"--transforms", "t.json"});
  const json file = json::parse(read("t.json"));
  EXPECT_EQ(file["method"], "adjust");
  const json turned = named(file["groups"], "turned"),
             matrix = named(result["groups"], "turned")["transform"]["matrix"];
  for (std::size_t row = 0; row < 3; ++row) {
    for (std::size_t column = 0; column < 3; ++column) EXPECT_EQ(turned["rotation"][row][column], matrix[row][column]);
    EXPECT_EQ(turned["translation"][row], matrix[row][3]);
  }
  EXPECT_EQ(named(turned["points"], "P4")["discrepancy"], pointOf(result, "turned", "P4")["discrepancy"]);
}

TEST_F(AdjustResults, CommonPointsAreTheAdjustedTargets) {
  const json result = registered({"--common-points", "targets.txt"});
  std::istringstream lines(readText("targets.txt"));
  std::size_t count = 0;
  std::string name;
  double x = 0.0, y = 0.0, z = 0.0, weight = 0.0;
  while (lines >> name >> x >> y >> z >> weight) {
    const Eigen::Vector3d expected = vectorOf(named(result["commonPoints"], name)["position"]);
    EXPECT_NEAR(x, expected.x(), sixDecimals);
    EXPECT_NEAR(y, expected.y(), sixDecimals);
    EXPECT_NEAR(z, expected.z(), sixDecimals);
    EXPECT_EQ(weight, 1.0);
    ++count;
  }
  EXPECT_EQ(count, 5u);
  EXPECT_EQ(named(result["commonPoints"], "P5")["sightings"], 3);
  EXPECT_GT(named(result["commonPoints"], "P5")["covariance"][0][0], 0.0);
}

TEST_F(AdjustResults, TheAdjustedTargetsAreStoredAsAGroup) {
  const json result = registered({"--document", "d", "--store", "merged"});
  EXPECT_EQ(result["storedGroup"], "merged");
  const json group = named(runJson({"groups", "--document", "d", "--points"})["groups"], "merged");
  ASSERT_EQ(group["pointCount"], 5);
  for (const json& point : group["points"]) {
    const json position = named(result["commonPoints"], point["name"])["position"];
    EXPECT_EQ(json({point["x"], point["y"], point["z"]}), position) << point;
  }
}

TEST_F(AdjustResults, CloudsMoveAsTheirStations) {
  write("turned.xyz", "2.5 0 -0.125 17\n0 0 0 18\n");
  const json result = registered({"--document", "d", "--cloud", "turned=turned.xyz", "--apply", "--moved", "out"});
  const Eigen::Affine3d motion = motionOf(named(result["groups"], "turned"));
  const std::vector<double> numbers = numbersOf(read("out/turned.xyz"));
  ASSERT_EQ(numbers.size(), 8u);
  const Eigen::Vector3d expected = motion * Eigen::Vector3d(2.5, 0, -0.125);
  EXPECT_LT((Eigen::Vector3d(numbers[0], numbers[1], numbers[2]) - expected).norm(), 1e-12);
  EXPECT_EQ(numbers[3], 17.0);
  EXPECT_LT((Eigen::Vector3d(numbers[4], numbers[5], numbers[6]) - motion.translation()).norm(), 1e-12);
  EXPECT_EQ(named(runJson({"clouds", "--document", "d"})["clouds"], "turned")["matrix"],
            named(result["groups"], "turned")["transform"]["matrix"]);
}

TEST_F(AdjustResults, ACloudThatWasMovedIsMovedAgainOnlyWhenForced) {
  write("turned.xyz", "2.5 0 -0.125\n");
  registered({"--document", "d", "--cloud", "turned=turned.xyz", "--apply"});
  const json before = runJson({"clouds", "--document", "d"});
  const ProcessResult again = run({"register", "--method", "adjust", "--base", "base", "--document", "d", "--apply"});
  EXPECT_EQ(again.status, 1);
  EXPECT_EQ(again.err, "tiepoint: cloud turned was moved before; --force moves it again\n");
  EXPECT_EQ(runJson({"clouds", "--document", "d"}), before);
}

TEST_F(AdjustResults, EachKindOfReportNamesWhatItIsAbout) {
  registered({"--report", "results.html"});
  registered({"--report", "points.html", "--report-kind", "points"});
  registered({"--report", "groups.html", "--report-kind", "groups"});
  for (const char* file : {"results.html", "points.html", "groups.html"}) {
    EXPECT_THAT(read(file), StartsWith("<!DOCTYPE html>")) << file;
    EXPECT_THAT(read(file), HasSubstr("</html>")) << file;
    EXPECT_THAT(read(file), HasSubstr("turned")) << file;
  }
  EXPECT_THAT(read("results.html"), HasSubstr("P5"));
  EXPECT_THAT(read("points.html"), HasSubstr("P5"));
  EXPECT_THAT(read("groups.html"), Not(HasSubstr("P5")));
}

TEST_F(AdjustResults, NothingIsReplacedUnlessForced) {
  for (const char* file : {"t.json", "r.html", "c.txt"}) write(file, "mine");
  for (const auto& [option, file] :
       {std::pair("--transforms", "t.json"), {"--report", "r.html"}, {"--common-points", "c.txt"}}) {
    const ProcessResult result = run(onBase({option, file}));
    EXPECT_EQ(result.status, 3) << option;
    EXPECT_THAT(result.err, HasSubstr("the file exists; --force replaces it")) << option;
    EXPECT_EQ(read(file), "mine");
    EXPECT_EQ(run(onBase({option, file, "--force"})).status, 0) << option;
    EXPECT_NE(read(file), "mine");
  }
}

}  // namespace
