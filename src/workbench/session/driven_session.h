// The operations of a registration session in the forms in which a survey needs them.
#pragma once

#include <cstddef>

#include "workbench/session/mirrored_session.h"

namespace tiepoint::workbench {

/// Calls operations whose answers are left to the mirror.
class DrivenSession {
 public:
  /// `session` must outlive it.
  explicit DrivenSession(MirroredSession& session);

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

  /// False when the groups aren't connected; `clusters` then says which are.
  bool registerPairwise();
  /// False for limits that aren't above 0. Fewer than two groups in use leave everything as it was.
  bool registerIterative(std::uint64_t maxIterations, double convergence);
  ZOR::reg::GroupClusters clusters() const { return state().clusters; }
  /// Excludes the groups of all other clusters. The clusters are forgotten by the next solve.
  void keepCluster(std::uint64_t number);
  /// Takes the markers away too when there are no results yet; `restoreMarkers` brings them back.
  void clearResults() { session.clearResults(); }
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
  bool adoptName(ZOR::reg::RefPointId point, ZOR::reg::RefPointId other);

  /// All operations there are.
  MirroredSession& operations() { return session; }
  const SessionState& state() const { return session.state(); }

 private:
  MirroredSession& session;
};

}  // namespace tiepoint::workbench
