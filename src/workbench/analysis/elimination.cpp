#include "workbench/analysis/elimination.h"

#include <Eigen/Dense>

namespace tiepoint::workbench::analysis {

namespace {

/// Where a target's places count from: a station that sees it, or its control. Differences to it keep the
/// digits that places far from the origin would lose.
struct Anchor {
  Eigen::Vector3d centre, remainder;
};

Anchor anchorOf(const Survey& survey, const Placements& placements, const SurveyTarget& target) {
  if (target.kind != TargetKind::adjusted) return {target.place, Eigen::Vector3d::Zero()};
  const Placement& first = placements[survey.sightings[target.sightings.front()].station];
  return {first.centre, first.remainder};
}

Eigen::Vector3d measuredPlace(const Survey& survey, const Placements& placements, std::size_t sighting,
                              const Anchor& anchor) {
  const Sighting& seen = survey.sightings[sighting];
  const Placement& placement = placements[seen.station];
  return placement.rotation * seen.local +
         ((placement.centre - anchor.centre) + (placement.remainder - anchor.remainder));
}

/// The best place, from the anchor.
EliminatedTarget eliminate(const Survey& survey, const Placements& placements, const SurveyTarget& target,
                           const Anchor& anchor) {
  EliminatedTarget eliminated;
  if (target.kind == TargetKind::held) return eliminated;
  const bool isControlled = target.kind == TargetKind::controlled;
  const Eigen::Vector3d first = isControlled ? Eigen::Vector3d(Eigen::Vector3d::Zero())
                                             : measuredPlace(survey, placements, target.sightings.front(), anchor);
  Eigen::Matrix3d information = target.information;
  Eigen::Vector3d pull = Eigen::Vector3d::Zero();
  for (const std::size_t s : target.sightings) {
    const double weight = survey.sightings[s].information;
    information.diagonal().array() += weight;
    pull += weight * (measuredPlace(survey, placements, s, anchor) - first);
  }
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
    const Anchor anchor = anchorOf(survey, placements, target);
    EliminatedTarget eliminated = eliminate(survey, placements, target, anchor);
    const Eigen::Vector3d place = eliminated.place;
    eliminated.place = anchor.centre + (place + anchor.remainder);
    elimination.targets.push_back(eliminated);
    for (const std::size_t s : target.sightings) {
      elimination.residuals[s] = measuredPlace(survey, placements, s, anchor) - place;
      elimination.sumOfSquares += survey.sightings[s].information * elimination.residuals[s].squaredNorm();
    }
    if (target.kind != TargetKind::controlled) continue;
    elimination.controlResiduals[t] = -place;
    elimination.sumOfSquares += place.dot(target.information * place);
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
