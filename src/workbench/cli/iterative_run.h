// A run of the iterative method, with what it leaves for the user to find out.
#pragma once

#include <optional>

#include "workbench/cli/options.h"
#include "workbench/cli/output.h"
#include "workbench/geometry/links.h"
#include "workbench/session/driven_session.h"
#include "workbench/session/iteration_course.h"

namespace tiepoint::workbench::cli {

/// Throws CommandError(usage): an unknown method, or options that don't go with it.
void checkMethod(const RegisterOptions& options);

struct IterativeRun {
  /// False when there are no two groups to join.
  bool registered = false;
  std::optional<IterationCourse> course;
  /// Parts that don't hang together, when there are several.
  LinkReport links;
};

/// Registers by the limits of the options, or else the session's. Warns of groups that don't hang
/// together, which the method takes without a word, and of a loop that its limit ended. Turns a
/// spinner on a terminal. Throws CommandError(usage) for limits that can't be.
IterativeRun runIterative(DrivenSession& session, const RegisterOptions& options, Warnings& warnings);

}  // namespace tiepoint::workbench::cli
