#include "workbench/analysis/free_datum.h"

#include <Eigen/Dense>

namespace tiepoint::workbench::analysis {

FreeDatum::FreeDatum(const Solution& solution) {
  const Survey& survey = solution.survey;
  if (survey.datum != DatumKind::free || survey.stations.empty()) return;
  defect = survey.defect;
  for (const EliminatedTarget& target : solution.elimination.targets) middle += target.place;
  middle /= static_cast<double>(solution.elimination.targets.size());
  if (extentOf(solution.elimination) > 0.0) extent = extentOf(solution.elimination);
  for (std::size_t s = 0; s < survey.stations.size(); ++s) stationG.push_back(motionOfStation(solution, s));
  for (const EliminatedTarget& target : solution.elimination.targets) targetG.push_back(motionOfPoint(target.place));
  const Eigen::MatrixXd moved =
      solution.equations.matrix().size() > 0 ? solution.factor.solve(stationSide(solution)) : Eigen::MatrixXd();
  for (std::size_t s = 0; s < survey.stations.size(); ++s) {
    const int node = solution.equations.node(s);
    StationColumns rows = StationColumns::Zero(survey.stations[s].width(), defect);
    if (node >= 0) rows = moved.middleRows(solution.equations.matrix().offset(node), rows.rows());
    stationW.push_back(rows);
  }
  addTargets(solution);
}

/// Rotations are scaled to the extent, so that all columns are of one size.
TargetColumns FreeDatum::motionOfPoint(const Eigen::Vector3d& place) const {
  TargetColumns motion = pointRows(place - middle, defect == 4);
  motion.leftCols(defect - 3) /= extent;
  return motion;
}

StationColumns FreeDatum::motionOfStation(const Solution& solution, std::size_t s) const {
  const int width = solution.survey.stations[s].width();
  StationColumns motion = StationColumns::Zero(width, defect);
  motion.bottomRows(3) = motionOfPoint(solution.placements[s].centre);
  // A station that can turn in three ways follows a turn of the whole about z with its last row.
  const int turns = defect - 3;
  motion.block(width - 3 - turns, 0, turns, turns).setIdentity();
  motion.block(width - 3 - turns, 0, turns, turns) /= extent;
  return motion;
}

Eigen::MatrixXd FreeDatum::stationSide(const Solution& solution) const {
  Eigen::MatrixXd side = Eigen::MatrixXd::Zero(solution.equations.matrix().size(), defect);
  for (std::size_t o = 0; o < solution.survey.sightings.size(); ++o) {
    const Sighting& seen = solution.survey.sightings[o];
    const int node = solution.equations.node(seen.station);
    if (node < 0) continue;
    const PointRows rows = solution.rowsOf(o);
    side.middleRows(solution.equations.matrix().offset(node), rows.cols()) +=
        seen.information * rows.transpose() * solution.elimination.targets[seen.target].cofactor * targetG[seen.target];
  }
  return side;
}

void FreeDatum::addTargets(const Solution& solution) {
  Eigen::MatrixXd normal = Eigen::MatrixXd::Zero(defect, defect);
  core = normal;
  for (std::size_t t = 0; t < targetG.size(); ++t) {
    const Eigen::Matrix3d& cofactor = solution.elimination.targets[t].cofactor;
    TargetColumns columns = cofactor * targetG[t];
    for (const std::size_t o : solution.survey.targets[t].sightings) {
      const Sighting& seen = solution.survey.sightings[o];
      columns += seen.information * cofactor * (solution.rowsOf(o) * stationW[seen.station]);
    }
    normal += targetG[t].transpose() * targetG[t];
    core += targetG[t].transpose() * columns;
    targetW.push_back(columns);
  }
  inverse = normal.ldlt().solve(Eigen::MatrixXd::Identity(defect, defect));
}

StationColumns FreeDatum::stationCorrection(std::size_t s) const {
  const Eigen::MatrixXd mixed = stationG[s] * inverse * stationW[s].transpose();
  const Eigen::MatrixXd own = stationG[s] * inverse * core * inverse * stationG[s].transpose();
  return own - mixed - mixed.transpose();
}

Eigen::Matrix3d FreeDatum::targetCorrection(std::size_t t) const {
  const Eigen::Matrix3d mixed = targetG[t] * inverse * targetW[t].transpose();
  const Eigen::Matrix3d own = targetG[t] * inverse * core * inverse * targetG[t].transpose();
  return own - mixed - mixed.transpose();
}

TargetColumns FreeDatum::observationMotion(const PointRows* ofStation, std::size_t station, std::size_t target) const {
  TargetColumns motion = -targetW[target];
  if (ofStation != nullptr) motion += *ofStation * stationW[station];
  return motion;
}

Eigen::Matrix<double, Eigen::Dynamic, 3, 0, 6, 3> FreeDatum::rowCorrection(std::size_t station,
                                                                           const TargetColumns& motion) const {
  return -(stationG[station] * inverse * motion.transpose());
}

}  // namespace tiepoint::workbench::analysis
