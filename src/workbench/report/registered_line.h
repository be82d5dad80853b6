// What every summary begins with.
#pragma once

#include <cstddef>
#include <string>

#include "workbench/values/registration.h"

namespace tiepoint::workbench {

/// The names of the bases, the first `most` of them.
std::string baseNames(const Registration& registration, std::size_t most = 12);

/// Such as "Registered pairwise with base S1", "Adjusted with base S1 and 4 control targets", or "Adjusted freely,
/// in the system of S1".
std::string registeredLine(const Registration& registration, std::size_t maxBases = 12);

/// How many points are in use.
std::size_t activeCount(const Registration& registration);

}  // namespace tiepoint::workbench
