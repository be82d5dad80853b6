// How the columns of a sparse factor fall into dense blocks.
#pragma once

#include <vector>

#include "workbench/analysis/block_matrix.h"

namespace tiepoint::workbench::analysis {

/// Columns that follow one another and are filled in the same rows below them.
struct Supernode {
  /// First row, which is also the first column, and how many there are.
  int first = 0, width = 0;
  /// Rows below its own that the factor fills, ascending.
  std::vector<int> below;
  /// The supernode of the first row below; -1 at a root. All rows below are among its own and below it.
  int parent = -1;
  std::vector<int> children;

  int height() const { return width + static_cast<int>(below.size()); }
};

/// In the order of elimination, children before their parents.
std::vector<Supernode> supernodesOf(const BlockMatrix& matrix);

/// For each row its place among the rows of the supernode; of other rows the entry is left as it is.
void markRows(const Supernode& supernode, std::vector<int>& placeOfRow);

}  // namespace tiepoint::workbench::analysis
