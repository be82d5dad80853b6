// What is left over at the points once they are registered, axis by axis.
#pragma once

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "workbench/values/registration.h"

namespace tiepoint::workbench {

/// The merged targets that points were fitted to, by name.
class FittedTargets {
 public:
  /// `targets` must outlive it.
  explicit FittedTargets(const std::vector<MergedTarget>& targets);

  /// The registered point minus the merged target of its name, along the axes of the common system. The
  /// discrepancy, which the solver tells, is the length of this; nothing where no target of the name lies
  /// so far away, within the rounding of coordinates.
  std::optional<OdGeVector3d> residual(const std::string& name, const OdGePoint3d& registered,
                                       double discrepancy) const;

 private:
  /// Names of which the session has two ids stand twice.
  std::unordered_multimap<std::string, const MergedTarget*> byName;
};

}  // namespace tiepoint::workbench
