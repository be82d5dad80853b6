#include "workbench/session/hidden_targets.h"

#include <map>
#include <unordered_map>
#include <unordered_set>

#include "workbench/io/text_encoding.h"
#include "workbench/session/driven_session.h"
#include "workbench/session/solved_transforms.h"

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

using PointsById = std::unordered_map<RefPointId, const SessionPoint*>;

/// Takes out of the session what isn't in use in the other one.
void keepPointsInUse(DrivenSession& session, const PointsById& inUse) {
  RefPointIdSet out;
  for (const SessionPoint& point : session.state().points) {
    if (inUse.count(point.record.id) == 0) out.insert(point.record.id);
  }
  if (out.empty()) return;
  GroupIdSet vanished, inactiveGroups;
  RefPointIdSet inactivePoints;
  session.operations().removePoints(out, vanished, inactiveGroups, inactivePoints);
}

/// Points that a matching has named.
void takeNames(DrivenSession& session, const PointsById& inUse) {
  std::map<RefPointId, std::string> renamed;
  for (const SessionPoint& point : session.state().points) {
    const std::string& name = inUse.at(point.record.id)->name;
    if (point.name != name || !point.record.named) renamed.emplace(point.record.id, nameFromUtf8(name));
  }
  for (const auto& [point, name] : renamed) {
    GroupId group = 0;
    GroupIdSet inactiveGroups;
    RefPointIdSet inactivePoints;
    session.operations().renamePoint(point, name, group, inactiveGroups, inactivePoints);
  }
}

void takeWeights(DrivenSession& session, const PointsById& inUse) {
  std::map<double, RefPointIdSet> weights;
  for (const SessionPoint& point : session.state().points) {
    const double wanted = inUse.at(point.record.id)->record.weight;
    if (wanted < point.record.weight || wanted > point.record.weight) weights[wanted].insert(point.record.id);
  }
  for (const auto& [weight, points] : weights) session.setWeight(points, weight);
}

void takeBase(DrivenSession& session, const PointsById& inUse) {
  GroupIdSet base;
  for (const auto& [id, point] : inUse) {
    if (point->record.inBase) base.insert(point->record.groupId);
  }
  if (!base.empty()) session.setBase(base);
}

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
  PointsById inUse;
  for (const SessionPoint& point : state.points) {
    if (point.record.active) inUse.emplace(point.record.id, &point);
  }
  MirroredSession mirrored(workbench.newSession());
  DrivenSession session(mirrored);
  session.addAllGroups();
  keepPointsInUse(session, inUse);
  takeNames(session, inUse);
  takeWeights(session, inUse);
  takeBase(session, inUse);
  if (!solveAgain(session, state, method)) return {};
  return solvedTargets(workbench, mirrored);
}

}  // namespace tiepoint::workbench
