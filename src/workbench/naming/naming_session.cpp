#include "workbench/naming/naming_session.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

GroupIdSet without(const GroupIdSet& all, const GroupIdSet& some) {
  GroupIdSet rest;
  for (const GroupId group : all) {
    if (some.count(group) == 0) rest.insert(group);
  }
  return rest;
}

/// A solve that another one follows before anything uses it.
bool isSuperseded(std::vector<NamingStep>::const_iterator step, std::vector<NamingStep>::const_iterator end) {
  if (step->kind != NamingKind::solve) return false;
  const auto next = std::find_if(std::next(step), end, [](const NamingStep& later) {
    return later.kind == NamingKind::solve || later.kind == NamingKind::closeness;
  });
  return next != end && next->kind == NamingKind::solve;
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
  included = participants;
}

std::size_t NamingSession::matchByTriangles(const GroupIdSet& groups, double sideTolerance, double minSideDifference) {
  if (groups.size() == session.state().groups.size()) {
    return session.matchAllByTriangles(sideTolerance, minSideDifference);
  }
  return session.matchByTriangles(groups, sideTolerance, minSideDifference);
}

std::size_t NamingSession::unite(const PointPairs& takers) {
  return static_cast<std::size_t>(std::count_if(
      takers.begin(), takers.end(), [&](const auto& taker) { return session.adoptName(taker.first, taker.second); }));
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

void NamingSession::repeat(const std::vector<NamingStep>& steps) {
  for (auto step = steps.begin(); step != steps.end(); ++step) {
    if (!isSuperseded(step, steps.end())) repeatOne(*step);
  }
}

void NamingSession::repeatOne(const NamingStep& step) {
  switch (step.kind) {
    case NamingKind::triangles:
      matchByTriangles(step.groups, step.tolerance, step.minSideDifference);
      break;
    case NamingKind::closeness:
      matchByCloseness(step.tolerance);
      break;
    case NamingKind::unite:
      unite(step.takers);
      break;
    case NamingKind::solve:
      solve(step.groups);
      break;
  }
}

void NamingSession::become(NamingSession&& other) {
  session.operations().become(std::move(other.session.operations()));
  participants = std::move(other.participants);
  excluded = std::move(other.excluded);
  included = std::move(other.included);
}

void NamingSession::finish() {
  session.clearResults();
  includeOnly(participants);
}

/// To include a group includes all its points, so the choices are made once more. Each operation looks
/// at all points of the session, so only what changes is told to it.
void NamingSession::includeOnly(const GroupIdSet& groups) {
  const GroupIdSet entering = without(groups, included);
  const GroupIdSet leaving = without(included, groups);
  if (!entering.empty()) {
    session.includeGroups(entering);
    if (!excluded.empty()) session.excludePoints(excluded);
  }
  if (!leaving.empty()) session.excludeGroups(leaving);
  included = groups;
}

}  // namespace tiepoint::workbench
