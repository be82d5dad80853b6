// Units of length of survey files.
#pragma once

#include "workbench/values/file_reading.h"

namespace tiepoint::workbench {

/// A length in that unit, in metres.
double metresOf(double length, LengthUnit unit);

}  // namespace tiepoint::workbench
