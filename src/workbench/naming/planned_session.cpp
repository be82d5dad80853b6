#include "workbench/naming/planned_session.h"

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
  return (*scratch)->solve(groups);
}

std::map<GroupId, OdGeMatrix3d> PlannedSession::motions() {
  const GroupIdSet& groups = (*scratch)->groups();
  return solvedMotions(workbench, (*scratch)->driven().operations(), {groups.begin(), groups.end()});
}

void PlannedSession::backTo(std::size_t count) {
  if (done.size() == count) return;
  done.resize(count);
  scratch = std::make_unique<ScratchSession>(workbench, settings);
  for (const NamingStep& step : done) (*scratch)->repeat(step);
}

}  // namespace tiepoint::workbench
