#include "workbench/report/match_text.h"

#include <gtest/gtest.h>

namespace tiepoint::workbench {
namespace {

/// Three steps between six stations.
NamingReport threeSteps() {
  NamingReport report;
  report.how = Naming::automatic;
  report.named = 8;
  report.unnamed = 1;
  report.steps.push_back({NamingKind::triangles, {0, 1, 2, 3, 4, 5}, 0.005, 0.1, 6});
  report.steps.push_back({NamingKind::solve, {0, 1}, 0.0, 0.0, 0});
  report.steps.push_back({NamingKind::closeness, {}, 0.02, 0.0, 2});
  Finding reason{FindingKind::stationThreePoints, Severity::note};
  reason.groups = {"F"};
  report.reasons.push_back(reason);
  return report;
}

Registration sixStations() {
  Registration registration;
  for (const char* name : {"A", "B", "C", "D", "E", "F"}) {
    registration.groups.emplace_back().name = name;
    registration.groups.back().id = registration.groups.size() - 1;
  }
  return registration;
}

TEST(MatchText, ListsTheStepsThatNameAndTheReasons) {
  EXPECT_EQ(matchText(sixStations(), threeSteps(), LengthFormat(Unit::metre)),
            "Naming (auto): 8 points have automatic names, 1 have none\n"
            "  step  what                                          within  sides differ by  named\n"
            "     1  congruent triangles of A, B, C, D and 2 more   0.005              0.1      6\n"
            "     2  coincident points                               0.02                -      2\n"
            "  - F: only three points fit the other stations, and among so many points that may be chance\n");
}

TEST(MatchText, NamesTheLimitOfTheSearch) {
  NamingReport report;
  report.how = Naming::automatic;
  report.limits.emplace().discrepancy = 0.02;
  EXPECT_EQ(matchText(sixStations(), report, LengthFormat(Unit::metre)),
            "Naming (auto): 0 points have automatic names, 0 have none; largest discrepancy allowed: 0.02 m\n");
}

TEST(MatchText, ListsNamesThatWereUnited) {
  NamingReport report;
  report.how = Naming::automatic;
  report.steps.push_back({NamingKind::unite, {}, 0.005, 0.0, 1});
  EXPECT_EQ(matchText(sixStations(), report, LengthFormat(Unit::metre)),
            "Naming (auto): 0 points have automatic names, 0 have none\n"
            "  step  what                     within  sides differ by  named\n"
            "     1  two names of one target   0.005                -      1\n");
}

TEST(MatchText, BreaksLongReasonsAndHangsThem) {
  NamingReport report;
  report.how = Naming::automatic;
  Finding twins{FindingKind::twinPoints, Severity::note};
  twins.groups = {"A\x1b"};
  twins.limit = 0.01;
  report.reasons.push_back(twins);
  EXPECT_EQ(matchText(sixStations(), report, LengthFormat(Unit::metre)),
            "Naming (auto): 0 points have automatic names, 0 have none\n"
            "  - A?: two points lie within 0.01 of one another, so triangles with one can't be told from\n"
            "    triangles with the other; keep only one of them\n");
}

TEST(MatchText, PrintsNoControlCharacterOfAGroupsName) {
  Registration registration = sixStations();
  registration.groups[0].name = "A\n";
  NamingReport report;
  report.steps.push_back({NamingKind::triangles, {0, 1}, 0.005, 0.1, 6});
  EXPECT_NE(matchText(registration, report, LengthFormat(Unit::metre)).find("congruent triangles of A?, B "),
            std::string::npos);
}

TEST(MatchJson, TellsTheModeTheLimitAndTheCounts) {
  NamingReport report = threeSteps();
  report.limits.emplace().discrepancy = 0.02;
  const OrderedJson json = jsonMatch(sixStations(), report);
  EXPECT_EQ(json["mode"], "auto");
  EXPECT_EQ(json["limit"], 0.02);
  EXPECT_EQ(json["named"], 8);
  EXPECT_EQ(json["unnamed"], 1);
  EXPECT_EQ(json["reasons"].size(), 1u);
  EXPECT_EQ(json["reasons"][0]["key"], findingKey(FindingKind::stationThreePoints));
  EXPECT_EQ(json["reasons"][0]["text"],
            "F: only three points fit the other stations, and among so many points that may be chance");
}

TEST(MatchJson, HasNoLimitUnlessNamesWereSearchedFor) {
  NamingReport report;
  report.how = Naming::closeness;
  EXPECT_EQ(jsonMatch(sixStations(), report)["mode"], "distance");
  EXPECT_TRUE(jsonMatch(sixStations(), report)["limit"].is_null());
  report.how = Naming::triangles;
  EXPECT_EQ(jsonMatch(sixStations(), report)["mode"], "triangles");
}

TEST(MatchJson, TellsNamesThatWereUnited) {
  NamingReport report;
  report.steps.push_back({NamingKind::unite, {}, 0.005, 0.0, 1});
  EXPECT_EQ(jsonMatch(sixStations(), report)["steps"][0].dump(),
            R"({"kind":"unite","groups":[],"tolerance":0.005,"minSideDifference":null,"named":1})");
}

TEST(MatchText, HasNoTableWithoutSteps) {
  NamingReport report;
  report.how = Naming::triangles;
  EXPECT_EQ(matchText(sixStations(), report, LengthFormat(Unit::metre)),
            "Naming (triangles): 0 points have automatic names, 0 have none\n");
}

TEST(MatchJson, ListsEveryStepWithWhatItHas) {
  const OrderedJson steps = jsonMatch(sixStations(), threeSteps())["steps"];
  ASSERT_EQ(steps.size(), 3u);
  EXPECT_EQ(
      steps[0].dump(),
      R"({"kind":"triangles","groups":["A","B","C","D","E","F"],"tolerance":0.005,"minSideDifference":0.1,"named":6})");
  EXPECT_EQ(steps[1].dump(),
            R"({"kind":"solve","groups":["A","B"],"tolerance":null,"minSideDifference":null,"named":null})");
  EXPECT_EQ(steps[2].dump(), R"({"kind":"closeness","groups":[],"tolerance":0.02,"minSideDifference":null,"named":2})");
}

}  // namespace
}  // namespace tiepoint::workbench
