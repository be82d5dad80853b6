#include "workbench/report/refused_text.h"

#include <gtest/gtest.h>

#include "workbench/report/adjusted_hall.h"

namespace tiepoint::workbench {
namespace {

/// Groups S0, S1, ... with a named point each, not connected.
Registration apart(std::size_t groups) {
  Registration registration;
  for (std::size_t i = 0; i < groups; ++i) {
    GroupOutcome& group = registration.groups.emplace_back();
    group.id = i;
    group.name = "S" + std::to_string(i);
    PointOutcome& point = registration.points.emplace_back();
    point.group = i;
    point.named = true;
  }
  registration.outcome = NotConnected();
  return registration;
}

TEST(RefusedText, ListsTheClustersAndWhatTheyShare) {
  Registration registration = apart(4);
  registration.links.components = {{0, {0, 1}}, {1, {2}}, {std::nullopt, {3}}};
  registration.links.links = {{0, 1, {"T1", "T2"}}, {1, 2, {"T5"}}};
  EXPECT_EQ(refusedText(registration),
            "Not registered: the groups aren't connected. Two groups are linked when they share 3 names;\n"
            "linked groups count as one.\n"
            "  cluster 0      S0, S1\n"
            "  cluster 1      S2\n"
            "  in no cluster  S3\n"
            "\n"
            "Shared names\n"
            "  cluster 0 (S0, S1) and cluster 1 (S2)  2 common names (T1, T2)  1 more needed\n"
            "  cluster 1 (S2) and S3                  1 common name (T5)       2 more needed\n"
            "\n"
            "To go on with one cluster only: --keep-cluster NUMBER\n");
  EXPECT_EQ(whyNotRegistered(registration), "the groups aren't connected; see the summary for what is missing");
}

TEST(RefusedText, SaysThatNothingIsShared) {
  Registration registration = apart(2);
  registration.links.components = {{std::nullopt, {0}}, {std::nullopt, {1}}};
  EXPECT_EQ(refusedText(registration),
            "Not registered: the groups aren't connected. Two groups are linked when they share 3 names;\n"
            "linked groups count as one.\n"
            "  in no cluster  S0\n"
            "  in no cluster  S1\n"
            "\n"
            "Shared names\n"
            "  No two of them share a name.\n");
}

TEST(RefusedText, LacksNoNamesWhereThreeAreShared) {
  Registration registration = apart(2);
  registration.links.components = {{std::nullopt, {0}}, {std::nullopt, {1}}};
  registration.links.links = {{0, 1, {"T1", "T2", "T3"}}};
  EXPECT_NE(refusedText(registration).find("  S0 and S1  3 common names (T1, T2, T3)\n"), std::string::npos);
}

TEST(RefusedText, SaysThatNoPointCouldTakePart) {
  Registration registration = apart(2);
  EXPECT_EQ(refusedText(registration), "Not registered: no group has a usable point.\n");
  EXPECT_EQ(whyNotRegistered(registration), "no group has a usable point; see the summary");
}

TEST(RefusedText, SaysHowPointsWithoutNamesGetThem) {
  Registration registration = apart(2);
  for (PointOutcome& point : registration.points) point.named = false;
  EXPECT_EQ(whyNotRegistered(registration), "no point has a name; --match auto searches for names");
  registration.naming.emplace();
  EXPECT_EQ(whyNotRegistered(registration), "no point could be named; see the summary");
}

TEST(RefusedText, SaysThatAGroupIsAlone) {
  Registration registration = apart(1);
  registration.links.components = {{std::nullopt, {0}}};
  EXPECT_EQ(refusedText(registration), "Not registered: there is only one group, S0, and nothing to join it with.\n");
  EXPECT_EQ(whyNotRegistered(registration), "there is only one group; add a second one");
}

TEST(RefusedText, SaysThatAllGroupsAreBases) {
  Registration registration = apart(2);
  registration.links.components = {{std::nullopt, {0, 1}}};
  EXPECT_EQ(refusedText(registration),
            "Not registered: all groups (S0, S1) are bases; there is none left to join to them.\n");
  EXPECT_EQ(whyNotRegistered(registration), "all groups are bases; leave out one --base, or add another group");
}

TEST(RefusedText, SaysThatTheBaseIsntShared) {
  Registration registration = apart(3);
  registration.groups[0].inBase = true;
  registration.outcome = BaseNotShared();
  EXPECT_EQ(refusedText(registration),
            "Not registered: the base (S0) shares fewer than 3 points with the other groups. To register them\n"
            "without it, in a system of their own, leave out --base.\n");
  EXPECT_EQ(whyNotRegistered(registration),
            "the base shares fewer than 3 points with the other groups; choose another base or none");
}

TEST(RefusedText, SaysThatNamesArentCertain) {
  Registration registration = apart(2);
  registration.outcome = NotNamed();
  EXPECT_EQ(refusedText(registration), "Not registered: the points can't be named with certainty.\n");
  EXPECT_EQ(whyNotRegistered(registration), "the points can't be named with certainty; see the summary");
}

TEST(RefusedText, PrintsNoControlCharacterOfAName) {
  Registration registration = apart(2);
  registration.groups[1].name = "S\x1b";
  registration.links.components = {{std::nullopt, {0}}, {std::nullopt, {1}}};
  registration.links.links = {{0, 1, {"T\n"}}};
  EXPECT_NE(refusedText(registration).find("  S0 and S?  1 common name (T?)  2 more needed\n"), std::string::npos);
}

TEST(RefusedText, SaysWhichMotionStaysOpen) {
  Registration registration = adjustedHall();
  resultOf(registration).open = analysis::OpenMotion{1, {1, 0, 0}, true, {5, 0, 0}, true};
  resultOf(registration).network.mode = {{1, 1.0}};
  registration.outcome = Undetermined();
  EXPECT_EQ(refusedText(registration),
            "Not registered: S2 turns about the line of its targets, and no measurement opposes that. One more\n"
            "target off that line, seen by S2 and by another station, would hold it.\n");
  EXPECT_EQ(whyNotRegistered(registration),
            "S2 turns about the line of its targets; see the summary for what is missing");
}

TEST(RefusedText, ListsTheSharedNamesOfStationsThatAHingeJoins) {
  Registration registration = apart(2);
  registration.outcome = Undetermined();
  registration.links.components = {{std::nullopt, {0}}, {std::nullopt, {1}}};
  registration.links.links = {{0, 1, {"T1", "T2"}}};
  EXPECT_EQ(refusedText(registration),
            "Not registered: a motion of some stations stays open, and no measurement opposes that. Measure more\n"
            "targets in common.\n"
            "\n"
            "Shared names\n"
            "  S0 and S1  2 common names (T1, T2)  1 more needed\n");
}

}  // namespace
}  // namespace tiepoint::workbench
