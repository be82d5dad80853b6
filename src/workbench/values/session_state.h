// What a session holds, kept as plain data.
#pragma once

#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "records/tables.h"
#include "workbench/values/name_table.h"

namespace tiepoint::workbench {

struct SessionGroup {
  ZOR::reg::GroupId id = 0;
  /// UTF-8.
  std::string name;
  bool inBase = false;
  /// At least one of its points is.
  bool inSession = false;
};

/// A point as the session holds it: the record's flags and weight follow the answers.
struct SessionPoint {
  ZOR::reg::RefPoint record;
  /// UTF-8.
  std::string name;
};

struct SessionCloud {
  std::uint64_t number = 0;
  /// UTF-8.
  std::string name;
};

/// Which report `saveReport` would write.
enum class LastReport { none, points, groups, results };

struct SessionState {
  /// All that the session has listed, in ascending id, which is the drawing's order.
  std::vector<SessionGroup> groups;
  /// In the session's order.
  std::vector<SessionPoint> points;
  /// Every name that the session knows.
  NameTable names;
  /// What the markers are shown of; also ids of groups that aren't in the session.
  ZOR::reg::GroupIdSet visibleGroups;

  /// As the last solve answered, drawing units.
  ZOR::reg::PointDiscrepancies discrepancies;
  /// The groups that have a transformation; also those that have left the session since.
  ZOR::reg::GroupIdSet registeredGroups;
  /// Of the last solve that was refused.
  ZOR::reg::GroupClusters clusters;

  /// What a solve or a matching took last, at first what it is offered; lengths in drawing units.
  std::uint64_t maxIterations = 0;
  double convergenceCriteria = 0.0;
  double matchDistanceTolerance = 0.0;
  double triangleSideTolerance = 0.0;
  double triangleMinSideDifference = 0.0;

  /// As they were listed last.
  std::vector<SessionCloud> clouds;
  LastReport lastReport = LastReport::none;

  /// Points to which a matching gave a name that two ids bear: the answer doesn't say which of the two, and
  /// `commonId` and `autoNamed` of their records are a guess.
  ZOR::reg::RefPointIdSet unsureNames;

  /// Throws std::out_of_range for an id that the session doesn't have.
  const SessionGroup& group(ZOR::reg::GroupId id) const;
};

/// The text as a session shows it: its names are windows-1251, and what that lacks is "?". Throws
/// EncodingError when it isn't UTF-8.
std::string sessionName(const std::string& utf8);

/// The point may take part: it is switched on, weighs something and has a name. A weight that is no
/// number weighs nothing.
inline bool isEligible(const ZOR::reg::RefPoint& point) {
  return point.included && (point.weight < 0.0 || point.weight > 0.0) && point.named;
}

inline bool hasFinitePosition(const ZOR::reg::RefPoint& point) {
  const OdGePoint3d& p = point.position;
  return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
}

}  // namespace tiepoint::workbench
