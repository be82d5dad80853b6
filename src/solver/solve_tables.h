// The working list laid out by group and by common name.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "records/tables.h"
#include "solver/rigid_fit.h"

namespace ZOR::reg {

/// What one group has: line i holds its point of the name in row `rows[i]` of the common index.
/// Names that the group doesn't have take no room; their position counts as zero, their weight as
/// 0.0. Where the group has two points of one name, the last in list order stands.
struct GroupRows {
  /// Ascending.
  std::vector<Eigen::Index> rows;
  PointMatrix positions;
  Eigen::VectorXd weights;
  std::vector<RefPointId> pointIds;
};

/// The tables of one solve, as they stand before anything is moved.
struct SolveTables {
  /// Ascending; a group's place is its row.
  std::vector<GroupId> groupIndex;
  /// Ascending; a name's place is its row.
  std::vector<CommonPointId> commonIndex;
  /// In the order of groupIndex.
  std::vector<GroupRows> groups;

  Eigen::Index commonRows() const { return static_cast<Eigen::Index>(commonIndex.size()); }
};

/// The row of `id` in an ascending index, or nothing.
std::optional<std::size_t> rowOf(const std::vector<std::uint64_t>& index, std::uint64_t id);

/// Tables over all groups and all names of `points`. Points that aren't active have their id in
/// the tables and no position or weight.
SolveTables buildSolveTables(const RefPointList& points);

/// Tables over the given groups and names, both ascending; points outside them are passed over.
SolveTables buildSolveTables(const RefPointList& points, std::vector<GroupId> groupIndex,
                             std::vector<CommonPointId> commonIndex);

}  // namespace ZOR::reg
