// What is told of every station, every target and every carried point.
#pragma once

#include "workbench/analysis/cofactors.h"
#include "workbench/values/adjustment_result.h"

namespace tiepoint::workbench::analysis {

/// Poses and places, without covariances; of a solution that may be singular.
void describePlaces(const Solution& solution, Adjustment& adjustment);

/// The margin of the next best naming, of every station that isn't held. Needs no covariances.
void describeNaming(const Solution& solution, Adjustment& adjustment);

/// Stations without naming, targets' covariances and carried points. `variance` scales the cofactors. The
/// observations must be described already: the stations' redundancies are their sums.
void describeStations(const Solution& solution, const Cofactors& cofactors, double variance,
                      const std::vector<CarriedPoint>& carry, Adjustment& adjustment);

}  // namespace tiepoint::workbench::analysis
