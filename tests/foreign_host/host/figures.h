// The figures of a registered survey.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/pointclouds/stored_point.h"
#include "platform/sdk/od_ge_matrix3d.h"
#include "records/tables.h"

namespace foreign {

/// What a session and the drawing tell; lengths in drawing units.
struct Findings {
  std::vector<std::wstring> messages;
  std::map<ZOR::reg::GroupId, std::string> groups;
  ZOR::reg::GroupIdSet baseGroups;
  ZOR::reg::RefPointList points;
  ZOR::reg::RefPointIdSet inactivePoints;
  ZOR::reg::NamedIdList names;
  std::map<ZOR::reg::RefPointId, double> discrepancies;
  /// From each registered group's system to the common one, as a cloud that was unmoved took it.
  std::map<ZOR::reg::GroupId, OdGeMatrix3d> transforms;
  double maxSpread = 0.0;
  std::vector<std::uint64_t> spreadCounts;
  std::vector<double> spreadEdges;
  ZOR::StoredPointArray commonPoints;
};

/// One figure a line: a path of keys and places from 0, a blank, and the value with the digits that
/// read back as the same double, or "null".
std::string figuresOf(const Findings& findings);

}  // namespace foreign
