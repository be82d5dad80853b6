// The adjustment of a session's stations.
#pragma once

#include "workbench/host/workbench.h"
#include "workbench/session/driven_session.h"
#include "workbench/session/solved_transforms.h"
#include "workbench/survey/resolve.h"
#include "workbench/survey/solving.h"
#include "workbench/values/adjusted_survey.h"
#include "workbench/values/finding.h"
#include "workbench/values/progress.h"
#include "workbench/values/registration.h"

namespace tiepoint::workbench {

/// After the session's own pairwise solve, which came to `started`: adjusts from there, from the poses that
/// the request names, or where there are neither from a start of its own. The registration gets the
/// adjustment, unless the stations don't hang together or the base has no part in them. Throws Refused
/// (noSuchGroup, noSuchPoint, notRigid).
Solve adjustSession(Workbench& workbench, DrivenSession& session, const ResolvedRequest& resolved, Solve started,
                    Registration& registration, Findings& findings, Progress& progress);

/// What the tests of an adjustment say of the points in use of a session that another method has solved.
AdjustedSurvey judgeMeasurements(const SessionState& state, const SolvedTransforms& solved);

}  // namespace tiepoint::workbench
