#include "workbench/analysis/reliability.h"

#include <Eigen/Dense>
#include <cmath>

#include "workbench/analysis/levels.h"

namespace tiepoint::workbench::analysis {

namespace {

/// Of a measurement's redundancy: below it no other measurement sees an error of this one.
constexpr double leastControl = 1e-9;

Eigen::Vector3d axisStrengths(const TestedResidual& tested) { return tested.reliability.diagonal(); }

void testAxes(const TestedResidual& tested, const TestSetting& setting, AdjustedObservation& statements) {
  if (!(tested.redundancy.minCoeff() >= leastControl) || setting.redundancy == 0) return;
  const Eigen::Array3d roots = axisStrengths(tested).array().sqrt();
  statements.detectablePerAxis = setting.unit * std::sqrt(setting.levels.noncentralityAxis) / roots;
  if (setting.unit > 0.0) {
    const Eigen::Array3d pulls = (tested.information * tested.residual).array();
    statements.w = pulls / roots / setting.unit;
  }
}

void testPoint(const TestedResidual& tested, const TestSetting& setting, AdjustedObservation& statements) {
  if (!(setting.unit > 0.0)) return;
  const Eigen::Vector3d pull = tested.information * tested.residual;
  statements.statistic = pull.dot(tested.hiddenError()) / (setting.unit * setting.unit);
  statements.p = probabilityOf(*statements.statistic, setting.scale, setting.redundancy);
  if (setting.levels.criticalPoint) statements.rejected = *statements.statistic > *setting.levels.criticalPoint;
}

}  // namespace

bool TestedResidual::isControlled() const { return leastRedundancy >= leastControl; }

Eigen::Vector3d TestedResidual::hiddenError() const {
  const Eigen::Vector3d along = directions.transpose() * (information * residual);
  return directions * along.cwiseQuotient(strengths);
}

Eigen::Matrix3d TestedResidual::hiddenPull() const {
  return information * directions * strengths.cwiseSqrt().cwiseInverse().asDiagonal() * directions.transpose();
}

TestedResidual testedResidual(const Eigen::Vector3d& residual, const Eigen::Matrix3d& information,
                              const Eigen::Matrix3d& covariance, const Eigen::Matrix3d& cofactor) {
  TestedResidual tested;
  tested.residual = residual;
  tested.information = information;
  tested.covariance = covariance;
  const Eigen::Matrix3d reliability = information * (covariance - cofactor) * information;
  tested.reliability = 0.5 * (reliability + reliability.transpose());
  const Eigen::SelfAdjointEigenSolver<Eigen::Matrix3d> eigen(tested.reliability);
  tested.directions = eigen.eigenvectors();
  tested.strengths = eigen.eigenvalues();
  tested.redundancy = (covariance * tested.reliability).diagonal();
  const Eigen::Matrix3d root = covariance.llt().matrixL();
  const Eigen::Matrix3d unitFree = root.transpose() * tested.reliability * root;
  tested.leastRedundancy =
      Eigen::SelfAdjointEigenSolver<Eigen::Matrix3d>(unitFree, Eigen::EigenvaluesOnly).eigenvalues()(0);
  return tested;
}

AdjustedObservation statementsOn(const TestedResidual& tested, const TestSetting& setting) {
  AdjustedObservation statements;
  statements.residual = tested.residual;
  statements.redundancy = tested.redundancy;
  statements.leastRedundancy = tested.leastRedundancy;
  testAxes(tested, setting, statements);
  if (!tested.isControlled() || setting.redundancy == 0) return statements;
  testPoint(tested, setting, statements);
  const double noncentrality = setting.levels.noncentralityPoint;
  statements.detectable = setting.unit * std::sqrt(noncentrality / tested.strengths(0));
  statements.biasToNoise = std::sqrt(noncentrality * std::max(0.0, 1.0 / tested.leastRedundancy - 1.0));
  return statements;
}

}  // namespace tiepoint::workbench::analysis
