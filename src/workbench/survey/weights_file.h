// Weights of points in a text file.
#pragma once

#include <string>
#include <vector>

#include "workbench/values/registration_request.h"

namespace tiepoint::workbench {

/// A number from 0 to 1, the whole of the text.
std::optional<double> weightOfText(const std::string& text);

/// A line `GROUP POINT WEIGHT` each, separated by blanks, tabs, commas or semicolons; the group may hold
/// blanks; blank lines and lines from "#" on are skipped. `path` is UTF-8, and so is the file. Throws
/// Refused: (weightsLine), and what a file that can't be read throws.
std::vector<WeightChoice> readWeightsFile(const std::string& path);

}  // namespace tiepoint::workbench
