// One registration: from files to a drawing, through a session, to a result that can be
// delivered.
#pragma once

#include <memory>

#include "workbench/host/workbench.h"
#include "workbench/session/driven_session.h"
#include "workbench/survey/resolve.h"
#include "workbench/values/finding.h"
#include "workbench/values/progress.h"
#include "workbench/values/registration.h"

namespace tiepoint::workbench {

/// A registration whose session is still open, so that its results can be delivered. Must be gone before
/// its workbench.
class OpenSurvey {
 public:
  explicit OpenSurvey(SessionPtr registrator) : mirrored(std::move(registrator)), driven(mirrored) {}

  DrivenSession& session() { return driven; }

  Registration registration;

 private:
  MirroredSession mirrored;
  DrivenSession driven;
};

/// Takes the files in, makes the drawing when it is missing, chooses, names and solves. When the groups
/// can't be registered the outcome says why. Throws Refused, and what the host throws; a request for what
/// there isn't leaves the drawing as it was, and none that wasn't there.
std::unique_ptr<OpenSurvey> registerSurvey(Workbench& workbench, const ResolvedRequest& resolved, Findings& findings,
                                           Progress& progress);

}  // namespace tiepoint::workbench
