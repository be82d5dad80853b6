// The certificate written down plainly: M with shifts and targets eliminated, L, and all eigenvalues.
#pragma once

#include <Eigen/Dense>

#include "workbench/values/adjustment_network.h"
#include "workbench/values/adjustment_result.h"

namespace tiepoint::workbench::analysis::testing {

struct DenseCertificate {
  double eigenvalue = 0.0;
  std::size_t columns = 0;
  double gap = 0.0;
  /// Of M.
  double trace = 0.0;
  /// tr(Z M Z'): the sum of squares.
  double sumOfSquares = 0.0;
  /// Of L Z' - M Z', as a share of M's size: shows that the multiplier exists.
  double stationarity = 0.0;
};

/// For poses at a minimum; control with round covariances only, and everything takes part.
DenseCertificate denseCertificate(const Network& network, const Adjustment& adjustment);

}  // namespace tiepoint::workbench::analysis::testing
