// What one measurement's residual tells: its redundancy, its test, the error that could hide in it.
#pragma once

#include "workbench/values/adjustment_result.h"

namespace tiepoint::workbench::analysis {

/// Scale and levels that all measurements of a survey are tested with.
struct TestSetting {
  VarianceScale scale = VarianceScale::aPriori;
  TestLevels levels;
  std::size_t redundancy = 0;
  /// Of the residuals, by which tests are divided and detectable errors multiplied: s0 or 1. Zero when
  /// nothing can be tested.
  double unit = 1.0;
};

/// One measurement of three coordinates, as its test sees it.
struct TestedResidual {
  Eigen::Vector3d residual;
  /// P and its inverse.
  Eigen::Matrix3d information, covariance;
  /// M = P - P a Q a' P, its eigenvectors, and its eigenvalues ascending.
  Eigen::Matrix3d reliability;
  Eigen::Matrix3d directions;
  Eigen::Vector3d strengths;
  Eigen::Vector3d redundancy;
  double leastRedundancy = 0.0;

  bool isControlled() const;
  /// M^-1 P v: measured less what all other measurements predict. Of a controlled measurement.
  Eigen::Vector3d hiddenError() const;
  /// P M^-1/2: takes the errors that b'Mb <= 1 allows to the pull on the normal equations.
  Eigen::Matrix3d hiddenPull() const;
};

/// `cofactor` is a Q a'.
TestedResidual testedResidual(const Eigen::Vector3d& residual, const Eigen::Matrix3d& information,
                              const Eigen::Matrix3d& covariance, const Eigen::Matrix3d& cofactor);

/// All but sigma, effect and leftOut.
AdjustedObservation statementsOn(const TestedResidual& tested, const TestSetting& setting);

}  // namespace tiepoint::workbench::analysis
