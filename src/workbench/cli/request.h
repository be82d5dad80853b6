// From options to what is asked for.
#pragma once

#include <string>
#include <vector>

#include "workbench/cli/options.h"
#include "workbench/values/registration_request.h"

namespace tiepoint::workbench::cli {

/// One run of the import command for each layout that has files: the plain files first, then those
/// of the options in the order NXYZ, XYZ, XYZW, NXYZW. Throws CommandError(usage).
std::vector<LayoutFiles> importRuns(const FileOptions& options);

/// How files that aren't in a layout of the module's are read. Throws CommandError(usage).
ReadingRequest readingRequest(const FileOptions& options);

/// `NAME=FILE` each. Throws CommandError(usage), which names `option`.
std::vector<CloudRequest> cloudRequests(const std::vector<std::string>& texts, const std::string& option);

/// `GROUP` or `GROUP:POINT`. A name may hold a colon itself: a group of the whole name goes first, then
/// the colons from the first on.
PointChoice pointChoice(const std::string& text);

/// `GROUP:POINT=WEIGHT`. The weight stands behind the last equals sign. Throws CommandError(usage) for a
/// weight that is no number from 0 to 1.
WeightChoice weightChoice(const std::string& text);

/// "m", "mm", or empty for unknown. Throws CommandError(usage).
Unit unitOf(const std::string& text);

/// Throws CommandError(usage) for what can't be read.
RegistrationRequest requestOf(const RegisterOptions& options);

}  // namespace tiepoint::workbench::cli
