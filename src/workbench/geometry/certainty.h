// How sure it is that a station lies where its names put it.
#pragma once

#include <functional>

#include "workbench/geometry/target_field.h"

namespace tiepoint::workbench {

enum class Certainty {
  certain,
  /// Another way of laying the station explains as many of its points.
  rivalled,
  /// Three points alone fit, and chance may do that.
  maybeChance,
  /// The named points don't hold the station: they lie nearly on a line.
  loose
};

/// Whether a placement may be true as far as anything but the shapes can say.
using PlacementTest = std::function<bool(const Placement&)>;

/// `own` is where the names put the station's points; the measurements of one target may lie up to
/// `reach` apart. `tries` says how many placements of this kind had a chance. Only another way that
/// `isPossible` is a rival.
Certainty certaintyOf(const TargetField& field, const StationShape& station, const Placement& own, double reach,
                      double tries, const PlacementTest& isPossible);

/// Ways of laying a station onto the field that explain the same number of its points, `atLeast` or
/// more; the number, or 0 when one way explains the most.
std::size_t pointsOfSeveralWays(const TargetField& field, const StationShape& station, double reach,
                                std::size_t atLeast);

/// How many triangles of the station fit a triangle of the field by chance as well as the three
/// points of `own` do. Estimated from those that fit within a bound so wide that it holds enough of
/// them: they fall with the cube of the distance, since three sides must agree. Where even the widest
/// holds too few, more can't be expected than if it held enough.
double expectedByChance(const TargetField& field, const StationShape& station, const Placement& own, double reach);

}  // namespace tiepoint::workbench
