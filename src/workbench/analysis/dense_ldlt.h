// The first columns of the factor L D L' of a dense symmetric matrix.
#pragma once

#include <Eigen/Core>

namespace tiepoint::workbench::analysis {

/// Of the lower half of `front`: its first `columns` columns become those of L, with D on the diagonal, and
/// what stands beside and below them becomes the Schur complement. Without pivoting; the upper half is not
/// read, and what it holds afterwards is of no use.
void factorizeColumns(Eigen::MatrixXd& front, Eigen::Index columns);

}  // namespace tiepoint::workbench::analysis
