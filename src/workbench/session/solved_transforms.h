// The transformations that a session has found, with all their digits, and how far they leave points
// of one name apart.
//
// The interface gives them in reports and matrix files, rounded for reading; a cloud takes the whole
// double. So unmoved clouds of a drawing in memory are moved by them and read back, and so are the
// merged targets by storing them there.
#pragma once

#include <map>
#include <vector>

#include "platform/sdk/od_ge_matrix3d.h"
#include "session/i_multi_registrator.h"
#include "workbench/host/workbench.h"
#include "workbench/values/point_spread.h"
#include "workbench/values/registration.h"

namespace tiepoint::workbench {

struct SolvedTransforms {
  /// From each group's system to the common one; none for a base and for a group that took no part.
  std::map<ZOR::reg::GroupId, OdGeMatrix3d> toCommon;
  /// As the session stores them. Under the name of a target it stores a point that is out in its place,
  /// when a registered group has one.
  std::vector<MergedTarget> targets;
  /// What the groups were fitted to: the targets, with the merged one in each such place.
  std::vector<MergedTarget> fitted;
  PointSpread spread;
};

/// All leave the active drawing as it is. The session's list of clouds is that of the active drawing
/// afterwards.
std::map<ZOR::reg::GroupId, OdGeMatrix3d> solvedMotions(Workbench& workbench, ZOR::reg::iMultiRegistrator& session,
                                                        const std::vector<ZOR::reg::GroupId>& groups);
std::vector<MergedTarget> solvedTargets(Workbench& workbench, ZOR::reg::iMultiRegistrator& session);
/// `fitted` is the same as `targets`.
SolvedTransforms solvedTransforms(Workbench& workbench, ZOR::reg::iMultiRegistrator& session,
                                  const std::vector<ZOR::reg::GroupId>& groups);

}  // namespace tiepoint::workbench
