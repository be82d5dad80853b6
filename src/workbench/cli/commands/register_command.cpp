#include "workbench/cli/commands/register_command.h"

#include "workbench/cli/length_format.h"
#include "workbench/cli/output.h"
#include "workbench/cli/road.h"
#include "workbench/cli/start_workbench.h"
#include "workbench/cli/summary_json.h"
#include "workbench/cli/summary_text.h"

namespace tiepoint::workbench::cli {

namespace {

const char* refusal(Outcome outcome) {
  switch (outcome) {
    case Outcome::baseLost:
      return "the base shares fewer than 3 points with the others";
    case Outcome::notNamed:
      return "the points can't be named so that it is certain";
    default:
      return "the groups don't hang together";
  }
}

}  // namespace

ExitStatus runRegister(const RegisterOptions& options) {
  const LengthFormat lengths(options.unit);
  Warnings warnings(options.quiet);
  const std::unique_ptr<Workbench> host = startWorkbench(options.host);
  Workbench& workbench = *host;
  const Road road = travel(workbench, options, warnings);

  if (options.json) {
    writeOut(summaryJson(road, warnings.all()));
  } else if (!options.quiet) {
    writeOut(summaryText(road, lengths));
  }
  if (road.outcome == Outcome::registered) return ExitStatus::done;
  sayError(std::string("not registered: ") + refusal(road.outcome));
  return ExitStatus::refused;
}

}  // namespace tiepoint::workbench::cli
