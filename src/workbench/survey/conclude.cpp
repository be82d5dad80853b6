#include "workbench/survey/conclude.h"

#include <algorithm>
#include <map>
#include <set>

#include "workbench/geometry/group_troubles.h"
#include "workbench/geometry/links.h"
#include "workbench/geometry/mismatches.h"
#include "workbench/geometry/rigid_motion.h"
#include "workbench/geometry/station_places.h"
#include "workbench/session/hidden_targets.h"
#include "workbench/session/results.h"
#include "workbench/survey/adjusted_outcomes.h"
#include "workbench/survey/adjusting.h"
#include "workbench/values/refusal.h"

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

/// A registered survey from which stations are missing looks complete; so it is said.
void findLeftOut(const SessionState& state, Findings& findings) {
  GroupIdSet included, active;
  for (const SessionPoint& point : state.points) {
    if (point.record.included) included.insert(point.record.groupId);
    if (point.record.active) active.insert(point.record.groupId);
  }
  for (const SessionGroup& group : state.groups) {
    if (included.count(group.id) == 0 || active.count(group.id) != 0) continue;
    Finding finding{group.inBase ? FindingKind::baseTakesNoPart : FindingKind::groupNotRegistered};
    finding.groups = {group.name};
    findings.add(std::move(finding));
  }
}

/// An adjustment says itself whether a station can turn about the line of its points.
void findMismatches(const SessionState& state, bool isAdjusted, Findings& findings) {
  findLeftOut(state, findings);
  for (Finding& finding : groupTroubles(state)) {
    if (isAdjusted && finding.kind == FindingKind::pointsOnOneLine) continue;
    findings.add(std::move(finding));
  }
  for (Finding& finding : mismatches(state)) findings.add(std::move(finding));
}

void requireRigid(const std::vector<GroupOutcome>& groups) {
  for (const GroupOutcome& group : groups) {
    if (group.toCommon && !isRigid(*group.toCommon)) {
      throw Refused({RefusalKind::notRigid, Field::none, "", group.name});
    }
  }
}

void takeRows(Outcomes rows, Registration& registration) {
  registration.groups = std::move(rows.groups);
  registration.points = std::move(rows.points);
}

SolvedTransforms solvedOf(Workbench& workbench, DrivenSession& session, RegistrationMethod method, Progress& progress) {
  std::vector<GroupId> groups;
  for (const SessionGroup& group : session.state().groups) groups.push_back(group.id);
  SolvedTransforms solved = solvedTransforms(workbench, session.operations(), groups);
  if (!hidesTargets(session.state())) return solved;
  std::optional<StageScope> stage;
  if (method == RegistrationMethod::iterative) stage.emplace(progress, Stage::iterating);
  solved.fitted = targetsInUse(workbench, session.state(), method);
  return solved;
}

void takeResults(Results results, const SessionState& state, Registration& registration) {
  takeRows(std::move(results.rows), registration);
  const GroupIdSet aroundOrigin = groupsAroundTheirOrigin(state);
  for (GroupOutcome& group : registration.groups) group.originIsAmongPoints = aroundOrigin.count(group.id) != 0;
  registration.outcome = static_cast<Registered&&>(results);
}

/// While the stations still move no point can be judged, and no figure is one to quote.
bool isPassing(const Registration& registration) {
  return registration.iterations && !registration.iterations->converged();
}

void describeSession(Workbench& workbench, DrivenSession& session, Registration& registration, Progress& progress) {
  const SessionState& state = session.state();
  const SolvedTransforms solved = solvedOf(workbench, session, registration.method, progress);
  Results results = describeResults(state, solved);
  requireRigid(results.rows.groups);
  if (isPassing(registration)) {
    results.protocol.reset();
  } else if (results.largest) {
    results.outlier = suspectedPoint(judgeMeasurements(state, solved), results, results.rows.points);
  }
  takeResults(std::move(results), state, registration);
}

void describeAdjustment(const SessionState& state, Registration& registration) {
  const AdjustedSurvey& survey = *registration.adjustment;
  Results results = adjustedResults(state, survey);
  requireRigid(results.rows.groups);
  results.outlier = suspectedPoint(survey, results, results.rows.points);
  takeResults(std::move(results), state, registration);
}

/// An adjustment uses the last of them alone, so that among its points in use no name stands twice.
void findNamesTwice(const std::vector<GroupOutcome>& groups, const std::vector<PointOutcome>& points,
                    Findings& findings) {
  std::map<std::size_t, std::set<std::string>> names;
  for (const PointOutcome& point : points) {
    if (point.reason == Reason::nameAgain) names[point.group].insert(point.name);
  }
  for (const auto& [group, ofGroup] : names) {
    Finding finding{FindingKind::nameTwice};
    finding.groups = {groups[group].name};
    finding.points.assign(ofGroup.begin(), ofGroup.end());
    findings.add(std::move(finding));
  }
}

bool hasBaseInUse(const SessionState& state) {
  return std::any_of(state.points.begin(), state.points.end(),
                     [](const SessionPoint& point) { return point.record.active && point.record.inBase; });
}

void concludeAdjustment(DrivenSession& session, Solve solved, Registration& registration, Findings& findings) {
  const SessionState state = adjustedState(session.state(), *registration.adjustment);
  registration.usesBase = hasBaseInUse(state);
  if (solved == Solve::registered) {
    findMismatches(state, true, findings);
    describeAdjustment(state, registration);
    findNamesTwice(registration.groups, registration.points, findings);
    return;
  }
  takeRows(adjustedRows(state, *registration.adjustment), registration);
  registration.outcome = Undetermined();
  if (!session.clusters().empty()) registration.links = describeLinks(session.state(), session.clusters());
}

}  // namespace

void conclude(Workbench& workbench, DrivenSession& session, Solve solved, Registration& registration,
              Findings& findings, Progress& progress) {
  if (registration.adjustment) return concludeAdjustment(session, solved, registration, findings);
  const SessionState& state = session.state();
  takeRows(outcomesOf(state), registration);
  registration.usesBase = hasBaseInUse(state);
  if (solved == Solve::registered) {
    findMismatches(state, false, findings);
    return describeSession(workbench, session, registration, progress);
  }
  if (solved == Solve::notNamed) {
    registration.outcome = NotNamed();
    return;
  }
  registration.outcome = NotConnected();
  if (solved == Solve::baseNotShared) registration.outcome = BaseNotShared();
  registration.links = describeLinks(state, session.clusters());
}

}  // namespace tiepoint::workbench
