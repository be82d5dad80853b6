// Rows sorted into columns of cells, so that close rows are found side by side.
#pragma once

#include <boost/sort/spreadsort/integer_sort.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "matching/row_table.h"

namespace ZOR::reg {

struct PlacedRow {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  std::uint64_t row = 0;
  std::uint64_t tag = 0;
};

inline bool coincide(const PlacedRow& a, const PlacedRow& b) { return a.x == b.x && a.y == b.y && a.z == b.z; }

/// By height, and so that the rows that coincide follow one another, those of one tag together.
inline bool isBelow(const PlacedRow& a, const PlacedRow& b) {
  if (a.z != b.z) return a.z < b.z;
  if (a.x != b.x) return a.x < b.x;
  if (a.y != b.y) return a.y < b.y;
  return a.tag < b.tag;
}

/// Cells in x and y, so wide that rows within reach lie in the same or in neighbouring cells.
class CellGrid {
 public:
  /// Neighbours in x are this much apart in key(), neighbours in y one.
  static constexpr std::uint64_t stepInX = std::uint64_t{1} << 32;

  CellGrid(const std::vector<PlacedRow>& rows, double reach) {
    std::vector<double> values(rows.size());
    std::transform(rows.begin(), rows.end(), values.begin(), [](const PlacedRow& row) { return row.x; });
    alongX = axisOver(values, reach);
    std::transform(rows.begin(), rows.end(), values.begin(), [](const PlacedRow& row) { return row.y; });
    alongY = axisOver(values, reach);
  }

  std::uint64_t key(const PlacedRow& row) const { return cellOf(row.x, alongX) * stepInX + cellOf(row.y, alongY); }

 private:
  /// In halves, because the range of two finite numbers may be beyond all numbers.
  struct Axis {
    double halfLowest = 0.0;
    double halfSide = 1.0;
  };

  static Axis axisOver(const std::vector<double>& values, double reach) {
    // The rounding of an index in units of cells is at most some 1e-7 with so many cells; the margin
    // over the reach takes up ten times as much.
    constexpr double maxCells = 268435456.0;
    constexpr double margin = 1.0 + 1e-6;
    const auto [lowest, highest] = std::minmax_element(values.begin(), values.end());
    if (lowest == values.end()) return {};
    const double halfRange = *highest / 2 - *lowest / 2;
    return {*lowest / 2, std::max(reach / 2 * margin, halfRange / maxCells)};
  }

  /// From one, so that every cell has a lower neighbour.
  static std::uint64_t cellOf(double value, const Axis& axis) {
    return 1 + static_cast<std::uint64_t>((value / 2 - axis.halfLowest) / axis.halfSide);
  }

  Axis alongX;
  Axis alongY;
};

/// The rows [begin, end) lie over one cell, from the lowest to the highest.
struct RowColumn {
  std::uint64_t key = 0;
  std::size_t begin = 0;
  std::size_t end = 0;
};

/// A row that coincides with another, which stands for it.
struct TwinRow {
  PlacedRow row;
  std::size_t original = 0;
};

/// Finite rows by column. Of rows that coincide at most two, of different tags, stand in the columns:
/// whatever is close to the others is close to one of these.
struct RowColumns {
  std::vector<PlacedRow> rows;
  std::vector<RowColumn> columns;
  std::vector<TwinRow> twins;
};

namespace row_columns_detail {

struct KeyedIndex {
  std::uint64_t key = 0;
  std::size_t index = 0;
};

inline std::vector<KeyedIndex> indicesByKey(const std::vector<PlacedRow>& rows, const CellGrid& grid) {
  std::vector<KeyedIndex> indices;
  indices.reserve(rows.size());
  for (const PlacedRow& row : rows) indices.push_back({grid.key(row), indices.size()});
  boost::sort::spreadsort::integer_sort(
      indices.begin(), indices.end(), [](const KeyedIndex& index, unsigned offset) { return index.key >> offset; },
      [](const KeyedIndex& a, const KeyedIndex& b) { return a.key < b.key; });
  return indices;
}

/// `sorted` are the rows of one column by isBelow().
inline void appendColumn(const std::vector<PlacedRow>& sorted, std::uint64_t key, RowColumns& result) {
  const std::size_t begin = result.rows.size();
  std::size_t original = begin;
  for (const PlacedRow& row : sorted) {
    const bool coincides = result.rows.size() > begin && coincide(result.rows[original], row);
    if (!coincides) {
      original = result.rows.size();
      result.rows.push_back(row);
    } else if (result.rows.size() == original + 1 && result.rows[original].tag != row.tag) {
      result.rows.push_back(row);
    } else {
      result.twins.push_back({row, original});
    }
  }
  result.columns.push_back({key, begin, result.rows.size()});
}

}  // namespace row_columns_detail

inline RowColumns sortIntoColumns(const std::vector<PlacedRow>& rows, double reach) {
  const auto indices = row_columns_detail::indicesByKey(rows, CellGrid(rows, reach));
  RowColumns result;
  result.rows.reserve(rows.size());
  std::vector<PlacedRow> column;
  for (auto first = indices.begin(); first != indices.end();) {
    const std::uint64_t key = first->key;
    column.clear();
    for (; first != indices.end() && first->key == key; ++first) column.push_back(rows[first->index]);
    std::sort(column.begin(), column.end(), isBelow);
    row_columns_detail::appendColumn(column, key, result);
  }
  return result;
}

}  // namespace ZOR::reg
