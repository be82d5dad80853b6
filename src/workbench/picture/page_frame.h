// The lines above and below the drawing: the title, the scale, and how residuals are drawn.
#pragma once

#include "workbench/picture/canvas.h"
#include "workbench/picture/picture_content.h"

namespace tiepoint::workbench::picture {

void paintHeader(Canvas& canvas, const Box& header, const Content& content);

/// The scales of a drawing.
struct Scales {
  /// Drawing units for one unit of the page.
  double pixelSize = 1.0;
  /// How many times their length residuals are drawn; 0 when none are.
  double enlargement = 0.0;
};

/// A bar of a round length, and an arrow as long as a round residual.
void paintFooter(Canvas& canvas, const Box& footer, const Content& content, const Scales& scales);

}  // namespace tiepoint::workbench::picture
