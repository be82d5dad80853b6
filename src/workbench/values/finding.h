// What is worth reporting although the work goes on, as a value; every front end has its own wording.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "workbench/values/import_report.h"

namespace tiepoint::workbench {

enum class FindingKind {
  // --- Of files.
  markInName,
  namesInUtf8,
  groupNameBeyondNarrow,
  readingStopped,
  groupThereAlready,
  // --- Of the groups in use.
  clusterKept,
  clusterNotNeeded,
  notConnected,
  baseTakesNoPart,
  groupNotRegistered,
  nameTwice,
  pointsOnOneLine,
  oddWeights,
  otherUnit,
  mirrorImages,
  /// Targets with given places that no station measured.
  controlNotSeen,
  // --- Of the iterative method.
  courseUnknown,
  notConverged,
  // --- Why a matching named nothing.
  fewPoints,
  oneGroup,
  nothingUnnamed,
  noUsableTriangle,
  noEqualTriangles,
  onlyNamed,
  contradiction,
  conflict,
  notSolved,
  namedByFiles,
  nothingClose,
  // --- What hinders a search for names.
  notFinite,
  twinPoints,
  nearOneAnother,
  farApart,
  // --- Why stations weren't joined, or hardly.
  stationFewPoints,
  stationAlone,
  stationNoEqualTriangles,
  stationMirrored,
  stationAmbiguous,
  stationThreePoints,
  stationAboveLimit,
  stationContradiction,
  openLoop,
  weakLink,
  solveAboveLimit
};

enum class Severity { note, warning, refusal };

/// What a kind doesn't need is empty. Names are UTF-8, lengths in drawing units.
struct Finding {
  FindingKind kind = FindingKind::notConverged;
  Severity severity = Severity::warning;
  std::vector<std::string> groups = {};
  std::vector<std::string> points = {};
  std::string path = {};
  /// What was found, and what it was held against.
  double value = 0.0;
  double limit = 0.0;
  std::uint64_t count = 0;
  std::uint64_t atLeast = 0;
  /// Of groups that aren't connected, those that are.
  std::vector<std::vector<std::string>> components = {};
  std::optional<LineFault> fault = std::nullopt;
};

/// For programs, such as "weak-link". Several kinds may share one: what to do is the same.
const char* findingKey(FindingKind kind);

/// What a piece of work has found so far. Each finding is also passed on at once to a listener.
class Findings {
 public:
  using Listener = std::function<void(const Finding&)>;

  Findings() = default;
  explicit Findings(Listener listener_) : listener(std::move(listener_)) {}

  void add(Finding finding) {
    found.push_back(std::move(finding));
    if (listener) listener(found.back());
  }
  const std::vector<Finding>& all() const { return found; }

 private:
  Listener listener;
  std::vector<Finding> found;
};

}  // namespace tiepoint::workbench
