#include "workbench/cli/naming/naming_session.h"

#include <map>

namespace tiepoint::workbench::cli {

using namespace ZOR::reg;

namespace {

/// The same choices as there. One drawing gives every session the same ids.
DrivenSession& chooseAsIn(const SessionState& like, DrivenSession& session) {
  session.addAllGroups();
  RefPointIdSet excluded;
  std::map<double, RefPointIdSet> weights;
  auto here = session.state().points.begin();
  for (const SessionPoint& point : like.points) {
    if (!point.record.included) excluded.insert(point.record.id);
    if (point.record.weight < here->record.weight || point.record.weight > here->record.weight) {
      weights[point.record.weight].insert(point.record.id);
    }
    ++here;
  }
  if (!excluded.empty()) session.excludePoints(excluded);
  for (const auto& [weight, points] : weights) session.setWeight(points, weight);
  return session;
}

GroupIdSet without(const GroupIdSet& all, const GroupIdSet& some) {
  GroupIdSet rest;
  for (const GroupId group : all) {
    if (some.count(group) == 0) rest.insert(group);
  }
  return rest;
}

}  // namespace

NamingSession::NamingSession(DrivenSession& session_) : session(session_) {
  for (const SessionPoint& point : session.state().points) {
    if (point.record.included) {
      participants.insert(point.record.groupId);
    } else {
      excluded.insert(point.record.id);
    }
  }
}

std::size_t NamingSession::matchByTriangles(const GroupIdSet& groups, double sideTolerance, double minSideDifference) {
  if (groups.size() == session.state().groups.size()) {
    return session.matchAllByTriangles(sideTolerance, minSideDifference);
  }
  return session.matchByTriangles(groups, sideTolerance, minSideDifference);
}

bool NamingSession::solve(const GroupIdSet& groups) {
  session.clearResults();
  includeOnly(groups);
  GroupIdSet active;
  for (const SessionPoint& point : state().points) {
    if (point.record.active) active.insert(point.record.groupId);
  }
  return active == groups && session.registerPairwise();
}

std::size_t NamingSession::repeat(const NamingStep& step) {
  switch (step.kind) {
    case NamingKind::triangles:
      return matchByTriangles(step.groups, step.tolerance, step.minSideDifference);
    case NamingKind::closeness:
      return matchByCloseness(step.tolerance);
    case NamingKind::solve:
      solve(step.groups);
      break;
  }
  return 0;
}

void NamingSession::finish() {
  session.clearResults();
  includeOnly(participants);
}

/// To include a group includes all its points, so the choices are made once more.
void NamingSession::includeOnly(const GroupIdSet& groups) {
  session.includeGroups(groups);
  const GroupIdSet others = without(participants, groups);
  if (!others.empty()) session.excludeGroups(others);
  if (!excluded.empty()) session.excludePoints(excluded);
}

ScratchSession::ScratchSession(Workbench& workbench, const SessionState& like)
    : registrator(workbench.newSession()), driven(*registrator), naming(chooseAsIn(like, driven)) {}

}  // namespace tiepoint::workbench::cli
