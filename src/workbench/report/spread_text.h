// The spread of points of one name, drawn for people.
#pragma once

#include <string>

#include "workbench/report/length_format.h"
#include "workbench/values/point_spread.h"

namespace tiepoint::workbench {

/// The largest distance and the histogram, a bar of '#' a bin; empty without a histogram.
std::string spreadText(const PointSpread& spread, const LengthFormat& lengths);

}  // namespace tiepoint::workbench
