#include "workbench/analysis/cofactors.h"

namespace tiepoint::workbench::analysis {

Cofactors::Cofactors(const Solution& solution_)
    : solution(solution_), inverse(solution.equations.matrix(), solution.factor), datum(solution) {}

StationColumns Cofactors::heldFrame(std::size_t one, std::size_t other) const {
  const int oneNode = solution.equations.node(one), otherNode = solution.equations.node(other);
  if (oneNode >= 0 && otherNode >= 0) return inverse.block(oneNode, otherNode);
  return StationColumns::Zero(solution.survey.stations[one].width(), solution.survey.stations[other].width());
}

StationColumns Cofactors::station(std::size_t s) const {
  StationColumns cofactors = heldFrame(s, s);
  if (!datum.isIdentity()) cofactors += datum.stationCorrection(s);
  return cofactors;
}

std::vector<StationRows> Cofactors::stationsToTarget(std::size_t target) const {
  const auto& sightings = solution.survey.targets[target].sightings;
  const Eigen::Matrix3d& cofactor = solution.elimination.targets[target].cofactor;
  std::vector<StationRows> carried(sightings.size()), result(sightings.size());
  for (std::size_t a = 0; a < sightings.size(); ++a) {
    carried[a] =
        solution.survey.sightings[sightings[a]].information * solution.rowsOf(sightings[a]).transpose() * cofactor;
    result[a] = StationRows::Zero(carried[a].rows(), 3);
  }
  for (std::size_t a = 0; a < sightings.size(); ++a) {
    const std::size_t one = solution.survey.sightings[sightings[a]].station;
    if (solution.equations.node(one) < 0) continue;
    for (std::size_t b = 0; b < sightings.size(); ++b) {
      const std::size_t other = solution.survey.sightings[sightings[b]].station;
      if (solution.equations.node(other) >= 0) result[a] += heldFrame(one, other) * carried[b];
    }
  }
  return result;
}

Eigen::Matrix3d Cofactors::target(std::size_t t) const {
  const auto& sightings = solution.survey.targets[t].sightings;
  const Eigen::Matrix3d& cofactor = solution.elimination.targets[t].cofactor;
  const std::vector<StationRows> toTarget = stationsToTarget(t);
  Eigen::Matrix3d result = cofactor;
  for (std::size_t a = 0; a < sightings.size(); ++a) {
    result +=
        solution.survey.sightings[sightings[a]].information * cofactor * (solution.rowsOf(sightings[a]) * toTarget[a]);
  }
  if (!datum.isIdentity()) result += datum.targetCorrection(t);
  return 0.5 * (result + result.transpose());
}

ObservationCofactors Cofactors::ofObservation(std::size_t target, const std::vector<StationRows>& toTarget,
                                              const PointRows* rows, std::size_t station) const {
  const auto& sightings = solution.survey.targets[target].sightings;
  const Eigen::Matrix3d& cofactor = solution.elimination.targets[target].cofactor;
  ObservationCofactors result;
  result.own = cofactor;
  for (std::size_t b = 0; b < sightings.size(); ++b) {
    const Sighting& seen = solution.survey.sightings[sightings[b]];
    StationRows reach = -toTarget[b];
    const bool bothMove =
        rows != nullptr && solution.equations.node(station) >= 0 && solution.equations.node(seen.station) >= 0;
    if (bothMove) reach += heldFrame(seen.station, station) * rows->transpose();
    const PointRows there = solution.rowsOf(sightings[b]);
    if (rows != nullptr && seen.station == station) result.own += *rows * reach;
    result.own -= seen.information * cofactor * (there * reach);
    result.stations.push_back(reach);
  }
  result.own = (0.5 * (result.own + result.own.transpose())).eval();
  if (datum.isIdentity()) return result;
  const TargetColumns motion = datum.observationMotion(rows, station, target);
  for (std::size_t b = 0; b < sightings.size(); ++b) {
    result.stations[b] += datum.rowCorrection(solution.survey.sightings[sightings[b]].station, motion);
  }
  return result;
}

std::vector<ObservationCofactors> Cofactors::ofTarget(std::size_t t) const {
  const SurveyTarget& target = solution.survey.targets[t];
  const std::vector<StationRows> toTarget = stationsToTarget(t);
  std::vector<ObservationCofactors> result;
  for (const std::size_t o : target.sightings) {
    const PointRows rows = solution.rowsOf(o);
    result.push_back(ofObservation(t, toTarget, &rows, solution.survey.sightings[o].station));
  }
  if (target.kind == TargetKind::controlled) result.push_back(ofObservation(t, toTarget, nullptr, 0));
  return result;
}

std::vector<StationRows> Cofactors::reachOf(std::size_t sighting) const {
  const Survey& survey = solution.survey;
  const Sighting& own = survey.sightings[sighting];
  const PointRows rows = solution.rowsOf(sighting);
  Eigen::MatrixXd side = Eigen::MatrixXd::Zero(solution.equations.matrix().size(), 3);
  for (const std::size_t o : survey.targets[own.target].sightings) {
    const int node = solution.equations.node(survey.sightings[o].station);
    if (node < 0) continue;
    const PointRows there = solution.rowsOf(o);
    auto part = side.middleRows(solution.equations.matrix().offset(node), there.cols());
    part -= survey.sightings[o].information * there.transpose() * solution.elimination.targets[own.target].cofactor;
    if (o == sighting) part += rows.transpose();
  }
  if (side.rows() > 0) side = solution.factor.solve(side);
  std::vector<StationRows> result;
  for (std::size_t s = 0; s < survey.stations.size(); ++s) {
    const int node = solution.equations.node(s);
    StationRows reach = StationRows::Zero(survey.stations[s].width(), 3);
    if (node >= 0) reach = side.middleRows(solution.equations.matrix().offset(node), reach.rows());
    if (!datum.isIdentity()) reach += datum.rowCorrection(s, datum.observationMotion(&rows, own.station, own.target));
    result.push_back(reach);
  }
  return result;
}

}  // namespace tiepoint::workbench::analysis
