#include "solver/solve_tables.h"

#include <algorithm>

namespace ZOR::reg {

namespace {

/// Where a point belongs.
struct Cell {
  std::size_t group = 0;
  std::size_t common = 0;
  const RefPoint* point = nullptr;
};

bool isBefore(const Cell& a, const Cell& b) { return a.group != b.group ? a.group < b.group : a.common < b.common; }

bool isSameCell(const Cell& a, const Cell& b) { return a.group == b.group && a.common == b.common; }

void sortUnique(std::vector<std::uint64_t>& ids) {
  std::sort(ids.begin(), ids.end());
  ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
}

/// By group, then by name, points of one cell in list order.
std::vector<Cell> sortIntoCells(const RefPointList& points, const SolveTables& tables) {
  std::vector<Cell> cells;
  cells.reserve(points.size());
  for (const RefPoint& point : points) {
    const auto group = rowOf(tables.groupIndex, point.groupId);
    const auto common = rowOf(tables.commonIndex, point.commonId);
    if (group && common) cells.push_back({*group, *common, &point});
  }
  std::stable_sort(cells.begin(), cells.end(), isBefore);
  return cells;
}

using CellIterator = std::vector<Cell>::const_iterator;

/// The points of one cell: each overwrites what the one before it left.
void fillLine(CellIterator first, CellIterator last, GroupRows& group, Eigen::Index line) {
  for (auto cell = first; cell != last; ++cell) {
    const RefPoint& point = *cell->point;
    group.pointIds[static_cast<std::size_t>(line)] = point.id;
    if (!point.active) continue;
    group.positions.row(line) << point.position.x, point.position.y, point.position.z;
    group.weights[line] = point.weight;
  }
}

/// The cells of one group.
GroupRows layOutGroup(CellIterator first, CellIterator last) {
  GroupRows group;
  for (auto cell = first; cell != last; ++cell) {
    if (cell == first || !isSameCell(*std::prev(cell), *cell)) {
      group.rows.push_back(static_cast<Eigen::Index>(cell->common));
    }
  }
  const auto lines = static_cast<Eigen::Index>(group.rows.size());
  group.positions = PointMatrix::Zero(lines, 3);
  group.weights = Eigen::VectorXd::Zero(lines);
  group.pointIds.resize(group.rows.size());

  for (Eigen::Index line = 0; line < lines; ++line) {
    const auto next = std::find_if(first, last, [&](const Cell& cell) { return !isSameCell(*first, cell); });
    fillLine(first, next, group, line);
    first = next;
  }
  return group;
}

}  // namespace

std::optional<std::size_t> rowOf(const std::vector<std::uint64_t>& index, std::uint64_t id) {
  const auto found = std::lower_bound(index.begin(), index.end(), id);
  if (found == index.end() || *found != id) return std::nullopt;
  return static_cast<std::size_t>(found - index.begin());
}

SolveTables buildSolveTables(const RefPointList& points) {
  std::vector<GroupId> groupIndex;
  std::vector<CommonPointId> commonIndex;
  for (const RefPoint& point : points) {
    groupIndex.push_back(point.groupId);
    commonIndex.push_back(point.commonId);
  }
  sortUnique(groupIndex);
  sortUnique(commonIndex);
  return buildSolveTables(points, std::move(groupIndex), std::move(commonIndex));
}

SolveTables buildSolveTables(const RefPointList& points, std::vector<GroupId> groupIndex,
                             std::vector<CommonPointId> commonIndex) {
  SolveTables tables;
  tables.groupIndex = std::move(groupIndex);
  tables.commonIndex = std::move(commonIndex);
  const std::vector<Cell> cells = sortIntoCells(points, tables);

  auto first = cells.begin();
  for (std::size_t group = 0; group < tables.groupIndex.size(); ++group) {
    const auto last = std::find_if(first, cells.end(), [&](const Cell& cell) { return cell.group != group; });
    tables.groups.push_back(layOutGroup(first, last));
    first = last;
  }
  return tables;
}

}  // namespace ZOR::reg
