// Which rows of three numbers lie so close together that they are one thing.
#pragma once

#include <cstdint>
#include <vector>

#include "matching/row_table.h"

namespace ZOR::reg {

/// The row numbers of each cluster.
using RowClusters = std::vector<std::vector<std::uint64_t>>;

/// Replaces `clusters` by the sets of at least two rows that are connected by links, in ascending
/// order of their lowest row, the rows of each ascending. Two rows are linked unless their distance
/// is at least `threshold`; a distance that is not a number therefore links.
void clusterRows(const RowTable& rows, double threshold, RowClusters& clusters);

/// The same, but only rows of different tags are linked; `tags` has one entry a row. A chain of
/// links may still bring two rows of one tag into one cluster.
void clusterRowsByTag(const RowTable& rows, const std::vector<std::uint64_t>& tags, double threshold,
                      RowClusters& clusters);

}  // namespace ZOR::reg
