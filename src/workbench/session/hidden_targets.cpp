#include "workbench/session/hidden_targets.h"

#include <unordered_set>

#include "workbench/session/driven_session.h"
#include "workbench/session/points_in_use.h"
#include "workbench/session/solved_transforms.h"

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

bool solveAgain(DrivenSession& session, const SessionState& solved, RegistrationMethod method) {
  return method == RegistrationMethod::iterative
             ? session.registerIterative(solved.maxIterations, solved.convergenceCriteria)
             : session.registerPairwise();
}

}  // namespace

bool hidesTargets(const SessionState& state) {
  GroupIdSet groups;
  std::unordered_set<CommonPointId> names;
  for (const SessionPoint& point : state.points) {
    if (!point.record.active) continue;
    groups.insert(point.record.groupId);
    names.insert(point.record.commonId);
  }
  for (const SessionPoint& point : state.points) {
    const RefPoint& p = point.record;
    if (!p.active && !p.inBase && p.named && groups.count(p.groupId) != 0 && names.count(p.commonId) != 0) return true;
  }
  return false;
}

std::vector<MergedTarget> targetsInUse(Workbench& workbench, const SessionState& state, RegistrationMethod method) {
  MirroredSession mirrored(workbench.newSession());
  DrivenSession session(mirrored);
  takePointsInUse(session, state);
  session.setBase(basesInUse(state));
  if (!solveAgain(session, state, method)) return {};
  return solvedTargets(workbench, mirrored);
}

}  // namespace tiepoint::workbench
