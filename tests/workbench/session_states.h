// Session states made by hand.
#pragma once

#include <string>
#include <vector>

#include "workbench/values/session_state.h"

namespace tiepoint::workbench {

/// Adds groups and points by name; a name gets the same id wherever it stands. Points are active
/// until told otherwise.
class StateBuilder {
 public:
  StateBuilder& group(const std::string& name, bool inBase = false) {
    state.groups.push_back({state.groups.size(), name, inBase});
    return *this;
  }

  /// A point of the newest group.
  StateBuilder& point(const std::string& name, OdGePoint3d position = {}) {
    SessionPoint added;
    added.name = name;
    added.record.id = state.points.size();
    added.record.groupId = state.groups.back().id;
    added.record.inBase = state.groups.back().inBase;
    added.record.commonId = idOf(name);
    added.record.position = position;
    added.record.weight = 1.0;
    added.record.named = name != "?";
    state.points.push_back(added);
    return *this;
  }
  StateBuilder& points(const std::vector<std::string>& wanted) {
    for (const std::string& name : wanted) point(name);
    return *this;
  }

  /// The newest point.
  ZOR::reg::RefPoint& last() { return state.points.back().record; }
  StateBuilder& inactive() {
    last().active = false;
    return *this;
  }
  StateBuilder& allInactive() {
    for (SessionPoint& point : state.points) point.record.active = false;
    return *this;
  }

  SessionState state;

 private:
  ZOR::reg::CommonPointId idOf(const std::string& name) {
    for (std::size_t i = 0; i < names.size(); ++i) {
      if (names[i] == name) return i;
    }
    names.push_back(name);
    return names.size() - 1;
  }
  std::vector<std::string> names;
};

}  // namespace tiepoint::workbench
