#include "workbench/values/refusal.h"

#include <algorithm>
#include <array>

namespace tiepoint::workbench {

namespace {

struct KindInfo {
  RefusalKind kind;
  const char* key;
  RefusalClass refusalClass;
};

using Kind = RefusalKind;
constexpr auto refused = RefusalClass::refused;
constexpr auto usage = RefusalClass::usage;
constexpr auto file = RefusalClass::file;

constexpr std::array kinds{
    KindInfo{Kind::emptyPath, "empty-path", usage},
    KindInfo{Kind::nothingToRegister, "nothing-to-register", usage},
    KindInfo{Kind::drawingEmpty, "drawing-empty", refused},
    KindInfo{Kind::noSuchGroup, "no-such-group", usage},
    KindInfo{Kind::noSuchPoint, "no-such-point", usage},
    KindInfo{Kind::weightOutOfRange, "weight-out-of-range", usage},
    KindInfo{Kind::goesWith, "goes-with", usage},
    KindInfo{Kind::notALength, "not-a-length", usage},
    KindInfo{Kind::notAboveZero, "not-above-zero", usage},
    KindInfo{Kind::notAShare, "not-a-share", usage},
    KindInfo{Kind::keepClusterNeedsPairwise, "keep-cluster-needs-pairwise", usage},
    KindInfo{Kind::profileLimits, "profile-limits", usage},
    KindInfo{Kind::noSuchCluster, "no-such-cluster", usage},
    KindInfo{Kind::noClusters, "no-clusters", usage},
    KindInfo{Kind::movedNeedsApply, "moved-needs-apply", usage},
    KindInfo{Kind::inputUnitGivesMetres, "input-unit-gives-metres", usage},
    KindInfo{Kind::inputUnitLeavesClouds, "input-unit-leaves-clouds", usage},
    KindInfo{Kind::groupTwice, "group-twice", usage},
    KindInfo{Kind::cloudTwice, "cloud-twice", usage},
    KindInfo{Kind::pathNotUtf8, "path-not-utf8", file},
    KindInfo{Kind::fileMissing, "file-missing", file},
    KindInfo{Kind::fileIsFolder, "file-is-folder", file},
    KindInfo{Kind::fileUnreadable, "file-unreadable", file},
    KindInfo{Kind::fileNotPlain, "file-not-plain", file},
    KindInfo{Kind::fileCutShort, "file-cut-short", file},
    KindInfo{Kind::fileEmpty, "file-empty", file},
    KindInfo{Kind::fileChanged, "file-changed", file},
    KindInfo{Kind::noPoints, "no-points", file},
    KindInfo{Kind::fileAmbiguous, "file-ambiguous", file},
    KindInfo{Kind::fileNotRead, "file-not-read", file},
    KindInfo{Kind::lineTooLong, "line-too-long", file},
    KindInfo{Kind::pointsNotTaken, "points-not-taken", file},
    KindInfo{Kind::weightsLine, "weights-line", file},
    KindInfo{Kind::sigmasLine, "sigmas-line", usage},
    KindInfo{Kind::controlLine, "control-line", usage},
    KindInfo{Kind::controlNotDefinite, "control-not-definite", usage},
    KindInfo{Kind::controlTwice, "control-twice", usage},
    KindInfo{Kind::carryLine, "carry-line", usage},
    KindInfo{Kind::startNotRead, "start-not-read", file},
    KindInfo{Kind::cloudFileMissing, "cloud-file-missing", file},
    KindInfo{Kind::cloudFile, "cloud-file", file},
    KindInfo{Kind::noFolder, "no-folder", file},
    KindInfo{Kind::folderNotMade, "folder-not-made", file},
    KindInfo{Kind::targetIsFolder, "target-is-folder", file},
    KindInfo{Kind::targetNotOrdinary, "target-not-ordinary", file},
    KindInfo{Kind::targetIsRead, "target-is-read", file},
    KindInfo{Kind::targetExists, "target-exists", file},
    KindInfo{Kind::sameTarget, "same-target", usage},
    KindInfo{Kind::nameNotPortable, "name-not-portable", usage},
    KindInfo{Kind::groupNotPortable, "group-not-portable", file},
    KindInfo{Kind::copiesCollide, "copies-collide", file},
    KindInfo{Kind::notWritten, "not-written", file},
    KindInfo{Kind::commonPointsNotOpened, "common-points-not-opened", file},
    KindInfo{Kind::commonPointsCutShort, "common-points-cut-short", file},
    KindInfo{Kind::matrixCutShort, "matrix-cut-short", file},
    KindInfo{Kind::reportCutShort, "report-cut-short", file},
    KindInfo{Kind::noTemporaryFolder, "no-temporary-folder", file},
    KindInfo{Kind::notFinite, "not-finite", refused},
    KindInfo{Kind::notRigid, "not-rigid", refused},
    KindInfo{Kind::storeNameTaken, "store-name-taken", refused},
    KindInfo{Kind::storeNameForbidden, "store-name-forbidden", refused},
    KindInfo{Kind::cloudTaken, "cloud-taken", refused},
    KindInfo{Kind::cloudMovedBefore, "cloud-moved-before", refused},
    KindInfo{Kind::nothingToShow, "nothing-to-show", refused},
    KindInfo{Kind::pictureFailed, "picture-failed", file},
    KindInfo{Kind::cancelled, "cancelled", refused},
};

static_assert(kinds.size() == static_cast<std::size_t>(Kind::cancelled) + 1, "a row for each kind, in their order");

const KindInfo& infoOf(RefusalKind kind) { return kinds[static_cast<std::size_t>(kind)]; }

constexpr std::array fieldKeys{"",
                               "files",
                               "columns",
                               "decimal",
                               "encoding",
                               "inputUnit",
                               "document",
                               "base",
                               "exclude",
                               "weight",
                               "weightsFile",
                               "naming",
                               "namingLimit",
                               "sideTolerance",
                               "minSideDifference",
                               "closeness",
                               "method",
                               "maxIterations",
                               "convergence",
                               "sigma",
                               "sigmasFile",
                               "controlFile",
                               "level",
                               "startFile",
                               "variance",
                               "alpha",
                               "power",
                               "carryFile",
                               "trace",
                               "keepCluster",
                               "cloud",
                               "apply",
                               "moved",
                               "store",
                               "commonPoints",
                               "matrices",
                               "matrixFormat",
                               "transforms",
                               "report",
                               "reportKind",
                               "picture"};

static_assert(fieldKeys.size() == static_cast<std::size_t>(Field::picture) + 1, "a key for each field, in their order");

}  // namespace

const char* fieldKey(Field field) { return fieldKeys[static_cast<std::size_t>(field)]; }

const char* refusalKey(RefusalKind kind) { return infoOf(kind).key; }

RefusalClass refusalClass(RefusalKind kind) { return infoOf(kind).refusalClass; }

}  // namespace tiepoint::workbench
