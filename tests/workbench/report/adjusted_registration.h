// A registration by adjustment, made by hand, for the tests of what is told of it.
#pragma once

#include "workbench/values/registration.h"

namespace tiepoint::workbench {

/// A base that is held, the station A, and a station Out with a single point, which takes no part. The rows
/// of the network stand in another order than the points and their names, so that no index passes for
/// another: points are Base:T1, A:T1, A:T2, A:T3, A:T4 (excluded) and Out:T9; the network has them from the
/// last to the first without A:T4, and the targets T9, T3, T2, T1. T9 and T3 are held, T2 has a covariance,
/// and no station saw C1 and C2. What is told of the rows is left to each test.
inline Registration adjustedStations() {
  Registration registration;
  registration.method = RegistrationMethod::adjust;
  registration.usesBase = true;
  const auto addGroup = [&](const char* name, bool isBase) {
    GroupOutcome& group = registration.groups.emplace_back();
    group.id = registration.groups.size() - 1;
    group.name = name;
    group.inBase = isBase;
  };
  addGroup("Base", true);
  addGroup("A", false);
  addGroup("Out", false);
  const auto addPoint = [&](std::size_t group, const char* name) {
    PointOutcome& point = registration.points.emplace_back();
    point.id = registration.points.size() - 1;
    point.group = group;
    point.name = name;
  };
  addPoint(0, "T1");
  for (const char* const name : {"T1", "T2", "T3", "T4"}) addPoint(1, name);
  addPoint(2, "T9");
  registration.outcome = Registered();

  AdjustedSurvey survey;
  survey.network.stations.resize(3);
  survey.network.stations[0].held = true;
  survey.targetNames = {"T9", "T3", "T2", "T1"};
  survey.network.targets.resize(4);
  survey.network.targets[0].control = analysis::Control{{9, 9, 9}, std::nullopt};
  survey.network.targets[1].control = analysis::Control{{3, 0, 1}, std::nullopt};
  Eigen::Matrix3d covariance;
  covariance << 0.5, 0.125, 0, 0.125, 0.25, 0, 0, 0, 1;
  survey.network.targets[2].control = analysis::Control{{2, 0, 1}, covariance};
  survey.network.observations = {{2, 0}, {1, 1}, {1, 2}, {1, 3}, {0, 3}};
  survey.pointOf = {5, 3, 2, 1, 0};
  survey.observationOf = {4, 3, 2, 1, std::nullopt, 0};
  survey.unseenControl = {{"C1", {{7, 8, 9}, std::nullopt}}, {"C2", {{4, 5, 6}, Eigen::Matrix3d::Identity()}}};
  survey.result.outcome = analysis::AdjustmentOutcome::adjusted;
  survey.result.stations.resize(3);
  survey.result.targets.resize(4);
  for (const std::size_t t : {1u, 2u, 3u}) survey.result.targets[t].emplace();
  survey.result.observations.resize(5);
  survey.result.control.resize(4);
  registration.adjustment = std::move(survey);
  return registration;
}

}  // namespace tiepoint::workbench
