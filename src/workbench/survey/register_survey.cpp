#include "workbench/survey/register_survey.h"

#include <boost/filesystem.hpp>

#include "workbench/geometry/group_troubles.h"
#include "workbench/io/text_encoding.h"
#include "workbench/session/shown_groups.h"
#include "workbench/survey/adjusting.h"
#include "workbench/survey/choices.h"
#include "workbench/survey/conclude.h"
#include "workbench/survey/import_files.h"
#include "workbench/survey/solving.h"

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

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
  Solve solved = solve(session, request, registration, findings, progress);
  if (request.method == RegistrationMethod::adjust) {
    solved = adjustSession(workbench, session, resolved, solved, registration, findings, progress);
  }
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
