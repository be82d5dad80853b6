#include "workbench/survey/survey.h"

#include "workbench/host/workbench.h"
#include "workbench/io/text_encoding.h"
#include "workbench/session/scratch_document.h"
#include "workbench/session/stored_groups.h"
#include "workbench/survey/register_survey.h"

namespace tiepoint::workbench {

namespace {

/// Of one registration nothing stays open for the next.
class ClosedAfterwards {
 public:
  explicit ClosedAfterwards(Workbench& workbench_) : workbench(workbench_) {}
  ~ClosedAfterwards() {
    while (workbench.activeDocument()) workbench.closeDocument(workbench.requireActiveDocument().number());
  }
  ClosedAfterwards(const ClosedAfterwards&) = delete;
  ClosedAfterwards& operator=(const ClosedAfterwards&) = delete;

 private:
  Workbench& workbench;
};

}  // namespace

class SurveyHost::State {
 public:
  explicit State(const Options& options) : workbench({options.profile, options.module}) {}

  Registration run(const RegistrationRequest& request, Findings& findings, Progress& progress) {
    const ResolvedRequest resolved = resolve(workbench, request, findings);
    return registerSurvey(workbench, resolved, findings, progress)->registration;
  }

  Workbench workbench;
};

SurveyHost::SurveyHost(const Options& options) : state(std::make_unique<State>(options)) {}

SurveyHost::~SurveyHost() = default;

Registration SurveyHost::registerStations(const std::vector<StationPoints>& stations,
                                          const RegistrationRequest& request) {
  Findings findings;
  Progress progress;
  return registerStations(stations, request, findings, progress);
}

Registration SurveyHost::registerStations(const std::vector<StationPoints>& stations,
                                          const RegistrationRequest& request, Findings& findings, Progress& progress) {
  const ScratchDocument drawing(state->workbench);
  state->workbench.inTransaction([&] {
    for (const StationPoints& station : stations) {
      if (storeGroup(*drawing.database(), station)) continue;
      Refusal refusal{RefusalKind::groupTwice, Field::files, station.name, station.name};
      refusal.other = station.name;
      throw Refused(std::move(refusal));
    }
  });
  RegistrationRequest inMemory = request;
  inMemory.files.clear();
  inMemory.document.clear();
  return state->run(inMemory, findings, progress);
}

Registration SurveyHost::registerFiles(const RegistrationRequest& request, Findings& findings, Progress& progress) {
  const ClosedAfterwards closed(state->workbench);
  return state->run(request, findings, progress);
}

}  // namespace tiepoint::workbench
