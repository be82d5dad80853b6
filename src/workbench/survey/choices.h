// What a request chooses of a session: names, exclusions, weights and the base.
#pragma once

#include "workbench/host/workbench.h"
#include "workbench/session/driven_session.h"
#include "workbench/survey/resolve.h"
#include "workbench/values/naming_report.h"
#include "workbench/values/progress.h"

namespace tiepoint::workbench {

/// Applies all of it; the report of the naming, if one was asked for. Throws Refused for a point that
/// the naming hasn't brought.
std::optional<NamingReport> applyChoices(Workbench& workbench, DrivenSession& session, const ResolvedRequest& resolved,
                                         Progress& progress);

}  // namespace tiepoint::workbench
