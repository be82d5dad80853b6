#include "workbench/analysis/dense_certificate.h"

#include <algorithm>
#include <cmath>

namespace tiepoint::workbench::analysis::testing {

namespace {

using Eigen::MatrixXd;
using Eigen::Vector3d;
using Index = Eigen::Index;

class Plain {
 public:
  Plain(const Network& network_, const Adjustment& adjustment_) : network(network_), adjustment(adjustment_) {
    countColumns();
    for (const auto& target : adjustment.targets)
      middle += target->position / static_cast<double>(network.targets.size());
  }

  DenseCertificate run() {
    const MatrixXd rotations = allRotations();
    const MatrixXd m = eliminated(wholeForm());
    DenseCertificate result;
    result.columns = static_cast<std::size_t>(columns);
    result.sumOfSquares = (rotations.transpose() * m * rotations).trace();
    const MatrixXd l = multiplier(m, rotations);
    result.stationarity = (l * rotations - m * rotations).norm() / m.norm();
    const MatrixXd s = m - l;
    const MatrixXd whole =
        Eigen::HouseholderQR<MatrixXd>(rotations).householderQ() * MatrixXd::Identity(columns, columns);
    const MatrixXd complement = whole.rightCols(columns - 3);
    const double raw =
        Eigen::SelfAdjointEigenSolver<MatrixXd>(complement.transpose() * s * complement).eigenvalues()(0);
    result.eigenvalue = raw / (m.trace() / static_cast<double>(columns));
    result.trace = m.trace();
    result.gap = std::max(0.0, -raw) * static_cast<double>(columns);
    return result;
  }

 private:
  /// Body 0 is all that is held, whether or not there is such.
  int bodyOf(std::size_t station) const { return network.stations[station].held ? 0 : static_cast<int>(station) + 1; }
  bool isLevel(int body) const { return body == 0 || network.stations[static_cast<std::size_t>(body) - 1].levelled; }

  void countColumns() {
    const int bodies = static_cast<int>(network.stations.size()) + 1;
    bool anyLevel = false, anyHeld = false;
    for (const Station& station : network.stations) {
      anyLevel = anyLevel || (station.levelled && !station.held);
      anyHeld = anyHeld || station.held;
    }
    for (const Target& target : network.targets) anyHeld = anyHeld || target.control;
    place.assign(static_cast<std::size_t>(bodies), {-1, -1, -1});
    if (anyLevel) vertical = columns++;
    for (int body = 0; body < bodies; ++body) {
      const bool exists = body == 0 ? anyHeld : !network.stations[static_cast<std::size_t>(body) - 1].held;
      if (!exists) continue;
      auto& own = place[static_cast<std::size_t>(body)];
      for (int c = 0; c < 3; ++c)
        own[static_cast<std::size_t>(c)] = c == 2 && anyLevel && isLevel(body) ? vertical : columns++;
    }
  }

  Eigen::Matrix3d rotationOf(int body) const {
    return body == 0 ? Eigen::Matrix3d::Identity() : adjustment.poses[static_cast<std::size_t>(body) - 1]->rotation;
  }

  MatrixXd allRotations() const {
    MatrixXd rows = MatrixXd::Zero(columns, 3);
    for (std::size_t b = 0; b < place.size(); ++b) {
      if (place[b][0] < 0) continue;
      for (int c = 0; c < 3; ++c)
        rows.row(place[b][static_cast<std::size_t>(c)]) = rotationOf(static_cast<int>(b)).col(c);
    }
    return rows;
  }

  /// A point of a body: its coordinates in the columns of rotations, one in the body's shift.
  Eigen::VectorXd row(int body, const Vector3d& point) const {
    Eigen::VectorXd coefficients = Eigen::VectorXd::Zero(size());
    for (int c = 0; c < 3; ++c)
      coefficients(place[static_cast<std::size_t>(body)][static_cast<std::size_t>(c)]) = point(c);
    coefficients(columns + body) = 1.0;
    return coefficients;
  }

  Index size() const { return columns + static_cast<Index>(place.size() + network.targets.size()); }

  MatrixXd wholeForm() const {
    MatrixXd form = MatrixXd::Zero(size(), size());
    for (std::size_t t = 0; t < network.targets.size(); ++t) {
      const auto& control = network.targets[t].control;
      const Index column = columns + static_cast<Index>(place.size() + t);
      const Eigen::VectorXd target = control && !control->covariance
                                         ? row(0, control->place - middle)
                                         : Eigen::VectorXd(Eigen::VectorXd::Unit(size(), column));
      for (const Observation& seen : network.observations) {
        if (seen.target != t) continue;
        // The shifts are free, so that every body may count from anywhere, but all points of it from there.
        const Vector3d local = seen.place - (network.stations[seen.station].held ? middle : meanOf(seen.station));
        const Eigen::VectorXd r = row(bodyOf(seen.station), local) - target;
        form += seen.weight / (seen.sigma * seen.sigma) * r * r.transpose();
      }
      if (!control || !control->covariance) continue;
      const Eigen::VectorXd r = row(0, control->place - middle) - target;
      form += r * r.transpose() / (*control->covariance)(0, 0);
    }
    return form;
  }

  Vector3d meanOf(std::size_t station) const {
    Vector3d sum = Vector3d::Zero();
    double count = 0.0;
    for (const Observation& seen : network.observations) {
      if (seen.station != station) continue;
      sum += seen.place;
      count += 1.0;
    }
    return sum / count;
  }

  MatrixXd eliminated(const MatrixXd& form) const {
    const Index rest = form.rows() - columns;
    const MatrixXd inverse = form.bottomRightCorner(rest, rest).completeOrthogonalDecomposition().pseudoInverse();
    return form.topLeftCorner(columns, columns) -
           form.topRightCorner(columns, rest) * inverse * form.bottomLeftCorner(rest, columns);
  }

  /// Within each body's columns, from the rows of M Z'; the vertical's own element by its row of all.
  MatrixXd multiplier(const MatrixXd& m, const MatrixXd& rotations) const {
    const MatrixXd product = m * rotations;
    MatrixXd l = MatrixXd::Zero(columns, columns);
    for (std::size_t b = 0; b < place.size(); ++b) {
      if (place[b][0] < 0) continue;
      for (const int r : place[b]) {
        if (r == vertical) continue;
        for (int c = 0; c < 3; ++c) {
          const int column = place[b][static_cast<std::size_t>(c)];
          l(r, column) = product.row(r).dot(rotationOf(static_cast<int>(b)).col(c));
          if (column == vertical) l(column, r) = l(r, column);
        }
      }
    }
    if (vertical >= 0) l(vertical, vertical) = product(vertical, 2);
    return 0.5 * (l + l.transpose());
  }

  const Network& network;
  const Adjustment& adjustment;
  std::vector<std::array<int, 3>> place;
  int columns = 0, vertical = -2;
  Vector3d middle = Vector3d::Zero();
};

}  // namespace

DenseCertificate denseCertificate(const Network& network, const Adjustment& adjustment) {
  return Plain(network, adjustment).run();
}

}  // namespace tiepoint::workbench::analysis::testing
