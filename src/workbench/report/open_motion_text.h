// The motion that keeps an adjustment from being determined.
#pragma once

#include <string>

#include "workbench/values/registration.h"

namespace tiepoint::workbench {

/// Such as "S2 turns about the line of its targets"; with others that move along, and targets on the axis where
/// there are two. Places are in drawing units, in the common system. Says so where nothing is known of it.
std::string openMotionText(const Registration& registration);

/// What would hold it.
std::string openMotionRemedy(const Registration& registration);

}  // namespace tiepoint::workbench
