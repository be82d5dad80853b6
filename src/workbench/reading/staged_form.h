// Points in the form that the module reads.
#pragma once

#include <string>
#include <vector>

#include "workbench/reading/point_line.h"

namespace tiepoint::workbench {

/// A text that the module's grammar reads as that double. The grammar takes the digits for a whole
/// number and divides it by a power of ten, and each of the two steps rounds; so the shortest text
/// isn't always read as the double that it was made from, and another is looked for. Every number of
/// up to 15 digits has one. A few doubles of 17 digits have none: their text is read as the double
/// beside. Empty for what is no measurement (beyond 1e200, closer to 0 than 1e-200, not finite).
std::string stagedNumber(double value);

/// Whether a point has a weight of its own, so that the lines have a weight.
bool needWeights(const std::vector<SurveyPoint>& points);

/// `name x y z`, or `name x y z weight`, with a line feed; the name's stand-in in windows-1251.
std::string stagedLine(const SurveyPoint& point, bool withWeight);

}  // namespace tiepoint::workbench
