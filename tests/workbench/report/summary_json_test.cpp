#include "workbench/report/summary_json.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "workbench/report/adjusted_registration.h"
#include "workbench/report/registrations.h"

namespace tiepoint::workbench {
namespace {

OrderedJson parsed(const char* text) { return OrderedJson::parse(text); }

TEST(SummaryJson, HasItsKeysInTheirOrder) {
  std::vector<std::string> keys;
  const OrderedJson json = summaryJson(twoStations());
  for (const auto& item : json.items()) keys.push_back(item.key());
  EXPECT_EQ(
      keys,
      (std::vector<std::string>{
          "outcome",      "method",      "iterations",     "document",   "import",      "match",    "keptCluster",
          "groups",       "points",      "discrepancies",  "atBase",     "protocol",    "standOut", "spread",
          "commonPoints", "control",     "adjustment",     "parts",      "links",       "clouds",   "commonPointsFile",
          "storedGroup",  "matrixFiles", "transformsFile", "reportFile", "pictureFile", "warnings"}));
}

TEST(SummaryJson, TellsOfAGroup) {
  EXPECT_EQ(summaryJson(twoStations())["groups"][1], parsed(R"({
    "name": "A", "base": false, "points": 3, "active": 2,
    "transform": {
      "matrix": [[1.0, 0.0, 0.0, 10.0], [0.0, 1.0, 0.0, -2.5], [0.0, 0.0, 1.0, 0.125], [0.0, 0.0, 0.0, 1.0]],
      "angleDegrees": 0.0, "axis": [1.0, 0.0, 0.0], "shift": [10.0, -2.5, 0.125]},
    "discrepancies": {"points": 2, "mean": 0.001, "rms": 0.0014142, "largest": 0.002},
    "atBase": {"points": 1, "mean": 0.003, "rms": 0.003, "largest": 0.003}, "adjusted": null})"));
}

TEST(SummaryJson, HasNoTransformationOfABase) {
  EXPECT_EQ(summaryJson(twoStations())["groups"][0], parsed(R"({
    "name": "Base", "base": true, "points": 1, "active": 1, "transform": null, "discrepancies": null,
    "atBase": null, "adjusted": null})"));
}

TEST(SummaryJson, TellsOfAPointWithItsResidual) {
  EXPECT_EQ(summaryJson(twoStations())["points"][1], parsed(R"({
    "group": "A", "name": "T1", "position": [0.25, 2.5, -0.125], "weight": 0.5, "active": true, "reason": null,
    "registered": [10.25, 0.0, 0.0], "discrepancy": 0.002, "residual": [0.0012, -0.0016, 0.0], "atBase": 0.003,
    "adjusted": null})"));
}

TEST(SummaryJson, HasNoResidualOfAPointThatIsOut) {
  EXPECT_EQ(summaryJson(twoStations())["points"][3], parsed(R"({
    "group": "A", "name": "T3", "position": [1.0, 2.0, 3.0], "weight": 1.0, "active": false, "reason": "excluded",
    "registered": [11.0, -0.5, 3.125], "discrepancy": null, "residual": null, "atBase": null,
    "adjusted": null})"));
}

TEST(SummaryJson, HasTheFiguresForAProtocol) {
  EXPECT_EQ(summaryJson(twoStations())["protocol"],
            parsed(R"({"points": 2, "mean": 0.001, "rms": 0.0014142, "largest": 0.002, "stations": 1})"));
}

TEST(SummaryJson, HasNoFiguresForAProtocolUnlessTheyCanBeQuoted) {
  Registration registration = twoStations();
  std::get<Registered>(registration.outcome).protocol.reset();
  EXPECT_TRUE(summaryJson(registration)["protocol"].is_null());
  registration.outcome = NotConnected();
  EXPECT_TRUE(summaryJson(registration)["protocol"].is_null());
}

TEST(SummaryJson, NamesTheOutcome) {
  Registration registration = twoStations();
  EXPECT_EQ(summaryJson(registration)["outcome"], "registered");
  registration.outcome = NotConnected();
  EXPECT_EQ(summaryJson(registration)["outcome"], "not-linked");
  registration.outcome = BaseNotShared();
  EXPECT_EQ(summaryJson(registration)["outcome"], "base-lost");
  registration.outcome = NotNamed();
  EXPECT_EQ(summaryJson(registration)["outcome"], "not-named");
  registration.outcome = Undetermined();
  EXPECT_EQ(summaryJson(registration)["outcome"], "undetermined");
}

TEST(SummaryJson, NamesTheMethod) {
  Registration registration = twoStations();
  EXPECT_EQ(summaryJson(registration)["method"], "pairwise with base");
  registration.usesBase = false;
  EXPECT_EQ(summaryJson(registration)["method"], "pairwise");
  registration.method = RegistrationMethod::iterative;
  EXPECT_EQ(summaryJson(registration)["method"], "iterative");
  registration.method = RegistrationMethod::adjust;
  EXPECT_EQ(summaryJson(registration)["method"], "adjust");
  registration.usesBase = true;
  EXPECT_EQ(summaryJson(registration)["method"], "adjust with base");
}

TEST(SummaryJson, TellsTheCourseOfTheIterations) {
  Registration registration = twoStations();
  registration.iterations = IterationCourse{7, 100, 0.0005, 0.001};
  EXPECT_EQ(summaryJson(registration)["iterations"],
            parsed(R"({"actual": 7, "limit": 100, "movement": 0.0005, "criterion": 0.001, "converged": true})"));
  registration.iterations->movement = 0.25;
  EXPECT_EQ(summaryJson(registration)["iterations"]["converged"], false);
}

TEST(SummaryJson, NamesThePointThatStandsOut) {
  Registration registration = twoStations();
  EXPECT_TRUE(summaryJson(registration)["standOut"].is_null());
  std::get<Registered>(registration.outcome).outlier = Outlier{1, 6.5};
  EXPECT_EQ(summaryJson(registration)["standOut"], parsed(R"({"group": "A", "name": "T1", "timesMedian": 6.5})"));
}

TEST(SummaryJson, TellsTheSpreadBinByBin) {
  Registration registration = twoStations();
  std::get<Registered>(registration.outcome).spread = {0.5, {3, 1}, {0.0, 0.25, 0.5}};
  EXPECT_EQ(summaryJson(registration)["spread"], parsed(R"({"largest": 0.5, "histogram": [
    {"from": 0.0, "to": 0.25, "distances": 3}, {"from": 0.25, "to": 0.5, "distances": 1}]})"));
  registration.outcome = NotNamed();
  EXPECT_TRUE(summaryJson(registration)["spread"].is_null());
}

TEST(SummaryJson, ListsTheMergedTargets) {
  EXPECT_EQ(summaryJson(twoStations())["commonPoints"],
            parsed(R"([{"name": "T1", "position": [10.25, 0.0016, 0.0], "weight": 0.75, "sightings": null,
                        "covariance": null}])"));
}

TEST(SummaryJson, TellsHowOftenAnAdjustedTargetWasSeenAndHowWellItIsKnown) {
  Registration registration = twoStations();
  MergedTarget& target = std::get<Registered>(registration.outcome).targets[0];
  target.sightings = 3;
  target.covariance.emplace();
  *target.covariance << 1, 2, 3, 2, 4, 5, 3, 5, 6;
  EXPECT_EQ(summaryJson(registration)["commonPoints"],
            parsed(R"([{"name": "T1", "position": [10.25, 0.0016, 0.0], "weight": 0.75, "sightings": 3,
                        "covariance": [[1.0, 2.0, 3.0], [2.0, 4.0, 5.0], [3.0, 5.0, 6.0]]}])"));
}

TEST(SummaryJson, TellsOfEachStationAndPointWhatTheAdjustmentTellsOfIt) {
  Registration registration = adjustedStations();
  registration.adjustment->result.stations[1].emplace().geometry = 0.375;
  registration.adjustment->result.observations[2].emplace().sigma = 0.002;
  const OrderedJson json = summaryJson(registration);
  EXPECT_TRUE(json["groups"][0]["adjusted"].is_null());
  EXPECT_EQ(json["groups"][1]["adjusted"]["geometry"], 0.375);
  EXPECT_TRUE(json["points"][1]["adjusted"].is_null());
  EXPECT_EQ(json["points"][2]["adjusted"]["sigma"], 0.002);
}

TEST(SummaryJson, HasNoControlAndNoAdjustmentOfTheOtherMethods) {
  const OrderedJson json = summaryJson(twoStations());
  EXPECT_EQ(json["control"], OrderedJson::array());
  EXPECT_TRUE(json["adjustment"].is_null());
}

TEST(SummaryJson, TellsWhatIsConnectedAndWhatItShares) {
  Registration registration = twoStations();
  registration.outcome = NotConnected();
  registration.links.components = {{4, {0}}, {std::nullopt, {1}}};
  registration.links.links = {{0, 1, {"T1"}}};
  const OrderedJson json = summaryJson(registration);
  EXPECT_EQ(json["parts"], parsed(R"([{"cluster": 4, "groups": ["Base"]}, {"cluster": null, "groups": ["A"]}])"));
  EXPECT_EQ(json["links"], parsed(R"([{"parts": [0, 1], "commonNames": ["T1"]}])"));
}

TEST(SummaryJson, NamesWhatWasWritten) {
  Registration registration = twoStations();
  EXPECT_TRUE(summaryJson(registration)["reportFile"].is_null());
  registration.document = "hall.tiepoint";
  registration.storedGroup = "merged";
  registration.files = {"targets.txt", {"A.txt"}, "all.json", "report.html", "hall.png"};
  registration.keptCluster = 3;
  const OrderedJson json = summaryJson(registration);
  EXPECT_EQ(json["document"], "hall.tiepoint");
  EXPECT_EQ(json["storedGroup"], "merged");
  EXPECT_EQ(json["commonPointsFile"], "targets.txt");
  EXPECT_EQ(json["matrixFiles"], parsed(R"(["A.txt"])"));
  EXPECT_EQ(json["transformsFile"], "all.json");
  EXPECT_EQ(json["reportFile"], "report.html");
  EXPECT_EQ(json["pictureFile"], "hall.png");
  EXPECT_EQ(json["keptCluster"], 3);
}

TEST(SummaryJson, HasTextsForNumbersThatJsonLacks) {
  Registration registration = twoStations();
  registration.points[1].discrepancy = std::nan("");
  registration.points[1].residual = OdGeVector3d(-std::numeric_limits<double>::infinity(), std::nan(""), 1.0);
  EXPECT_EQ(summaryJson(registration)["points"][1]["discrepancy"], "nan");
  EXPECT_EQ(summaryJson(registration)["points"][1]["residual"], parsed(R"(["-inf", "nan", 1.0])"));
}

TEST(SummaryJson, IsWrittenPieceByPieceAsItStandsInMemory) {
  const Registration registration = twoStations();
  std::string text;
  writeSummaryJson(registration, [&](const std::string& piece) { text += piece; });
  EXPECT_EQ(text, jsonText(summaryJson(registration)));
}

}  // namespace
}  // namespace tiepoint::workbench
