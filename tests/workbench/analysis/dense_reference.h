// The adjustment written down plainly: the whole design matrix, the inverse of all normal equations, every
// statement by its formula. In extended precision, for networks of a few hundred unknowns in which
// everything takes part.
#pragma once

#include <Eigen/Dense>
#include <optional>
#include <vector>

#include "workbench/values/adjustment_network.h"

namespace tiepoint::workbench::analysis::testing {

using Real = long double;
using Dense = Eigen::Matrix<Real, Eigen::Dynamic, Eigen::Dynamic>;
using Column = Eigen::Matrix<Real, Eigen::Dynamic, 1>;
using Real3 = Eigen::Matrix<Real, 3, 1>;
using Real33 = Eigen::Matrix<Real, 3, 3>;

struct DenseObservation {
  Real3 residual, redundancy, w, hiddenError;
  Real leastRedundancy = 0, statistic = 0;
  Real33 reliability;
  /// For every station the columns' motion: Q a' P, six rows each.
  std::vector<Eigen::Matrix<Real, 6, 3>> pull;
};

class DenseReference {
 public:
  /// Searches its own minimum from the truth.
  DenseReference(const Network& network, const std::vector<Pose>& truth);

  std::vector<Real33> rotations;
  std::vector<Real3> shifts;
  std::vector<Real3> centres;
  std::vector<Real3> targets;
  Real sumOfSquares = 0;
  int redundancy = 0;
  /// Six by six of each station, three by three of each target, in the network's datum.
  std::vector<Eigen::Matrix<Real, 6, 6>> stationCofactors;
  std::vector<Real33> targetCofactors;
  /// Of the observations, and of the targets' control (empty rows for those without a covariance).
  std::vector<DenseObservation> observations;
  std::vector<std::optional<DenseObservation>> control;
  /// The smallest eigenvalue of the scaled normal matrix, and of each station's own block.
  Real stiffness = 0;
  std::vector<Real> geometry;

  Real lever(std::size_t station) const;
  /// From this centre to the place of the target.
  Eigen::Matrix<Real, 3, 6> rowsAt(std::size_t station, const Real3& place) const;

 private:
  struct Equation {
    int observation = -1;
    std::size_t target = 0;
    Real33 information, covariance;
  };

  bool isFree() const;
  void findFrame();
  void listEquations();
  void iterate();
  Dense design() const;
  Column residuals() const;
  Dense weigh(const Dense& rows) const;
  std::vector<int> columns(bool withFrame) const;
  Dense cofactors(const Dense& normal) const;
  Dense motions() const;
  void state();
  void describe(const Equation& equation, std::size_t row, const Column& v, const Dense& a, const Dense& q);
  void soften(const Dense& normal);

  const Network& network;
  std::size_t frame;
  std::vector<Equation> equations;
};

}  // namespace tiepoint::workbench::analysis::testing
