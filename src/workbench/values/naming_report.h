// What a matching of points did.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "workbench/values/finding.h"
#include "workbench/values/naming_limits.h"
#include "workbench/values/naming_step.h"
#include "workbench/values/registration_request.h"

namespace tiepoint::workbench {

struct NamingReport {
  Naming how = Naming::none;
  /// Of the search.
  std::optional<NamingLimits> limits;
  std::vector<NamingStep> steps;
  /// Points with an automatic name, and points that have none still.
  std::size_t named = 0;
  std::size_t unnamed = 0;
  /// Why nothing was named, or why a station wasn't joined.
  std::vector<Finding> reasons;
  /// The naming isn't to be used: the survey stays unregistered.
  bool isRefused = false;
};

}  // namespace tiepoint::workbench
