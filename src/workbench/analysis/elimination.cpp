#include "workbench/analysis/elimination.h"

#include <Eigen/Dense>

namespace tiepoint::workbench::analysis {

namespace {

Eigen::Vector3d measuredPlace(const Survey& survey, const Placements& placements, std::size_t sighting) {
  const Sighting& seen = survey.sightings[sighting];
  return placements[seen.station].carry(seen.local);
}

EliminatedTarget eliminate(const Survey& survey, const Placements& placements, const SurveyTarget& target) {
  if (target.kind == TargetKind::held) return {target.place, Eigen::Matrix3d::Zero()};
  // Differences to one of the places keep the digits that the mean of large numbers would lose.
  const bool isControlled = target.kind == TargetKind::controlled;
  const Eigen::Vector3d first =
      isControlled ? target.place : measuredPlace(survey, placements, target.sightings.front());
  Eigen::Matrix3d information = target.information;
  Eigen::Vector3d pull = Eigen::Vector3d::Zero();
  for (const std::size_t s : target.sightings) {
    const double weight = survey.sightings[s].information;
    information.diagonal().array() += weight;
    pull += weight * (measuredPlace(survey, placements, s) - first);
  }
  EliminatedTarget eliminated;
  if (isControlled) {
    eliminated.cofactor = information.inverse();
  } else {
    eliminated.cofactor = Eigen::Matrix3d::Identity() / information(0, 0);
  }
  eliminated.place = first + eliminated.cofactor * pull;
  return eliminated;
}

}  // namespace

Elimination eliminateTargets(const Survey& survey, const Placements& placements) {
  Elimination elimination;
  elimination.residuals.resize(survey.sightings.size());
  elimination.controlResiduals.assign(survey.targets.size(), Eigen::Vector3d::Zero());
  elimination.targets.reserve(survey.targets.size());
  for (std::size_t t = 0; t < survey.targets.size(); ++t) {
    const SurveyTarget& target = survey.targets[t];
    elimination.targets.push_back(eliminate(survey, placements, target));
    const Eigen::Vector3d& place = elimination.targets.back().place;
    for (const std::size_t s : target.sightings) {
      elimination.residuals[s] = measuredPlace(survey, placements, s) - place;
      elimination.sumOfSquares += survey.sightings[s].information * elimination.residuals[s].squaredNorm();
    }
    if (target.kind != TargetKind::controlled) continue;
    const Eigen::Vector3d residual = target.place - place;
    elimination.controlResiduals[t] = residual;
    elimination.sumOfSquares += residual.dot(target.information * residual);
  }
  return elimination;
}

Eigen::Vector3d armOf(const Survey& survey, const Placements& placements, const Elimination& elimination,
                      std::size_t sighting) {
  const Sighting& seen = survey.sightings[sighting];
  return elimination.targets[seen.target].place - placements[seen.station].centre;
}

double extentOf(const Elimination& elimination) {
  if (elimination.targets.empty()) return 0.0;
  Eigen::Vector3d low = elimination.targets.front().place, high = low;
  for (const EliminatedTarget& target : elimination.targets) {
    low = low.cwiseMin(target.place);
    high = high.cwiseMax(target.place);
  }
  return (high - low).norm();
}

}  // namespace tiepoint::workbench::analysis
