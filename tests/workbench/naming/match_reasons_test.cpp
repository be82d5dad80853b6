#include "workbench/naming/match_reasons.h"

#include <gtest/gtest.h>

#include <cmath>

#include "workbench/report/finding_text.h"
#include "workbench/session_states.h"

namespace tiepoint::workbench {
namespace {

std::string keyOf(const Finding& finding) { return findingKey(finding.kind); }

const std::vector<OdGePoint3d> scalene{{0, 0, 0}, {10, 0, 0}, {3, 7, 0}};

StateBuilder& addStation(StateBuilder& builder, const std::string& name, const std::vector<OdGePoint3d>& points,
                         const std::string& pointName = "?") {
  builder.group(name);
  for (const OdGePoint3d& point : points) builder.point(pointName, point);
  return builder;
}

Finding triangles(const StateBuilder& builder, double tolerance = 0.001, double minSideDifference = 0.1) {
  ZOR::reg::GroupIdSet groups;
  for (const SessionGroup& group : builder.state.groups) groups.insert(group.id);
  return whyNoTriangles(builder.state, groups, tolerance, minSideDifference);
}

TEST(WhyNoTriangles, FewerThanSixPoints) {
  StateBuilder survey;
  addStation(survey, "A", scalene);
  addStation(survey, "B", {{0, 0, 0}, {1, 0, 0}});
  EXPECT_EQ(keyOf(triangles(survey)), "too-few-points");
  EXPECT_EQ(findingText(triangles(survey)), "there are 5 points; at least 6 are needed");
}

TEST(WhyNoTriangles, OneGroup) {
  StateBuilder survey;
  addStation(survey, "A", scalene);
  addStation(survey, "A2", {});
  for (int i = 0; i < 3; ++i) survey.state.points.push_back(survey.state.points[0]);
  EXPECT_EQ(keyOf(triangles(survey)), "one-group");
}

TEST(WhyNoTriangles, EveryPointHasAName) {
  StateBuilder survey;
  addStation(survey, "A", scalene, "T1");
  addStation(survey, "B", scalene, "T1");
  EXPECT_EQ(keyOf(triangles(survey)), "nothing-unnamed");
}

TEST(WhyNoTriangles, NoTwoGroupsHaveATriangleWhoseSidesDifferEnough) {
  StateBuilder survey;
  addStation(survey, "A", scalene);
  addStation(survey, "B", {{0, 0, 0}, {10, 0, 0}, {5, 7, 0}});
  EXPECT_EQ(keyOf(triangles(survey)), "no-usable-triangle");
  EXPECT_EQ(findingText(triangles(survey, 0.001, 0.05)),
            "fewer than two groups have a triangle whose sides all differ by more than 0.05");
}

TEST(WhyNoTriangles, NoTwoGroupsHaveEqualOnes) {
  StateBuilder survey;
  addStation(survey, "A", scalene);
  addStation(survey, "B", {{0, 0, 0}, {10, 0, 0}, {3, 7.5, 0}});
  EXPECT_EQ(keyOf(triangles(survey, 0.01)), "no-equal-triangles");
  EXPECT_EQ(findingText(triangles(survey, 0.01)), "no two groups have triangles whose sides agree within 0.01");
}

/// Each side of the second triangle is 0.0009 longer: 0.0016 taken together.
TEST(WhyNoTriangles, SidesAgreeTakenTogether) {
  StateBuilder survey;
  addStation(survey, "A", {{0, 0, 0}, {3, 0, 0}, {0, 4, 0}});
  addStation(survey, "B", {{0, 0, 0}, {3.0009, 0, 0}, {0.0005999550134962488, 4.000899955016869, 0}});
  EXPECT_EQ(keyOf(triangles(survey, 0.0015)), "no-equal-triangles");
  EXPECT_EQ(keyOf(triangles(survey, 0.0017)), "contradiction");
}

TEST(WhyNoTriangles, EqualOnesHaveNamesAlready) {
  StateBuilder survey;
  for (const char* station : {"A", "B"}) {
    survey.group(station).point("T1", scalene[0]).point("T2", scalene[1]).point("T3", scalene[2]);
  }
  survey.point("?", {40, 50, 60});
  EXPECT_EQ(keyOf(triangles(survey)), "only-named");
  EXPECT_EQ(findingText(triangles(survey)),
            "no triangle with an unnamed corner matches one in another group within 0.001");
}

TEST(WhyNoTriangles, NamedOnesThatRepeatAreAContradictionAllTheSame) {
  StateBuilder survey;
  addStation(survey, "A", scalene, "T1");
  addStation(survey, "B", {{0, 0, 0}, {10, 0, 0}, {3, 7, 0}, {3, -7, 0}}, "T1");
  survey.point("?", {40, 50, 60});
  EXPECT_EQ(keyOf(triangles(survey)), "contradiction");
}

TEST(WhyNoTriangles, AContradictionNamesTheGroupsInWhichTheLayoutRepeats) {
  StateBuilder survey;
  addStation(survey, "A", scalene);
  addStation(survey, "B", {{0, 0, 0}, {10, 0, 0}, {3, 7, 0}, {3, -7, 0}});
  const Finding reason = triangles(survey);
  EXPECT_EQ(keyOf(reason), "contradiction");
  EXPECT_EQ(findingText(reason),
            "congruent triangles contradict one another: a triangle of A matches several in B, and one contradiction "
            "voids the whole matching; the layout repeats itself, or a tolerance of 0.001 is too wide or too tight");
}

Finding closeness(const StateBuilder& builder, double tolerance) {
  std::map<ZOR::reg::GroupId, OdGeMatrix3d> toCommon;
  for (const SessionGroup& group : builder.state.groups) toCommon.emplace(group.id, OdGeMatrix3d());
  return reasonNothingClose(builder.state, toCommon, tolerance);
}

TEST(WhyNothingClose, NoGroupIsRegistered) {
  StateBuilder survey;
  addStation(survey, "A", scalene);
  EXPECT_EQ(keyOf(reasonNothingClose(survey.state, {}, 0.1)), "not-solved");
}

TEST(WhyNothingClose, EveryPointHasANameOfTheFiles) {
  StateBuilder survey;
  survey.group("A").point("T1").group("B").point("T1");
  EXPECT_EQ(keyOf(closeness(survey, 0.1)), "nothing-unnamed");
}

TEST(WhyNothingClose, TwoNamesOfTheFilesOnOneSpotVoidAll) {
  StateBuilder survey;
  survey.group("A").point("T1", {1, 0, 0}).point("?", {50, 0, 0}).group("B").point("T2", {1.05, 0, 0});
  EXPECT_EQ(keyOf(closeness(survey, 0.1)), "conflict");
  EXPECT_EQ(findingText(closeness(survey, 0.1)),
            "the points T1 and T2 are within 0.1 of one another, but the files give them different names; one such "
            "conflict voids the whole matching");
  EXPECT_EQ(keyOf(closeness(survey, 0.04)), "nothing-close");
}

TEST(WhyNothingClose, NamesOfTheFilesMeetThroughPointsBetweenThem) {
  StateBuilder survey;
  survey.group("A").point("T1", {1, 0, 0}).group("B").point("?", {1.08, 0, 0}).group("C").point("T2", {1.16, 0, 0});
  EXPECT_EQ(keyOf(closeness(survey, 0.1)), "conflict");
  EXPECT_EQ(findingText(closeness(survey, 0.1)),
            "the points T1 and T2 are chained by points in between that are all within 0.1 of one another, but the "
            "files give them different names; one such conflict voids the whole matching");
}

TEST(WhyNothingClose, APointWithoutAPlaceLiesOnEverySpot) {
  StateBuilder survey;
  survey.group("A").point("T1", {1, 0, 0}).point("?", {std::nan(""), 0, 0}).group("B").point("T2", {70, 0, 0});
  EXPECT_EQ(keyOf(closeness(survey, 0.1)), "not-finite");
  EXPECT_EQ(findingText(closeness(survey, 0.1)).substr(0, 2), "A:");
}

TEST(WhyNothingClose, AnAutomaticNameIsNoConflict) {
  StateBuilder survey;
  survey.group("A").point("T1", {1, 0, 0}).group("B").point("auto0", {1.05, 0, 0});
  survey.last().autoNamed = true;
  EXPECT_EQ(keyOf(closeness(survey, 0.1)), "nothing-close");
}

}  // namespace
}  // namespace tiepoint::workbench
