#include "workbench/naming/planned_session.h"

#include <algorithm>

#include "workbench/session/solved_transforms.h"

namespace tiepoint::workbench {

using namespace ZOR::reg;

PlannedSession::PlannedSession(Workbench& workbench_, const SettingsById& settings_)
    : workbench(workbench_), settings(settings_), scratch(std::make_unique<ScratchSession>(workbench, settings)) {}

bool PlannedSession::matchByTriangles(const GroupIdSet& groups, double sideTolerance, double minSideDifference) {
  const std::size_t named = (*scratch)->matchByTriangles(groups, sideTolerance, minSideDifference);
  done.push_back({NamingKind::triangles, groups, sideTolerance, minSideDifference, named});
  return named > 0;
}

bool PlannedSession::matchByCloseness(double tolerance) {
  const std::size_t named = (*scratch)->matchByCloseness(tolerance);
  done.push_back({NamingKind::closeness, {}, tolerance, 0.0, named});
  return named > 0;
}

bool PlannedSession::unite(const PointPairs& takers, double tolerance) {
  const std::size_t named = (*scratch)->unite(takers);
  done.push_back({NamingKind::unite, {}, tolerance, 0.0, named, takers});
  return named > 0;
}

bool PlannedSession::solve(const GroupIdSet& groups) {
  done.push_back({NamingKind::solve, groups, 0.0, 0.0, 0});
  lastMotions.reset();
  return (*scratch)->solve(groups);
}

/// Only what was solved has moved. To read a motion takes a cloud in a drawing of its own.
const std::map<GroupId, OdGeMatrix3d>& PlannedSession::motions() {
  if (lastMotions) return *lastMotions;
  const auto solve =
      std::find_if(done.rbegin(), done.rend(), [](const NamingStep& step) { return step.kind == NamingKind::solve; });
  lastMotions.emplace();
  if (solve == done.rend()) return *lastMotions;
  const std::vector<GroupId> groups(solve->groups.begin(), solve->groups.end());
  *lastMotions = solvedMotions(workbench, (*scratch)->driven().operations(), groups);
  return *lastMotions;
}

void PlannedSession::backTo(std::size_t count) {
  if (done.size() == count) return;
  done.resize(count);
  lastMotions.reset();
  scratch = std::make_unique<ScratchSession>(workbench, settings);
  (*scratch)->repeat(done);
}

}  // namespace tiepoint::workbench
