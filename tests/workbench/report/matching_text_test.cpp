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
  EXPECT_EQ(matchingText(few), "there are 4 points; at least 6 are needed");
}

TEST(MatchingText, OfOneGroup) {
  EXPECT_EQ(textOf(FindingKind::oneGroup), "there is only one group, and nothing to compare it with");
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
            "no triangle with an unnamed corner matches one in another group within 0.005");
}

TEST(MatchingText, OfAContradiction) {
  EXPECT_EQ(textOf(FindingKind::contradiction, {}, 0.02),
            "congruent triangles contradict one another, and one contradiction voids the whole matching; the layout "
            "repeats itself, or a tolerance of 0.02 is too wide or too tight");
  EXPECT_EQ(textOf(FindingKind::contradiction, {"S1", "S2"}, 0.02),
            "congruent triangles contradict one another: a triangle of S1 matches several in S2, and one contradiction "
            "voids the whole matching; the layout repeats itself, or a tolerance of 0.02 is too wide or too tight");
}

TEST(MatchingText, OfNamesFromFilesThatDiffer) {
  Finding conflict = finding(FindingKind::conflict, {}, 0.02);
  conflict.points = {"T1 of S1", "T2 of S2"};
  EXPECT_EQ(matchingText(conflict),
            "the points T1 of S1 and T2 of S2 are within 0.02 of one another, but the files give them different names; "
            "one such conflict voids the whole matching");
  conflict.value = 1.0;
  EXPECT_EQ(matchingText(conflict),
            "the points T1 of S1 and T2 of S2 are chained by points in between that are all within 0.02 of one "
            "another, but the files give them different names; one such conflict voids the whole matching");
}

TEST(MatchingText, OfClosenessWithoutASolve) {
  EXPECT_EQ(textOf(FindingKind::notSolved),
            "no group is registered yet; matching by distance needs names that join some of the groups");
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
            "S1, S2: some coordinates aren't finite numbers; as long as they are there, no point is named for being "
            "close to another");
}

TEST(MatchingText, OfTwinPoints) {
  EXPECT_EQ(textOf(FindingKind::twinPoints, {"S1"}, 0.01),
            "S1: two points lie within 0.01 of one another, so triangles with one can't be told from triangles with "
            "the other; keep only one of them");
}

TEST(MatchingText, OfPointsThatTheLimitDoesntSuit) {
  EXPECT_EQ(textOf(FindingKind::farApart, {"S1"}, 0.02),
            "S1: the points are too far apart for a limit of 0.02 drawing units (--match-limit); are they in the unit "
            "that --unit gives?");
  EXPECT_EQ(textOf(FindingKind::nearOneAnother, {"S1", "S2"}, 20),
            "S1, S2: the points are too close together for a limit of 20 drawing units (--match-limit); are they in "
            "the unit that --unit gives?");
}

// --- Why stations weren't joined.

TEST(MatchingText, OfAStationOfFewPoints) {
  EXPECT_EQ(textOf(FindingKind::stationFewPoints, {"S4"}), "S4: fewer than 3 usable points");
}

TEST(MatchingText, OfAStationAlone) {
  EXPECT_EQ(textOf(FindingKind::stationAlone, {"S4"}), "S4: no other station has 3 usable points");
}

TEST(MatchingText, OfAStationWithoutEqualTriangles) {
  EXPECT_EQ(textOf(FindingKind::stationNoEqualTriangles, {"S4"}, 0.005),
            "S4: no triangle matches one of another station within 0.005");
}

TEST(MatchingText, OfAMirroredStation) {
  Finding mirrored = finding(FindingKind::stationMirrored, {"S4"});
  mirrored.count = 6;
  EXPECT_EQ(matchingText(mirrored),
            "S4: only the mirror image fits another station, in 6 points; swap two columns or change the sign of one");
}

TEST(MatchingText, OfASymmetricLayout) {
  Finding ambiguous = finding(FindingKind::stationAmbiguous, {"east", "west"});
  ambiguous.count = 6;
  EXPECT_EQ(matchingText(ambiguous),
            "east, west: each fits the others in several ways, each matching 6 points, as the layout is symmetric; "
            "name 3 of these points in the files, not all on one line, or measure one more target off the symmetry, or "
            "leave stations out (--exclude)");
}

TEST(MatchingText, OfASymmetricLayoutThatOneSharedNameDoesntSettle) {
  Finding ambiguous = finding(FindingKind::stationAmbiguous, {"west"});
  ambiguous.count = 6;
  ambiguous.atLeast = 1;
  EXPECT_EQ(matchingText(ambiguous),
            "west: the station fits the others in several ways, each matching 6 points, as the layout is symmetric; "
            "the 1 name shared by the files doesn't settle which is right: name 2 more in the files, off the line "
            "through the others, or measure one more target off the symmetry, or leave stations out (--exclude)");
}

TEST(MatchingText, OfASymmetricLayoutThatNamesOnOneLineDontSettle) {
  Finding ambiguous = finding(FindingKind::stationAmbiguous, {"west"});
  ambiguous.count = 6;
  const auto advice = [&](std::uint64_t shared) {
    ambiguous.atLeast = shared;
    const std::string text = matchingText(ambiguous);
    return text.substr(text.find("symmetric; ") + 11);
  };
  EXPECT_EQ(advice(2),
            "the 2 names shared by the files don't settle which is right: name 1 more in the files, off the line "
            "through the others, or measure one more target off the symmetry, or leave stations out (--exclude)");
  EXPECT_EQ(advice(3),
            "the 3 names shared by the files don't settle which is right: name 1 more in the files, off the line "
            "through the others, or measure one more target off the symmetry, or leave stations out (--exclude)");
}

TEST(MatchingText, OfAStationThatThreePointsFit) {
  EXPECT_EQ(textOf(FindingKind::stationThreePoints, {"S4"}),
            "S4: only three points fit the other stations, and among so many points that may be chance");
}

TEST(MatchingText, OfAStationAboveTheLimit) {
  Finding above = finding(FindingKind::stationAboveLimit, {"S4"}, 0.02);
  above.value = 0.0305;
  EXPECT_EQ(matchingText(above),
            "S4: every naming leaves a discrepancy of at least 0.0305, above the limit of 0.02 (--match-limit)");
}

TEST(MatchingText, OfAStationWhoseTrianglesContradict) {
  EXPECT_EQ(textOf(FindingKind::stationContradiction, {"S4"}, 0.02),
            "S4: the triangles that match other stations contradict one another at every tolerance up to 0.02");
}

// --- Of stations that were joined.

TEST(MatchingText, OfALoopThatStaysOpen) {
  EXPECT_EQ(
      textOf(FindingKind::openLoop, {"S1", "S4"}, 0.02),
      "S1 and S4 share more points than could be named with discrepancies within the limit of 0.02 (--match-limit)");
}

TEST(MatchingText, OfAWeakLink) {
  Finding weak = finding(FindingKind::weakLink, {"S4"});
  weak.value = 0.004;
  EXPECT_EQ(matchingText(weak),
            "S4: joined by only three points; chance alone would do this in about 1 in 250 such surveys; one more "
            "shared target would make it certain");
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
