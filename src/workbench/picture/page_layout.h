// Where the parts of a picture lie on its page.
#pragma once

#include "workbench/picture/box.h"
#include "workbench/picture/picture_request.h"

namespace tiepoint::workbench::picture {

/// Sizes of texts, marks and parts are in units of the page, one of which is the pixel that the module
/// draws in. Small pictures have less than a pixel for a unit and large ones more, so that all of them
/// look alike.
struct PageLayout {
  /// Pixels of the picture for one unit.
  double unit = 1.0;
  Box page;
  Box header;
  /// Whole units wide and high.
  Box drawing;
  /// Below the drawing.
  Box footer;
  /// To the right of both.
  Box column;
};

/// Between these the column is as wide as it likes; the widest goes with the page.
inline constexpr double minColumn = 150.0;
double maxColumn(const Size& size);

PageLayout layOutPage(const Size& size, double columnWidth);

}  // namespace tiepoint::workbench::picture
