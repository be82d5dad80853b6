#include "workbench/report/refused_text.h"

#include <gtest/gtest.h>

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
            "Not registered: the groups don't hang together. Two link when they share 3 names, and linked ones count "
            "as one.\n"
            "  cluster 0  S0, S1\n"
            "  cluster 1  S2\n"
            "  in none    S3\n"
            "\n"
            "What they share\n"
            "  cluster 0 (S0, S1) and cluster 1 (S2)  2 common names (T1, T2)  1 more needed\n"
            "  cluster 1 (S2) and S3                  1 common name (T5)       2 more needed\n"
            "\n"
            "To go on with one cluster alone: --keep-cluster NUMBER\n");
  EXPECT_EQ(whyNotRegistered(registration), "the groups don't hang together; the summary tells what they lack");
}

TEST(RefusedText, SaysThatNothingIsShared) {
  Registration registration = apart(2);
  registration.links.components = {{std::nullopt, {0}}, {std::nullopt, {1}}};
  EXPECT_EQ(refusedText(registration),
            "Not registered: the groups don't hang together. Two link when they share 3 names, and linked ones count "
            "as one.\n"
            "  in none  S0\n"
            "  in none  S1\n"
            "\n"
            "What they share\n"
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
  EXPECT_EQ(refusedText(registration), "Not registered: no group has a point that could take part.\n");
  EXPECT_EQ(whyNotRegistered(registration), "no group has a point that could take part; the summary tells why");
}

TEST(RefusedText, SaysHowPointsWithoutNamesGetThem) {
  Registration registration = apart(2);
  for (PointOutcome& point : registration.points) point.named = false;
  EXPECT_EQ(whyNotRegistered(registration), "no point has a name; --match auto finds names");
  registration.naming.emplace();
  EXPECT_EQ(whyNotRegistered(registration), "no point could be named; the summary tells why");
}

TEST(RefusedText, SaysThatAGroupIsAlone) {
  Registration registration = apart(1);
  registration.links.components = {{std::nullopt, {0}}};
  EXPECT_EQ(refusedText(registration), "Not registered: S0 is alone; there is no second group to join it with.\n");
  EXPECT_EQ(whyNotRegistered(registration), "there is one group alone; add a second to join it with");
}

TEST(RefusedText, SaysThatAllGroupsAreBases) {
  Registration registration = apart(2);
  registration.links.components = {{std::nullopt, {0, 1}}};
  EXPECT_EQ(refusedText(registration), "Not registered: S0, S1 are bases; there is no group to join to them.\n");
  EXPECT_EQ(whyNotRegistered(registration), "all groups are bases; leave one --base out, or add a group that is none");
}

TEST(RefusedText, SaysThatTheBaseIsntShared) {
  Registration registration = apart(3);
  registration.groups[0].inBase = true;
  registration.outcome = BaseNotShared();
  EXPECT_EQ(refusedText(registration),
            "Not registered: of the base (S0) fewer than 3 points are shared with the other groups. Without it\n"
            "they would lie in a system of their own; leave out --base to have that.\n");
  EXPECT_EQ(whyNotRegistered(registration),
            "the base shares fewer than 3 points with the others; choose another base or none");
}

TEST(RefusedText, SaysThatNamesArentCertain) {
  Registration registration = apart(2);
  registration.outcome = NotNamed();
  EXPECT_EQ(refusedText(registration), "Not registered: the points can't be named so that it is certain.\n");
  EXPECT_EQ(whyNotRegistered(registration), "the points can't be named so that it is certain; the summary tells why");
}

TEST(RefusedText, KeepsNamesFromSteeringTheTerminal) {
  Registration registration = apart(2);
  registration.groups[1].name = "S\x1b";
  registration.links.components = {{std::nullopt, {0}}, {std::nullopt, {1}}};
  registration.links.links = {{0, 1, {"T\n"}}};
  EXPECT_NE(refusedText(registration).find("  S0 and S?  1 common name (T?)  2 more needed\n"), std::string::npos);
}

}  // namespace
}  // namespace tiepoint::workbench
