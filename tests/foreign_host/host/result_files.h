// The files that a session writes, held against what it and the drawing tell otherwise.
#pragma once

#include <filesystem>
#include <string>

#include "figures.h"

namespace foreign {

/// A matrix file of the layout 4x4 for each registered group: the rotation transposed, the
/// translation as it is, nine digits.
bool matrixFilesHold(const std::filesystem::path& folder, const Findings& findings);

/// The file of merged targets: a line for each, six decimals.
bool commonPointsFileHolds(const std::filesystem::path& file, const Findings& findings);

/// The report, of plain ASCII here.
bool reportFileHolds(const std::filesystem::path& file, const std::wstring& report);

}  // namespace foreign
