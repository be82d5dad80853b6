// How far registered points of one name stay apart.
#pragma once

#include <cstdint>
#include <vector>

#include "records/tables.h"

namespace ZOR::reg {

/// Replaces `distances` by every distance between two active registered points of one name that is
/// among the common points; ascending names, drawing units. False, with no distances, when no
/// group has a transformation.
bool collectSpreadDistances(const RefPointList& points, const GroupTransforms& groupTransforms,
                            const CommonPoints& commonPoints, std::vector<double>& distances);

/// The largest distance, cut to seven decimals; 0.0 without distances. Throws
/// boost::math::rounding_error when it isn't finite.
double maxSpread(const std::vector<double>& distances);

/// Ten bins of equal width from the smallest to the largest distance; all but the last are open at
/// the top. `binEdges` has one element more than `binCounts`, cut to six decimals. Fewer than three
/// distances leave both empty. Throws boost::math::rounding_error for an edge that isn't finite.
void spreadHistogram(const std::vector<double>& distances, std::vector<std::uint64_t>& binCounts,
                     std::vector<double>& binEdges);

}  // namespace ZOR::reg
