#include "workbench/session/points_in_use.h"

#include <map>
#include <unordered_map>

#include "workbench/io/text_encoding.h"

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

}  // namespace

void takePointsInUse(DrivenSession& session, const SessionState& state) {
  PointsById inUse;
  for (const SessionPoint& point : state.points) {
    if (point.record.active) inUse.emplace(point.record.id, &point);
  }
  session.addAllGroups();
  keepPointsInUse(session, inUse);
  takeNames(session, inUse);
  takeWeights(session, inUse);
}

GroupIdSet basesInUse(const SessionState& state) {
  GroupIdSet base;
  for (const SessionPoint& point : state.points) {
    if (point.record.active && point.record.inBase) base.insert(point.record.groupId);
  }
  return base;
}

}  // namespace tiepoint::workbench
