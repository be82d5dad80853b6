// The names of groups, which link them.
#pragma once

#include <cstddef>
#include <map>

#include "records/tables.h"

namespace ZOR::reg {

/// The names of each group.
using GroupNameSets = std::map<GroupId, CommonPointIdSet>;

/// How many common names link two groups; a rigid fit needs as many.
inline constexpr std::size_t minCommonPoints = 3;

}  // namespace ZOR::reg
