// Names for points that have none.
#pragma once

#include "workbench/host/workbench.h"
#include "workbench/session/driven_session.h"
#include "workbench/values/naming_report.h"
#include "workbench/values/progress.h"

namespace tiepoint::workbench {

/// Names points in the session, which stands before its first solve and has no base yet, and stands
/// so again afterwards, but for the names. `unit` says which limits are usual. Throws Refused
/// (cancelled).
NamingReport namePoints(Workbench& workbench, DrivenSession& session, const NamingRequest& request, Unit unit,
                        Progress& progress);

/// After the solve: refuses a naming by the search whose discrepancies are above the limit.
void checkDiscrepancies(const SessionState& state, NamingReport& report);

}  // namespace tiepoint::workbench
