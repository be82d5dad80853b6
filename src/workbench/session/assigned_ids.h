// Which names a matching meant.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "workbench/values/session_state.h"

namespace tiepoint::workbench {

struct AssignedId {
  ZOR::reg::CommonPointId id = 0;
  /// The matching made the name.
  bool isNew = false;
  /// No other id with the same name could be meant.
  bool isSure = false;
};

/// A matching answers with names, and a session has ids. A point takes either a name that the matching
/// made, which stands behind those that there were, or the id of a point that had a name before.
class AssignedIds {
 public:
  /// `before`: the points before the matching; `made`: the names that the matching has made.
  AssignedIds(const std::map<ZOR::reg::RefPointId, std::string>& assigned, const std::vector<SessionPoint>& before,
              const std::vector<PointName>& made);

  /// Of a name that was assigned; of several ids the newest. Nothing for a name that nobody had.
  std::optional<AssignedId> of(const std::string& name) const;

 private:
  void consider(const std::string& name, ZOR::reg::CommonPointId id, bool isNew);

  std::unordered_map<std::string, AssignedId> ids;
};

}  // namespace tiepoint::workbench
