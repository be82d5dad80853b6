// What the user has left out or weighed, while points are being named.
#include <gmock/gmock.h>

#include "workbench/cli/survey_files.h"

namespace {

using nlohmann::json;

/// Two stations that see the same four targets, the second 100 further along x, and the target BAD,
/// which one of them has half a unit off.
class MatchingChoices : public SurveyFiles {
 protected:
  MatchingChoices() {
    write("A.txt", "BAD 9 9 9\n? 0 0 0\n? 10 0 0\n? 3 7 0\n? 1 2 8\n");
    write("B.txt", "BAD 109 9 9.5\n? 100 0 0\n? 110 0 0\n? 103 7 0\n? 101 2 8\n");
  }

  json matchWith(const std::vector<std::string>& options, int status = 0) const {
    std::vector<std::string> arguments{"register", "--match", "auto"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    arguments.insert(arguments.end(), {"A.txt", "B.txt"});
    return runJson(arguments, status);
  }

  static json pointOf(const json& result, const std::string& group, const std::string& name) {
    for (const json& point : result["points"]) {
      if (point["group"] == group && point["name"] == name) return point;
    }
    return {};
  }
};

TEST_F(MatchingChoices, AnExcludedPointStaysOutOfTheSearchAndOfTheSolve) {
  const json result = matchWith({"--exclude", "B:BAD"});
  EXPECT_EQ(result["match"]["named"], 8);
  EXPECT_EQ(result["match"]["unnamed"], 0);
  EXPECT_EQ(result["match"]["reasons"], json::array());
  EXPECT_EQ(pointOf(result, "B", "BAD")["active"], false);
}

TEST_F(MatchingChoices, APointOfNoWeightStaysOutOfTheSearchAndOfTheSolve) {
  const json result = matchWith({"--weight", "B:BAD=0"});
  EXPECT_EQ(result["match"]["named"], 8);
  EXPECT_EQ(result["match"]["unnamed"], 0);
  EXPECT_EQ(result["match"]["reasons"], json::array());
  EXPECT_EQ(pointOf(result, "B", "BAD")["active"], false);
}

TEST_F(MatchingChoices, WithoutThemTheBadPointHindersBoth) {
  const json result = matchWith({}, 1);
  EXPECT_EQ(result["match"]["named"], 0);
  EXPECT_EQ(result["match"]["reasons"][0]["key"], "above-limit");
}

}  // namespace
