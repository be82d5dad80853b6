// A mirrored session over a host of its own, and the session behind it.
#pragma once

#include <set>
#include <string>
#include <utility>

#include "support/recording_host.h"
#include "workbench/session/session_reference.h"

namespace tiepoint::workbench {

/// The outputs that most operations share.
struct Answers {
  ZOR::reg::GroupIdSet groups;
  ZOR::reg::RefPointIdSet points;
  ZOR::reg::GroupIdSet inactiveGroups;
  ZOR::reg::RefPointIdSet inactivePoints;
  std::list<ZOR::reg::RefPoint> added;
  std::map<ZOR::reg::RefPointId, std::string> names;
  std::map<ZOR::reg::RefPointId, double> discrepancies;
  ZOR::reg::GroupId group = 0;
};

struct WatchedSession {
  using Station = std::pair<std::string, std::vector<tiepoint::testing::Target>>;

  /// Stores the stations; takes none into the session.
  explicit WatchedSession(const std::vector<Station>& stations = {});

  /// Reads the drawing's groups and takes these in.
  void add(const ZOR::reg::GroupIdSet& groups);
  bool solve() { return mirrored->registerPairwise(out.discrepancies); }

  const SessionState& state() { return mirrored->state(); }
  const ZOR::reg::RefPoint& record(ZOR::reg::RefPointId id);
  /// The names that the markers bear when the session draws its points where they were measured.
  std::multiset<std::wstring> drawnNames();

  tiepoint::testing::RecordingHost host;
  /// Operations of it go round the mirror.
  ZOR::reg::MultiRegistrator* real = nullptr;
  std::unique_ptr<MirroredSession> mirrored;
  Answers out;
};

/// In words what the mirror holds otherwise than the session tells when it is asked all that can be
/// asked, solves and draws included; empty when it is right. Asking changes nothing that a mirror holds.
std::string differences(WatchedSession& session, const SessionReference& reference);

}  // namespace tiepoint::workbench
