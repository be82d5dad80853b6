// Sessions as tests need them.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "session/multi_registrator.h"
#include "support/session_host.h"

namespace tiepoint::testing {

/// The outputs that most operations share, filled with a sentinel so that a test sees what an
/// operation left alone.
struct Outputs {
  ZOR::reg::GroupIdSet groups{991};
  ZOR::reg::RefPointIdSet points{992};
  ZOR::reg::GroupIdSet inactiveGroups{993};
  ZOR::reg::RefPointIdSet inactivePoints{994};
};

/// A session over a host of its own.
class Session {
 public:
  /// Stores the stations and takes all of them into the session, with ids from 0 in that order.
  explicit Session(const std::vector<std::pair<std::string, std::vector<Target>>>& stations = {}) {
    for (const auto& [name, targets] : stations) host.document().storeGroup(name, targets);
    registrator = std::make_unique<ZOR::reg::MultiRegistrator>();
    if (!stations.empty()) addAllGroups();
  }

  std::map<ZOR::reg::GroupId, std::string> addAllGroups() {
    std::map<ZOR::reg::GroupId, std::string> available;
    registrator->getAvailableGroups(available);
    ZOR::reg::GroupIdSet ids;
    for (const auto& [id, name] : available) ids.insert(id);
    std::list<ZOR::reg::RefPoint> added;
    Outputs out;
    registrator->addGroups(ids, added, out.inactiveGroups, out.inactivePoints);
    return available;
  }

  /// The points that the last rebuild left out: an empty exclusion runs it again and reports.
  ZOR::reg::RefPointIdSet inactivePoints() {
    Outputs out;
    registrator->excludePoints({}, out.groups, out.inactiveGroups, out.inactivePoints);
    return out.inactivePoints;
  }
  ZOR::reg::GroupIdSet inactiveGroups() {
    Outputs out;
    registrator->excludePoints({}, out.groups, out.inactiveGroups, out.inactivePoints);
    return out.inactiveGroups;
  }

  /// Names in the order of the table, as "id:name".
  std::vector<std::string> commonNames() {
    std::list<ZOR::reg::NamedId> names;
    registrator->getCommonPointNames(names);
    std::vector<std::string> texts;
    for (const auto& entry : names) texts.push_back(std::to_string(entry.id) + ":" + entry.name);
    return texts;
  }

  TestDocument& document() { return host.document(); }
  ZOR::reg::MultiRegistrator* operator->() { return registrator.get(); }
  ZOR::reg::MultiRegistrator& operator*() { return *registrator; }

  SessionHost host;
  std::unique_ptr<ZOR::reg::MultiRegistrator> registrator;
};

/// Three targets far apart, under those names, shifted along x.
inline std::vector<Target> triangle(const std::string& a, const std::string& b, const std::string& c,
                                    double shift = 0.0) {
  return {{a, 1.0 + shift, 0.0, 0.0}, {b, 11.0 + shift, 0.0, 0.0}, {c, 1.0 + shift, 7.0, 2.0}};
}

}  // namespace tiepoint::testing
