// Names by closeness, once groups are solved.
#pragma once

#include "matching/naming_state.h"

namespace ZOR::reg {

/// Looks for clusters in which registered points of `points` lie closer together than `tolerance`
/// (drawing units), chains included, and decides which name each point of a cluster takes. Groups
/// without a transformation take no part. Two binding names in one cluster leave `changes` empty, as
/// if nothing had matched.
void matchByDistance(const RefPointList& points, const GroupTransforms& groupTransforms, double tolerance,
                     NamingChanges& changes);

}  // namespace ZOR::reg
