// A run of the iterative method, with what it leaves for the user to find out.
#pragma once

#include <optional>

#include "workbench/session/driven_session.h"
#include "workbench/values/finding.h"
#include "workbench/values/iteration_course.h"
#include "workbench/values/link_report.h"
#include "workbench/values/progress.h"
#include "workbench/values/registration_request.h"

namespace tiepoint::workbench {

struct IterativeRun {
  /// False when there are no two groups to join.
  bool registered = false;
  std::optional<IterationCourse> course;
  /// Sets of groups that aren't connected with one another, when there are several.
  LinkReport links;
};

/// Registers by the limits of the request, or else the session's. Finds groups that aren't
/// connected, which the method accepts silently, and a loop stopped by its limit. Throws Refused
/// (profileLimits) for invalid limits.
IterativeRun runIterative(DrivenSession& session, const RegistrationRequest& request, Findings& findings,
                          Progress& progress);

}  // namespace tiepoint::workbench
