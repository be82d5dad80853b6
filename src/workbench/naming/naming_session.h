// A session in which points are being named.
#pragma once

#include <vector>

#include "workbench/session/driven_session.h"
#include "workbench/values/naming_step.h"

namespace tiepoint::workbench {

/// Takes naming steps in a session that stands before its first solve, without a base: the operations
/// that look for coincident points see no base points. What was excluded before stays so.
class NamingSession {
 public:
  explicit NamingSession(DrivenSession& session);

  /// The groups that have a point to use.
  const ZOR::reg::GroupIdSet& groups() const { return participants; }
  const SessionState& state() const { return session.state(); }
  DrivenSession& driven() { return session; }

  /// Triangles and closeness say how many points they named.
  std::size_t matchByTriangles(const ZOR::reg::GroupIdSet& groups, double sideTolerance, double minSideDifference);
  std::size_t matchByCloseness(double tolerance) { return session.matchByCloseness(tolerance); }
  /// Says how many took the other's name: not those whose group has it already.
  std::size_t unite(const PointPairs& takers);
  /// True when all of these groups are connected and each takes part.
  bool solve(const ZOR::reg::GroupIdSet& groups);
  /// Takes steps as they were taken before. Only a matching by closeness and whoever goes on from here
  /// see what a solve has found, so the other solves are left out.
  void repeat(const std::vector<NamingStep>& steps);
  /// Goes on as another one of the same groups, which ends.
  void become(NamingSession&& other);
  /// Forgets the solves and lets all groups take part again.
  void finish();

 private:
  void repeatOne(const NamingStep& step);
  void includeOnly(const ZOR::reg::GroupIdSet& groups);

  DrivenSession& session;
  ZOR::reg::GroupIdSet participants;
  ZOR::reg::RefPointIdSet excluded;
  /// Of the participants, those that are included.
  ZOR::reg::GroupIdSet included;
};

}  // namespace tiepoint::workbench
