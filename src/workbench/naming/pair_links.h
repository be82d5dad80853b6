// Which two stations can be joined by triangles that both have, and how well.
#pragma once

#include <map>
#include <optional>
#include <vector>

#include "workbench/geometry/common_triangles.h"
#include "workbench/geometry/station_shapes.h"
#include "workbench/naming/scratch_session.h"
#include "workbench/values/naming_limits.h"
#include "workbench/values/progress.h"

namespace tiepoint::workbench {

/// Two stations that were joined, each pair tried separately.
struct PairLink {
  ZOR::reg::GroupId first = 0;
  ZOR::reg::GroupId second = 0;
  /// Which named them; nothing when they shared enough names before.
  std::optional<NamingStep> triangles;
  /// The points that got the same names.
  PointPairs shared;
  /// Of three shared names: how many such links chance would make between the two.
  double chance = 0.0;
  double largestDiscrepancy = 0.0;
};

struct PairLinks {
  /// The most shared names first, then the least chance, then the smallest discrepancies.
  std::vector<PairLink> links;
  /// For a group that is in no link: the smallest of the largest discrepancies that its namings
  /// left, all above the limit.
  std::map<ZOR::reg::GroupId, double> aboveLimit;
};

/// Tries every pair of stations in scratch sessions: with the names that they have, then by
/// triangles with a tolerance from tight to the limits' widest. `common`: for no less a tolerance.
PairLinks findPairLinks(Workbench& workbench, const SettingsById& settings, const SessionState& start,
                        const Stations& stations, const CommonTriangles& common, const NamingLimits& limits,
                        Progress& progress);

}  // namespace tiepoint::workbench
