// The search for names that join all stations.
#pragma once

#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "workbench/host/workbench.h"
#include "workbench/naming/scratch_session.h"
#include "workbench/naming/station_troubles.h"
#include "workbench/values/naming_limits.h"
#include "workbench/values/naming_step.h"
#include "workbench/values/progress.h"
#include "workbench/values/session_state.h"

namespace tiepoint::workbench {

struct NamingPlan {
  /// What to do in a session like the one that the search was made for; empty when no two stations
  /// could be joined.
  std::vector<NamingStep> steps;
  /// A session in which that has been done, so that it needn't be repeated; null when there are no
  /// steps. It can't be restarted any more.
  std::unique_ptr<ScratchSession> named;
  ZOR::reg::GroupIdSet placed;
  std::vector<UnplacedStation> unplaced;
  /// Pairs that share more points than could be named without discrepancies above the limit.
  std::vector<std::pair<ZOR::reg::GroupId, ZOR::reg::GroupId>> openLoops;
  /// For stations that were added by three points alone: in which part of surveys chance would have
  /// added one so.
  std::map<ZOR::reg::GroupId, double> risks;
};

/// Starts from the two stations that agree best and adds one station after another. A station is
/// added when a solve of all leaves no discrepancy above the limit and it doesn't fit the others in a
/// second way that matches as many of its points and that the files' names allow; after each the points
/// that coincide are named, and pairs of stations that close a loop. All in scratch sessions of the
/// active drawing; `start` is the state of the session that the plan is for, before its first solve.
/// Throws Refused (cancelled).
NamingPlan searchNames(Workbench& workbench, const SessionState& start, const NamingLimits& limits, Progress& progress);

}  // namespace tiepoint::workbench
