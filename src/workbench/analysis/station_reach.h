// How far a measurement moves stations: by an error that nobody would notice, and by being left out.
#pragma once

#include "workbench/analysis/cofactors.h"
#include "workbench/analysis/reliability.h"
#include "workbench/values/adjustment_result.h"

namespace tiepoint::workbench::analysis {

/// External reliability: the largest motions over all errors b with b'Mb <= reach^2.
StationShift effectOn(std::size_t stationIndex, const StationRows& rows, const Eigen::Matrix3d& hiddenPull,
                      double reach);

/// The station's motion when the measurement is taken out.
StationVector motionWithout(const StationRows& rows, const TestedResidual& tested);

StationShift shiftOf(std::size_t stationIndex, const StationVector& motion);

/// The farthest that one of the station's adjusted targets moves with it.
double displacementOf(const Solution& solution, std::size_t station, const StationVector& motion);

}  // namespace tiepoint::workbench::analysis
