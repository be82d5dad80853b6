// The stations of a session as shapes: where their points lie to one another.
#pragma once

#include <map>
#include <vector>

#include "workbench/geometry/alignments.h"
#include "workbench/values/naming_step.h"
#include "workbench/values/session_state.h"

namespace tiepoint::workbench {

/// A station's points that may be used, those with finite coordinates.
struct Station {
  StationShape shape;
  /// For each point of the shape its index in the state's points.
  std::vector<std::size_t> indices;
  /// The points' indices in the shape.
  std::map<ZOR::reg::RefPointId, std::size_t> indexInShape;
};

using Stations = std::map<ZOR::reg::GroupId, Station>;

/// Of the groups that have a point to use.
Stations stationsOf(const SessionState& state);

/// The points that two groups have under the same names: the first's, the second's.
PointPairs sharedNames(const SessionState& state, ZOR::reg::GroupId first, ZOR::reg::GroupId second);

/// The names that the points of each group may be joined by, ascending.
using NamesByGroup = std::map<ZOR::reg::GroupId, std::vector<ZOR::reg::CommonPointId>>;
NamesByGroup namesByGroup(const SessionState& state);

/// How many names two groups share: as many as there are pairs in `sharedNames`.
std::size_t countSharedNames(const NamesByGroup& names, ZOR::reg::GroupId first, ZOR::reg::GroupId second);

/// A naming that was solved is no good when a discrepancy is above the limit or isn't a number, or
/// when a group has two points in use of one name.
bool isSound(const SessionState& state, double limit);
/// Not a number where one of them is none.
double largestDiscrepancy(const SessionState& state);

}  // namespace tiepoint::workbench
