#include "workbench/cli/commands/register_command.h"

#include <algorithm>

#include "workbench/cli/length_format.h"
#include "workbench/cli/output.h"
#include "workbench/cli/road.h"
#include "workbench/cli/start_workbench.h"
#include "workbench/cli/summary_json.h"
#include "workbench/cli/summary_text.h"

namespace tiepoint::workbench::cli {

namespace {

bool hasNames(const SessionState& state) {
  return std::any_of(state.points.begin(), state.points.end(), [](const SessionPoint& p) { return p.record.named; });
}

std::string whyNotLinked(const Road& road) {
  const std::vector<Part>& parts = road.links.parts;
  if (parts.empty() && !hasNames(road.state)) {
    return road.match ? "no point could be named; the summary tells why"
                      : "no point has a name; --match auto finds names";
  }
  if (parts.empty()) return "no group has a point that could take part; the summary tells why";
  if (parts.size() == 1 && !parts.front().cluster) return "there is one group alone; add a second to join it with";
  return "the groups don't hang together; the summary tells what they lack";
}

std::string refusal(const Road& road) {
  switch (road.outcome) {
    case Outcome::baseLost:
      return "the base shares fewer than 3 points with the others; choose another base or none";
    case Outcome::notNamed:
      return "the points can't be named so that it is certain; the summary tells why";
    default:
      return whyNotLinked(road);
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
    writeSummaryJson(road, warnings.all(), writeOut);
  } else if (!options.quiet) {
    writeOut(summaryText(road, lengths));
  }
  if (road.outcome == Outcome::registered) return ExitStatus::done;
  sayError("not registered: " + refusal(road));
  return ExitStatus::refused;
}

}  // namespace tiepoint::workbench::cli
