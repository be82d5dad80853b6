// What a session holds as the network of an adjustment.
#pragma once

#include "workbench/survey/resolve.h"
#include "workbench/values/adjusted_survey.h"
#include "workbench/values/session_state.h"

namespace tiepoint::workbench {

/// Every group is a station; every point that is switched on, named and of a weight above 0 is an observation.
/// Targets stand in the order of the session's names, so that control which no station measured isn't among
/// them. Without starts and without a result. Throws Refused (noSuchGroup, noSuchPoint).
AdjustedSurvey surveyNetwork(const SessionState& state, const ResolvedRequest& resolved);

/// The levels, the points to carry and the measurements to trace. Throws as above.
analysis::AdjustmentOptions adjustmentOptions(const SessionState& state, const ResolvedRequest& resolved,
                                              const AdjustedSurvey& survey);

/// The stations that would take part hang together by the targets that they share.
bool hangsTogether(const analysis::Network& network);

}  // namespace tiepoint::workbench
