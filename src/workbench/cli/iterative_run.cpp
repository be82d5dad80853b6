#include "workbench/cli/iterative_run.h"

#include <fmt/format.h>

#include <cmath>
#include <cstdio>
#include <set>

#include "workbench/cli/exit_status.h"
#include "workbench/cli/spinner.h"
#include "workbench/report/plain_text.h"

namespace tiepoint::workbench::cli {

using namespace ZOR::reg;

namespace {

struct Limits {
  std::uint64_t maxIterations = 0;
  double convergence = 0.0;
};

Limits limitsOf(DrivenSession& session, const RegisterOptions& options) {
  Limits limits;
  session.operations().getIterationLimits(limits.maxIterations, limits.convergence);
  limits.maxIterations = options.maxIterations.value_or(limits.maxIterations);
  limits.convergence = options.convergence.value_or(limits.convergence);
  return limits;
}

void refuseBeside(const RegisterOptions& options) {
  if (options.maxIterations) {
    throw CommandError(ExitStatus::usage, "--max-iterations goes with --method iterative");
  }
  if (options.convergence) throw CommandError(ExitStatus::usage, "--convergence goes with --method iterative");
}

void checkLimits(const RegisterOptions& options) {
  if (options.keepCluster) {
    throw CommandError(ExitStatus::usage,
                       "--keep-cluster goes with --method pairwise; the iterative method takes all groups: leave some "
                       "out with --exclude GROUP");
  }
  if (options.maxIterations == std::uint64_t{0}) {
    throw CommandError(ExitStatus::usage, "--max-iterations 0: at least 1");
  }
  if (options.convergence && !(*options.convergence > 0.0 && std::isfinite(*options.convergence))) {
    throw CommandError(ExitStatus::usage,
                       fmt::format("--convergence {}: a length above 0, in drawing units", *options.convergence));
  }
}

std::size_t groupCount(const LinkReport& links) {
  std::size_t count = 0;
  for (const Part& part : links.parts) count += part.groups.size();
  return count;
}

void warnOfParts(const SessionState& state, const LinkReport& links, Warnings& warnings) {
  std::string parts;
  for (const Part& part : links.parts) {
    std::vector<std::string> names;
    for (const GroupId group : part.groups) names.push_back(state.group(group).name);
    parts += (parts.empty() ? "" : " | ") + joined(names);
  }
  warnings.add(
      fmt::format("the groups don't hang together: {}; the iterative method goes on, but how these parts lie to one "
                  "another rests on fewer than {} common names",
                  parts, namesThatLink));
}

void warnOfCourse(const std::optional<IterationCourse>& course, Warnings& warnings) {
  if (!course) {
    warnings.add("the report doesn't tell how the iterations ended; whether they converged isn't known");
  } else if (!course->converged()) {
    warnings.add(
        fmt::format("not converged: the limit of {} iterations ended the run; see the summary, raise "
                    "--max-iterations, or take the pairwise method",
                    course->limit));
  }
}

}  // namespace

void checkMethod(const RegisterOptions& options) {
  if (options.method == "pairwise") return refuseBeside(options);
  if (options.method == "iterative") return checkLimits(options);
  throw CommandError(ExitStatus::usage,
                     fmt::format("--method {}: no such method; choose pairwise or iterative", options.method));
}

IterativeRun runIterative(DrivenSession& session, const RegisterOptions& options, Warnings& warnings) {
  IterativeRun run;
  const LinkReport links = activeLinks(session.state());
  if (groupCount(links) < 2) return run;
  if (links.parts.size() > 1) {
    warnOfParts(session.state(), links, warnings);
    run.links = links;
  }
  const Limits limits = limitsOf(session, options);
  {
    const Spinner spinner(stderr, "registering iteratively", options.quiet);
    run.registered = session.registerIterative(limits.maxIterations, limits.convergence);
  }
  if (!run.registered) {
    throw CommandError(ExitStatus::usage,
                       fmt::format("the profile's limits are {} iterations and a criterion of {}; both must be above "
                                   "0 (--max-iterations and --convergence go over them)",
                                   limits.maxIterations, limits.convergence));
  }
  run.course = iterationCourse(session.operations().getResultsReport());
  warnOfCourse(run.course, warnings);
  return run;
}

}  // namespace tiepoint::workbench::cli
