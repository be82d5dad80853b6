#include "workbench/analysis/spectral_start.h"

#include <Eigen/Dense>

#include "workbench/analysis/lanczos.h"
#include "workbench/analysis/own_start.h"
#include "workbench/analysis/sparse_factor.h"

namespace tiepoint::workbench::analysis {

namespace {

/// More than three, so that the next ones don't slow the first three down.
constexpr Eigen::Index vectors = 8;
constexpr int passes = 60;
/// Of the largest element: makes the matrix definite where the measurements have no error at all.
constexpr double shift = 1e-9;
/// Of the largest element: holds the rotations while the shifts follow them.
constexpr double heavy = 1e6;

Eigen::MatrixXd fixedColumns(Eigen::Index rows, Eigen::Index columns) {
  return Eigen::Map<const Eigen::MatrixXd>(fixedVector(rows * columns).data(), rows, columns);
}

class Softest {
 public:
  explicit Softest(const RotationForm& form_)
      : form(form_), largest(form.matrix().diagonal().cwiseAbs().maxCoeff()), factor(form.matrix()) {}

  /// The eigenvectors of the three smallest eigenvalues, as columns.
  Eigen::MatrixXd columns() {
    const auto rows = static_cast<Eigen::Index>(form.columns());
    Eigen::MatrixXd basis = fixedColumns(rows, std::min(vectors, rows));
    if (!weigh(shift)) return Eigen::MatrixXd::Identity(rows, 3);
    for (int pass = 0; pass < passes; ++pass) basis = orthonormal(applied(basis));
    const Eigen::MatrixXd small = basis.transpose() * applied(basis);
    const Eigen::SelfAdjointEigenSolver<Eigen::MatrixXd> eigen(0.5 * (small + small.transpose()));
    return basis * eigen.eigenvectors().rightCols(3);
  }

  /// All rows of the form for these rotations, each shift where it fits best.
  Eigen::MatrixXd withShifts(const Eigen::MatrixXd& ofRotations) {
    if (!weigh(heavy)) return Eigen::MatrixXd::Zero(form.matrix().size(), 3);
    Eigen::MatrixXd side(form.matrix().size(), 3);
    for (int c = 0; c < 3; ++c) side.col(c) = heavy * largest * form.embedded(ofRotations.col(c));
    return factor.solve(side);
  }

 private:
  bool weigh(double share) {
    BlockMatrix shifted = form.matrix();
    shifted.addDiagonal(form.onRotations(share * largest));
    return factor.factorize(shifted);
  }

  Eigen::MatrixXd applied(const Eigen::MatrixXd& basis) const {
    Eigen::MatrixXd result(basis.rows(), basis.cols());
    for (Eigen::Index c = 0; c < basis.cols(); ++c) {
      result.col(c) = form.rotationPart(factor.solve(form.embedded(basis.col(c))).col(0));
    }
    return result;
  }

  static Eigen::MatrixXd orthonormal(const Eigen::MatrixXd& basis) {
    return Eigen::HouseholderQR<Eigen::MatrixXd>(basis).householderQ() *
           Eigen::MatrixXd::Identity(basis.rows(), basis.cols());
  }

  const RotationForm& form;
  double largest;
  SparseFactor factor;
};

}  // namespace

Placements spectralStart(const Survey& survey, const RotationForm& form) {
  Softest softest(form);
  Eigen::MatrixXd rotations = softest.columns();
  // Eigenvectors are of unit length, columns of rotations as well: of all together the length of many.
  rotations *= std::sqrt(static_cast<double>(rotations.rows()) / 3.0);
  return onDatum(survey, form.placementsNear(softest.withShifts(rotations)));
}

}  // namespace tiepoint::workbench::analysis
