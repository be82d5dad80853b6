#include "workbench/report/matching_text.h"

#include <gtest/gtest.h>

#include "workbench/report/finding_text.h"

namespace tiepoint::workbench {
namespace {

Finding finding(FindingKind kind, std::vector<std::string> groups = {}, double limit = 0.0) {
  Finding made{kind};
  made.groups = std::move(groups);
  made.limit = limit;
  return made;
}

std::string textOf(FindingKind kind, std::vector<std::string> groups = {}, double limit = 0.0) {
  return matchingText(finding(kind, std::move(groups), limit));
}

// --- Why a matching named nothing.

TEST(MatchingText, OfTooFewPoints) {
  Finding few = finding(FindingKind::fewPoints);
  few.count = 4;
  few.atLeast = 6;
  EXPECT_EQ(matchingText(few), "there are 4 points; 6 at least are needed");
}

TEST(MatchingText, OfOneGroup) {
  EXPECT_EQ(textOf(FindingKind::oneGroup), "there is one group only, and nothing to compare it with");
}

TEST(MatchingText, OfNothingUnnamed) {
  EXPECT_EQ(textOf(FindingKind::nothingUnnamed), "every point has a name already");
}

TEST(MatchingText, OfNoUsableTriangle) {
  EXPECT_EQ(textOf(FindingKind::noUsableTriangle, {}, 0.1),
            "fewer than two groups have a triangle whose sides all differ by more than 0.1");
}

TEST(MatchingText, OfNoEqualTriangles) {
  EXPECT_EQ(textOf(FindingKind::noEqualTriangles, {}, 0.005),
            "no two groups have triangles whose sides agree within 0.005");
}

TEST(MatchingText, OfTrianglesOfNamedPointsAlone) {
  EXPECT_EQ(textOf(FindingKind::onlyNamed, {}, 0.005),
            "no triangle with an unnamed corner has the sides of one in another group within 0.005");
}

TEST(MatchingText, OfAContradiction) {
  EXPECT_EQ(
      textOf(FindingKind::contradiction, {}, 0.02),
      "equal triangles contradict one another, and one contradiction voids the whole matching; the layout repeats "
      "itself, or 0.02 is too wide or too narrow a tolerance");
  EXPECT_EQ(textOf(FindingKind::contradiction, {"S1", "S2"}, 0.02),
            "equal triangles contradict one another: a triangle of S1 has the sides of several in S2, and one "
            "contradiction voids the whole matching; the layout repeats itself, or 0.02 is too wide or too narrow a "
            "tolerance");
}

TEST(MatchingText, OfNamesFromFilesThatDiffer) {
  Finding conflict = finding(FindingKind::conflict, {}, 0.02);
  conflict.points = {"T1 of S1", "T2 of S2"};
  EXPECT_EQ(matchingText(conflict),
            "the points T1 of S1 and T2 of S2 lie within 0.02 of one another, but their names come from the files and "
            "differ; one such spot voids the whole matching");
  conflict.value = 1.0;
  EXPECT_EQ(matchingText(conflict),
            "the points T1 of S1 and T2 of S2 lie on one spot, as points between them lie within 0.02 of one another, "
            "but their names come from the files and differ; one such spot voids the whole matching");
}

TEST(MatchingText, OfClosenessWithoutASolve) {
  EXPECT_EQ(textOf(FindingKind::notSolved), "no group is registered yet: closeness needs names that join some groups");
}

TEST(MatchingText, OfPointsThatTheFilesName) {
  EXPECT_EQ(textOf(FindingKind::namedByFiles), "every point of the registered groups has a name from its file");
}

TEST(MatchingText, OfNothingClose) {
  EXPECT_EQ(textOf(FindingKind::nothingClose, {}, 0.02), "no point without a name lies within 0.02 of another");
}

// --- What hinders a search.

TEST(MatchingText, OfCoordinatesThatArentFinite) {
  EXPECT_EQ(textOf(FindingKind::notFinite, {"S1", "S2"}),
            "S1, S2: points with coordinates that aren't finite numbers; while they are there, no point is named "
            "because it lies on the spot of another");
}

TEST(MatchingText, OfTwinPoints) {
  EXPECT_EQ(textOf(FindingKind::twinPoints, {"S1"}, 0.01),
            "S1: two points lie within 0.01 of one another, and triangles with the one can't be told from triangles "
            "with the other; keep one of the two");
}

TEST(MatchingText, OfPointsThatTheLimitDoesntSuit) {
  EXPECT_EQ(textOf(FindingKind::farApart, {"S1"}, 0.02),
            "S1: the points lie too far apart for a limit of 0.02 drawing units (--match-limit); is their unit the one "
            "that --unit says?");
  EXPECT_EQ(textOf(FindingKind::nearOneAnother, {"S1", "S2"}, 20),
            "S1, S2: the points lie too near one another for a limit of 20 drawing units (--match-limit); is their "
            "unit the one that --unit says?");
}

// --- Why stations weren't joined.

TEST(MatchingText, OfAStationOfFewPoints) {
  EXPECT_EQ(textOf(FindingKind::stationFewPoints, {"S4"}), "S4: fewer than 3 points to use");
}

TEST(MatchingText, OfAStationAlone) {
  EXPECT_EQ(textOf(FindingKind::stationAlone, {"S4"}), "S4: no other station has 3 points to use");
}

TEST(MatchingText, OfAStationWithoutEqualTriangles) {
  EXPECT_EQ(textOf(FindingKind::stationNoEqualTriangles, {"S4"}, 0.005),
            "S4: no triangle that another station has too, with sides that agree within 0.005");
}

TEST(MatchingText, OfAMirroredStation) {
  Finding mirrored = finding(FindingKind::stationMirrored, {"S4"});
  mirrored.count = 6;
  EXPECT_EQ(matchingText(mirrored),
            "S4: the mirror image fits another station in 6 points; exchange two columns or turn the sign of one");
}

TEST(MatchingText, OfASymmetricLayout) {
  Finding ambiguous = finding(FindingKind::stationAmbiguous, {"east", "west"});
  ambiguous.count = 6;
  EXPECT_EQ(matchingText(ambiguous),
            "east, west: several ways of laying a station onto the others explain 6 points each, as the layout is "
            "symmetric; name some of these points, measure one more target, or leave stations out (--exclude)");
}

TEST(MatchingText, OfAStationThatThreePointsFit) {
  EXPECT_EQ(textOf(FindingKind::stationThreePoints, {"S4"}),
            "S4: only three points fit the others, and chance may do that among so many");
}

TEST(MatchingText, OfAStationAboveTheLimit) {
  Finding above = finding(FindingKind::stationAboveLimit, {"S4"}, 0.02);
  above.value = 0.0305;
  EXPECT_EQ(matchingText(above),
            "S4: whatever is named leaves a discrepancy of 0.0305 at least, above the limit of 0.02 (--match-limit)");
}

TEST(MatchingText, OfAStationWhoseTrianglesContradict) {
  EXPECT_EQ(textOf(FindingKind::stationContradiction, {"S4"}, 0.02),
            "S4: triangles that other stations have too contradict one another at every tolerance up to 0.02");
}

// --- Of stations that were joined.

TEST(MatchingText, OfALoopThatStaysOpen) {
  EXPECT_EQ(textOf(FindingKind::openLoop, {"S1", "S4"}, 0.02),
            "S1 and S4 share more points than could be named with discrepancies below the limit of 0.02 "
            "(--match-limit)");
}

TEST(MatchingText, OfAWeakLink) {
  Finding weak = finding(FindingKind::weakLink, {"S4"});
  weak.value = 0.004;
  EXPECT_EQ(matchingText(weak),
            "S4: joined by three points alone, as chance would do in one of 250 surveys like this; one more shared "
            "target would make it certain");
}

TEST(MatchingText, OfASolveAboveTheLimit) {
  Finding above = finding(FindingKind::solveAboveLimit, {}, 0.02);
  above.value = 0.03;
  EXPECT_EQ(matchingText(above), "the solve leaves a discrepancy of 0.03, above the limit of 0.02 (--match-limit)");
}

TEST(MatchingText, IsWhatIsToldOfAFindingOfItsKind) {
  for (const FindingKind kind : {FindingKind::oneGroup, FindingKind::stationAlone}) {
    EXPECT_EQ(findingText(finding(kind, {"S1"})), textOf(kind, {"S1"}));
  }
}

}  // namespace
}  // namespace tiepoint::workbench
