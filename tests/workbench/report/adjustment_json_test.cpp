#include "workbench/report/adjustment_json.h"

#include <gtest/gtest.h>

#include "workbench/report/adjusted_registration.h"
#include "workbench/report/summary_json.h"

namespace tiepoint::workbench {
namespace {

using analysis::Adjustment;
using analysis::DatumKind;
using analysis::VarianceScale;

OrderedJson parsed(const char* text) { return OrderedJson::parse(text); }

void fillNumbers(Adjustment& result) {
  result.datum = {DatumKind::baseAndControl, {0}, std::nullopt, 0};
  result.observationCount = 15;
  result.unknownCount = 9;
  result.redundancy = 6;
  result.sumOfSquares = 7.5;
  result.varianceFactor = 1.25;
  result.iterations = 4;
  result.converged = true;
  result.network = {0.125, {{1, 0.75}, {2, 0.25}}};
}

analysis::CarriedPosition carriedPosition() {
  analysis::CarriedPosition carried{{1, {1, 2, 3}}, {11, 22, 33}};
  carried.covariance << 1, 2, 3, 2, 4, 5, 3, 5, 6;
  return carried;
}

/// Every figure is there.
Registration fullyTold() {
  Registration registration = adjustedStations();
  Adjustment& result = registration.adjustment->result;
  fillNumbers(result);
  result.globalTest = analysis::GlobalTest{1.5, 14.5, true};
  result.levels = {0.001, 0.8, 3.25, 16.25, 17.0, 21.5, 5, 0.0125};
  result.suspect = analysis::Suspect{false, 1, 0.0005};
  result.certificate = analysis::Certificate{-0.25, 6, false, true, 1.5, 6.0};
  result.carried = {carriedPosition()};
  result.traces = {{3, {{1, {1, 0.5, 0.25}, {1, 0.125, 0.0625}, 2.5}, {2, {2, 1.5, 3.0}, {2, 4.5, 5.0}, 6.5}}}};
  return registration;
}

/// As an adjustment leaves it with an open motion: a certificate was computed, tests were not.
Registration undetermined() {
  Registration registration = adjustedStations();
  registration.outcome = Undetermined();
  Adjustment& result = registration.adjustment->result;
  fillNumbers(result);
  result.outcome = analysis::AdjustmentOutcome::undetermined;
  result.open = analysis::OpenMotion{1, {0, 0.6, 0.8}, true, {1, 2, 3}, true};
  result.certificate = analysis::Certificate();
  return registration;
}

OrderedJson adjustment(const Registration& registration) {
  JsonObjectTree tree;
  addAdjustment(registration, tree);
  return tree.object["adjustment"];
}

TEST(AdjustmentJson, HasEveryFigureInItsOrder) {
  EXPECT_EQ(adjustment(fullyTold()), parsed(R"({
    "datum": {"kind": "base and control", "stations": ["Base"], "frame": null, "defect": 0},
    "observations": 15, "unknowns": 9, "redundancy": 6, "sumOfSquares": 7.5, "varianceFactor": 1.25,
    "scale": "a-priori", "iterations": 4, "converged": true,
    "globalTest": {"lower": 1.5, "upper": 14.5, "passed": true},
    "levels": {"alpha": 0.001, "power": 0.8, "criticalAxis": 3.25, "criticalPoint": 16.25,
               "noncentralityAxis": 17.0, "noncentralityPoint": 21.5, "tests": 5, "familyAlpha": 0.0125},
    "suspect": {"group": "A", "name": "T3", "p": 0.0005},
    "network": {"stiffness": 0.125, "mode": [{"station": "A", "share": 0.75}, {"station": "Out", "share": 0.25}]},
    "certificate": {"eigenvalue": -0.25, "columns": 6, "certified": false, "unique": true, "gap": 1.5,
                    "lowerBound": 6.0},
    "carried": [{"group": "A", "point": [1.0, 2.0, 3.0], "position": [11.0, 22.0, 33.0],
                 "covariance": [[1.0, 2.0, 3.0], [2.0, 4.0, 5.0], [3.0, 5.0, 6.0]]}],
    "trace": [{"group": "A", "name": "T1", "stations": [
      {"name": "A", "effect": {"shift": 0.5, "rotation": 0.25},
       "leftOut": {"shift": 0.125, "rotation": 0.0625, "displacement": 2.5}},
      {"name": "Out", "effect": {"shift": 1.5, "rotation": 3.0},
       "leftOut": {"shift": 4.5, "rotation": 5.0, "displacement": 6.5}}]}],
    "otherStartWon": false, "open": null, "openMotion": null})"));
}

TEST(AdjustmentJson, TellsNoStatementsOfAnUndeterminedOne) {
  EXPECT_EQ(adjustment(undetermined()), parsed(R"({
    "datum": {"kind": "base and control", "stations": ["Base"], "frame": null, "defect": 0},
    "observations": 15, "unknowns": 9, "redundancy": 6, "sumOfSquares": 7.5, "varianceFactor": 1.25,
    "scale": "a-priori", "iterations": 4, "converged": true, "globalTest": null, "levels": null, "suspect": null,
    "network": {"stiffness": 0.125, "mode": [{"station": "A", "share": 0.75}, {"station": "Out", "share": 0.25}]},
    "certificate": null, "carried": [], "trace": [], "otherStartWon": false, "open": "A",
    "openMotion": {"turns": true, "axis": [0.0, 0.6, 0.8], "place": [1.0, 2.0, 3.0], "lineOfTargets": true}})"));
}

TEST(AdjustmentJson, TellsAnOpenShiftFromATurn) {
  Registration registration = undetermined();
  registration.adjustment->result.open->turns = false;
  registration.adjustment->result.open->isLineOfTargets = false;
  const OrderedJson motion = adjustment(registration)["openMotion"];
  EXPECT_EQ(motion["turns"], false);
  EXPECT_EQ(motion["lineOfTargets"], false);
}

TEST(AdjustmentJson, NamesTheDatum) {
  Registration registration = fullyTold();
  analysis::Datum& datum = registration.adjustment->result.datum;
  datum = {DatumKind::base, {0, 2}, std::nullopt, 0};
  EXPECT_EQ(adjustment(registration)["datum"],
            parsed(R"({"kind": "base", "stations": ["Base", "Out"], "frame": null, "defect": 0})"));
  datum = {DatumKind::control, {}, std::nullopt, 0};
  EXPECT_EQ(adjustment(registration)["datum"],
            parsed(R"({"kind": "control", "stations": [], "frame": null, "defect": 0})"));
}

TEST(AdjustmentJson, NamesTheStationThatGivesAFreeNetworkItsAxes) {
  Registration registration = fullyTold();
  registration.adjustment->result.datum = {DatumKind::free, {}, 1, 4};
  EXPECT_EQ(adjustment(registration)["datum"],
            parsed(R"({"kind": "free", "stations": [], "frame": "A", "defect": 4})"));
}

TEST(AdjustmentJson, HasNoGlobalTestOfAnEstimatedVariance) {
  Registration registration = fullyTold();
  Adjustment& result = registration.adjustment->result;
  result.scale = VarianceScale::aPosteriori;
  result.globalTest.reset();
  const OrderedJson json = adjustment(registration);
  EXPECT_EQ(json["scale"], "a-posteriori");
  EXPECT_TRUE(json["globalTest"].is_null());
}

TEST(AdjustmentJson, SaysThatTheGlobalTestFailed) {
  Registration registration = fullyTold();
  registration.adjustment->result.globalTest->passed = false;
  EXPECT_EQ(adjustment(registration)["globalTest"]["passed"], false);
}

TEST(AdjustmentJson, TestsNothingWithoutRedundancy) {
  Registration registration = fullyTold();
  Adjustment& result = registration.adjustment->result;
  result.redundancy = 0;
  result.varianceFactor.reset();
  result.globalTest.reset();
  result.suspect.reset();
  result.levels = {0.001, 0.8, std::nullopt, std::nullopt, 17.0, 21.5, 0, std::nullopt};
  const OrderedJson json = adjustment(registration);
  EXPECT_EQ(json["redundancy"], 0);
  EXPECT_TRUE(json["varianceFactor"].is_null());
  EXPECT_TRUE(json["suspect"].is_null());
  EXPECT_EQ(json["levels"], parsed(R"({
    "alpha": 0.001, "power": 0.8, "criticalAxis": null, "criticalPoint": null, "noncentralityAxis": 17.0,
    "noncentralityPoint": 21.5, "tests": 0, "familyAlpha": null})"));
}

TEST(AdjustmentJson, NamesControlThatIsSuspectedByItsTarget) {
  Registration registration = fullyTold();
  registration.adjustment->result.suspect = analysis::Suspect{true, 2, 0.00025};
  EXPECT_EQ(adjustment(registration)["suspect"], parsed(R"({"group": null, "name": "T2", "p": 0.00025})"));
}

TEST(AdjustmentJson, HasNoCertificateWhereNoneCanBeComputed) {
  Registration registration = fullyTold();
  registration.adjustment->result.certificate.reset();
  EXPECT_TRUE(adjustment(registration)["certificate"].is_null());
}

TEST(AdjustmentJson, SaysWhatTheCertificateShows) {
  Registration registration = fullyTold();
  registration.adjustment->result.certificate = analysis::Certificate{0.0, 6, true, false, 0.0, 7.5};
  const OrderedJson json = adjustment(registration)["certificate"];
  EXPECT_EQ(json["certified"], true);
  EXPECT_EQ(json["unique"], false);
}

TEST(AdjustmentJson, SaysThatItHasNotConvergedAndThatAnotherStartWon) {
  Registration registration = fullyTold();
  registration.adjustment->result.converged = false;
  registration.adjustment->result.otherStartWon = true;
  const OrderedJson json = adjustment(registration);
  EXPECT_EQ(json["converged"], false);
  EXPECT_EQ(json["otherStartWon"], true);
}

TEST(AdjustmentJson, HasNoStationsOfAMeasurementThatCannotBeTraced) {
  Registration registration = fullyTold();
  registration.adjustment->result.traces = {{0, {}}};
  EXPECT_EQ(adjustment(registration)["trace"], parsed(R"([{"group": "Out", "name": "T9", "stations": []}])"));
}

TEST(AdjustmentJson, IsNullWhereNothingIsAdjusted) {
  Registration registration = fullyTold();
  registration.adjustment->result.outcome = analysis::AdjustmentOutcome::nothingToAdjust;
  EXPECT_TRUE(adjustment(registration).is_null());
  registration.adjustment.reset();
  EXPECT_TRUE(adjustment(registration).is_null());
}

TEST(AdjustmentJson, IsWrittenPieceByPieceAsItStandsInMemory) {
  for (const Registration& registration : {fullyTold(), undetermined()}) {
    std::string text;
    writeSummaryJson(registration, [&](const std::string& piece) { text += piece; });
    EXPECT_EQ(text, jsonText(summaryJson(registration)));
  }
}

}  // namespace
}  // namespace tiepoint::workbench
