// The solve of a session whose points are chosen.
#pragma once

#include "workbench/session/driven_session.h"
#include "workbench/values/finding.h"
#include "workbench/values/progress.h"
#include "workbench/values/registration.h"

namespace tiepoint::workbench {

enum class Solve { registered, notConnected, baseNotShared, notNamed, undetermined };

/// Solves by the module's method that the request names, pairwise for an adjustment, and says what it came to; the
/// registration gets the course of the iterations, the cluster that was kept, and what the naming has to say of the
/// discrepancies. Throws Refused (noSuchCluster, noClusters, profileLimits).
Solve solve(DrivenSession& session, const RegistrationRequest& request, Registration& registration, Findings& findings,
            Progress& progress);

}  // namespace tiepoint::workbench
