#include "workbench/cli/commands/render_command.h"

#include "workbench/cli/picture_options.h"
#include "workbench/cli/request.h"
#include "workbench/cli/start_workbench.h"
#include "workbench/report/survey_picture.h"
#include "workbench/session/driven_session.h"
#include "workbench/session/shown_groups.h"
#include "workbench/survey/output_targets.h"

namespace tiepoint::workbench::cli {

ExitStatus runRender(const RenderOptions& options) {
  const LengthFormat lengths(unitOf(options.unit));
  const auto request = pictureRequest(options.picture, renderPictureNames);
  if (!request) throw CommandError(ExitStatus::usage, "--output needs a file");
  const OutputTarget target{Field::picture, options.picture.file};
  const Replacing replacing{{options.host.document, options.host.profile, options.host.module}, options.force};
  requireFolder(target);
  requireReplaceable(replacing, target);

  const std::unique_ptr<Workbench> workbench = startWorkbench(options.host);
  workbench->openDocument(options.host.document, false);
  scaleMarkers(*workbench, static_cast<double>(request->size.width) * request->size.height);
  MirroredSession mirrored(workbench->newSession());
  DrivenSession session(mirrored);
  if (!session.addAllGroups()) {
    throw CommandError(ExitStatus::refused, options.host.document + ": the drawing holds no reference points to draw");
  }
  const ShownGroups groups = shownGroups(*workbench, session.state(), {});
  putFile(replacing, target,
          storedPicture(session.state(), {groups, drawablesOf(*workbench)}, options.host.document, lengths, *request));
  return ExitStatus::done;
}

}  // namespace tiepoint::workbench::cli
