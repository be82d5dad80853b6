// The ordered containers that the floors hand to one another.
#pragma once

#include <cstdint>
#include <list>
#include <map>

#include "records/common_point.h"
#include "records/ids.h"
#include "records/named_id.h"
#include "records/ref_point.h"
#include "records/rigid_transform.h"

namespace ZOR::reg {

using RefPointList = std::list<RefPoint>;
using NamedIdList = std::list<NamedId>;
using GroupTransforms = std::map<GroupId, RigidTransform>;
using CommonPoints = std::map<CommonPointId, CommonPoint>;
/// Discrepancy of each point, in drawing units.
using PointDiscrepancies = std::map<RefPointId, double>;
/// Sets of mutually linked groups by cluster number.
using GroupClusters = std::map<std::uint64_t, GroupIdSet>;

}  // namespace ZOR::reg
