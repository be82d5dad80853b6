#include "workbench/cli/commands/render_command.h"

#include "workbench/cli/picture_options.h"
#include "workbench/cli/result_files.h"
#include "workbench/cli/start_workbench.h"
#include "workbench/cli/survey_picture.h"

namespace tiepoint::workbench::cli {

namespace {

/// A picture is written as a registration writes its results.
RegisterOptions asResult(const RenderOptions& options) {
  RegisterOptions result;
  result.host = options.host;
  result.picture = options.picture;
  result.force = options.force;
  return result;
}

}  // namespace

ExitStatus runRender(const RenderOptions& options) {
  const LengthFormat lengths(options.unit);
  const auto request = pictureRequest(options.picture, renderPictureNames);
  if (!request) throw CommandError(ExitStatus::usage, "--output needs a file");
  const RegisterOptions result = asResult(options);
  const ResultFiles files(result, renderPictureNames.file);
  const std::unique_ptr<Workbench> host = startWorkbench(options.host);
  Workbench& workbench = *host;
  workbench.openDocument(options.host.document, false);
  suitMarkers(workbench, request->size);
  MirroredSession mirrored(workbench.newSession());
  DrivenSession session(mirrored);
  if (!session.addAllGroups()) {
    throw CommandError(ExitStatus::refused, options.host.document + ": the drawing holds no reference points to draw");
  }
  WrittenFiles written;
  files.writePicture(storedPicture(workbench, session, options.host.document, lengths, *request), written);
  return ExitStatus::done;
}

}  // namespace tiepoint::workbench::cli
