#include "workbench/analysis/certificate.h"

#include <Eigen/Dense>
#include <algorithm>

#include "workbench/analysis/lanczos.h"
#include "workbench/analysis/sparse_factor.h"
#include "workbench/analysis/sparse_inverse.h"

namespace tiepoint::workbench::analysis {

namespace {

/// Of the mean of M's diagonal: smaller than any eigenvalue that means something, far above rounding.
constexpr double tolerance = 1e-9;
/// From one shift to the next, until the shifted matrix is definite.
constexpr double shiftGrowth = 30.0;
constexpr double largestShift = 1e6;
/// Of M's largest element: the inverse of M plus that much tells M's diagonal to one over this number, and
/// rounding takes as little.
constexpr double heavy = 1e6;

/// The complement of the columns of Z'.
class Complement {
 public:
  explicit Complement(const Eigen::MatrixXd& columns)
      : basis(Eigen::HouseholderQR<Eigen::MatrixXd>(columns).householderQ() *
              Eigen::MatrixXd::Identity(columns.rows(), columns.cols())) {}

  Eigen::VectorXd project(const Eigen::VectorXd& vector) const { return vector - basis * (basis.transpose() * vector); }

 private:
  Eigen::MatrixXd basis;
};

/// The inverse of S plus a multiple of the identity, by the factor of the matrix with the shifts.
double smallestEigenvalue(const RotationForm& form, const SparseFactor& factor, const Complement& complement,
                          double shift) {
  const auto columns = static_cast<Eigen::Index>(form.columns());
  const Eigenpair pair = largestEigenpair(columns, [&](const Eigen::VectorXd& v) -> Eigen::VectorXd {
    const Eigen::VectorXd whole = factor.solve(form.embedded(complement.project(v))).col(0);
    return complement.project(form.rotationPart(whole));
  });
  // Where Z' fills the whole space there is nothing that could be negative.
  return pair.value > 0.0 ? 1.0 / pair.value - shift : 0.0;
}

}  // namespace

double traceOfRotations(const RotationForm& form) {
  BlockMatrix shifted = form.matrix();
  const double weight = heavy * shifted.diagonal().cwiseAbs().maxCoeff();
  shifted.addDiagonal(form.onRotations(weight));
  SparseFactor factor(shifted);
  if (!factor.factorize(shifted)) return 0.0;
  const SparseInverse inverse(shifted, factor);
  Eigen::VectorXd diagonal(shifted.size());
  for (int node = 0; node < shifted.nodes(); ++node) {
    diagonal.segment(shifted.offset(node), shifted.width(node)) = inverse.block(node, node).diagonal();
  }
  return (form.rotationPart(diagonal).cwiseInverse().array() - weight).sum();
}

Certificate certify(const RotationForm& form, const Placements& placements, const Elimination& elimination) {
  Certificate certificate;
  certificate.columns = form.columns();
  const double mean = traceOfRotations(form) / static_cast<double>(form.columns());
  BlockMatrix stationary = form.matrix();
  form.subtractMultiplier(placements, elimination, stationary);
  SparseFactor factor(stationary);
  double shift = tolerance;
  for (; shift < largestShift; shift *= shiftGrowth) {
    BlockMatrix shifted = stationary;
    shifted.addDiagonal(form.onRotations(shift * mean));
    if (factor.factorize(shifted) && factor.negativePivots() == 0) break;
  }
  certificate.certified = shift == tolerance;
  const Complement complement(form.rotationsOf(placements));
  certificate.eigenvalue = smallestEigenvalue(form, factor, complement, shift * mean) / mean;
  if (certificate.certified) certificate.eigenvalue = std::max(certificate.eigenvalue, -tolerance);
  // In very long chains the poses' rounding turns Z' a little out of the null space, and the sign is that of Z'
  // itself; the number is of the complement alone.
  if (shift <= tolerance * shiftGrowth && certificate.eigenvalue > 0.0) certificate.certified = true;
  certificate.unique = certificate.eigenvalue > tolerance;
  const double trace = mean * static_cast<double>(form.columns()) * form.unit() * form.unit();
  certificate.gap = std::max(0.0, -certificate.eigenvalue) * trace;
  certificate.lowerBound = std::max(0.0, elimination.sumOfSquares - certificate.gap);
  return certificate;
}

}  // namespace tiepoint::workbench::analysis
