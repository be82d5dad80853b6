// A session in which points are being named.
#pragma once

#include <optional>
#include <unordered_map>

#include "workbench/host/workbench.h"
#include "workbench/session/driven_session.h"
#include "workbench/values/naming_step.h"

namespace tiepoint::workbench {

/// Takes naming steps in a session that stands before its first solve, without a base: the operations
/// that look for one spot see no base points. What was excluded before stays so.
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
  /// True when all of these groups hang together and each takes part.
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

/// What the user has chosen of one point.
struct PointSettings {
  bool included = true;
  double weight = 1.0;
};
using SettingsById = std::unordered_map<ZOR::reg::RefPointId, PointSettings>;

SettingsById settingsOf(const SessionState& state);

/// A session beside the one that is kept, to try steps in: of the active drawing, with the
/// exclusions and weights of the other. It changes nothing in the drawing.
class ScratchSession {
 public:
  /// With all groups. One drawing gives every session the same ids. `settings` must outlive it.
  ScratchSession(Workbench& workbench, const SettingsById& settings);
  /// With some of them.
  ScratchSession(Workbench& workbench, const SettingsById& settings, ZOR::reg::GroupIdSet groups);

  /// Everything as it was at first, but for the numbers of names to come.
  void restart();
  /// The same with other groups instead. Costs less than a session of its own, which reads the whole
  /// drawing.
  void changeTo(ZOR::reg::GroupIdSet groups);

  NamingSession& operator*() { return *naming; }
  NamingSession* operator->() { return &*naming; }

 private:
  void choose();

  MirroredSession mirrored;
  DrivenSession driven;
  const SettingsById& settings;
  ZOR::reg::GroupIdSet groups;
  std::optional<NamingSession> naming;
};

}  // namespace tiepoint::workbench
