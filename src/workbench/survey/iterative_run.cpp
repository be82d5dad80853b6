#include "workbench/survey/iterative_run.h"

#include "workbench/geometry/links.h"
#include "workbench/session/iteration_course.h"
#include "workbench/values/refusal.h"

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

struct Limits {
  std::uint64_t maxIterations = 0;
  double convergence = 0.0;
};

Limits limitsOf(DrivenSession& session, const RegistrationRequest& request) {
  Limits limits;
  session.operations().getIterationLimits(limits.maxIterations, limits.convergence);
  limits.maxIterations = request.maxIterations.value_or(limits.maxIterations);
  limits.convergence = request.convergence.value_or(limits.convergence);
  return limits;
}

std::size_t groupCount(const LinkReport& links) {
  std::size_t count = 0;
  for (const Component& component : links.components) count += component.groups.size();
  return count;
}

Finding findParts(const SessionState& state, const LinkReport& links) {
  Finding finding{FindingKind::notConnected};
  for (const Component& component : links.components) {
    std::vector<std::string>& names = finding.components.emplace_back();
    for (const GroupId group : component.groups) names.push_back(state.group(group).name);
  }
  return finding;
}

void findCourse(const std::optional<IterationCourse>& course, Findings& findings) {
  if (!course) return findings.add({FindingKind::courseUnknown});
  if (course->converged()) return;
  Finding finding{FindingKind::notConverged};
  finding.count = course->limit;
  findings.add(std::move(finding));
}

[[noreturn]] void refuse(const Limits& limits) {
  Refusal refusal{RefusalKind::profileLimits};
  refusal.count = limits.maxIterations;
  refusal.value = limits.convergence;
  throw Refused(std::move(refusal));
}

}  // namespace

IterativeRun runIterative(DrivenSession& session, const RegistrationRequest& request, Findings& findings,
                          Progress& progress) {
  IterativeRun run;
  const LinkReport links = activeLinks(session.state());
  if (groupCount(links) < 2) return run;
  if (links.components.size() > 1) {
    findings.add(findParts(session.state(), links));
    run.links = links;
  }
  const Limits limits = limitsOf(session, request);
  {
    const StageScope stage(progress, Stage::iterating);
    step(progress, 0, 0);
    run.registered = session.registerIterative(limits.maxIterations, limits.convergence);
  }
  if (!run.registered) refuse(limits);
  run.course = iterationCourse(session.operations().getResultsReport());
  findCourse(run.course, findings);
  return run;
}

}  // namespace tiepoint::workbench
