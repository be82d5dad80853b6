// How measurements, targets and stations are called in what is told of an adjustment.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "workbench/values/registration.h"

namespace tiepoint::workbench {

/// Such as "T13 in S4", of a point among the outcomes.
std::string pointInGroup(const Registration& registration, std::size_t point);

/// Such as "S4:T13", as options take it.
std::string pointChoice(const Registration& registration, std::size_t point);

/// Of a station of the network, which is the group of the same index.
std::string stationName(const Registration& registration, std::size_t station);

/// Of a target of the network; there must be an adjustment.
std::string targetName(const Registration& registration, std::size_t target);

/// Such as "T13, T19 and T21"; of more than `most` the rest is counted.
std::string listed(const std::vector<std::string>& names, std::size_t most = 6);

}  // namespace tiepoint::workbench
