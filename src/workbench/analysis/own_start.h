// Where the stations stand before the search for the minimum: their given starts, and for those without
// one a place on the targets that they share with others.
#pragma once

#include "workbench/analysis/placement.h"
#include "workbench/values/adjustment_network.h"

namespace tiepoint::workbench::analysis {

/// For each station of the survey. What is held stands at the identity, as does the frame of a free
/// network; levelled stations stand level. A station joins what stands already by three shared targets, two
/// when both know the vertical; what can't be joined so is laid onto the targets that there are.
Placements startOf(const Network& network, const Survey& survey);

/// The same from starts that aren't the network's: one for each station of the survey.
Placements onDatum(const Survey& survey, const Placements& placements);

}  // namespace tiepoint::workbench::analysis
