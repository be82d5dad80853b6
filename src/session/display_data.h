// What the markers show, made from the session's points.
#pragma once

#include <cstdint>
#include <vector>

#include "records/display_group.h"
#include "records/tables.h"

namespace ZOR::reg {

/// One entry for each group that has points, in ascending id; the k-th takes the k-th colour, and
/// the colours start again after the last. Positions as measured, whatever a solve has found.
DisplayGroups displayOf(const RefPointList& points, const NamedIdList& groupNames, const NamedIdList& commonNames,
                        const std::vector<std::uint8_t>& colors);

/// The entries whose group is in `visibleGroups`.
DisplayGroups restrictedTo(const GroupIdSet& visibleGroups, const DisplayGroups& display);

/// Moves the markers of every group that has a transformation.
void moveMarkers(const GroupTransforms& transforms, DisplayGroups& display);

/// The present names of those of `points` that the session holds.
std::map<RefPointId, OdString> displayNamesOf(const RefPointIdSet& points, const RefPointList& sessionPoints,
                                              const NamedIdList& commonNames);

/// Gives the markers of those points their names.
void renameMarkers(const std::map<RefPointId, OdString>& names, DisplayGroups& display);

}  // namespace ZOR::reg
