// Identifiers, valid inside one session object.
#pragma once

#include <cstdint>
#include <set>

namespace ZOR::reg {

/// A group: the reference points measured from one station.
using GroupId = std::uint64_t;
/// A name of a reference point; equal in two groups for the same target.
using CommonPointId = std::uint64_t;
/// One reference point of one group.
using RefPointId = std::uint64_t;

using GroupIdSet = std::set<GroupId>;
using CommonPointIdSet = std::set<CommonPointId>;
using RefPointIdSet = std::set<RefPointId>;

}  // namespace ZOR::reg
