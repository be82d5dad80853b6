// Why a station couldn't be joined with the others.
#pragma once

#include "workbench/naming/pair_links.h"
#include "workbench/values/naming_limits.h"

namespace tiepoint::workbench {

enum class StationTrouble {
  /// Fewer than three points to use.
  tooFewPoints,
  /// No other station has three points to use.
  alone,
  /// No triangle that another station has too.
  noEqualTriangle,
  /// Its mirror image fits another station, and it doesn't.
  mirrored,
  /// It can be laid onto the others in several ways that explain as many points.
  ambiguous,
  /// It fits by three points alone, and chance may do that.
  threePoints,
  /// Whatever was named left discrepancies above the limit.
  aboveLimit,
  /// Equal triangles contradict one another at every tolerance.
  contradiction
};

struct UnplacedStation {
  ZOR::reg::GroupId group = 0;
  StationTrouble trouble = StationTrouble::noEqualTriangle;
  /// Ambiguous: how many points each way explains; mirrored: how many the mirror image does.
  std::size_t points = 0;
  /// Above the limit: the smallest of the largest discrepancies, drawing units.
  double discrepancy = 0.0;
  /// Ambiguous: the most names that the files of it and of another station share.
  std::size_t sharedNames = 0;
};

/// A station of which each way explains `points` points.
UnplacedStation ambiguousStation(ZOR::reg::GroupId group, const SessionState& start, const Stations& stations,
                                 std::size_t points);

/// What the shapes of the stations and the trials of their pairs show.
UnplacedStation troubleOf(ZOR::reg::GroupId group, const SessionState& start, const Stations& stations,
                          const PairLinks& pairs, const NamingLimits& limits);

}  // namespace tiepoint::workbench
