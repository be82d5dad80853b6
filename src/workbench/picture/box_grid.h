// Many small boxes, found by where they lie.
#pragma once

#include <cstddef>
#include <vector>

#include "workbench/picture/box.h"

namespace tiepoint::workbench::picture {

/// A grid over one area: a question about a small box looks at the few cells that it touches. Boxes
/// beyond the area are kept in the cells at its rim.
class BoxGrid {
 public:
  explicit BoxGrid(const Box& area);

  void add(const Box& box);
  /// How many of the boxes overlap this one.
  std::size_t overlapping(const Box& box) const;

 private:
  struct Cells {
    std::size_t firstColumn, lastColumn, firstRow, lastRow;
  };
  Cells cellsOf(const Box& box) const;

  Box area;
  std::size_t columns;
  std::size_t rows;
  std::vector<std::vector<Box>> cells;
};

}  // namespace tiepoint::workbench::picture
