// What a session holds and what a solve found, point by point and group by group.
#pragma once

#include <vector>

#include "workbench/session/solved_transforms.h"
#include "workbench/values/registration.h"
#include "workbench/values/session_state.h"

namespace tiepoint::workbench {

/// The rows that a registration tells, in the state's order.
struct Outcomes {
  std::vector<GroupOutcome> groups;
  std::vector<PointOutcome> points;
};

/// Of a state that hasn't been solved: what it holds, which points are out and why.
Outcomes outcomesOf(const SessionState& state);

struct Results : Registered {
  Outcomes rows;
};

/// To be called for a state that has been solved. No point stands out yet.
Results describeResults(const SessionState& state, const SolvedTransforms& solved);

/// From the rows the figures over them: of each group, of all, which point is largest, and what to quote.
void summarise(Results& results);

/// A point that is judged to be beyond the others, beside the discrepancies of all. Nothing where all of
/// them are the rounding of numbers.
std::optional<Outlier> standOut(const Registered& registered, const std::vector<PointOutcome>& points,
                                std::size_t point);

}  // namespace tiepoint::workbench
