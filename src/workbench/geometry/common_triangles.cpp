#include "workbench/geometry/common_triangles.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

/// Cells are wider than the tolerance by more than the division into cells rounds off.
constexpr double cellWidth = 1.00001;
/// Beyond so many cells rounding would put triangles into the wrong ones.
constexpr double maxCells = 2147483648.0;
/// So many comparisons for each triangle: more are made where triangles crowd.
constexpr std::size_t maxComparisons = 256;

struct Entry {
  /// Of the longest side; of the middle one.
  std::int64_t row = 0;
  std::int64_t column = 0;
  std::array<double, 3> sides{};
  GroupId group = 0;
};

bool isBefore(const Entry& a, std::int64_t row, std::int64_t column) {
  return a.row != row ? a.row < row : a.column < column;
}

/// Ascending by their cells; empty when there are too many cells.
std::vector<Entry> entriesOf(const Stations& stations, double tolerance) {
  const double width = cellWidth * tolerance;
  std::vector<Entry> entries;
  for (const auto& [group, station] : stations) {
    for (const Triangle& triangle : station.shape.triangles) {
      if (!(triangle.sides[2] / width < maxCells)) return {};
      const auto cell = [&](std::size_t side) {
        return static_cast<std::int64_t>(std::floor(triangle.sides[side] / width));
      };
      entries.push_back({cell(2), cell(1), triangle.sides, group});
    }
  }
  std::sort(entries.begin(), entries.end(),
            [](const Entry& a, const Entry& b) { return isBefore(a, b.row, b.column); });
  return entries;
}

bool areEqual(const Entry& a, const Entry& b, double tolerance) {
  return std::abs(a.sides[0] - b.sides[0]) <= tolerance && std::abs(a.sides[1] - b.sides[1]) <= tolerance &&
         std::abs(a.sides[2] - b.sides[2]) <= tolerance;
}

}  // namespace

CommonTriangles::CommonTriangles(const Stations& stations, double tolerance) {
  const std::vector<Entry> entries = entriesOf(stations, tolerance);
  std::size_t comparisons = 0;
  const auto compare = [&](const Entry& a, const Entry& b) {
    ++comparisons;
    if (a.group != b.group && areEqual(a, b, tolerance)) pairs.insert(std::minmax(a.group, b.group));
  };
  // The neighbours behind an entry: its own cell and the next one of the row, and three of the next row.
  auto below = entries.begin();
  for (auto a = entries.begin(); a != entries.end(); ++a) {
    for (auto b = std::next(a); b != entries.end() && b->row == a->row && b->column <= a->column + 1; ++b) {
      compare(*a, *b);
    }
    while (below != entries.end() && isBefore(*below, a->row + 1, a->column - 1)) ++below;
    for (auto b = below; b != entries.end() && b->row == a->row + 1 && b->column <= a->column + 1; ++b) {
      compare(*a, *b);
    }
    if (comparisons <= maxComparisons * entries.size()) continue;
    isComplete = false;
    return;
  }
  isComplete = !entries.empty();
}

bool CommonTriangles::mayBeBetween(GroupId one, GroupId other) const {
  return !isComplete || pairs.count(std::minmax(one, other)) != 0;
}

}  // namespace tiepoint::workbench
