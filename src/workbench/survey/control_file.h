// Targets with given places in a text file.
#pragma once

#include <string>
#include <vector>

#include "workbench/values/adjustment_request.h"

namespace tiepoint::workbench {

/// A line `NAME x y z` each: a place in the common system, in drawing units. Behind it stands how well it is
/// known: nothing (the target is held there), one standard deviation, three of x, y and z, or the
/// covariances xx xy xz yy yz zz. Zeros alone hold the target too. A name of several words stands in quotation
/// marks; the first field is the name, even where it reads as a number. The rest is as in `line_fields.h`.
///
/// Each target once, in the order of the file: equal lines count once. `path` is UTF-8. Throws Refused, with
/// the line's number: (controlLine), (controlNotDefinite) with the target's name, (controlTwice) for a
/// target of two lines that differ; and what a file that can't be read throws.
std::vector<ControlTarget> readControlFile(const std::string& path);

}  // namespace tiepoint::workbench
