// Points without names, named from the command line.
#include <gmock/gmock.h>

#include <map>
#include <random>
#include <set>

#include "matching/hall.h"
#include "workbench/cli/survey_files.h"

namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using tiepoint::testing::Hall;

/// x y z lines; what a scanner writes has tenths of a millimetre.
std::string xyzLines(const std::vector<OdGePoint3d>& points) {
  std::string lines;
  for (const OdGePoint3d& p : points) {
    char line[96];
    std::snprintf(line, sizeof line, "%.4f %.4f %.4f\n", p.x, p.y, p.z);
    lines += line;
  }
  return lines;
}

std::vector<std::string> namesOf(const json& result, const std::string& group) {
  std::vector<std::string> names;
  for (const json& point : result["points"]) {
    if (point["group"] == group) names.push_back(point["name"]);
  }
  return names;
}

/// The middles of the long walls of a yard, then its corners, each shifted by a part of `off` of its own: a
/// tolerance well below that tells the yard from the yard turned about.
std::vector<OdGePoint3d> yard(double off = 0.0) {
  return {{12 + 0.3 * off, 0.9 * off, 1},   {12 - 0.7 * off, 14 + 0.4 * off, 1}, {off, -0.5 * off, 1},
          {24 + 0.45 * off, 0.75 * off, 1}, {24 - 0.9 * off, 14 - 0.6 * off, 1}, {0.6 * off, 14 - off, 1}};
}

/// A quarter turn and a shift.
std::vector<OdGePoint3d> turned(const std::vector<OdGePoint3d>& points) {
  std::vector<OdGePoint3d> moved;
  for (const OdGePoint3d& p : points) moved.emplace_back(5.0 - p.y, p.x, p.z + 4.0);
  return moved;
}

std::string nxyzLines(const std::vector<std::string>& names, const std::vector<OdGePoint3d>& points) {
  std::string lines;
  for (std::size_t i = 0; i < names.size(); ++i) lines += names[i] + " " + xyzLines({points[i]});
  return lines;
}

class MatchingCommand : public SurveyFiles {
 protected:
  std::mt19937_64 random{11};

  /// Two stations that see the same targets, and one target each for itself.
  void writePair(double noise) {
    Hall hall(10, random);
    write("A.txt", xyzLines(hall.seenByAStation({0, 1, 2, 3, 4, 5, 6, 7, 8}, noise)));
    write("B.txt", xyzLines(hall.seenByAStation({9, 7, 6, 5, 4, 3, 2, 1, 0}, noise)));
  }

  const std::string rectangle = "0 0 0\n10 0 0\n10 6 0\n0 6 0\n";
  const std::string turnedRectangle = "0 0 5\n0 10 5\n-6 10 5\n-6 0 5\n";
};

// --- By triangles.

TEST_F(MatchingCommand, TrianglesNameWhatTwoStationsShare) {
  writePair(0.0);
  const json result = runJson({"register", "--match", "triangles", "--xyz", "A.txt", "B.txt"});
  EXPECT_EQ(result["outcome"], "registered");
  EXPECT_EQ(result["match"]["named"], 16);
  EXPECT_EQ(result["match"]["unnamed"], 2);
  const auto a = namesOf(result, "A"), b = namesOf(result, "B");
  EXPECT_EQ(a[8], "?");
  EXPECT_EQ(b[0], "?");
  for (std::size_t target = 0; target < 8; ++target) EXPECT_EQ(a[target], b[8 - target]);
}

TEST_F(MatchingCommand, TrianglesAreComparedWithinTheSessionsTolerancesUnlessOthersAreGiven) {
  writePair(0.0);
  const json usual = runJson({"register", "--match", "triangles", "--xyz", "A.txt", "B.txt"})["match"]["steps"][0];
  EXPECT_EQ(usual["kind"], "triangles");
  EXPECT_EQ(usual["groups"], json({"A", "B"}));
  EXPECT_EQ(usual["tolerance"], 0.001);
  EXPECT_EQ(usual["minSideDifference"], 0.1);
  EXPECT_EQ(usual["named"], 16);
  const json given = runJson({"register", "--match", "triangles", "--side-tolerance", "0.002", "--min-side-difference",
                              "0.25", "--xyz", "A.txt", "B.txt"})["match"]["steps"][0];
  EXPECT_EQ(given["tolerance"], 0.002);
  EXPECT_EQ(given["minSideDifference"], 0.25);
}

TEST_F(MatchingCommand, TrianglesThatContradictOneAnotherNameNothingAndTheSummarySaysWhy) {
  write("A.txt", rectangle);
  write("B.txt", turnedRectangle);
  const ProcessResult result = run({"register", "--match", "triangles", "--xyz", "A.txt", "B.txt"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(
      result.out,
      HasSubstr("Naming (triangles): 0 points have automatic names, 8 have none\n"
                "  step  what                         within  sides differ by  named\n"
                "     1  congruent triangles of A, B   0.001              0.1      0\n"
                "  - congruent triangles contradict one another: a triangle of A matches several in B, and one\n"
                "    contradiction voids the whole matching;"));
}

TEST_F(MatchingCommand, AnExcludedGroupIsLeftAlone) {
  writePair(0.0);
  write("C.txt", read("B.txt"));
  const json result =
      runJson({"register", "--match", "triangles", "--exclude", "C", "--xyz", "A.txt", "B.txt", "C.txt"});
  EXPECT_EQ(result["match"]["steps"][0]["groups"], json({"A", "B"}));
  EXPECT_EQ(result["match"]["named"], 16);
}

TEST_F(MatchingCommand, APointCanBeExcludedByTheNameThatItGets) {
  writePair(0.0);
  const json result = runJson({"register", "--match", "triangles", "--exclude", "A:auto3", "--weight", "B:auto2=0.5",
                               "--xyz", "A.txt", "B.txt"});
  std::map<std::pair<std::string, std::string>, json> points;
  for (const json& point : result["points"]) points[{point["group"], point["name"]}] = point;
  EXPECT_EQ((points[{"A", "auto3"}]["reason"]), "excluded");
  EXPECT_EQ((points[{"B", "auto2"}]["weight"]), 0.5);
}

TEST_F(MatchingCommand, APointThatGetsNoSuchNameCantBeExcluded) {
  writePair(0.0);
  const ProcessResult result =
      run({"register", "--match", "triangles", "--exclude", "A:auto99", "--xyz", "A.txt", "B.txt"});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.err, HasSubstr("--exclude A:auto99: group \"A\" has no point \"auto99\""));
}

// --- By closeness.

TEST_F(MatchingCommand, ClosenessNamesWhatTheNamedPointsPutOnOneSpot) {
  write("base.txt", std::string(baseLines) + "? 3 4 5\n");
  write("shifted.txt", std::string(shiftedLines) + "? 103.05 204 305\n");
  const json result = runJson({"register", "--match", "distance", "base.txt", "shifted.txt"});
  EXPECT_EQ(result["match"]["steps"][0]["kind"], "closeness");
  EXPECT_EQ(result["match"]["steps"][0]["tolerance"], 0.1);
  EXPECT_EQ(result["match"]["named"], 2);
  EXPECT_EQ(namesOf(result, "base").back(), namesOf(result, "shifted").back());
  EXPECT_THAT(namesOf(result, "base").back(), testing::StartsWith("auto"));
}

TEST_F(MatchingCommand, ClosenessNamesPointsOfABaseToo) {
  write("base.txt", std::string(baseLines) + "? 3 4 5\n");
  write("shifted.txt", std::string(shiftedLines) + "P9 103 204 305\n");
  const json result = runJson({"register", "--match", "distance", "--base", "base", "base.txt", "shifted.txt"});
  EXPECT_EQ(result["method"], "adjust with base");
  EXPECT_EQ(namesOf(result, "base").back(), "P9");
}

TEST_F(MatchingCommand, PointsAsFarApartAsTheToleranceArentOnOneSpot) {
  write("base.txt", std::string(baseLines) + "? 3 4 5\n");
  write("shifted.txt", std::string(shiftedLines) + "? 103.5 204 305\n");
  const ProcessResult result =
      run({"register", "--match", "distance", "--tolerance", "0.25", "base.txt", "shifted.txt"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.out, HasSubstr("  - no point without a name lies within 0.25 of another\n"));
}

TEST_F(MatchingCommand, TwoNamesOnOneSpotVoidTheWholeMatchingByCloseness) {
  write("base.txt", std::string(baseLines) + "Q1 3 4 5\n? 7 7 7\n");
  write("shifted.txt", std::string(shiftedLines) + "Q2 103 204 305\n? 107 207 307\n");
  const ProcessResult result = run({"register", "--match", "distance", "base.txt", "shifted.txt"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.out, HasSubstr("  - the points Q1 and Q2 are within 0.1 of one another, but the files give them"));
}

TEST_F(MatchingCommand, ClosenessWithoutNamesSaysWhatItNeeds) {
  writePair(0.0);
  const ProcessResult result = run({"register", "--match", "distance", "--xyz", "A.txt", "B.txt"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(
      result.out,
      HasSubstr("  - no group is registered yet; matching by distance needs names that join some of the groups\n"));
}

// --- The search.

TEST_F(MatchingCommand, AutoNamesAndRegistersANoisyPairAndTellsItsSteps) {
  writePair(0.002);
  const json result = runJson({"register", "--match", "auto", "--base", "A", "--xyz", "A.txt", "B.txt"});
  EXPECT_EQ(result["outcome"], "registered");
  EXPECT_EQ(result["match"]["mode"], "auto");
  EXPECT_EQ(result["match"]["limit"], 0.02);
  EXPECT_EQ(result["match"]["named"], 16);
  EXPECT_EQ(result["match"]["steps"][0]["kind"], "triangles");
  EXPECT_EQ(result["match"]["steps"][1]["kind"], "solve");
  EXPECT_EQ(result["match"]["reasons"], json::array());
  const auto a = namesOf(result, "A"), b = namesOf(result, "B");
  for (std::size_t target = 0; target < 8; ++target) EXPECT_EQ(a[target], b[8 - target]);
}

TEST_F(MatchingCommand, AutoRefusesASymmetricLayoutAndKeepsItsHandsOff) {
  write("A.txt", rectangle);
  write("B.txt", turnedRectangle);
  write("A.xyz", "1 2 3\n");
  const ProcessResult result = run({"register", "--match", "auto", "--document", "d.tiepoint", "--cloud", "A=A.xyz",
                                    "--apply", "--common-points", "targets.txt", "--xyz", "A.txt", "B.txt"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(
      result.out,
      HasSubstr(
          "Naming (auto): 0 points have automatic names, 8 have none; largest discrepancy allowed: 0.02 drawing units\n"
          "  - A, B: each fits the others in several ways, each matching 4 points, as the layout is symmetric;\n"
          "    name 3 of these points in the files, not all on one line,"));
  EXPECT_THAT(result.out, HasSubstr("\n"
                                    "Not registered: the points can't be named with certainty.\n"));
  EXPECT_EQ(result.err, "tiepoint: not registered: the points can't be named with certainty; see the summary\n");
  EXPECT_FALSE(exists("targets.txt"));
  EXPECT_EQ(runJson({"clouds", "--document", "d.tiepoint"})["clouds"], json::array());
}

TEST_F(MatchingCommand, AutoLetsThreeNamesOfTheFilesDecideASymmetricLayout) {
  const std::vector<std::string> names{"M1", "M2", "C1", "?", "?", "?"};
  write("A.txt", nxyzLines(names, yard()));
  write("B.txt", nxyzLines(names, turned(yard())));
  const json result = runJson({"register", "--match", "auto", "A.txt", "B.txt"});
  EXPECT_EQ(result["outcome"], "registered");
  EXPECT_EQ(result["match"]["unnamed"], 0);
  EXPECT_EQ(namesOf(result, "A"), namesOf(result, "B"));
}

TEST_F(MatchingCommand, AutoAsksForAThirdNameOffTheLineWhereTwoOnTheAxisAreNamed) {
  const std::vector<std::string> names{"M1", "M2", "?", "?", "?", "?"};
  write("A.txt", nxyzLines(names, yard()));
  write("B.txt", nxyzLines(names, turned(yard())));
  const json result = runJson({"register", "--match", "auto", "A.txt", "B.txt"}, 1);
  ASSERT_EQ(result["outcome"], "not-named");
  EXPECT_EQ(result["match"]["reasons"][0]["text"],
            "A, B: each fits the others in several ways, each matching 6 points, as the layout is symmetric; the 2 "
            "names shared by the files don't settle which is right: name 1 more in the files, off the line through the "
            "others, or measure one more target off the symmetry, or leave stations out (--exclude)");
}

TEST_F(MatchingCommand, AutoDoesntTakeNamesThatOneFileAloneHasForAnAnswer) {
  write("A.txt", nxyzLines({"?", "?", "?", "?", "?", "?"}, yard(0.008)));
  write("B.txt", nxyzLines({"M1", "M2", "C1", "C2", "C3", "C4"}, turned(yard(0.008))));
  const json result = runJson({"register", "--match", "auto", "A.txt", "B.txt"}, 1);
  ASSERT_EQ(result["outcome"], "not-named");
  EXPECT_EQ(result["match"]["reasons"][0]["key"], "ambiguous");
}

TEST_F(MatchingCommand, AutoLetsFurtherPointsDecideASymmetricLayout) {
  write("A.txt", rectangle + "30 9 4\n");
  write("B.txt", turnedRectangle + "-9 30 9\n");
  const json result = runJson({"register", "--match", "auto", "--xyz", "A.txt", "B.txt"});
  EXPECT_EQ(result["outcome"], "registered");
  EXPECT_EQ(namesOf(result, "A"), namesOf(result, "B"));
}

TEST_F(MatchingCommand, AutoAcceptsNoNamingWithDiscrepanciesAboveTheLimit) {
  writePair(0.002);
  const ProcessResult result =
      run({"register", "--match", "auto", "--match-limit", "0.00001", "--xyz", "A.txt", "B.txt"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.out, HasSubstr("largest discrepancy allowed: 1e-05 drawing units"));
  EXPECT_THAT(result.out, HasSubstr("\n"
                                    "Not registered: the points can't be named with certainty.\n"));
}

TEST_F(MatchingCommand, AutoTakesItsLengthsInMillimetresWhereThatIsTheUnit) {
  Hall hall(8, random);
  std::vector<OdGePoint3d> a = hall.seenByAStation(hall.allTargets(), 0.002);
  std::vector<OdGePoint3d> b = hall.seenByAStation(hall.allTargets(), 0.002);
  for (auto* points : {&a, &b}) {
    for (OdGePoint3d& p : *points) p = {1000.0 * p.x, 1000.0 * p.y, 1000.0 * p.z};
  }
  write("A.txt", xyzLines(a));
  write("B.txt", xyzLines(b));
  const json result = runJson({"register", "--match", "auto", "--unit", "mm", "--xyz", "A.txt", "B.txt"});
  EXPECT_EQ(result["match"]["limit"], 20.0);
  EXPECT_EQ(result["match"]["named"], 16);
}

TEST_F(MatchingCommand, AutoKeepsTheNamesThatTheFilesGive) {
  Hall hall(9, random);
  const std::vector<OdGePoint3d> a = hall.seenByAStation(hall.allTargets(), 0.002);
  std::string named;
  for (std::size_t i = 0; i < a.size(); ++i) named += (i < 4 ? "T" + std::to_string(i) : "?") + " " + xyzLines({a[i]});
  write("A.txt", named);
  write("B.txt", xyzLines(hall.seenByAStation(hall.allTargets(), 0.002)));
  const json result = runJson({"register", "--match", "auto", "--nxyz", "A.txt", "--xyz", "B.txt"});
  const auto names = namesOf(result, "B");
  EXPECT_THAT(std::vector<std::string>(names.begin(), names.begin() + 4), ElementsAre("T0", "T1", "T2", "T3"));
  EXPECT_EQ(names, namesOf(result, "A"));
}

/// B and C are joined first, by the most targets, and A's name comes to theirs afterwards.
TEST_F(MatchingCommand, AutoGivesATargetTheFilesNameInStationsThatWereJoinedBeforeToo) {
  Hall hall(12, random);
  const std::vector<OdGePoint3d> a = hall.seenByAStation({0, 1, 2, 3, 4, 5}, 0.001);
  write("A.txt", "T0 " + xyzLines({a[0]}) + "? " + xyzLines({a[1]}) + "? " + xyzLines({a[2]}) + "? " +
                     xyzLines({a[3]}) + "? " + xyzLines({a[4]}) + "? " + xyzLines({a[5]}));
  write("B.txt", xyzLines(hall.seenByAStation({0, 1, 2, 3, 4, 6, 7, 8, 9, 10}, 0.001)));
  write("C.txt", xyzLines(hall.seenByAStation({0, 6, 7, 8, 9, 10, 5, 11}, 0.001)));
  const json result = runJson({"register", "--match", "auto", "--nxyz", "A.txt", "--xyz", "B.txt", "C.txt"});
  EXPECT_EQ(result["outcome"], "registered");
  EXPECT_EQ(namesOf(result, "B")[0], "T0");
  EXPECT_EQ(namesOf(result, "C")[0], "T0");
}

TEST_F(MatchingCommand, AutoLeavesOutAStationThatSharesNothingAndSaysSo) {
  writePair(0.002);
  Hall other(6, random);
  write("C.txt", xyzLines(other.seenByAStation(other.allTargets(), 0.002)));
  const ProcessResult result = run({"register", "--match", "auto", "--xyz", "A.txt", "B.txt", "C.txt"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, "tiepoint: warning: C isn't registered; see the points not used\n");
  EXPECT_THAT(result.out, HasSubstr("  - C: no triangle matches one of another station within 0.02\n"));
}

/// It voids the matching of all spots and of most triangles, so that three points are left.
TEST_F(MatchingCommand, AutoTellsOfATargetThatAStationListsTwice) {
  writePair(0.002);
  const std::string lines = read("A.txt");
  write("A.txt", lines + lines.substr(0, lines.find('\n') + 1));
  const ProcessResult result = run({"register", "--match", "auto", "--xyz", "A.txt", "B.txt"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.out, HasSubstr("  - A: two points lie within 0.02 of one another, so triangles with one"));
  EXPECT_THAT(result.err,
              HasSubstr("warning: B: joined by only three points; chance alone would do this in about 1 in "));
}

TEST_F(MatchingCommand, AutoTellsOfAStationWhoseColumnsAreExchanged) {
  Hall hall(8, random);
  for (const char* file : {"A.txt", "B.txt"}) write(file, xyzLines(hall.seenByAStation(hall.allTargets(), 0.002)));
  std::vector<OdGePoint3d> exchanged = hall.seenByAStation(hall.allTargets(), 0.002);
  for (OdGePoint3d& p : exchanged) std::swap(p.x, p.y);
  write("C.txt", xyzLines(exchanged));
  const json result = runJson({"register", "--match", "auto", "--xyz", "A.txt", "B.txt", "C.txt"});
  EXPECT_EQ(result["match"]["named"], 16);
  EXPECT_EQ(result["match"]["reasons"][0]["key"], "mirrored");
  EXPECT_EQ(result["match"]["reasons"][0]["text"],
            "C: only the mirror image fits another station, in 8 points; swap two columns or change the sign of one");
}

TEST_F(MatchingCommand, AutoTellsOfAUnitThatDoesntGoWithTheLimit) {
  writePair(0.002);
  const json metres = runJson({"register", "--match", "auto", "--unit", "mm", "--xyz", "A.txt", "B.txt"}, 1);
  EXPECT_EQ(metres["outcome"], "not-named");
  EXPECT_EQ(metres["match"]["reasons"][0]["key"], "unit");
  EXPECT_EQ(metres["match"]["reasons"][0]["text"],
            "A, B: the points are too close together for a limit of 20 drawing units (--match-limit); are they in the "
            "unit that --unit gives?");
}

TEST_F(MatchingCommand, AutoTellsThatAStationIsAlone) {
  writePair(0.002);
  write("few.txt", "1 2 3\n4 5 6\n");
  const json reasons = runJson({"register", "--match", "auto", "--xyz", "A.txt", "few.txt"}, 1)["match"]["reasons"];
  ASSERT_EQ(reasons.size(), 2U);
  EXPECT_EQ(reasons[0]["text"], "few: fewer than 3 usable points");
  EXPECT_EQ(reasons[1]["text"], "A: no other station has 3 usable points");
}

TEST_F(MatchingCommand, AutoSaysNothingOfTwinsWhereAllStationsStand) {
  write("A.txt", "0 0 0\n30 0 1\n9 24 2\n3 7 5\n40 31 1\n50 3 2\n50.015 3 2\n");
  write("B.txt", "0 0 0\n30 0 1\n9 24 2\n3 7 5\n40 31 1\n");
  const json result = runJson({"register", "--match", "auto", "--xyz", "A.txt", "B.txt"});
  EXPECT_EQ(result["outcome"], "registered");
  EXPECT_EQ(result["match"]["reasons"], json::array());
}

TEST_F(MatchingCommand, AutoTellsOfCoordinatesThatArentFinite) {
  writePair(0.002);
  write("A.txt", read("A.txt") + "nan 1 2\n");
  const json result = runJson({"register", "--match", "auto", "--xyz", "A.txt", "B.txt"});
  EXPECT_EQ(result["outcome"], "registered");
  EXPECT_EQ(result["match"]["reasons"][0]["key"], "not-finite");
  EXPECT_EQ(result["match"]["reasons"][0]["text"],
            "A: some coordinates aren't finite numbers; as long as they are there, no point is named for being close "
            "to another");
}

TEST_F(MatchingCommand, AutoHasNothingToDoWhereEveryPointHasAName) {
  const json result = runJson({"register", "--match", "auto", "base.txt", "shifted.txt"});
  EXPECT_EQ(result["outcome"], "registered");
  EXPECT_EQ(result["match"]["reasons"][0]["key"], "nothing-unnamed");
}

TEST_F(MatchingCommand, AutoRegistersIterativelyToo) {
  writePair(0.002);
  const json result = runJson({"register", "--match", "auto", "--method", "iterative", "--max-iterations", "1000",
                               "--convergence", "1e-9", "--xyz", "A.txt", "B.txt"});
  EXPECT_EQ(result["outcome"], "registered");
  EXPECT_EQ(result["match"]["named"], 16);
}

// --- Options that don't go together.

TEST_F(MatchingCommand, OptionsOfAnotherWayOfMatchingAreRefused) {
  const auto refusal = [&](std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "register");
    arguments.insert(arguments.end(), {"base.txt", "shifted.txt"});
    const ProcessResult result = run(arguments);
    EXPECT_EQ(result.status, 2);
    return result.err;
  };
  EXPECT_EQ(refusal({"--match", "magic"}), "tiepoint: --match magic: unknown; choose auto, triangles or distance\n");
  EXPECT_EQ(refusal({"--side-tolerance", "0.1"}), "tiepoint: --side-tolerance needs --match triangles or auto\n");
  EXPECT_EQ(refusal({"--match", "distance", "--min-side-difference", "0.1"}),
            "tiepoint: --min-side-difference needs --match triangles or auto\n");
  EXPECT_EQ(refusal({"--match", "triangles", "--tolerance", "0.1"}),
            "tiepoint: --tolerance needs --match distance or auto\n");
  EXPECT_EQ(refusal({"--match", "triangles", "--match-limit", "0.1"}), "tiepoint: --match-limit needs --match auto\n");
  EXPECT_EQ(refusal({"--match", "auto", "--match-limit", "0"}),
            "tiepoint: --match-limit 0: must be a length above 0, in drawing units\n");
  EXPECT_EQ(refusal({"--match", "triangles", "--min-side-difference", "-1"}),
            "tiepoint: --min-side-difference -1: must be a length of at least 0, in drawing units\n");
  EXPECT_EQ(refusal({"--match", "triangles", "--side-tolerance", "nan"}),
            "tiepoint: --side-tolerance nan: must be a length above 0, in drawing units\n");
}

// --- Random halls.

/// Stations one after another, 12 to 30 targets each; half of the targets are those of the
/// station before. What each saw, in the order of its file.
std::vector<std::vector<Hall::Target>> chainOfStations(std::size_t length, std::mt19937_64& random,
                                                       std::size_t& targetCount) {
  std::vector<std::size_t> sizes(length);
  for (std::size_t& size : sizes) size = std::uniform_int_distribution<std::size_t>(12, 30)(random);
  std::vector<std::vector<Hall::Target>> seen;
  std::vector<Hall::Target> shared;
  for (std::size_t i = 0; i < sizes.size(); ++i) {
    std::vector<Hall::Target> own = shared;
    while (own.size() < sizes[i]) own.push_back(targetCount++);
    std::shuffle(own.begin(), own.end(), random);
    seen.push_back(own);
    shared = own;
    if (i + 1 < sizes.size()) shared.resize(std::min(sizes[i], sizes[i + 1]) / 2);
  }
  return seen;
}

/// Stations in a ring, 12 to 30 targets each; a quarter of the smaller one's targets is shared by two
/// neighbours.
std::vector<std::vector<Hall::Target>> ringOfStations(std::size_t length, std::mt19937_64& random,
                                                      std::size_t& targetCount) {
  std::vector<std::vector<Hall::Target>> seen(length);
  std::vector<std::size_t> sizes(length);
  for (std::size_t& size : sizes) size = std::uniform_int_distribution<std::size_t>(12, 30)(random);
  for (std::size_t i = 0; i < length; ++i) {
    const std::size_t next = (i + 1) % length;
    for (std::size_t k = 0; k < std::min(sizes[i], sizes[next]) / 4; ++k) {
      seen[i].push_back(targetCount);
      seen[next].push_back(targetCount++);
    }
  }
  for (std::size_t i = 0; i < length; ++i) {
    while (seen[i].size() < sizes[i]) seen[i].push_back(targetCount++);
    std::shuffle(seen[i].begin(), seen[i].end(), random);
  }
  return seen;
}

struct NamingQuality {
  /// Every target that several stations saw has one name, in all of them.
  bool isFull = true;
  /// Two targets have one name.
  bool isWrong = false;
};

NamingQuality judge(const json& result, const std::vector<std::vector<Hall::Target>>& seen) {
  std::map<Hall::Target, std::set<std::string>> names;
  std::map<std::string, std::set<Hall::Target>> targets;
  std::map<Hall::Target, std::size_t> counts;
  for (std::size_t i = 0; i < seen.size(); ++i) {
    const auto own = namesOf(result, "S" + std::to_string(i));
    for (std::size_t k = 0; k < own.size(); ++k) {
      ++counts[seen[i][k]];
      names[seen[i][k]].insert(own[k]);
      if (own[k] != "?") targets[own[k]].insert(seen[i][k]);
    }
  }
  NamingQuality quality;
  for (const auto& [target, own] : names) {
    const bool isLone = counts[target] == 1;
    if (!isLone && (own.size() > 1 || own.count("?") != 0)) quality.isFull = false;
  }
  for (const auto& [name, own] : targets) quality.isWrong = quality.isWrong || own.size() > 1;
  return quality;
}

class NoisyHalls : public MatchingCommand {
 protected:
  /// The files of the stations, for the options.
  std::vector<std::string> writeStations(Hall& hall, const std::vector<std::vector<Hall::Target>>& seen) {
    std::vector<std::string> files;
    for (const std::vector<Hall::Target>& targets : seen) {
      files.push_back("S" + std::to_string(files.size()) + ".txt");
      write(files.back(), xyzLines(hall.seenByAStation(targets, 0.002)));
    }
    return files;
  }

  /// Each point has the name of its target in the file with the chance `share`.
  std::vector<std::string> writePartlyNamedStations(Hall& hall, const std::vector<std::vector<Hall::Target>>& seen,
                                                    double share) {
    std::bernoulli_distribution isNamed(share);
    std::vector<std::string> files;
    for (const std::vector<Hall::Target>& targets : seen) {
      const std::vector<OdGePoint3d> points = hall.seenByAStation(targets, 0.002);
      std::string lines;
      for (std::size_t i = 0; i < points.size(); ++i) {
        lines += (isNamed(random) ? "T" + std::to_string(targets[i]) : "?") + " " + xyzLines({points[i]});
      }
      files.push_back("S" + std::to_string(files.size()) + ".txt");
      write(files.back(), lines);
    }
    return files;
  }

  ProcessResult matchAutomatically(const std::vector<std::string>& files, const std::string& layout = "--xyz") {
    std::vector<std::string> arguments{"register", "--json", "--quiet", "--match", "auto", layout};
    arguments.insert(arguments.end(), files.begin(), files.end());
    return run(arguments);
  }
};

TEST_F(NoisyHalls, AreNamedFullyByAutoAndNoneWrongly) {
  int full = 0, wrong = 0;
  for (unsigned start = 1; start <= MANY_HALLS; ++start) {
    std::mt19937_64 engine(start);
    std::size_t targetCount = 0;
    const auto seen = chainOfStations(10, engine, targetCount);
    Hall hall(targetCount, engine);
    const ProcessResult result = matchAutomatically(writeStations(hall, seen));
    ASSERT_LE(result.status, 1) << result.err;
    const NamingQuality quality = judge(json::parse(result.out), seen);
    full += result.status == 0 && quality.isFull ? 1 : 0;
    wrong += quality.isWrong ? 1 : 0;
    EXPECT_FALSE(quality.isWrong) << "hall " << start;
  }
  EXPECT_GE(full, MANY_HALLS * 95 / 100);
  EXPECT_EQ(wrong, 0);
  RecordProperty("full", full);
}

TEST_F(NoisyHalls, WhoseFilesNameSomeTargetsHaveOneNameForEach) {
  int full = 0;
  for (unsigned start = 1; start <= MANY_HALLS; ++start) {
    std::mt19937_64 engine(start);
    std::size_t targetCount = 0;
    const auto seen = chainOfStations(10, engine, targetCount);
    Hall hall(targetCount, engine);
    const ProcessResult result = matchAutomatically(writePartlyNamedStations(hall, seen, 0.3), "--nxyz");
    ASSERT_LE(result.status, 1) << result.err;
    const NamingQuality quality = judge(json::parse(result.out), seen);
    full += result.status == 0 && quality.isFull ? 1 : 0;
    EXPECT_FALSE(quality.isWrong) << "hall " << start;
  }
  EXPECT_GE(full, MANY_HALLS * 95 / 100);
  RecordProperty("full", full);
}

/// Among so many triangles some pair always agrees as if it were one. It is to join the two halves
/// as seldom as the search says, and never without a warning.
TEST_F(NoisyHalls, ThatShareNoTargetAreSeldomJoinedByChanceAndNeverSilently) {
  int wrong = 0;
  for (unsigned start = 1; start <= MANY_HALLS; ++start) {
    std::mt19937_64 engine(start);
    std::size_t targetCount = 0;
    auto seen = chainOfStations(5, engine, targetCount);
    const auto others = chainOfStations(5, engine, targetCount);
    seen.insert(seen.end(), others.begin(), others.end());
    Hall hall(targetCount, engine);
    const ProcessResult result = matchAutomatically(writeStations(hall, seen));
    ASSERT_EQ(result.status, 0) << result.err;
    const json answer = json::parse(result.out);
    if (!judge(answer, seen).isWrong) continue;
    ++wrong;
    EXPECT_THAT(answer["match"]["reasons"].dump(), HasSubstr("\"weak-link\"")) << "hall " << start;
    EXPECT_THAT(answer["warnings"].dump(), HasSubstr("joined by only three points")) << "hall " << start;
  }
  EXPECT_LE(wrong, MANY_HALLS * 3 / 100);
  RecordProperty("wrong", wrong);
}

/// Half of the targets of each station are its neighbours', a quarter of one and a quarter of the
/// other: three at least.
TEST_F(NoisyHalls, ThatShareAQuarterWithEachNeighbourAreNeverNamedWrongly) {
  int full = 0;
  for (unsigned start = 1; start <= MANY_HALLS; ++start) {
    std::mt19937_64 engine(start);
    std::size_t targetCount = 0;
    const auto seen = ringOfStations(10, engine, targetCount);
    Hall hall(targetCount, engine);
    const ProcessResult result = matchAutomatically(writeStations(hall, seen));
    ASSERT_LE(result.status, 1) << result.err;
    const NamingQuality quality = judge(json::parse(result.out), seen);
    full += result.status == 0 && quality.isFull ? 1 : 0;
    EXPECT_FALSE(quality.isWrong) << "hall " << start;
  }
  EXPECT_GE(full, MANY_HALLS * 80 / 100);
  RecordProperty("full", full);
}

}  // namespace
