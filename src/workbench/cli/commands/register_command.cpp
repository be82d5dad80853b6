#include "workbench/cli/commands/register_command.h"

#include "workbench/cli/output.h"
#include "workbench/cli/picture_options.h"
#include "workbench/cli/request.h"
#include "workbench/cli/start_workbench.h"
#include "workbench/cli/terminal_progress.h"
#include "workbench/report/outputs.h"
#include "workbench/report/refused_text.h"
#include "workbench/report/summary_json.h"
#include "workbench/report/summary_text.h"
#include "workbench/report/survey_picture.h"
#include "workbench/survey/delivery.h"

namespace tiepoint::workbench::cli {

namespace {

/// What makes the picture that is asked for, if one is.
std::function<std::string()> picturePainter(Workbench& workbench, OpenSurvey& survey, const RegisterOptions& options,
                                            const LengthFormat& lengths) {
  const auto request = pictureRequest(options.picture, registerPictureNames);
  if (!request) return {};
  return [&workbench, &survey, &lengths, request] {
    return withRegisteredShown(workbench, survey,
                               [&](const ShownGroups& groups, const std::vector<const OdGiDrawable*>& drawables) {
                                 return registeredPicture(survey.registration, {groups, drawables}, lengths, *request);
                               });
  };
}

void print(const Registration& registration, const RegisterOptions& options, const LengthFormat& lengths) {
  if (options.json) {
    writeSummaryJson(registration, writeOut);
  } else if (!options.quiet) {
    writeOut(summaryText(registration, lengths, {options.allPoints, options.axes}));
  }
}

}  // namespace

ExitStatus runRegister(const RegisterOptions& options) {
  const RegistrationRequest request = requestOf(options);
  Findings findings(printFindings(options.quiet));
  TerminalProgress progress(options.quiet);
  const std::unique_ptr<Workbench> workbench = startWorkbench(options.host);
  const ResolvedRequest resolved = resolve(*workbench, request, findings);
  const Unit unit = resolved.request.unit;
  const LengthFormat lengths(unit);
  const std::unique_ptr<OpenSurvey> survey = registerSurvey(*workbench, resolved, findings, progress);
  const Registration& registration = survey->registration;
  deliver(*workbench, *survey, resolved,
          outputs(registration, request.outputs, unit, picturePainter(*workbench, *survey, options, lengths)),
          progress);
  print(registration, options, lengths);
  if (registration.registered()) return ExitStatus::done;
  printError("not registered: " + whyNotRegistered(registration));
  return ExitStatus::refused;
}

}  // namespace tiepoint::workbench::cli
