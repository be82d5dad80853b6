// What an adjustment comes to, in a few sentences.
#pragma once

#include <string>

#include "workbench/report/length_format.h"
#include "workbench/values/registration.h"

namespace tiepoint::workbench {

/// A line or two each: whether it converged, the measurement to suspect, the global test or the estimated
/// sigma, whether other poses could fit better, what is softest. There must be an adjustment.
std::string verdictText(const Registration& registration, const LengthFormat& lengths);

}  // namespace tiepoint::workbench
