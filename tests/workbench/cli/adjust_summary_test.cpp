// What tiepoint register --method adjust prints for people.
#include <gmock/gmock.h>

#include <fstream>
#include <sstream>

#include "workbench/cli/survey_files.h"

namespace {

using testing::HasSubstr;

const std::string hall = std::string(EXAMPLES_FOLDER) + "/plant_hall";
const std::vector<std::string> stations{"nxyz/S1", "nxyz/S2", "nxyz/S3", "nxyz/S4", "nxyz/S5"};
const std::vector<std::string> weighted{"nxyzw/S6", "nxyzw/S7", "nxyzw/S8"};

std::string bytesOf(const std::string& path) {
  std::ostringstream bytes;
  bytes << std::ifstream(path).rdbuf();
  return bytes.str();
}

class AdjustSummary : public SurveyFiles {
 protected:
  /// Of the hall, with these options.
  std::string summaryOf(const std::vector<std::string>& more) const {
    std::vector<std::string> arguments{"register", "--method", "adjust", "--unit", "m", "--sigma", "0.001"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    for (const std::string& station : stations) arguments.push_back(hall + "/" + station + ".txt");
    arguments.emplace_back("--nxyzw");
    for (const std::string& station : weighted) arguments.push_back(hall + "/" + station + ".txt");
    const ProcessResult result = run(arguments);
    EXPECT_EQ(result.status, 0) << result.err;
    return result.out;
  }
};

/// The page's blocks that a summary begins with.
std::vector<std::string> summariesOf(const std::string& page) {
  const std::string fence = "```\n";
  std::vector<std::string> blocks;
  for (std::size_t begin = page.find(fence); begin != std::string::npos; begin = page.find(fence, begin)) {
    begin += fence.size();
    const std::size_t end = page.find(fence, begin);
    const std::string block = page.substr(begin, end - begin);
    if (block.rfind("Adjusted", 0) == 0) blocks.push_back(block);
    begin = end + fence.size();
  }
  return blocks;
}

TEST_F(AdjustSummary, OfThePlantHallIsThatOfTheDocumentation) {
  const std::vector<std::string> blocks = summariesOf(bytesOf(std::string(DOCS_FOLDER) + "/adjustment.md"));
  ASSERT_EQ(blocks.size(), 2u);
  EXPECT_THAT(summaryOf({"--base", "S1"}), HasSubstr("\n\n" + blocks[0] + "\nTransformations"));
  EXPECT_THAT(summaryOf({"--base", "S1", "--exclude", "S4:T13"}), HasSubstr("\n\n" + blocks[1] + "\nStations"));
}

TEST_F(AdjustSummary, HasNoLineBeyondAHundredColumnsBelowTheFiles) {
  const std::string text = summaryOf({"--trace", "S7:T06", "--all-points"});
  std::istringstream lines(text.substr(text.find("\nAdjusted freely")));
  for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 100u) << line;
}

TEST_F(AdjustSummary, NamesTargetsThatBearOneAnothersNames) {
  write("A.txt", "T1 0 0 0\nT2 10 0 0\nT3 0 10 0\nT4 10 10 3\nT5 4 6 8\nT6 7 1 5\n");
  write("B.txt", "T1 0 0 0\nT2 10 0 0\nT3 0 10 0\nT4 10 10 3\nT5 4 6 8\nT6 7 1 5\n");
  write("C.txt", "T1 0 0 0\nT2 10 0 0\nT3 0 10 0\nT4 4 6 8\nT5 10 10 3\nT6 7 1 5.001\n");
  const ProcessResult result =
      run({"register", "--method", "adjust", "--sigma", "0.001", "--base", "A", "A.txt", "B.txt", "C.txt"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.out, HasSubstr("\nSuspect: T4 in C lies "));
  EXPECT_THAT(result.out,
              HasSubstr("\nCheck the names of T4 and T5 in C: each was measured where the other should be; "));
}

TEST_F(AdjustSummary, NamesTheHingeOfTwoPartsOfASurvey) {
  write("A.txt", "T1 0 0 0\nT2 10 0 0\nT3 0 10 0\nT4 3 3 5\n");
  write("B.txt", "T1 0 0 0\nT2 10 0 0\nT3 0 10 0\nT4 3 3 5\n");
  write("C.txt", "T1 0 0 0\nT2 10 0 0\nT5 3 4 9\nT6 2 8 1\nT7 6 6 6\n");
  write("D.txt", "T5 3 4 9\nT6 2 8 1\nT7 6 6 6\n");
  const ProcessResult result =
      run({"register", "--method", "adjust", "--quiet", "--base", "A", "A.txt", "B.txt", "C.txt", "D.txt"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err,
            "tiepoint: not registered: C and D turn about the line through T1 and T2; see the summary for what is "
            "missing\n");
  const ProcessResult loud = run({"register", "--method", "adjust", "--base", "A", "A.txt", "B.txt", "C.txt", "D.txt"});
  EXPECT_THAT(loud.out,
              HasSubstr("\nNot registered: C and D turn about the line through T1 and T2, and no measurement opposes "
                        "that. One\nmore target off that line, seen by one of them and by one of the others, would "
                        "hold them.\n\nShared names\n"));
}

TEST_F(AdjustSummary, OfCarriedPointsHasTheirPlaces) {
  write("carry.txt", "S1 1 2 3\nS2 0 0 0\n");
  const std::string text = summaryOf({"--base", "S1", "--carry", "carry.txt"});
  EXPECT_THAT(text, HasSubstr("\nCarried points in the common system (m; sigmas: mm)\n"));
  EXPECT_THAT(text, HasSubstr("\n  S1       1.000000  2.000000    3.000000    0.000    0.000    0.000\n"));
}

}  // namespace
