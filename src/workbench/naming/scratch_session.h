// A session beside the one that is kept.
#pragma once

#include <optional>
#include <unordered_map>

#include "workbench/host/workbench.h"
#include "workbench/naming/naming_session.h"

namespace tiepoint::workbench {

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
