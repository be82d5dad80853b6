// Where a base has its targets.
#pragma once

#include <optional>
#include <unordered_map>

#include "workbench/values/session_state.h"

namespace tiepoint::workbench {

/// The weighted mean of the base points in use of each name.
class BaseTargets {
 public:
  explicit BaseTargets(const SessionState& state);

  std::optional<OdGePoint3d> at(ZOR::reg::CommonPointId name) const;

 private:
  struct Sum {
    double x = 0.0, y = 0.0, z = 0.0, weight = 0.0;
  };
  void add(const ZOR::reg::RefPoint& point);
  std::unordered_map<ZOR::reg::CommonPointId, Sum> sums;
};

}  // namespace tiepoint::workbench
