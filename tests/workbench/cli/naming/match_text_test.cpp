#include "workbench/cli/naming/match_text.h"

#include <gtest/gtest.h>

#include "workbench/session_states.h"

namespace tiepoint::workbench::cli {
namespace {

/// Three steps between six stations.
MatchReport threeSteps() {
  MatchReport report;
  report.mode = "auto";
  report.named = 8;
  report.unnamed = 1;
  report.steps.push_back({NamingKind::triangles, {0, 1, 2, 3, 4, 5}, 0.005, 0.1, 6});
  report.steps.push_back({NamingKind::solve, {0, 1}, 0.0, 0.0, 0});
  report.steps.push_back({NamingKind::closeness, {}, 0.02, 0.0, 2});
  report.reasons.push_back({"three-points", "F: only three points fit"});
  return report;
}

SessionState sixStations() {
  StateBuilder survey;
  for (const char* name : {"A", "B", "C", "D", "E", "F"}) survey.group(name);
  return survey.state;
}

TEST(MatchText, ListsTheStepsThatNameAndTheReasons) {
  EXPECT_EQ(matchText(sixStations(), threeSteps(), LengthFormat("m")),
            "Naming (auto): 8 points have automatic names, 1 have none\n"
            "  step  what                                      within  sides differ by  named\n"
            "     1  equal triangles of A, B, C, D and 2 more   0.005              0.1      6\n"
            "     2  points on one spot                          0.02                -      2\n"
            "  - F: only three points fit\n");
}

TEST(MatchText, HasNoTableWithoutSteps) {
  MatchReport report;
  report.mode = "triangles";
  EXPECT_EQ(matchText(sixStations(), report, LengthFormat("m")),
            "Naming (triangles): 0 points have automatic names, 0 have none\n");
}

TEST(MatchJson, ListsEveryStepWithWhatItHas) {
  const Json steps = jsonMatch(sixStations(), threeSteps())["steps"];
  ASSERT_EQ(steps.size(), 3u);
  EXPECT_EQ(
      steps[0].dump(),
      R"({"kind":"triangles","groups":["A","B","C","D","E","F"],"tolerance":0.005,"minSideDifference":0.1,"named":6})");
  EXPECT_EQ(steps[1].dump(),
            R"({"kind":"solve","groups":["A","B"],"tolerance":null,"minSideDifference":null,"named":null})");
  EXPECT_EQ(steps[2].dump(), R"({"kind":"closeness","groups":[],"tolerance":0.02,"minSideDifference":null,"named":2})");
}

}  // namespace
}  // namespace tiepoint::workbench::cli
