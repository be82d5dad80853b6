// A registration session, driven as a dialog drives it.
#pragma once

#include <cstddef>
#include <list>
#include <map>
#include <string>

#include "session/i_multi_registrator.h"
#include "workbench/values/session_state.h"

namespace tiepoint::workbench {

/// Calls the operations of one session and keeps its answers.
class DrivenSession {
 public:
  explicit DrivenSession(ZOR::reg::iMultiRegistrator& registrator);

  /// Puts all groups of the active drawing in. False when it holds none.
  bool addAllGroups();
  /// Puts some in. False when it holds none of them.
  bool addGroups(const ZOR::reg::GroupIdSet& groups);
  /// They can be put in again, and come as they were read.
  void removeGroups(const ZOR::reg::GroupIdSet& groups);
  void setBase(const ZOR::reg::GroupIdSet& groups);
  void includeGroups(const ZOR::reg::GroupIdSet& groups);
  void excludeGroups(const ZOR::reg::GroupIdSet& groups);
  void excludePoints(const ZOR::reg::RefPointIdSet& points);
  /// False for a weight outside 0 to 1.
  bool setWeight(const ZOR::reg::RefPointIdSet& points, double weight);

  /// False when the groups don't hang together; `clusters` then tells which do.
  bool registerPairwise();
  /// False for limits that aren't above 0. Fewer than two groups in use leave everything as it was.
  bool registerIterative(std::uint64_t maxIterations, double convergence);
  ZOR::reg::GroupClusters clusters();
  /// Excludes the groups of all other clusters. The clusters are forgotten by the next solve.
  void keepCluster(std::uint64_t number);
  /// Takes the markers away too when there are no results yet; `restoreMarkers` brings them back.
  void clearResults() { registrator.clearResults(); }
  /// Shows every point of the session where it was measured. To be called before a solve, which moves
  /// the markers that it finds.
  void restoreMarkers();

  /// The matching operations name points and say how many got a name; 0 when nothing was found or
  /// what was found contradicts itself. Tolerances are lengths in drawing units.
  std::size_t matchAllByTriangles(double sideTolerance, double minSideDifference);
  std::size_t matchByTriangles(const ZOR::reg::GroupIdSet& groups, double sideTolerance, double minSideDifference);
  /// Needs a solve before it.
  std::size_t matchByCloseness(double tolerance);

  /// Gives a point the name of another. False when its group has the name already.
  bool takeName(ZOR::reg::RefPointId point, ZOR::reg::RefPointId other);

  ZOR::reg::iMultiRegistrator& operations() { return registrator; }
  const SessionState& state() const { return current; }

 private:
  /// The groups of the drawing that aren't in the session.
  ZOR::reg::GroupIdSet readGroups();
  void takeAdded(const std::list<ZOR::reg::RefPoint>& added);
  SessionPoint& pointOf(ZOR::reg::RefPointId id);
  void takeInactive(const ZOR::reg::RefPointIdSet& inactivePoints);
  void takeExcluded(const ZOR::reg::RefPointIdSet& excludedPoints);
  std::size_t takeNames(const std::map<ZOR::reg::RefPointId, std::string>& assignedNames);

  ZOR::reg::iMultiRegistrator& registrator;
  SessionState current;
};

}  // namespace tiepoint::workbench
