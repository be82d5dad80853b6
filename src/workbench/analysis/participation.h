// Which observations, stations and targets an adjustment can use.
#pragma once

#include <vector>

#include "workbench/values/adjustment_network.h"

namespace tiepoint::workbench::analysis {

/// One flag for each of the network's rows.
struct Participation {
  std::vector<bool> stations;
  std::vector<bool> targets;
  std::vector<bool> observations;
};

/// A target takes part with two sightings (control counts as one), one of them by a station that isn't
/// held; a station that isn't held with three such targets, with two when it is levelled; a held one with
/// any. Repeated until nothing changes. Of two observations of one target by one station only the last is
/// looked at.
Participation participationOf(const Network& network);

}  // namespace tiepoint::workbench::analysis
