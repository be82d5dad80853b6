#include "workbench/picture/box_grid.h"

#include <cmath>

namespace tiepoint::workbench::picture {

namespace {

/// About the size of a label, so that a question touches few cells and each holds few boxes.
constexpr double cellSize = 24.0;

std::size_t cellsAlong(double length) { return static_cast<std::size_t>(std::max(1.0, std::ceil(length / cellSize))); }

std::size_t cellAt(double offset, std::size_t count) {
  const double cell = std::floor(offset / cellSize);
  return static_cast<std::size_t>(std::clamp(cell, 0.0, static_cast<double>(count - 1)));
}

}  // namespace

BoxGrid::BoxGrid(const Box& area_)
    : area(area_), columns(cellsAlong(area_.width())), rows(cellsAlong(area_.height())), cells(columns * rows) {}

BoxGrid::Cells BoxGrid::cellsOf(const Box& box) const {
  return {cellAt(box.left - area.left, columns), cellAt(box.right - area.left, columns),
          cellAt(box.top - area.top, rows), cellAt(box.bottom - area.top, rows)};
}

void BoxGrid::add(const Box& box) {
  const Cells touched = cellsOf(box);
  for (std::size_t row = touched.firstRow; row <= touched.lastRow; ++row) {
    for (std::size_t column = touched.firstColumn; column <= touched.lastColumn; ++column) {
      cells[row * columns + column].push_back(box);
    }
  }
}

std::size_t BoxGrid::overlapping(const Box& box) const {
  const Cells touched = cellsOf(box);
  std::size_t count = 0;
  for (std::size_t row = touched.firstRow; row <= touched.lastRow; ++row) {
    for (std::size_t column = touched.firstColumn; column <= touched.lastColumn; ++column) {
      for (const Box& other : cells[row * columns + column]) {
        if (!overlap(box, other)) continue;
        // One that lies in several cells counts in the first that both share.
        const Cells its = cellsOf(other);
        const bool isFirst =
            row == std::max(touched.firstRow, its.firstRow) && column == std::max(touched.firstColumn, its.firstColumn);
        count += isFirst ? 1 : 0;
      }
    }
  }
  return count;
}

}  // namespace tiepoint::workbench::picture
