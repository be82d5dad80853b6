#include "workbench/analysis/station_reach.h"

#include <Eigen/Dense>
#include <algorithm>
#include <cmath>

namespace tiepoint::workbench::analysis {

namespace {

template <typename Rows>
double spectralNorm(const Rows& rows) {
  const Eigen::Matrix3d square = rows.transpose() * rows;
  const Eigen::SelfAdjointEigenSolver<Eigen::Matrix3d> eigen(square, Eigen::EigenvaluesOnly);
  return std::sqrt(std::max(0.0, eigen.eigenvalues()(2)));
}

}  // namespace

StationShift effectOn(std::size_t stationIndex, const StationRows& rows, const Eigen::Matrix3d& hiddenPull,
                      double reach) {
  const StationRows moved = rows * hiddenPull;
  return {stationIndex, reach * spectralNorm(moved.bottomRows(3)),
          reach * spectralNorm(moved.topRows(moved.rows() - 3))};
}

StationVector motionWithout(const StationRows& rows, const TestedResidual& tested) {
  return rows * (tested.information * tested.hiddenError());
}

StationShift shiftOf(std::size_t stationIndex, const StationVector& motion) {
  return {stationIndex, shiftOf(motion).norm(), turnOf(motion).norm()};
}

double displacementOf(const Solution& solution, std::size_t station, const StationVector& motion) {
  double farthest = 0.0;
  for (const std::size_t o : solution.survey.stations[station].sightings) {
    farthest = std::max(farthest, (solution.rowsOf(o) * motion).norm());
  }
  return farthest;
}

}  // namespace tiepoint::workbench::analysis
