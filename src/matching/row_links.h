// Which rows are connected by links between close rows.
#pragma once

#include <cstdint>
#include <vector>

#include "matching/row_table.h"

namespace ZOR::reg {

/// The rows a and b are connected.
struct RowLink {
  std::uint64_t a = 0;
  std::uint64_t b = 0;
};

/// Joins exactly the rows that the links between all pairs would join, by fewer links than rows: one
/// from each row to the lowest row that it is connected with. Memory goes with the rows; time goes
/// with the rows and with the pairs within the threshold of one another in every column, or, where
/// rows crowd, with the rows and the depth of a tree. All pairs are never compared.
std::vector<RowLink> linkRows(const RowTable& rows, double threshold);

/// The same for links only between rows of different tags; `tags` has one entry a row.
std::vector<RowLink> linkRowsByTag(const RowTable& rows, const std::vector<std::uint64_t>& tags, double threshold);

}  // namespace ZOR::reg
