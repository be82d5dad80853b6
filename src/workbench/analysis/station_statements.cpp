#include "workbench/analysis/station_statements.h"

#include <Eigen/Eigenvalues>
#include <algorithm>
#include <cmath>

#include "workbench/analysis/naming_margin.h"

namespace tiepoint::workbench::analysis {

namespace {

Matrix6d wholeCovariance(const StationColumns& cofactors, double variance) {
  Matrix6d whole = Matrix6d::Zero();
  const Eigen::Index width = cofactors.rows();
  whole.bottomRightCorner(width, width) = variance * cofactors;
  return 0.5 * (whole + whole.transpose());
}

Eigen::Matrix3d pointCovariance(const Matrix6d& station, const Eigen::Vector3d& arm) {
  const PointRows rows = pointRows(arm, false);
  return rows * station * rows.transpose();
}

double largestSigma(const Eigen::Matrix3d& covariance) {
  const Eigen::SelfAdjointEigenSolver<Eigen::Matrix3d> eigen(covariance, Eigen::EigenvaluesOnly);
  return std::sqrt(std::max(0.0, eigen.eigenvalues()(2)));
}

/// Of the station's own block, as if its targets were known.
double geometryOf(const Solution& solution, std::size_t s) {
  const SurveyStation& station = solution.survey.stations[s];
  if (station.lever == 0.0) return 0.0;
  Block normal = Block::Zero(station.width(), station.width());
  for (const std::size_t o : station.sightings) {
    PointRows rows = solution.rowsOf(o);
    rows.leftCols(station.width() - 3) /= station.lever;
    normal += solution.survey.sightings[o].information / station.information * rows.transpose() * rows;
  }
  const Eigen::SelfAdjointEigenSolver<Eigen::MatrixXd> eigen(normal, Eigen::EigenvaluesOnly);
  return std::max(0.0, eigen.eigenvalues()(0));
}

void describeRotation(AdjustedStation& told) {
  const Eigen::SelfAdjointEigenSolver<Eigen::Matrix3d> eigen(Eigen::Matrix3d(told.covariance.topLeftCorner<3, 3>()));
  told.rotationSigma = std::sqrt(std::max(0.0, eigen.eigenvalues()(2)));
  told.rotationAxis = eigen.eigenvectors().col(2);
}

AdjustedStation describeStation(const Solution& solution, const Cofactors& cofactors, double variance, std::size_t s,
                                const Adjustment& adjustment) {
  const SurveyStation& station = solution.survey.stations[s];
  const Placement& placement = solution.placements[s];
  AdjustedStation told;
  told.levelled = station.levelled;
  told.centre = placement.centre + solution.survey.origin;
  told.covariance = wholeCovariance(cofactors.station(s), variance);
  told.position = adjustment.poses[station.index]->shift;
  const Eigen::Vector3d armOfOrigin = -(placement.rotation * station.middle);
  told.positionCovariance = pointCovariance(told.covariance, armOfOrigin);
  told.positionSigma = largestSigma(told.positionCovariance);
  describeRotation(told);
  for (const std::size_t o : station.sightings) {
    const Sighting& seen = solution.survey.sightings[o];
    const Eigen::Vector3d arm = placement.rotation * seen.local;
    told.largestPointSigma = std::max(told.largestPointSigma, largestSigma(pointCovariance(told.covariance, arm)));
    told.redundancy += adjustment.observations[seen.observation]->redundancy.sum();
  }
  told.geometry = geometryOf(solution, s);
  return told;
}

CarriedPosition carry(const Solution& solution, const CarriedPoint& point, const Adjustment& adjustment) {
  CarriedPosition carried;
  carried.point = point;
  const Pose& pose = *adjustment.poses[point.station];
  carried.position = pose.rotation * point.place + pose.shift;
  if (!adjustment.stations[point.station]) return carried;
  const AdjustedStation& station = *adjustment.stations[point.station];
  for (std::size_t s = 0; s < solution.survey.stations.size(); ++s) {
    if (solution.survey.stations[s].index != point.station) continue;
    const Eigen::Vector3d arm = pose.rotation * (point.place - solution.survey.stations[s].middle);
    carried.covariance = pointCovariance(station.covariance, arm);
  }
  return carried;
}

NamingMargin marginOf(const Solution& solution, const SurveyStation& station, const NextNaming& next) {
  NamingMargin margin;
  margin.margin = next.margin;
  margin.complete = next.complete;
  const auto targetOf = [&](std::size_t pair) {
    return solution.survey.targets[solution.survey.sightings[station.sightings[pair]].target].index;
  };
  for (std::size_t p = 0; p < next.takenFor.size(); ++p) {
    if (next.takenFor[p] != p) margin.exchanged.emplace_back(targetOf(p), targetOf(next.takenFor[p]));
  }
  return margin;
}

}  // namespace

void describePlaces(const Solution& solution, Adjustment& adjustment) {
  const Survey& survey = solution.survey;
  for (std::size_t s = 0; s < survey.stations.size(); ++s) {
    adjustment.poses[survey.stations[s].index] = poseOf(survey, s, solution.placements[s]);
  }
  for (std::size_t t = 0; t < survey.targets.size(); ++t) {
    AdjustedTarget told;
    told.position = solution.elimination.targets[t].place + survey.origin;
    told.sightings = survey.targets[t].sightings.size();
    adjustment.targets[survey.targets[t].index] = told;
  }
}

void describeNaming(const Solution& solution, Adjustment& adjustment) {
  for (const SurveyStation& station : solution.survey.stations) {
    if (station.held) continue;
    std::vector<FitPair> pairs;
    for (const std::size_t o : station.sightings) {
      const Sighting& seen = solution.survey.sightings[o];
      pairs.push_back({seen.local, solution.elimination.targets[seen.target].place, seen.information});
    }
    const auto next = nextNaming(pairs, station.levelled);
    if (next) adjustment.stations[station.index]->naming = marginOf(solution, station, *next);
  }
}

void describeStations(const Solution& solution, const Cofactors& cofactors, double variance,
                      const std::vector<CarriedPoint>& points, Adjustment& adjustment) {
  const Survey& survey = solution.survey;
  for (std::size_t s = 0; s < survey.stations.size(); ++s) {
    if (survey.stations[s].held) continue;
    adjustment.stations[survey.stations[s].index] = describeStation(solution, cofactors, variance, s, adjustment);
  }
  for (std::size_t t = 0; t < survey.targets.size(); ++t) {
    adjustment.targets[survey.targets[t].index]->covariance = variance * cofactors.target(t);
  }
  for (const CarriedPoint& point : points) {
    if (adjustment.poses[point.station]) adjustment.carried.push_back(carry(solution, point, adjustment));
  }
}

}  // namespace tiepoint::workbench::analysis
