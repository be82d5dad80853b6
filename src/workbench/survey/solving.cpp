#include "workbench/survey/solving.h"

#include <algorithm>

#include "workbench/naming/match_run.h"
#include "workbench/survey/iterative_run.h"
#include "workbench/values/refusal.h"

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

GroupIdSet activeGroups(const SessionState& state) {
  GroupIdSet groups;
  for (const SessionPoint& point : state.points) {
    if (point.record.active) groups.insert(point.record.groupId);
  }
  return groups;
}

bool isActiveBase(const SessionPoint& point) { return point.record.active && point.record.inBase; }
bool isActiveOther(const SessionPoint& point) { return point.record.active && !point.record.inBase; }

template <class Test>
bool anyPoint(const SessionState& state, Test test) {
  return std::any_of(state.points.begin(), state.points.end(), test);
}

bool baseIsLost(const SessionState& state, const RegistrationRequest& request) {
  return !request.base.empty() && anyPoint(state, isActiveOther) && !anyPoint(state, isActiveBase);
}

/// The groups that still take part although they aren't in the cluster. Several bases are one group
/// there, named by the first.
GroupIdSet activeOutside(const GroupIdSet& cluster, const SessionState& state) {
  const auto isBase = [&](GroupId group) { return state.group(group).inBase; };
  const bool hasBase = std::any_of(cluster.begin(), cluster.end(), isBase);
  GroupIdSet others;
  for (const GroupId group : activeGroups(state)) {
    if (cluster.count(group) == 0 && !(hasBase && isBase(group))) others.insert(group);
  }
  return others;
}

[[noreturn]] void refuseCluster(const GroupClusters& clusters, std::uint64_t number) {
  const bool hasNone = clusters.empty();
  Refusal refusal{hasNone ? RefusalKind::noClusters : RefusalKind::noSuchCluster, Field::keepCluster,
                  std::to_string(number)};
  if (!hasNone) refusal.count = clusters.rbegin()->first;
  throw Refused(std::move(refusal));
}

/// Groups outside every cluster stay in the session when one cluster is kept; they would keep it
/// from being solved.
void keepCluster(DrivenSession& session, std::uint64_t number, Findings& findings) {
  const GroupClusters clusters = session.clusters();
  const auto kept = clusters.find(number);
  if (kept == clusters.end()) refuseCluster(clusters, number);
  session.keepCluster(number);
  const GroupIdSet others = activeOutside(kept->second, session.state());
  if (!others.empty()) session.excludeGroups(others);

  Finding finding{FindingKind::clusterKept};
  finding.count = number;
  const GroupIdSet active = activeGroups(session.state());
  for (const SessionGroup& group : session.state().groups) {
    if (active.count(group.id) == 0) finding.groups.push_back(group.name);
  }
  findings.add(std::move(finding));
}

Solve solvePairwise(DrivenSession& session, const RegistrationRequest& request, Registration& registration,
                    Findings& findings) {
  if (session.registerPairwise()) {
    if (request.keepCluster) findings.add({FindingKind::clusterNotNeeded});
    return Solve::registered;
  }
  if (!request.keepCluster) return Solve::notConnected;
  keepCluster(session, *request.keepCluster, findings);
  registration.keptCluster = request.keepCluster;
  session.clearResults();
  session.restoreMarkers();
  if (baseIsLost(session.state(), request)) return Solve::baseNotShared;
  return session.registerPairwise() ? Solve::registered : Solve::notConnected;
}

Solve solveIteratively(DrivenSession& session, const RegistrationRequest& request, Registration& registration,
                       Findings& findings, Progress& progress) {
  IterativeRun run = runIterative(session, request, findings, progress);
  registration.iterations = run.course;
  registration.links = std::move(run.links);
  return run.registered ? Solve::registered : Solve::notConnected;
}

Solve solveChosen(DrivenSession& session, const RegistrationRequest& request, Registration& registration,
                  Findings& findings, Progress& progress) {
  session.restoreMarkers();
  if (baseIsLost(session.state(), request)) return Solve::baseNotShared;
  return request.method == RegistrationMethod::iterative
             ? solveIteratively(session, request, registration, findings, progress)
             : solvePairwise(session, request, registration, findings);
}

/// A link of three points looks like any other in the results.
void findWeakLinks(const NamingReport& naming, Findings& findings) {
  for (Finding reason : naming.reasons) {
    if (reason.kind != FindingKind::weakLink) continue;
    reason.severity = Severity::warning;
    findings.add(std::move(reason));
  }
}

}  // namespace

Solve solve(DrivenSession& session, const RegistrationRequest& request, Registration& registration, Findings& findings,
            Progress& progress) {
  std::optional<NamingReport>& naming = registration.naming;
  if (naming && naming->isRefused) return Solve::notNamed;
  const Solve solved = solveChosen(session, request, registration, findings, progress);
  if (!naming || solved != Solve::registered) return solved;
  checkDiscrepancies(session.state(), *naming);
  if (naming->isRefused) return Solve::notNamed;
  findWeakLinks(*naming, findings);
  return solved;
}

}  // namespace tiepoint::workbench
