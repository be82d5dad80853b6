// What is told of files and of groups that were solved; matching_text_test has the rest.
#include "workbench/report/finding_text.h"

#include <gtest/gtest.h>

namespace tiepoint::workbench {
namespace {

Finding ofFile(FindingKind kind) {
  Finding finding{kind};
  finding.path = "S1.txt";
  return finding;
}

Finding ofGroups(FindingKind kind, std::vector<std::string> groups) {
  Finding finding{kind};
  finding.groups = std::move(groups);
  return finding;
}

// --- Files.

TEST(FindingText, OfAByteOrderMarkInAName) {
  Finding mark = ofFile(FindingKind::markInName);
  mark.count = 1;
  EXPECT_EQ(findingText(mark),
            "S1.txt: a byte-order mark became part of the first point's name, which joins nothing now; save the file "
            "without it");
}

TEST(FindingText, OfAByteOrderMarkThatSeveralFilesHave) {
  Finding mark = ofFile(FindingKind::markInName);
  mark.count = 2;
  EXPECT_EQ(findingText(mark),
            "S1.txt: a byte-order mark became part of the first point's name; save the file without it");
}

TEST(FindingText, OfNamesInUtf8) {
  EXPECT_EQ(findingText(ofFile(FindingKind::namesInUtf8)),
            "S1.txt: names are taken as windows-1251, but the file is UTF-8: they join all the same, and are shown "
            "wrongly; save the file as windows-1251");
}

TEST(FindingText, OfAGroupNameOutsideTheModulesCharacters) {
  EXPECT_EQ(findingText(ofFile(FindingKind::groupNameBeyondNarrow)),
            "S1.txt: the group's name has characters outside windows-1251, which the module shows as \"?\"; rename the "
            "file");
}

TEST(FindingText, OfReadingThatStopped) {
  Finding stopped = ofFile(FindingKind::readingStopped);
  stopped.count = 1;
  stopped.atLeast = 9;
  stopped.fault.emplace();
  stopped.fault->kind = LineFaultKind::blank;
  stopped.fault->line = 2;
  EXPECT_EQ(findingText(stopped), "S1.txt: reading stopped after 1 point: line 2 of 9 is blank; take it out");
}

TEST(FindingText, OfAGroupThatIsThereAlready) {
  Finding there = ofFile(FindingKind::groupThereAlready);
  there.groups = {"S1"};
  EXPECT_EQ(findingText(there), "S1.txt: the drawing has a group \"S1\" already; the file was not taken in");
}

// --- Groups.

TEST(FindingText, OfAClusterThatIsKept) {
  Finding kept = ofGroups(FindingKind::clusterKept, {"S3", "S4"});
  kept.count = 2;
  EXPECT_EQ(findingText(kept), "cluster 2 is kept; left out: S3, S4");
}

TEST(FindingText, OfAClusterThatNeedntBeKept) {
  EXPECT_EQ(findingText({FindingKind::clusterNotNeeded}),
            "the groups are connected as they are; --keep-cluster changed nothing");
}

TEST(FindingText, OfGroupsThatArentConnected) {
  Finding apart{FindingKind::notConnected};
  apart.components = {{"S1", "S2"}, {"S3"}};
  EXPECT_EQ(findingText(apart),
            "the groups aren't connected: S1, S2 | S3; the iterative method goes on, but these sets share fewer than 3 "
            "names with one another, so how they lie to one another means little");
}

TEST(FindingText, OfABaseThatTakesNoPart) {
  EXPECT_EQ(findingText(ofGroups(FindingKind::baseTakesNoPart, {"S1"})),
            "S1 isn't used as a base; see the points not used");
}

TEST(FindingText, OfAGroupThatIsntRegistered) {
  EXPECT_EQ(findingText(ofGroups(FindingKind::groupNotRegistered, {"S8"})),
            "S8 isn't registered; see the points not used");
}

TEST(FindingText, OfNamesThatAGroupHasTwice) {
  Finding twice = ofGroups(FindingKind::nameTwice, {"S1"});
  twice.points = {"T1", "T2", "T3", "T4", "T5", "T6", "T7"};
  EXPECT_EQ(findingText(twice),
            "S1 has T1, T2, T3, T4, T5 and 2 more more than once; only the last point of each name is used in the fit: "
            "remove the others from the file");
}

TEST(FindingText, OfPointsOnOneLine) {
  EXPECT_EQ(findingText(ofGroups(FindingKind::pointsOnOneLine, {"S5"})),
            "the points of S5 in use lie on one line, so its rotation about that line is undetermined");
}

TEST(FindingText, OfWeightsOutsideTheirRange) {
  Finding odd = ofGroups(FindingKind::oddWeights, {"S5"});
  odd.count = 1;
  EXPECT_EQ(findingText(odd),
            "S5: 1 point in use has a weight outside 0 to 1; a point with a weight below 0 takes part in no fit");
  odd.count = 3;
  EXPECT_EQ(findingText(odd),
            "S5: 3 points in use have a weight outside 0 to 1; a point with a weight below 0 takes part in no fit");
}

TEST(FindingText, OfAnotherUnit) {
  Finding unit = ofGroups(FindingKind::otherUnit, {"S1", "S2"});
  unit.count = 1;
  unit.value = 3.28084;
  EXPECT_EQ(findingText(unit),
            "the targets that S1 and S2 share are 3.28 times as far apart in S2; are both files in the same unit?");
  unit.count = 0;
  unit.value = 1000.4;
  EXPECT_EQ(findingText(unit),
            "the targets that S1 and S2 share are 1000 times as far apart in S1; are both files in the same unit?");
}

TEST(FindingText, OfMirrorImages) {
  EXPECT_EQ(findingText(ofGroups(FindingKind::mirrorImages, {"S1", "S2"})),
            "S1 and S2 fit only as mirror images; are two columns swapped in one of the files?");
}

// --- The adjustment.

TEST(FindingText, OfControlThatNoStationMeasured) {
  Finding unseen{FindingKind::controlNotSeen};
  unseen.path = "control.txt";
  unseen.points = {"T90"};
  EXPECT_EQ(findingText(unseen),
            "control.txt: no station measured the control target T90; is it spelled as in the stations' files?");
  unseen.path.clear();
  unseen.points = {"T90", "T91", "T92", "T93", "T94", "T95"};
  EXPECT_EQ(findingText(unseen),
            "no station measured the control targets T90, T91, T92, T93, T94 and 1 more; are they spelled as in the "
            "stations' files?");
}

// --- The iterative method.

TEST(FindingText, OfIterationsWhoseEndIsntKnown) {
  EXPECT_EQ(findingText({FindingKind::courseUnknown}),
            "the report doesn't say how the iterations ended, so it isn't known whether they converged");
}

TEST(FindingText, OfIterationsThatHaventConverged) {
  Finding ended{FindingKind::notConverged};
  ended.count = 100;
  EXPECT_EQ(findingText(ended),
            "not converged: stopped by the limit of 100 iterations; see the summary, raise --max-iterations, or use "
            "the pairwise method");
}

TEST(FindingText, OfAFindingWithoutAGroupStillReads) {
  EXPECT_EQ(findingText({FindingKind::groupNotRegistered}), " isn't registered; see the points not used");
}

}  // namespace
}  // namespace tiepoint::workbench
