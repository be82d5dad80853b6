// What an adjustment found, as the rows that a registration tells.
#pragma once

#include "workbench/session/results.h"
#include "workbench/values/adjusted_survey.h"
#include "workbench/values/registration.h"
#include "workbench/values/session_state.h"

namespace tiepoint::workbench {

/// The state with the points in use that the adjustment uses, and its discrepancies; `session` is of the same
/// points.
SessionState adjustedState(const SessionState& session, const AdjustedSurvey& survey);

/// Which points are out and why. `state` is one of those above.
Outcomes adjustedRows(const SessionState& state, const AdjustedSurvey& survey);

/// Of an adjustment whose outcome is `adjusted`.
Results adjustedResults(const SessionState& state, const AdjustedSurvey& survey);

/// The point that the adjustment's tests find to be wrong, when it is one of the stations' measurements and
/// its error more than the rounding of numbers.
std::optional<Outlier> suspectedPoint(const AdjustedSurvey& survey, const Registered& registered,
                                      const std::vector<PointOutcome>& points);

}  // namespace tiepoint::workbench
