// The stations that are joined already, as the field of targets that a further one is laid onto.
#pragma once

#include <map>
#include <set>
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

/// What the files say of a station and a field, whatever names were found since.
struct FileNames {
  /// By the index of the station's point.
  std::map<std::size_t, ZOR::reg::CommonPointId> ofPoint;
  std::map<ZOR::reg::CommonPointId, std::size_t> targetOf;
  std::set<std::size_t> targets;
};

/// `start` is the state before any name was found, `named` the whole field of `groups`.
FileNames fileNamesOf(const SessionState& start, const Stations& stations, const ZOR::reg::GroupIdSet& groups,
                      const NamedField& named, const Station& added);

/// It puts a point on a target that has another name in the files, or not on the one that has its own.
bool contradicts(const Placement& placement, const FileNames& names);

/// The points' records by their ids. The state must outlive them.
using RecordsById = std::unordered_map<ZOR::reg::RefPointId, const ZOR::reg::RefPoint*>;
RecordsById recordsById(const SessionState& state);

/// The largest distance between the points of a pair, in the common system.
double farthestApart(const RecordsById& records, const PointPairs& pairs,
                     const std::map<ZOR::reg::GroupId, OdGeMatrix3d>& toCommon);

}  // namespace tiepoint::workbench
