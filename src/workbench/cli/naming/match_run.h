// Names for points that have none, as `--match` asks for them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "workbench/cli/naming/match_reasons.h"
#include "workbench/cli/options.h"
#include "workbench/host/workbench.h"
#include "workbench/session/driven_session.h"
#include "workbench/values/naming_limits.h"
#include "workbench/values/naming_step.h"

namespace tiepoint::workbench::cli {

struct MatchReport {
  /// "triangles", "distance" or "auto".
  std::string mode;
  /// Of auto.
  std::optional<NamingLimits> limits;
  std::vector<NamingStep> steps;
  /// Points with an automatic name, and points that have none still.
  std::size_t named = 0;
  std::size_t unnamed = 0;
  /// Why nothing was named, or why a station wasn't joined.
  std::vector<MatchReason> reasons;
  /// The naming isn't to be used: the survey stays unregistered.
  bool isRefused = false;
};

/// Throws CommandError(usage) for options that don't go together or can't be.
void checkMatch(const RegisterOptions& options);

/// Names points in the session, which stands before its first solve and has no base yet, and stands
/// so again afterwards, but for the names.
MatchReport matchPoints(Workbench& workbench, DrivenSession& session, const RegisterOptions& options);

/// After the solve: refuses a naming by auto whose discrepancies are above the limit.
void checkDiscrepancies(const SessionState& state, MatchReport& report);

}  // namespace tiepoint::workbench::cli
