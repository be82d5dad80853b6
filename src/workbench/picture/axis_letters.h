// Where the letters of a cross of axes stand.
#pragma once

#include <vector>

#include "workbench/picture/box.h"

namespace tiepoint::workbench::picture {

/// The middles of the letters of arrows from (0, 0) to these ends, none of which is (0, 0): beyond the
/// end, and to the side where another arrow passes there.
std::vector<PagePoint> letterPositions(const std::vector<PagePoint>& ends);

}  // namespace tiepoint::workbench::picture
