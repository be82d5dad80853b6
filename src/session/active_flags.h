// Which points the next solve could use.
#pragma once

#include "records/tables.h"

namespace ZOR::reg {

/// Sets `active` of every point from the switches alone.
///
/// A point can take part when it is included, named, and its weight isn't zero. From those, groups
/// with fewer than three points and names that nobody else has are pruned until the set is stable;
/// a base must offer three names that others have, or it drops out. Afterwards each group that
/// isn't base and has any active point has at least three; each of their names occurs on two such
/// points or in the base; and an active base has at least three names, all shared.
void rebuildActiveFlags(RefPointList& points);

}  // namespace ZOR::reg
