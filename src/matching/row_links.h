// Enough of the links between close rows to tell which rows hang together.
#pragma once

#include <cstdint>
#include <vector>

#include "matching/row_clusters.h"

namespace ZOR::reg {

struct RowLink {
  std::uint64_t a = 0;
  std::uint64_t b = 0;
};

/// Joins exactly the rows that the links between all pairs would join, with fewer links than rows:
/// one that ties what is tied already isn't kept. Time and memory go with the rows and the pairs
/// that lie within the threshold of one another in every column, not with all pairs.
std::vector<RowLink> linkRows(const RowTable& rows, double threshold);

/// The same, with links only between rows of different tags; `tags` has one entry a row.
std::vector<RowLink> linkRowsByTag(const RowTable& rows, const std::vector<std::uint64_t>& tags, double threshold);

}  // namespace ZOR::reg
