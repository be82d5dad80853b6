// Which groups are connected, and what the others lack.
#pragma once

#include "workbench/values/link_report.h"
#include "workbench/values/session_state.h"

namespace tiepoint::workbench {

/// Only eligible points count, also those that were left out for what their group lacks.
LinkReport describeLinks(const SessionState& state, const ZOR::reg::GroupClusters& clusters);

/// The same for the points in use alone and without clusters' numbers: one component when the groups in
/// use are connected, as the session would find if it were asked to join them pairwise.
LinkReport activeLinks(const SessionState& state);

}  // namespace tiepoint::workbench
