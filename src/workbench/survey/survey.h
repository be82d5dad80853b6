// Registering a survey from another program: from points or files to a registration.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "workbench/values/finding.h"
#include "workbench/values/progress.h"
#include "workbench/values/refusal.h"
#include "workbench/values/registration.h"
#include "workbench/values/registration_request.h"
#include "workbench/values/station_points.h"

namespace tiepoint::workbench {

/// A host of the registration module in this process, which it loads. One stands at a time: the module
/// looks up the host's doors in the main program.
///
/// Registering throws Refused for a request that can't be carried out, with the kind, the part of the
/// request and the details as values; std::runtime_error where the host itself fails.
class SurveyHost {
 public:
  struct Options {
    /// Paths, UTF-8. Empty: the defaults, and the module beside the program or in ../lib/tiepoint.
    std::string profile;
    std::string module;
  };

  explicit SurveyHost(const Options& options);
  ~SurveyHost();
  SurveyHost(const SurveyHost&) = delete;
  SurveyHost& operator=(const SurveyHost&) = delete;

  /// Registers stations from memory, in a drawing in memory. The request's files and document are not
  /// looked at. A survey that can't be registered is a registration too: its outcome says why.
  Registration registerStations(const std::vector<StationPoints>& stations, const RegistrationRequest& request);
  /// The same, with reports of findings and progress.
  Registration registerStations(const std::vector<StationPoints>& stations, const RegistrationRequest& request,
                                Findings& findings, Progress& progress);

  /// Registers the request's files and what its document holds; nothing is delivered but the groups that
  /// the files give.
  Registration registerFiles(const RegistrationRequest& request, Findings& findings, Progress& progress);

 private:
  class State;
  std::unique_ptr<State> state;
};

}  // namespace tiepoint::workbench
