// A hall whose stations name nothing, or little, named by one matching and registered.
#include <gtest/gtest.h>

#include <random>

#include "matching/hall.h"
#include "support/session_builder.h"

namespace {

using namespace ZOR::reg;
using tiepoint::testing::Hall;
using tiepoint::testing::Outputs;
using tiepoint::testing::Session;

/// Some dozens of metres at stations a few hundred metres from their origin, through a fit or two.
constexpr double rounding = 1e-9;

using Station = std::vector<tiepoint::testing::Target>;
using Stations = std::vector<std::pair<std::string, Station>>;

/// What the stations of a hall measured, and which target each point is.
struct Survey {
  Stations stations;
  std::vector<Hall::Target> targetOfPoint;
};

Survey surveyOf(Hall& hall, const std::vector<std::vector<Hall::Target>>& seen, double noise = 0.0) {
  Survey survey;
  for (const std::vector<Hall::Target>& targets : seen) {
    Station station;
    for (const OdGePoint3d& p : hall.seenByAStation(targets, noise)) station.push_back({"?", p.x, p.y, p.z});
    survey.stations.emplace_back("S" + std::to_string(survey.stations.size()), std::move(station));
    survey.targetOfPoint.insert(survey.targetOfPoint.end(), targets.begin(), targets.end());
  }
  return survey;
}

using Names = std::map<RefPointId, std::string>;

Names matchAll(Session& session, double sideTolerance, double minSideDifference) {
  Names names;
  Outputs out;
  session->matchAllGroupsByTriangles(sideTolerance, minSideDifference, names, out.inactiveGroups, out.inactivePoints);
  EXPECT_EQ(out.inactiveGroups, GroupIdSet{});
  EXPECT_EQ(out.inactivePoints, RefPointIdSet{});
  return names;
}

Names matchByDefaults(Session& session) {
  double sideTolerance = 0.0;
  double minSideDifference = 0.0;
  session->getTriangleMatchTolerances(sideTolerance, minSideDifference);
  return matchAll(session, sideTolerance, minSideDifference);
}

/// Each target has one name, each name one target.
void expectTrueNames(const Names& names, const Survey& survey) {
  std::map<Hall::Target, std::string> nameOf;
  for (const auto& [point, name] : names) {
    EXPECT_EQ(nameOf.emplace(survey.targetOfPoint[point], name).first->second, name) << "point " << point;
  }
  std::set<std::string> different;
  for (const auto& entry : nameOf) different.insert(entry.second);
  EXPECT_EQ(different.size(), nameOf.size());
}

void expectRegistered(Session& session, double within) {
  EXPECT_FALSE(session->hasUnnamedPoints());
  std::map<RefPointId, double> discrepancies;
  EXPECT_TRUE(session->registerPairwise(discrepancies));
  for (const auto& [point, discrepancy] : discrepancies) EXPECT_LE(discrepancy, within) << "point " << point;
  EXPECT_LE(session->getMaxPointSpread(), within);
}

std::vector<std::vector<Hall::Target>> allSeenBy(std::size_t stations, const Hall& hall) {
  return std::vector<std::vector<Hall::Target>>(stations, hall.allTargets());
}

class HallMatching : public testing::TestWithParam<unsigned> {
 protected:
  std::mt19937_64 random{GetParam()};
};

TEST_P(HallMatching, StationsThatSeeTheSameTargetsAreNamedByOneMatching) {
  for (const std::size_t targets : {3U, 8U, 20U, 40U}) {
    Hall hall(targets, random);
    const Survey survey = surveyOf(hall, allSeenBy(4, hall));
    Session session(survey.stations);
    const Names names = matchByDefaults(session);
    EXPECT_EQ(names.size(), 4 * targets);
    expectTrueNames(names, survey);
    expectRegistered(session, rounding);
  }
}

TEST_P(HallMatching, TheTolerancesMayBeFinerOrCoarser) {
  Hall hall(40, random);
  const Survey survey = surveyOf(hall, allSeenBy(3, hall));
  for (const auto& [sideTolerance, minSideDifference] :
       {std::pair{0.00001, 0.0}, {0.0001, 0.5}, {0.0005, 0.01}, {0.002, 0.2}}) {
    Session session(survey.stations);
    const Names names = matchAll(session, sideTolerance, minSideDifference);
    EXPECT_EQ(names.size(), 120u) << sideTolerance;
    expectTrueNames(names, survey);
    expectRegistered(session, rounding);
  }
}

/// Six stations that see four of six targets each, so that four of them see a target.
std::vector<std::vector<Hall::Target>> partsSeenBySix(const Hall& hall) {
  std::vector<std::vector<Hall::Target>> seen(6);
  for (const Hall::Target target : hall.allTargets()) {
    for (std::size_t station = 0; station < 6; ++station) {
      if ((target + station) % 6 < 4) seen[station].push_back(target);
    }
  }
  return seen;
}

TEST_P(HallMatching, StationsThatSeePartsOfTheTargetsAreNamedByOneMatching) {
  Hall hall(60, random);
  const Survey survey = surveyOf(hall, partsSeenBySix(hall));
  Session session(survey.stations);
  const Names names = matchByDefaults(session);
  EXPECT_EQ(names.size(), 240u) << "40 a station";
  expectTrueNames(names, survey);
  expectRegistered(session, rounding);
}

TEST_P(HallMatching, ATargetThatOneStationSeesAloneStaysUnnamed) {
  Hall hall(12, random);
  std::vector<std::vector<Hall::Target>> seen = allSeenBy(3, hall);
  seen[0].pop_back();
  seen[2].pop_back();
  const Survey survey = surveyOf(hall, seen);
  Session session(survey.stations);
  Names names;
  Outputs out;
  session->matchAllGroupsByTriangles(0.001, 0.1, names, out.inactiveGroups, out.inactivePoints);
  EXPECT_EQ(names.size(), 33u);
  EXPECT_EQ(out.inactivePoints, RefPointIdSet{22});
  expectTrueNames(names, survey);
}

TEST_P(HallMatching, ALittleNoiseIsTaken) {
  Hall hall(20, random);
  const Survey survey = surveyOf(hall, allSeenBy(4, hall), 0.0002);
  Session session(survey.stations);
  const Names names = matchAll(session, 0.003, 0.1);
  EXPECT_EQ(names.size(), 80u);
  expectTrueNames(names, survey);
  expectRegistered(session, 0.003);
}

TEST_P(HallMatching, NamesOfTheUsersAmongThemSpreadToTheOtherStations) {
  constexpr RefPointId targets = 40;
  Hall hall(targets, random);
  Survey survey = surveyOf(hall, allSeenBy(4, hall));
  // Each station has named a few targets itself, the first target twice.
  for (const auto& [station, target] : {std::pair{0U, 0U}, {1U, 0U}, {1U, 7U}, {2U, 20U}, {3U, 39U}}) {
    survey.stations[station].second[target].name = "T" + std::to_string(target);
  }
  Session session(survey.stations);
  const Names names = matchByDefaults(session);
  EXPECT_EQ(names.size(), 4 * targets - 5) << "all but those that have a name";
  expectTrueNames(names, survey);
  EXPECT_EQ(names.at(2 * targets), "T0");
  EXPECT_EQ(names.at(7), "T7");
  EXPECT_EQ(names.at(3 * targets + 20), "T20");
  EXPECT_EQ(names.at(39), "T39");
  expectRegistered(session, rounding);
}

INSTANTIATE_TEST_SUITE_P(SeveralHalls, HallMatching, testing::Values(1U, 2U, 3U, 4U, 5U));

}  // namespace
