// What is told of every measurement, and of control with a covariance.
#pragma once

#include "workbench/analysis/cofactors.h"
#include "workbench/analysis/reliability.h"
#include "workbench/values/adjustment_result.h"

namespace tiepoint::workbench::analysis {

/// Fills observations, control, suspect and the levels' numbers of tests.
void describeObservations(const Solution& solution, const Cofactors& cofactors, TestSetting setting,
                          Adjustment& adjustment);

/// The effect of one observation of the network on every station that isn't held.
Trace traceOf(const Solution& solution, const Cofactors& cofactors, const TestSetting& setting,
              std::size_t observation);

}  // namespace tiepoint::workbench::analysis
