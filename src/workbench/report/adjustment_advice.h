// What to do about an adjustment.
#pragma once

#include <string>

#include "workbench/values/registration.h"

namespace tiepoint::workbench {

/// A few lines, the most urgent first; empty where there is nothing to do. There must be an adjustment.
std::string adviceText(const Registration& registration);

}  // namespace tiepoint::workbench
