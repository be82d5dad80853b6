// Rows of three numbers.
#pragma once

#include <Eigen/Core>

namespace ZOR::reg {

/// One row of three numbers for each candidate; the row number is its identity.
using RowTable = Eigen::Matrix<double, Eigen::Dynamic, 3>;

}  // namespace ZOR::reg
