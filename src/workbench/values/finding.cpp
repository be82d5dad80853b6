#include "workbench/values/finding.h"

#include <array>

namespace tiepoint::workbench {

namespace {

struct KindInfo {
  FindingKind kind;
  const char* key;
};

using Kind = FindingKind;

constexpr std::array kinds{
    KindInfo{Kind::markInName, "byte-order-mark"},
    KindInfo{Kind::namesInUtf8, "names-in-utf8"},
    KindInfo{Kind::groupNameBeyondNarrow, "group-name"},
    KindInfo{Kind::readingStopped, "reading-stopped"},
    KindInfo{Kind::groupThereAlready, "group-there-already"},
    KindInfo{Kind::clusterKept, "cluster-kept"},
    KindInfo{Kind::clusterNotNeeded, "cluster-not-needed"},
    KindInfo{Kind::notConnected, "not-connected"},
    KindInfo{Kind::baseTakesNoPart, "base-takes-no-part"},
    KindInfo{Kind::groupNotRegistered, "group-not-registered"},
    KindInfo{Kind::nameTwice, "name-twice"},
    KindInfo{Kind::pointsOnOneLine, "points-on-one-line"},
    KindInfo{Kind::oddWeights, "odd-weights"},
    KindInfo{Kind::otherUnit, "other-unit"},
    KindInfo{Kind::mirrorImages, "mirror-images"},
    KindInfo{Kind::controlNotSeen, "control-not-seen"},
    KindInfo{Kind::courseUnknown, "course-unknown"},
    KindInfo{Kind::notConverged, "not-converged"},
    KindInfo{Kind::fewPoints, "too-few-points"},
    KindInfo{Kind::oneGroup, "one-group"},
    KindInfo{Kind::nothingUnnamed, "nothing-unnamed"},
    KindInfo{Kind::noUsableTriangle, "no-usable-triangle"},
    KindInfo{Kind::noEqualTriangles, "no-equal-triangles"},
    KindInfo{Kind::onlyNamed, "only-named"},
    KindInfo{Kind::contradiction, "contradiction"},
    KindInfo{Kind::conflict, "conflict"},
    KindInfo{Kind::notSolved, "not-solved"},
    KindInfo{Kind::namedByFiles, "nothing-unnamed"},
    KindInfo{Kind::nothingClose, "nothing-close"},
    KindInfo{Kind::notFinite, "not-finite"},
    KindInfo{Kind::twinPoints, "twin-points"},
    KindInfo{Kind::nearOneAnother, "unit"},
    KindInfo{Kind::farApart, "unit"},
    KindInfo{Kind::stationFewPoints, "too-few-points"},
    KindInfo{Kind::stationAlone, "one-group"},
    KindInfo{Kind::stationNoEqualTriangles, "no-equal-triangles"},
    KindInfo{Kind::stationMirrored, "mirrored"},
    KindInfo{Kind::stationAmbiguous, "ambiguous"},
    KindInfo{Kind::stationThreePoints, "three-points"},
    KindInfo{Kind::stationAboveLimit, "above-limit"},
    KindInfo{Kind::stationContradiction, "contradiction"},
    KindInfo{Kind::openLoop, "open-loop"},
    KindInfo{Kind::weakLink, "weak-link"},
    KindInfo{Kind::solveAboveLimit, "above-limit"},
};

static_assert(kinds.size() == static_cast<std::size_t>(Kind::solveAboveLimit) + 1, "a row for each kind, in order");

}  // namespace

const char* findingKey(FindingKind kind) { return kinds[static_cast<std::size_t>(kind)].key; }

}  // namespace tiepoint::workbench
