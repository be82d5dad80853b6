// The stations that are joined already, as the field of targets that a further one is laid onto.
#pragma once

#include <unordered_map>

#include "platform/sdk/od_ge_matrix3d.h"
#include "workbench/geometry/station_shapes.h"

namespace tiepoint::workbench {

/// The targets of the groups, in the common system: a named one where the first of its points was
/// put, and every point without a name.
struct NamedField {
  TargetField field;
  std::map<ZOR::reg::CommonPointId, std::size_t> targetOf;
};

/// Where the point lies in the common system; a group without a motion lies in it.
Eigen::Vector3d inCommonSystem(const ZOR::reg::RefPoint& record,
                               const std::map<ZOR::reg::GroupId, OdGeMatrix3d>& toCommon);

/// Groups without a motion count as lying in the common system. `stations` must outlive the result.
NamedField fieldOf(const SessionState& state, const Stations& stations, const ZOR::reg::GroupIdSet& groups,
                   const std::map<ZOR::reg::GroupId, OdGeMatrix3d>& toCommon);

/// Where the names put a station's points in the field.
Placement placementOf(const SessionState& state, const Station& station, const NamedField& named);

/// The points' records by their ids. The state must outlive them.
using RecordsById = std::unordered_map<ZOR::reg::RefPointId, const ZOR::reg::RefPoint*>;
RecordsById recordsById(const SessionState& state);

/// The largest distance between the points of a pair, in the common system.
double farthestApart(const RecordsById& records, const PointPairs& pairs,
                     const std::map<ZOR::reg::GroupId, OdGeMatrix3d>& toCommon);

}  // namespace tiepoint::workbench
