// A plan of naming steps, and a scratch session in which it has been carried out.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "workbench/naming/scratch_session.h"

namespace tiepoint::workbench {

class PlannedSession {
 public:
  /// `settings` must outlive it.
  PlannedSession(Workbench& workbench, const SettingsById& settings);

  const SessionState& state() { return (*scratch)->state(); }
  const std::vector<NamingStep>& steps() const { return done; }

  /// Each takes a step and adds it to the plan. False when nothing was named.
  bool matchByTriangles(const ZOR::reg::GroupIdSet& groups, double sideTolerance, double minSideDifference);
  bool matchByCloseness(double tolerance);
  /// `tolerance`: the largest distance between points of one target, for readers of the plan.
  bool unite(const PointPairs& takers, double tolerance);
  /// False when these groups aren't connected.
  bool solve(const ZOR::reg::GroupIdSet& groups);

  /// Of the last solve; stays as it is until the next one.
  const std::map<ZOR::reg::GroupId, OdGeMatrix3d>& motions();

  /// Drops the last step, which has named nothing.
  void dropIdle() { done.pop_back(); }
  /// Drops all but the first `count` steps.
  void backTo(std::size_t count);

  /// The session in which the plan has been carried out. No step can be taken after that.
  std::unique_ptr<ScratchSession> handOver() { return std::move(scratch); }

 private:
  Workbench& workbench;
  const SettingsById& settings;
  std::unique_ptr<ScratchSession> scratch;
  std::vector<NamingStep> done;
  std::optional<std::map<ZOR::reg::GroupId, OdGeMatrix3d>> lastMotions;
};

}  // namespace tiepoint::workbench
