// tiepoint register --method adjust, from the outside.
#include <gmock/gmock.h>

#include <cmath>
#include <map>

#include "workbench/cli/adjusted_survey_files.h"

namespace {

using nlohmann::json;
using testing::HasSubstr;

/// What rounding may leave, of coordinates of some hundred.
constexpr double rounding = 1e-9;

class AdjustCommand : public AdjustedSurveyFiles {};

TEST_F(AdjustCommand, TellsItsMethodItsDatumAndItsNumbers) {
  const json result = runJson(onBase({}));
  EXPECT_EQ(result["outcome"], "registered");
  EXPECT_EQ(result["method"], "adjust with base");
  const json& adjustment = result["adjustment"];
  EXPECT_EQ(adjustment["datum"], json::parse(R"({"kind":"base","stations":["base"],"frame":null,"defect":0})"));
  EXPECT_EQ(adjustment["observations"], 45);
  EXPECT_EQ(adjustment["unknowns"], 27);
  EXPECT_EQ(adjustment["redundancy"], 18);
  EXPECT_EQ(adjustment["converged"], true);
  EXPECT_EQ(adjustment["scale"], "a-posteriori");
}

TEST_F(AdjustCommand, EveryResidualLeadsFromTheAdjustedTargetToTheRegisteredPoint) {
  const json result = runJson(onBase({}));
  ASSERT_EQ(result["points"].size(), 15u);
  for (const json& point : result["points"]) {
    const Eigen::Vector3d registered = motionOf(named(result["groups"], point["group"])) * vectorOf(point["position"]);
    const Eigen::Vector3d expected = registered - vectorOf(named(result["commonPoints"], point["name"])["position"]);
    EXPECT_LT((vectorOf(point["residual"]) - expected).norm(), rounding) << point;
    EXPECT_EQ(point["residual"], point["adjusted"]["residual"]);
    EXPECT_NEAR(point["discrepancy"], expected.norm(), rounding) << point;
  }
}

TEST_F(AdjustCommand, TheResidualsPullNoTargetAndNoStationAnywhere) {
  const json result = runJson(onBase({}));
  std::map<std::string, Eigen::Vector3d> onTarget, onStation, turning;
  for (auto* const sums : {&onTarget, &onStation, &turning}) {
    for (const char* name : {"P1", "P2", "P3", "P4", "P5", "shifted", "turned", "base"}) {
      (*sums)[name] = Eigen::Vector3d::Zero();
    }
  }
  double length = 0.0;
  for (const json& point : result["points"]) {
    const Eigen::Vector3d residual = vectorOf(point["residual"]);
    onTarget[point["name"]] += residual;
    onStation[point["group"]] += residual;
    turning[point["group"]] += vectorOf(named(result["commonPoints"], point["name"])["position"]).cross(residual);
    length += residual.norm();
  }
  EXPECT_GT(length, 0.001) << "there is noise";
  for (const char* name : {"P1", "P2", "P3", "P4", "P5"}) EXPECT_LT(onTarget[name].norm(), rounding) << name;
  for (const char* name : {"shifted", "turned"}) {
    EXPECT_LT(onStation[name].norm(), rounding) << name;
    EXPECT_LT(turning[name].norm(), rounding) << name;
  }
}

TEST_F(AdjustCommand, GivesTheSameBytesOnEveryRun) {
  const std::vector<std::string> all = onBase({"--json", "--trace", "shifted:P5"});
  const ProcessResult first = run(all);
  EXPECT_EQ(first.status, 0) << first.err;
  EXPECT_EQ(run(all).out, first.out);
}

TEST_F(AdjustCommand, SuspectsTheMeasurementThatIsWrong) {
  write("turned.txt", "P1 2.5 10 -0.125\nP2 2.5 0 -0.125\nP3 12.5 10 -0.085\nP4 2.5 10.001 9.875\nP5 12.5 0 4.875\n");
  const json result = runJson(onBase({"--sigma", "0.001"}));
  EXPECT_EQ(result["adjustment"]["suspect"]["group"], "turned");
  EXPECT_EQ(result["adjustment"]["suspect"]["name"], "P3");
  EXPECT_EQ(result["adjustment"]["globalTest"]["passed"], false);
  EXPECT_EQ(result["standOut"]["name"], "P3");
  const json adjusted = pointOf(result, "turned", "P3")["adjusted"];
  EXPECT_EQ(adjusted["rejected"], true);
  EXPECT_NEAR(adjusted["leftOut"]["error"][2], 0.040, 0.003) << "it lies 40 mm too high, amid noise of 1 mm";
}

// --- How well coordinates are measured.

TEST_F(AdjustCommand, OneSigmaHoldsForAllAndIsTakenAtItsWord) {
  const json result = runJson(onBase({"--sigma", "0.001"}));
  EXPECT_EQ(result["adjustment"]["scale"], "a-priori");
  EXPECT_FALSE(result["adjustment"]["globalTest"].is_null());
  ASSERT_EQ(result["points"].size(), 15u);
  for (const json& point : result["points"]) EXPECT_DOUBLE_EQ(point["adjusted"]["sigma"], 0.001) << point;
}

TEST_F(AdjustCommand, ASigmaOfAGroupGoesBeforeTheOneOfAll) {
  const json result = runJson(onBase({"--sigma", "shifted=0.002", "--sigma", "0.001"}));
  EXPECT_DOUBLE_EQ(pointOf(result, "shifted", "P2")["adjusted"]["sigma"], 0.002);
  EXPECT_DOUBLE_EQ(pointOf(result, "turned", "P2")["adjusted"]["sigma"], 0.001);
}

TEST_F(AdjustCommand, InAFileOfSigmasThatOfAPointGoesBeforeThatOfItsGroup) {
  write("sigmas.txt", "turned P4 0.004\nturned 0.002\nshifted 0.003\n");
  const json result = runJson(onBase({"--sigma", "0.001", "--sigmas", "sigmas.txt"}));
  EXPECT_DOUBLE_EQ(pointOf(result, "turned", "P4")["adjusted"]["sigma"], 0.004);
  EXPECT_DOUBLE_EQ(pointOf(result, "turned", "P5")["adjusted"]["sigma"], 0.002);
  EXPECT_DOUBLE_EQ(pointOf(result, "shifted", "P4")["adjusted"]["sigma"], 0.003);
  EXPECT_DOUBLE_EQ(pointOf(result, "base", "P4")["adjusted"]["sigma"], 0.001);
}

TEST_F(AdjustCommand, AWeightDividesTheVariance) {
  const json result = runJson(onBase({"--sigma", "0.001", "--weight", "shifted:P2=0.25"}));
  EXPECT_DOUBLE_EQ(pointOf(result, "shifted", "P2")["adjusted"]["sigma"], 0.002);
  EXPECT_DOUBLE_EQ(pointOf(result, "shifted", "P3")["adjusted"]["sigma"], 0.001);
}

TEST_F(AdjustCommand, TheVarianceIsEstimatedWhenThatIsAskedFor) {
  const json result = runJson(onBase({"--sigma", "0.001", "--variance", "a-posteriori"}));
  EXPECT_EQ(result["adjustment"]["scale"], "a-posteriori");
  EXPECT_TRUE(result["adjustment"]["globalTest"].is_null());
}

TEST_F(AdjustCommand, TheLevelsOfItsTestsAreThoseThatAreGiven) {
  const json levels =
      runJson(onBase({"--sigma", "0.001", "--alpha", "0.01", "--power", "0.9"}))["adjustment"]["levels"];
  EXPECT_EQ(levels["alpha"], 0.01);
  EXPECT_EQ(levels["power"], 0.9);
  // Quantiles of the normal distribution: 2.575829 on both sides for 0.01, and 1.281552 for 0.9.
  EXPECT_NEAR(levels["criticalAxis"], 2.575829, 1e-6);
  EXPECT_NEAR(levels["noncentralityAxis"], (2.575829 + 1.281552) * (2.575829 + 1.281552), 1e-4);
}

// --- What is known beforehand.

TEST_F(AdjustCommand, ControlThatIsHeldGivesTheCoordinates) {
  write("control.txt", "P1 1000 2000 50\nP2 1010 2000 50\nP3 1000 2010 50\n");
  const json result = runJson(freely({"--control", "control.txt"}));
  EXPECT_EQ(result["method"], "adjust");
  EXPECT_EQ(result["adjustment"]["datum"]["kind"], "control");
  EXPECT_EQ(named(result["commonPoints"], "P2")["position"], json::parse("[1010.0, 2000.0, 50.0]"));
  ASSERT_EQ(result["control"].size(), 3u);
  EXPECT_EQ(result["control"][0], json::parse(R"({"name":"P1","position":[1000.0,2000.0,50.0],"covariance":null,
                                                  "held":true,"used":true,"adjusted":null})"));
  const Eigen::Vector3d p4 = vectorOf(named(result["commonPoints"], "P4")["position"]);
  EXPECT_LT((p4 - Eigen::Vector3d(1000, 2000, 60)).norm(), 0.005) << "within the noise";
}

TEST_F(AdjustCommand, ControlWithASigmaIsAdjustedAndTested) {
  write("control.txt",
        "P1 1000 2000 50 0.002\nP2 1010 2000 50 0.002\nP3 1000 2010 50 0.002 0.002 0.004\nP4 1000 2000 60 0.002\n");
  const json result = runJson(freely({"--control", "control.txt", "--sigma", "0.001"}));
  const json control = named(result["control"], "P3");
  EXPECT_EQ(control["held"], false);
  EXPECT_NEAR(control["covariance"][0][0], 4e-6, 1e-18);
  EXPECT_NEAR(control["covariance"][2][2], 16e-6, 1e-18);
  EXPECT_EQ(control["covariance"][0][2], 0.0);
  EXPECT_TRUE(control["adjusted"]["sigma"].is_null());
  EXPECT_EQ(result["adjustment"]["levels"]["tests"], 15 + 4);
  const Eigen::Vector3d adjusted = vectorOf(named(result["commonPoints"], "P3")["position"]);
  const Eigen::Vector3d residual = Eigen::Vector3d(1000, 2010, 50) - adjusted;
  EXPECT_GT(residual.norm(), 1e-5);
  EXPECT_LT((vectorOf(control["adjusted"]["residual"]) - residual).norm(), rounding) << "given less adjusted";
}

TEST_F(AdjustCommand, ControlThatNoStationSawIsListedAndWarnedOf) {
  write("control.txt", "P1 1000 2000 50\nP2 1010 2000 50\nP3 1000 2010 50\nQ9 1 2 3\n");
  const json result = runJson(freely({"--control", "control.txt"}));
  ASSERT_EQ(result["control"].size(), 4u);
  EXPECT_EQ(result["control"][3], json::parse(R"({"name":"Q9","position":[1.0,2.0,3.0],"covariance":null,"held":true,
                                                  "used":false,"adjusted":null})"));
  ASSERT_EQ(result["warnings"].size(), 1u);
  EXPECT_THAT(result["warnings"][0].get<std::string>(), HasSubstr("Q9"));
}

TEST_F(AdjustCommand, ALevelledStationTurnsAboutTheVerticalAlone) {
  const json result = runJson(onBase({"--level", "turned"}));
  const json turned = named(result["groups"], "turned"), shifted = named(result["groups"], "shifted");
  EXPECT_EQ(turned["adjusted"]["levelled"], true);
  const json& lastRow = turned["transform"]["matrix"][2];
  EXPECT_EQ(lastRow, json({0.0, 0.0, 1.0, lastRow[3]}));
  EXPECT_EQ(shifted["adjusted"]["levelled"], false);
  EXPECT_NE(shifted["transform"]["matrix"][2][0], 0.0);
}

TEST_F(AdjustCommand, AllStationsAreLevelledAtOnce) {
  const json result = runJson(freely({"--level", "all"}));
  EXPECT_EQ(result["adjustment"]["datum"]["defect"], 4);
  ASSERT_EQ(result["groups"].size(), 3u);
  for (const json& group : result["groups"]) EXPECT_EQ(group["adjusted"]["levelled"], true) << group["name"];
}

// --- Starts, carried points and effects.

TEST_F(AdjustCommand, AStartThatIsGivenLeadsToTheSamePlaces) {
  ASSERT_EQ(run(onBase({"--transforms", "poses.json"})).status, 0);
  json poses = json::parse(read("poses.json"));
  // The station begins turned by 90 degrees too far.
  poses["groups"][2]["rotation"] = json::parse("[[-1, 0, 0], [0, -1, 0], [0, 0, 1]]");
  write("poses.json", poses.dump());
  const json usual = runJson(onBase({})), started = runJson(onBase({"--start", "poses.json"}));
  EXPECT_GT(started["adjustment"]["iterations"], usual["adjustment"]["iterations"]);
  for (const char* name : {"shifted", "turned"}) {
    const Eigen::Affine3d expected = motionOf(named(usual["groups"], name));
    EXPECT_LT((motionOf(named(started["groups"], name)).matrix() - expected.matrix()).norm(), rounding) << name;
  }
}

TEST_F(AdjustCommand, CarriesPointsOfAStationWithTheirCovariance) {
  write("points.txt", "shifted 100 205 303\nbase 1 2 3\nturned 0 0 0\n");
  const json result = runJson(onBase({"--carry", "points.txt"}));
  const json& carried = result["adjustment"]["carried"];
  ASSERT_EQ(carried.size(), 3u);
  EXPECT_EQ(carried[0]["group"], "shifted");
  EXPECT_EQ(carried[0]["point"], json::parse("[100.0, 205.0, 303.0]"));
  const Eigen::Vector3d expected = motionOf(named(result["groups"], "shifted")) * Eigen::Vector3d(100, 205, 303);
  EXPECT_LT((vectorOf(carried[0]["position"]) - expected).norm(), rounding);
  EXPECT_EQ(carried[1]["position"], json::parse("[1.0, 2.0, 3.0]"));
  EXPECT_EQ(carried[1]["covariance"], json::parse("[[0.0,0.0,0.0],[0.0,0.0,0.0],[0.0,0.0,0.0]]"));
  EXPECT_EQ(carried[2]["covariance"], named(result["groups"], "turned")["adjusted"]["positionCovariance"]);
}

TEST_F(AdjustCommand, TracesTheEffectOfAMeasurementOnEveryStation) {
  const json result = runJson(onBase({"--trace", "shifted:P5"}));
  const json& trace = result["adjustment"]["trace"];
  ASSERT_EQ(trace.size(), 1u);
  EXPECT_EQ(trace[0]["group"], "shifted");
  EXPECT_EQ(trace[0]["name"], "P5");
  ASSERT_EQ(trace[0]["stations"].size(), 2u);
  EXPECT_EQ(trace[0]["stations"][1]["name"], "turned");
  const json adjusted = pointOf(result, "shifted", "P5")["adjusted"];
  const json own = named(trace[0]["stations"], "shifted");
  EXPECT_NEAR(own["effect"]["shift"], adjusted["effect"]["shift"], rounding);
  EXPECT_NEAR(own["leftOut"]["rotation"], adjusted["leftOut"]["rotation"], rounding);
  EXPECT_NEAR(own["leftOut"]["displacement"], adjusted["leftOut"]["displacement"], rounding);
  EXPECT_GT(own["leftOut"]["displacement"], 0.0005) << "P5 is the worst of them";
}

// --- What can't be determined.

TEST_F(AdjustCommand, AStationWhoseTargetsLieOnALineIsUndetermined) {
  write("line.txt", "A 0 0 0\nB 10 0 0\nC 20 0 0\n");
  write("upright.txt", "A 0 5 0\nB 0 15 0\nC 0 25 0\n");
  const json result = runJson({"register", "--method", "adjust", "--base", "line", "line.txt", "upright.txt"}, 1);
  EXPECT_EQ(result["outcome"], "undetermined");
  const json& adjustment = result["adjustment"];
  EXPECT_EQ(adjustment["open"], "upright");
  EXPECT_EQ(adjustment["openMotion"]["turns"], true);
  EXPECT_EQ(adjustment["openMotion"]["lineOfTargets"], true);
  EXPECT_NEAR(std::abs(adjustment["openMotion"]["axis"][0].get<double>()), 1.0, rounding);
  EXPECT_TRUE(adjustment["levels"].is_null());
  EXPECT_TRUE(adjustment["certificate"].is_null());
  ASSERT_EQ(result["groups"].size(), 2u);
  ASSERT_EQ(result["points"].size(), 6u);
  for (const json& group : result["groups"]) EXPECT_TRUE(group["adjusted"].is_null());
  for (const json& point : result["points"]) EXPECT_TRUE(point["adjusted"].is_null());
}

TEST_F(AdjustCommand, WhatIsUndeterminedWritesNothing) {
  write("line.txt", "A 0 0 0\nB 10 0 0\nC 20 0 0\n");
  write("upright.txt", "A 0 5 0\nB 0 15 0\nC 0 25 0\n");
  const ProcessResult result =
      run({"register", "--method", "adjust", "--base", "line", "line.txt", "upright.txt", "--transforms", "t.json",
           "--matrices", "out", "--common-points", "c.txt", "--report", "r.html"});
  EXPECT_EQ(result.status, 1);
  for (const char* file : {"t.json", "out", "c.txt", "r.html"}) EXPECT_FALSE(exists(file)) << file;
}

}  // namespace
