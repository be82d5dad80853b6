#include "workbench/report/adjusted_rows_json.h"

#include <gtest/gtest.h>

#include <cmath>

#include "workbench/report/adjusted_registration.h"

namespace tiepoint::workbench {
namespace {

using analysis::AdjustedObservation;
using analysis::AdjustedStation;

OrderedJson parsed(const char* text) { return OrderedJson::parse(text); }

AdjustedStation levelledStation() {
  AdjustedStation station;
  station.levelled = true;
  station.centre = {1.5, -2, 0.25};
  station.covariance(2, 2) = 0.0625;
  station.covariance(2, 3) = station.covariance(3, 2) = -0.5;
  station.covariance(3, 3) = 4;
  station.covariance(4, 4) = 5;
  station.covariance(5, 5) = 6;
  station.position = {10, 20, 30};
  station.positionCovariance << 1, 2, 3, 2, 5, 6, 3, 6, 9;
  station.positionSigma = 3.75;
  station.rotationSigma = 0.25;
  station.rotationAxis = {0, 0.6, -0.8};
  station.largestPointSigma = 2.5;
  station.redundancy = 4.125;
  station.geometry = 0.375;
  station.naming = analysis::NamingMargin{-12.5, {{3, 1}, {1, 3}}, true};
  return station;
}

/// Of A:T2, as the others see it.
AdjustedObservation controlledObservation() {
  AdjustedObservation told;
  told.sigma = 0.002;
  told.residual = {0.001, -0.002, 0.0005};
  told.redundancy = {0.5, 0.25, 0.125};
  told.leastRedundancy = 0.0625;
  told.w = Eigen::Vector3d(1.5, -2.5, 0.75);
  told.statistic = 7.25;
  told.p = 0.0625;
  told.rejected = false;
  told.detectablePerAxis = Eigen::Vector3d(0.01, 0.02, 0.03);
  told.detectable = 0.04;
  told.biasToNoise = 17.5;
  told.effect = analysis::StationShift{1, 0.005, 0.0025};
  told.leftOut = analysis::LeftOut{{0.006, -0.007, 0.008}, {1, 0.009, 0.0125}, 0.015};
  return told;
}

Registration withStation(const AdjustedStation& station) {
  Registration registration = adjustedStations();
  registration.adjustment->result.stations[1] = station;
  return registration;
}

Registration withObservation(std::size_t observation, const AdjustedObservation& told) {
  Registration registration = adjustedStations();
  registration.adjustment->result.observations[observation] = told;
  return registration;
}

OrderedJson control(const Registration& registration) {
  JsonObjectTree tree;
  addControl(registration, tree);
  return tree.object;
}

TEST(AdjustedStationJson, HasEveryFigureInItsOrder) {
  EXPECT_EQ(jsonAdjustedStation(withStation(levelledStation()), 1), parsed(R"({
    "levelled": true, "centre": [1.5, -2.0, 0.25],
    "covariance": [[0.0, 0.0, 0.0, 0.0, 0.0, 0.0], [0.0, 0.0, 0.0, 0.0, 0.0, 0.0],
                   [0.0, 0.0, 0.0625, -0.5, 0.0, 0.0], [0.0, 0.0, -0.5, 4.0, 0.0, 0.0],
                   [0.0, 0.0, 0.0, 0.0, 5.0, 0.0], [0.0, 0.0, 0.0, 0.0, 0.0, 6.0]],
    "position": [10.0, 20.0, 30.0],
    "positionCovariance": [[1.0, 2.0, 3.0], [2.0, 5.0, 6.0], [3.0, 6.0, 9.0]], "positionSigma": 3.75,
    "rotationSigma": 0.25, "rotationAxis": [0.0, 0.6, -0.8], "largestPointSigma": 2.5, "redundancy": 4.125,
    "geometry": 0.375, "naming": {"margin": -12.5, "exchanged": [["T1", "T3"], ["T3", "T1"]]}})"));
}

TEST(AdjustedStationJson, SaysThatAStationTurnsFreely) {
  AdjustedStation station = levelledStation();
  station.levelled = false;
  EXPECT_EQ(jsonAdjustedStation(withStation(station), 1)["levelled"], false);
}

TEST(AdjustedStationJson, HasNoMarginWhereNoOtherNamingIsNear) {
  AdjustedStation station = levelledStation();
  station.naming.reset();
  EXPECT_EQ(jsonAdjustedStation(withStation(station), 1)["naming"], parsed(R"({"margin": null, "exchanged": []})"));
}

TEST(AdjustedStationJson, HasNoMarginWhereTheSearchWasCutOff) {
  AdjustedStation station = levelledStation();
  station.naming->complete = false;
  EXPECT_EQ(jsonAdjustedStation(withStation(station), 1)["naming"], parsed(R"({"margin": null, "exchanged": []})"));
}

TEST(AdjustedStationJson, IsNullOfABaseAndOfWhatTakesNoPart) {
  const Registration registration = withStation(levelledStation());
  EXPECT_TRUE(jsonAdjustedStation(registration, 0).is_null());
  EXPECT_TRUE(jsonAdjustedStation(registration, 2).is_null());
}

TEST(AdjustedStationJson, IsNullWithoutAnAdjustment) {
  Registration registration = withStation(levelledStation());
  registration.adjustment.reset();
  EXPECT_TRUE(jsonAdjustedStation(registration, 1).is_null());
}

TEST(AdjustedPointJson, HasEveryFigureInItsOrder) {
  EXPECT_EQ(jsonAdjustedPoint(withObservation(2, controlledObservation()), 2), parsed(R"({
    "sigma": 0.002, "residual": [0.001, -0.002, 0.0005], "redundancy": [0.5, 0.25, 0.125],
    "leastRedundancy": 0.0625, "w": [1.5, -2.5, 0.75], "statistic": 7.25, "p": 0.0625, "rejected": false,
    "detectablePerAxis": [0.01, 0.02, 0.03], "detectable": 0.04, "biasToNoise": 17.5,
    "effect": {"station": "A", "shift": 0.005, "rotation": 0.0025},
    "leftOut": {"error": [0.006, -0.007, 0.008], "station": "A", "shift": 0.009, "rotation": 0.0125,
                "displacement": 0.015}})"));
}

TEST(AdjustedPointJson, SaysThatAMeasurementIsRejected) {
  AdjustedObservation told = controlledObservation();
  told.rejected = true;
  EXPECT_EQ(jsonAdjustedPoint(withObservation(2, told), 2)["rejected"], true);
}

TEST(AdjustedPointJson, NamesTheStationThatAPointOfABaseMoves) {
  const OrderedJson json = jsonAdjustedPoint(withObservation(4, controlledObservation()), 0);
  EXPECT_EQ(json["effect"]["station"], "A");
  EXPECT_EQ(json["leftOut"]["station"], "A");
}

TEST(AdjustedPointJson, NamesTheStationsOfItsEffectAndOfItsLeavingOutEachByItself) {
  AdjustedObservation told = controlledObservation();
  told.effect->station = 2;
  const OrderedJson json = jsonAdjustedPoint(withObservation(2, told), 2);
  EXPECT_EQ(json["effect"]["station"], "Out");
  EXPECT_EQ(json["leftOut"]["station"], "A");
}

TEST(AdjustedPointJson, HasNoStatementOnAMeasurementThatNothingControls) {
  AdjustedObservation told;
  told.sigma = 0.002;
  EXPECT_EQ(jsonAdjustedPoint(withObservation(2, told), 2), parsed(R"({
    "sigma": 0.002, "residual": [0.0, 0.0, 0.0], "redundancy": [0.0, 0.0, 0.0], "leastRedundancy": 0.0,
    "w": null, "statistic": null, "p": null, "rejected": null, "detectablePerAxis": null, "detectable": null,
    "biasToNoise": null, "effect": null, "leftOut": null})"));
}

TEST(AdjustedPointJson, HasAStatisticWithoutAProbabilityWhereTooLittleIsLeftToEstimateAVarianceFrom) {
  AdjustedObservation told = controlledObservation();
  told.p.reset();
  told.rejected.reset();
  const OrderedJson json = jsonAdjustedPoint(withObservation(2, told), 2);
  EXPECT_EQ(json["statistic"], 7.25);
  EXPECT_TRUE(json["p"].is_null());
  EXPECT_TRUE(json["rejected"].is_null());
}

TEST(AdjustedPointJson, HasTextsForNumbersThatJsonLacks) {
  AdjustedObservation told = controlledObservation();
  told.detectable = std::nan("");
  told.residual.y() = HUGE_VAL;
  const OrderedJson json = jsonAdjustedPoint(withObservation(2, told), 2);
  EXPECT_EQ(json["detectable"], "nan");
  EXPECT_EQ(json["residual"], parsed(R"([0.001, "inf", 0.0005])"));
}

TEST(AdjustedPointJson, IsNullOfWhatTakesNoPart) {
  const Registration registration = withObservation(2, controlledObservation());
  EXPECT_TRUE(jsonAdjustedPoint(registration, 4).is_null()) << "an excluded point";
  EXPECT_TRUE(jsonAdjustedPoint(registration, 5).is_null()) << "a point of a station with too few";
}

TEST(AdjustedPointJson, IsNullWithoutAnAdjustment) {
  Registration registration = withObservation(2, controlledObservation());
  registration.adjustment.reset();
  EXPECT_TRUE(jsonAdjustedPoint(registration, 2).is_null());
}

TEST(ControlJson, ListsHeldAndUncertainTargetsAndLastThoseThatNoStationSaw) {
  EXPECT_EQ(control(adjustedStations()), parsed(R"({"control": [
    {"name": "T9", "position": [9.0, 9.0, 9.0], "covariance": null, "held": true, "used": false, "adjusted": null},
    {"name": "T3", "position": [3.0, 0.0, 1.0], "covariance": null, "held": true, "used": true, "adjusted": null},
    {"name": "T2", "position": [2.0, 0.0, 1.0],
     "covariance": [[0.5, 0.125, 0.0], [0.125, 0.25, 0.0], [0.0, 0.0, 1.0]], "held": false, "used": true,
     "adjusted": null},
    {"name": "C1", "position": [7.0, 8.0, 9.0], "covariance": null, "held": true, "used": false, "adjusted": null},
    {"name": "C2", "position": [4.0, 5.0, 6.0],
     "covariance": [[1.0, 0.0, 0.0], [0.0, 1.0, 0.0], [0.0, 0.0, 1.0]], "held": false, "used": false,
     "adjusted": null}]})"));
}

TEST(ControlJson, HasTheFiguresOfAnUncertainTargetAsOfAPointWithoutASigma) {
  Registration registration = adjustedStations();
  AdjustedObservation told = controlledObservation();
  told.sigma.reset();
  registration.adjustment->result.control[2] = told;
  const OrderedJson json = control(registration)["control"][2];
  EXPECT_EQ(json["name"], "T2");
  EXPECT_EQ(json["adjusted"], parsed(R"({
    "sigma": null, "residual": [0.001, -0.002, 0.0005], "redundancy": [0.5, 0.25, 0.125],
    "leastRedundancy": 0.0625, "w": [1.5, -2.5, 0.75], "statistic": 7.25, "p": 0.0625, "rejected": false,
    "detectablePerAxis": [0.01, 0.02, 0.03], "detectable": 0.04, "biasToNoise": 17.5,
    "effect": {"station": "A", "shift": 0.005, "rotation": 0.0025},
    "leftOut": {"error": [0.006, -0.007, 0.008], "station": "A", "shift": 0.009, "rotation": 0.0125,
                "displacement": 0.015}})"));
}

TEST(ControlJson, IsEmptyWithoutAnAdjustment) {
  Registration registration = adjustedStations();
  registration.adjustment.reset();
  EXPECT_EQ(control(registration), parsed(R"({"control": []})"));
}

}  // namespace
}  // namespace tiepoint::workbench
