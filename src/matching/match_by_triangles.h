// Names by equal triangles, before anything is solved.
#pragma once

#include "matching/naming_state.h"

namespace ZOR::reg {

/// Distances within one group are the same in every coordinate system: triangles of different
/// groups with nearly the same sides are taken to be the same triangle, and their corners the same
/// targets. `sideTolerance` is the distance below which two triples of sides count as equal,
/// `minSideDifference` what any two sides of a usable triangle must differ by; drawing units.
///
/// Something must be unnamed to start with. One contradiction anywhere leaves `changes` empty.
void matchByTriangles(const RefPointList& points, double sideTolerance, double minSideDifference,
                      NamingChanges& changes);

}  // namespace ZOR::reg
