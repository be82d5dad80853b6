// How far registered points of one name stay apart, as the session tells it.
#pragma once

#include <boost/math/policies/error_handling.hpp>
#include <cstdint>
#include <optional>
#include <vector>

namespace tiepoint::workbench {

/// Over the distances between any two points in use of one name, both in the common system. Points
/// of a base don't count: it has no transformation. Lengths in drawing units.
struct PointSpread {
  /// Cut to seven decimals, 0 without distances; nothing where a distance is no finite number.
  std::optional<double> largest;
  /// Ten bins of equal width, and their eleven edges, cut to six decimals; each bin but the last is
  /// open at the top. Both are empty for fewer than three distances.
  std::vector<std::uint64_t> counts;
  std::vector<double> edges;
};

/// Of the last solve. `session` has the operations of iMultiRegistrator; they raise an error for a
/// distance that is no finite number.
template <class Session>
PointSpread pointSpreadOf(Session& session) {
  try {
    PointSpread spread;
    spread.largest = session.getMaxPointSpread();
    if (!session.getPointSpreadHistogram(spread.counts, spread.edges)) return {spread.largest, {}, {}};
    return spread;
  } catch (const boost::math::rounding_error&) {
    return {};
  }
}

}  // namespace tiepoint::workbench
