#include "workbench/values/finding.h"

#include <gmock/gmock.h>

namespace tiepoint::workbench {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> keysFrom(FindingKind first, FindingKind last) {
  std::vector<std::string> keys;
  for (int kind = static_cast<int>(first); kind <= static_cast<int>(last); ++kind) {
    keys.emplace_back(findingKey(static_cast<FindingKind>(kind)));
  }
  return keys;
}

TEST(KeysOfFindings, OfFiles) {
  EXPECT_THAT(keysFrom(FindingKind::markInName, FindingKind::groupThereAlready),
              ElementsAre("byte-order-mark", "names-in-utf8", "group-name", "reading-stopped", "group-there-already"));
}

TEST(KeysOfFindings, OfTheGroupsInUse) {
  EXPECT_THAT(
      keysFrom(FindingKind::clusterKept, FindingKind::mirrorImages),
      ElementsAre("cluster-kept", "cluster-not-needed", "not-connected", "base-takes-no-part", "group-not-registered",
                  "name-twice", "points-on-one-line", "odd-weights", "other-unit", "mirror-images"));
}

TEST(KeysOfFindings, OfTheIterativeMethod) {
  EXPECT_THAT(keysFrom(FindingKind::courseUnknown, FindingKind::notConverged),
              ElementsAre("course-unknown", "not-converged"));
}

TEST(KeysOfFindings, OfAMatchingThatNamedNothing) {
  EXPECT_THAT(keysFrom(FindingKind::fewPoints, FindingKind::nothingClose),
              ElementsAre("too-few-points", "one-group", "nothing-unnamed", "no-usable-triangle", "no-equal-triangles",
                          "only-named", "contradiction", "conflict", "not-solved", "nothing-unnamed", "nothing-close"));
}

TEST(KeysOfFindings, OfWhatHindersASearchForNames) {
  EXPECT_THAT(keysFrom(FindingKind::notFinite, FindingKind::farApart),
              ElementsAre("not-finite", "twin-points", "unit", "unit"));
}

TEST(KeysOfFindings, OfStationsThatWereHardlyJoined) {
  EXPECT_THAT(keysFrom(FindingKind::stationFewPoints, FindingKind::solveAboveLimit),
              ElementsAre("too-few-points", "one-group", "no-equal-triangles", "mirrored", "ambiguous", "three-points",
                          "above-limit", "contradiction", "open-loop", "weak-link", "above-limit"));
}

Finding ofKind(FindingKind kind) {
  Finding finding;
  finding.kind = kind;
  return finding;
}

TEST(Findings, StandInTheOrderInWhichTheyWereAdded) {
  Findings findings;
  EXPECT_THAT(findings.all(), IsEmpty());
  findings.add(ofKind(FindingKind::weakLink));
  findings.add(ofKind(FindingKind::markInName));
  findings.add(ofKind(FindingKind::weakLink));
  ASSERT_EQ(findings.all().size(), 3u) << "the same one twice is two";
  EXPECT_EQ(findings.all()[0].kind, FindingKind::weakLink);
  EXPECT_EQ(findings.all()[1].kind, FindingKind::markInName);
}

TEST(Findings, AreToldAtOnceWithAllThatTheyHold) {
  std::vector<std::string> told;
  Findings findings([&](const Finding& finding) { told.push_back(finding.groups.at(0)); });
  Finding finding = ofKind(FindingKind::weakLink);
  finding.groups = {"S1"};
  findings.add(finding);
  EXPECT_THAT(told, ElementsAre("S1"));
  finding.groups = {"S2"};
  findings.add(finding);
  EXPECT_THAT(told, ElementsAre("S1", "S2"));
}

TEST(Findings, AreKeptBeforeTheyAreTold) {
  Findings findings([](const Finding&) { throw std::string("the listener's own"); });
  EXPECT_THROW(findings.add(ofKind(FindingKind::weakLink)), std::string);
  EXPECT_EQ(findings.all().size(), 1u);
}

TEST(Findings, AreWarningsUntilToldOtherwise) { EXPECT_EQ(Finding().severity, Severity::warning); }

}  // namespace
}  // namespace tiepoint::workbench
