// What the user wants from a registration: all of it reaches the drawing and the files, or nothing.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/sdk/od_gi_drawable.h"
#include "workbench/survey/register_survey.h"
#include "workbench/values/output_file.h"
#include "workbench/values/shown_group.h"

namespace tiepoint::workbench {

/// Adds and moves clouds, stores the merged targets, and writes the files that the module makes and
/// `files`, which others make; the registration notes what was written. Every file appears whole or
/// not at all. None replaces another unless forced, and none ever replaces a file that the request
/// reads. Nothing happens for a survey that isn't registered. Throws Refused, and the drawing is then as
/// it was.
void deliver(Workbench& workbench, OpenSurvey& survey, const ResolvedRequest& resolved,
             const std::vector<OutputFile>& files, Progress& progress);

/// Calls `use` with the registered groups shown alone, and what draws them.
std::string withRegisteredShown(
    Workbench& workbench, OpenSurvey& survey,
    const std::function<std::string(const ShownGroups&, const std::vector<const OdGiDrawable*>&)>& use);

}  // namespace tiepoint::workbench
