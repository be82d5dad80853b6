#include "workbench/survey/register_survey.h"

#include <algorithm>
#include <boost/filesystem.hpp>

#include "workbench/geometry/group_troubles.h"
#include "workbench/geometry/links.h"
#include "workbench/geometry/mismatches.h"
#include "workbench/geometry/rigid_motion.h"
#include "workbench/geometry/station_places.h"
#include "workbench/io/text_encoding.h"
#include "workbench/session/hidden_targets.h"
#include "workbench/session/results.h"
#include "workbench/session/shown_groups.h"
#include "workbench/survey/choices.h"
#include "workbench/survey/import_files.h"
#include "workbench/survey/solving.h"

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

void findMismatches(const SessionState& state, Findings& findings) {
  findLeftOut(state, findings);
  for (Finding& finding : groupTroubles(state)) findings.add(std::move(finding));
  for (Finding& finding : mismatches(state)) findings.add(std::move(finding));
}

void requireRigid(const SessionState& state, const SolvedTransforms& solved) {
  for (const auto& [group, motion] : solved.toCommon) {
    if (!isRigid(motion)) throw Refused({RefusalKind::notRigid, Field::none, "", state.group(group).name});
  }
}

void moveRows(Outcomes rows, Registration& registration) {
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

/// While the stations still move, the largest discrepancy says nothing of its point, and no figure is one
/// to quote.
void dropPassingFigures(Registered& results) {
  results.outlier.reset();
  results.protocol.reset();
}

void describe(Workbench& workbench, DrivenSession& session, Registration& registration, Progress& progress) {
  const SolvedTransforms solved = solvedOf(workbench, session, registration.method, progress);
  requireRigid(session.state(), solved);
  Results results = describeResults(session.state(), solved);
  if (registration.iterations && !registration.iterations->converged()) dropPassingFigures(results);
  moveRows(std::move(results.rows), registration);
  const GroupIdSet aroundOrigin = groupsAroundTheirOrigin(session.state());
  for (GroupOutcome& group : registration.groups) group.originIsAmongPoints = aroundOrigin.count(group.id) != 0;
  registration.outcome = static_cast<Registered&&>(results);
}

/// Into the registration what came of the solve.
void conclude(Workbench& workbench, DrivenSession& session, Solve solved, Registration& registration,
              Findings& findings, Progress& progress) {
  const SessionState& state = session.state();
  moveRows(outcomesOf(state), registration);
  registration.usesBase = std::any_of(state.points.begin(), state.points.end(), [](const SessionPoint& point) {
    return point.record.active && point.record.inBase;
  });
  switch (solved) {
    case Solve::notNamed:
      registration.outcome = NotNamed();
      return;
    case Solve::baseNotShared:
      registration.outcome = BaseNotShared();
      break;
    case Solve::notConnected:
      registration.outcome = NotConnected();
      break;
    case Solve::registered:
      findMismatches(state, findings);
      describe(workbench, session, registration, progress);
      return;
  }
  registration.links = describeLinks(state, session.clusters());
}

/// The files in the drawing, until the request turns out to be one that can't be carried out.
class TakenIn {
 public:
  TakenIn(Workbench& workbench_, const ResolvedRequest& resolved, Findings& findings)
      : workbench(workbench_), document(resolved.request.document), report(resolved.import) {
    if (resolved.request.files.empty()) return;
    madeDrawing = !workbench.activeDocument();
    makeDrawing(workbench, document);
    try {
      carryOutImport(workbench, resolved.files, report, findings);
    } catch (const Refused&) {
      undo();
      throw;
    }
  }

  const ImportReport& import() const { return report; }

  void undo() {
    if (report.files.empty()) return;
    if (!madeDrawing) return undoImport(workbench, report);
    workbench.closeDocument(workbench.requireActiveDocument().number());
    boost::system::error_code ignored;
    if (!document.empty()) boost::filesystem::remove(boost::filesystem::path(wideFromUtf8(document)), ignored);
  }

 private:
  Workbench& workbench;
  std::string document;
  ImportReport report;
  bool madeDrawing = false;
};

std::unique_ptr<OpenSurvey> solveImported(Workbench& workbench, const ResolvedRequest& resolved,
                                          const ImportReport& import, Findings& findings, Progress& progress) {
  const RegistrationRequest& request = resolved.request;
  if (request.outputs.pictureArea > 0.0) scaleMarkers(workbench, request.outputs.pictureArea);
  auto survey = std::make_unique<OpenSurvey>(workbench.newSession());
  Registration& registration = survey->registration;
  registration.document = request.document;
  registration.method = request.method;
  registration.import = import;

  DrivenSession& session = survey->session();
  if (!session.addAllGroups()) throw Refused({RefusalKind::drawingEmpty, Field::document});
  registration.naming = applyChoices(workbench, session, resolved, progress);
  requireFiniteCoordinates(session.state());
  const Solve solved = solve(session, request, registration, findings, progress);
  conclude(workbench, session, solved, registration, findings, progress);
  registration.findings = findings.all();
  return survey;
}

}  // namespace

std::unique_ptr<OpenSurvey> registerSurvey(Workbench& workbench, const ResolvedRequest& resolved, Findings& findings,
                                           Progress& progress) {
  TakenIn files(workbench, resolved, findings);
  try {
    return solveImported(workbench, resolved, files.import(), findings, progress);
  } catch (const Refused&) {
    files.undo();
    throw;
  }
}

}  // namespace tiepoint::workbench
