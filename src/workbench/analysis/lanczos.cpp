#include "workbench/analysis/lanczos.h"

#include <Eigen/Eigenvalues>
#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

namespace tiepoint::workbench::analysis {

namespace {

constexpr Eigen::Index maxSteps = 120;
constexpr int maxRestarts = 8;
/// Of the residual, as a share of the eigenvalue, whose error is of second order in it.
constexpr double residualTolerance = 1e-9;
/// What is left of a vector after orthogonalisation is rounding.
constexpr double vanishes = 1e-14;
constexpr Eigen::Index stepsBetweenChecks = 5;

struct Ritz {
  Eigenpair pair;
  bool converged = false;
};

class Lanczos {
 public:
  Lanczos(const Eigen::VectorXd& start, const LinearOperator& apply_) : apply(apply_) {
    basis.push_back(start.normalized());
  }

  Ritz run(Eigen::Index steps) {
    for (Eigen::Index k = 0; k < steps; ++k) {
      const double next = extend();
      const bool isExhausted = next <= vanishes * std::abs(diagonal.front()) || k + 1 == steps;
      if (!isExhausted && (k + 1) % stepsBetweenChecks != 0) continue;
      const Ritz ritz = largest(next);
      if (ritz.converged || isExhausted) return ritz;
    }
    return {};
  }

 private:
  /// Returns the length of the next vector before it is normalised.
  double extend() {
    Eigen::VectorXd next = apply(basis.back());
    diagonal.push_back(basis.back().dot(next));
    // Twice is enough to be orthogonal to rounding.
    for (int pass = 0; pass < 2; ++pass) {
      for (const Eigen::VectorXd& known : basis) next -= known.dot(next) * known;
    }
    const double length = next.norm();
    beside.push_back(length);
    if (length > 0.0) basis.push_back(next / length);
    return length;
  }

  Ritz largest(double next) const {
    const auto count = static_cast<Eigen::Index>(diagonal.size());
    Eigen::SelfAdjointEigenSolver<Eigen::MatrixXd> eigen;
    eigen.computeFromTridiagonal(Eigen::Map<const Eigen::VectorXd>(diagonal.data(), count),
                                 Eigen::Map<const Eigen::VectorXd>(beside.data(), count - 1));
    Ritz ritz;
    ritz.pair.value = eigen.eigenvalues()(count - 1);
    const Eigen::VectorXd weights = eigen.eigenvectors().col(count - 1);
    ritz.pair.vector = Eigen::VectorXd::Zero(basis.front().size());
    for (Eigen::Index k = 0; k < count; ++k) ritz.pair.vector += weights(k) * basis[static_cast<std::size_t>(k)];
    ritz.pair.vector.normalize();
    ritz.converged = std::abs(next * weights(count - 1)) <= residualTolerance * std::abs(ritz.pair.value);
    return ritz;
  }

  const LinearOperator& apply;
  std::vector<Eigen::VectorXd> basis;
  std::vector<double> diagonal, beside;
};

}  // namespace

Eigen::VectorXd fixedVector(Eigen::Index size) {
  std::mt19937_64 random(20);
  Eigen::VectorXd vector(size);
  constexpr double half = 4503599627370496.0;
  for (Eigen::Index k = 0; k < size; ++k) vector(k) = static_cast<double>(random() >> 11) / half - 1.0;
  return vector;
}

Eigenpair largestEigenpair(Eigen::Index size, const LinearOperator& apply) {
  Eigen::VectorXd start = apply(fixedVector(size));
  Ritz ritz;
  for (int restart = 0; restart <= maxRestarts && start.norm() > 0.0; ++restart) {
    ritz = Lanczos(start, apply).run(std::min(maxSteps, size));
    if (ritz.converged) break;
    start = ritz.pair.vector;
  }
  return ritz.pair;
}

}  // namespace tiepoint::workbench::analysis
