// From a solve to what a registration tells of it.
#pragma once

#include "workbench/host/workbench.h"
#include "workbench/session/driven_session.h"
#include "workbench/survey/solving.h"
#include "workbench/values/finding.h"
#include "workbench/values/progress.h"
#include "workbench/values/registration.h"

namespace tiepoint::workbench {

/// Fills the registration in: its method, and its adjustment if there is one, stand in it already. Throws
/// Refused (notRigid).
void conclude(Workbench& workbench, DrivenSession& session, Solve solved, Registration& registration,
              Findings& findings, Progress& progress);

}  // namespace tiepoint::workbench
