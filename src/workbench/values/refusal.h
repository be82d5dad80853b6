// Why a request isn't carried out, as a value that every face puts into words of its own.
#pragma once

#include <cstdint>
#include <exception>
#include <optional>
#include <string>
#include <vector>

#include "workbench/values/import_report.h"
#include "workbench/values/reading_outcome.h"

namespace tiepoint::workbench {

/// The part of a request that something is said of.
enum class Field {
  none,
  files,
  columns,
  decimal,
  encoding,
  inputUnit,
  document,
  base,
  exclude,
  weight,
  weightsFile,
  naming,
  namingLimit,
  sideTolerance,
  minSideDifference,
  closeness,
  method,
  maxIterations,
  convergence,
  sigma,
  sigmasFile,
  controlFile,
  level,
  startFile,
  variance,
  alpha,
  power,
  carryFile,
  trace,
  keepCluster,
  cloud,
  apply,
  moved,
  store,
  commonPoints,
  matrices,
  matrixFormat,
  transforms,
  report,
  reportKind,
  picture
};

/// For programs, such as "keepCluster".
const char* fieldKey(Field field);

enum class RefusalClass {
  /// The data don't allow it.
  refused,
  /// The request is wrong: unknown names or invalid values.
  usage,
  /// A file can't be read or written.
  file
};

enum class RefusalKind {
  // --- The request.
  emptyPath,
  nothingToRegister,
  drawingEmpty,
  noSuchGroup,
  noSuchPoint,
  weightOutOfRange,
  goesWith,
  notALength,
  notAboveZero,
  /// A level or a power that isn't between 0 and 1.
  notAShare,
  keepClusterNeedsPairwise,
  profileLimits,
  noSuchCluster,
  noClusters,
  movedNeedsApply,
  inputUnitGivesMetres,
  inputUnitLeavesClouds,
  groupTwice,
  cloudTwice,
  // --- Files that are read.
  pathNotUtf8,
  fileMissing,
  fileIsFolder,
  fileUnreadable,
  fileNotPlain,
  fileCutShort,
  fileEmpty,
  fileChanged,
  noPoints,
  /// See `reading`.
  fileAmbiguous,
  fileNotRead,
  lineTooLong,
  pointsNotTaken,
  weightsLine,
  sigmasLine,
  controlLine,
  /// The covariances of a line aren't those of a place.
  controlNotDefinite,
  /// A target of two lines that differ; `name` is its name.
  controlTwice,
  carryLine,
  /// Poses to start from that can't be read; `cause` says why.
  startNotRead,
  cloudFileMissing,
  cloudFile,
  // --- Files that are written.
  noFolder,
  folderNotMade,
  targetIsFolder,
  targetNotOrdinary,
  targetIsRead,
  targetExists,
  sameTarget,
  nameNotPortable,
  groupNotPortable,
  copiesCollide,
  notWritten,
  commonPointsNotOpened,
  commonPointsCutShort,
  matrixCutShort,
  reportCutShort,
  noTemporaryFolder,
  // --- What the data don't allow.
  notFinite,
  notRigid,
  storeNameTaken,
  storeNameForbidden,
  cloudTaken,
  cloudMovedBefore,
  nothingToShow,
  pictureFailed,
  cancelled
};

struct Refusal {
  RefusalKind kind = RefusalKind::nothingToRegister;
  Field field = Field::none;
  /// What the field holds, as it was given; a path where a file is meant.
  std::string given = {};
  /// A group or a cloud, and a point of it.
  std::string name = {};
  std::string point = {};
  /// The second of two: another path, another source.
  std::string other = {};
  Field otherField = Field::none;
  /// The names to choose from.
  std::vector<std::string> known = {};
  /// The system's own words.
  std::string cause = {};
  std::optional<double> value = std::nullopt;
  std::uint64_t count = 0;
  std::optional<LineFault> fault = std::nullopt;
  std::optional<ReadingOutcome> reading = std::nullopt;
};

/// For programs, such as "no-such-group".
const char* refusalKey(RefusalKind kind);
RefusalClass refusalClass(RefusalKind kind);

/// The one error of the rooms below the faces. what() is the key; the words are the faces'.
class Refused : public std::exception {
 public:
  explicit Refused(Refusal refusal_) : value(std::move(refusal_)) {}

  const Refusal& refusal() const { return value; }
  const char* what() const noexcept override { return refusalKey(value.kind); }

 private:
  Refusal value;
};

}  // namespace tiepoint::workbench
