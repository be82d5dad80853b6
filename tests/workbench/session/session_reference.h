// What a session must hold, found by the module's own functions from what a mirror says.
#pragma once

#include <map>
#include <string>

#include "matching/naming_state.h"
#include "session/multi_registrator.h"
#include "workbench/session/mirrored_session.h"

namespace tiepoint::workbench {

/// The lists of a session, from a mirror's state.
struct SessionLists {
  explicit SessionLists(const SessionState& state);

  ZOR::reg::RefPointList points;
  ZOR::reg::NamedIdList groupNames;
  ZOR::reg::NamedIdList commonNames;
};

/// Solves and matches beside a session, with the records of its mirror. Results stay until they are
/// cleared, as in the session. To be called before the session's own operation.
class SessionReference {
 public:
  /// True when the groups form one cluster.
  bool registerPairwise(const SessionLists& lists);
  void registerIterative(const SessionLists& lists, std::uint64_t maxIterations, double convergenceCriteria);
  void clearResults();

  /// The three reports on all points and groups, one after the other.
  std::wstring reports(const SessionState& state) const;

  ZOR::reg::SolveResults results;
  ZOR::reg::PointDiscrepancies pointDiscrepancies;
  ZOR::reg::GroupClusters clusters;

 private:
  std::uint64_t actualIterations = 0;
  double actualDiscrepancy = 0.0;
};

/// The same from a session. They take the place of the report that it would save.
std::wstring reportsOf(ZOR::reg::iMultiRegistrator& session);

/// What a matching must leave of the points and the names, and what it must answer.
struct MatchReference {
  MatchReference(SessionLists before, const ZOR::reg::NamingChanges& changes);

  SessionLists lists;
  std::map<ZOR::reg::RefPointId, std::string> assignedNames;
};

}  // namespace tiepoint::workbench
