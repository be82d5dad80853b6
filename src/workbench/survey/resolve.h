// What can be known to go wrong before anything is changed.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "workbench/host/workbench.h"
#include "workbench/survey/import_files.h"
#include "workbench/survey/output_targets.h"
#include "workbench/values/finding.h"
#include "workbench/values/registration_request.h"

namespace tiepoint::workbench {

/// Where the common points go. The module adds ".txt" to the name itself.
struct CommonPointsTarget {
  /// Narrow, without the ending.
  std::string name;
  /// The whole path, with the ending; UTF-8.
  OutputTarget target;
};

/// A request of which every name, weight and target has been checked.
struct ResolvedRequest {
  RegistrationRequest request;
  /// The file's, then the request's.
  std::vector<WeightChoice> weights;
  /// The file's, then the request's. What is said of a point goes before what is said of its station, and of
  /// two of one kind the later holds.
  std::vector<SigmaChoice> sigmas;
  /// Each name once.
  std::vector<ControlTarget> control;
  /// The poses of the file, among them those of stations that the drawing hasn't.
  std::vector<StationPose> start;
  std::vector<StationPlace> carry;
  /// With absolute paths.
  std::vector<CloudRequest> clouds;
  std::optional<CommonPointsTarget> commonPoints;
  /// The files that the request names, as against those of a folder.
  std::vector<OutputTarget> targets;
  Replacing replacing;
  /// Of the rehearsal.
  ImportReport import;
  ModuleFiles files;
};

/// Reads the files and opens the drawing where it is there; makes and changes nothing. A point that only
/// a matching may name stays open. Throws Refused, EncodingError for text that isn't UTF-8, and what the
/// host throws.
ResolvedRequest resolve(Workbench& workbench, const RegistrationRequest& request, Findings& findings);

/// Opens the drawing that is asked for, if it is there; the active one when none is. Without files to take in it must
/// be. Throws Refused (nothingToRegister) when there is neither.
void openDrawing(Workbench& workbench, const std::string& document, bool hasFiles);

/// Makes the drawing that openDrawing hasn't found; one in memory when none is asked for.
void makeDrawing(Workbench& workbench, const std::string& document);

}  // namespace tiepoint::workbench
