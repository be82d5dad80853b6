// Sessions over the host that records their calls.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "session/multi_registrator.h"
#include "support/recording_host.h"

namespace tiepoint::testing {

using Calls = std::vector<std::string>;

inline Calls operator+(Calls calls, const Calls& more) {
  calls.insert(calls.end(), more.begin(), more.end());
  return calls;
}

/// A list of calls, for where the braces of one would be in the way.
template <class... Words>
Calls asked(const Words&... words) {
  return Calls{words...};
}

// Pieces that many lists are made of.
inline const Calls refreshed{"GetMainDllInstance", "get_host_funcptr(12)", "refresh(0)"};
inline const Calls applicationTaken{"GetMainDllInstance", "get_host_funcptr(2)", "application"};
inline const Calls documentTaken = applicationTaken + asked("activeDocument");
inline const Calls databaseTaken = documentTaken + asked("document.database");
inline const Calls viewTaken = documentTaken + asked("document.transientService", "activeView");
inline const Calls sectionOpened{"GetApp", "queryProfile(profile)", "service.release",
                                 "openSection(PointClouds\\Registration, 1)", "profile.release"};
inline const Calls nothing;

/// The outputs that most operations share.
struct Results {
  std::list<ZOR::reg::RefPoint> added;
  ZOR::reg::GroupIdSet groups;
  ZOR::reg::RefPointIdSet points;
  ZOR::reg::GroupIdSet inactiveGroups;
  ZOR::reg::RefPointIdSet inactivePoints;
  std::map<ZOR::reg::RefPointId, double> discrepancies;
  std::map<ZOR::reg::RefPointId, std::string> names;
  ZOR::reg::GroupId group = 0;
};

using Stations = std::vector<std::pair<std::string, std::vector<Target>>>;

/// The same three targets, measured from two places five apart.
inline Stations twoStations() {
  return {{"A", {{"T1", 1, 0, 0}, {"T2", 11, 0, 0}, {"T3", 1, 7, 2}}},
          {"B", {{"T1", 6, 0, 0}, {"T2", 16, 0, 0}, {"T3", 6, 7, 2}}}};
}

/// A session that has read its stations' groups, with ids from 0 in their order.
class RecordedSession {
 public:
  explicit RecordedSession(const Stations& stations = {}) {
    for (const auto& [name, targets] : stations) host.document().storeGroup(name, targets);
    registrator = std::make_unique<ZOR::reg::MultiRegistrator>();
    std::map<ZOR::reg::GroupId, std::string> available;
    registrator->getAvailableGroups(available);
  }

  bool add(const ZOR::reg::GroupIdSet& groups) {
    return registrator->addGroups(groups, out.added, out.inactiveGroups, out.inactivePoints);
  }
  /// Registers everything in the system of the first group.
  bool solve() {
    registrator->setBaseGroups({0}, out.groups, out.points, out.inactiveGroups, out.inactivePoints);
    return registrator->registerPairwise(out.discrepancies);
  }

  ZOR::reg::MultiRegistrator* operator->() { return registrator.get(); }

  RecordingHost host;
  Results out;
  std::unique_ptr<ZOR::reg::MultiRegistrator> registrator;
};

}  // namespace tiepoint::testing
