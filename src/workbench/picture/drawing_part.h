// The drawing itself: markers, arrows, stations and labels.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "workbench/picture/camera.h"
#include "workbench/picture/canvas.h"
#include "workbench/picture/picture_content.h"
#include "workbench/view/recording_draw.h"

namespace tiepoint::workbench::picture {

/// A text at a spot of the page, with the height of its capital letters.
struct Label {
  Spot anchor;
  std::string text;
  double height = 0.0;
  std::uint16_t color = 7;
};

/// The recorded texts as labels, in their order. Where one target was measured by several groups, the
/// same name stands several times at nearly the same spot; it becomes one label.
std::vector<Label> labelsOf(const std::vector<DrawnText>& texts, const Projection& projection, double pixelSize);

/// How a drawing came out.
struct LabelCount {
  std::size_t all = 0;
  std::size_t placed = 0;
};

/// Paints what was recorded, and what the content adds, within the area. Residuals are drawn
/// `enlargement` times their length.
LabelCount paintDrawing(Canvas& canvas, const Box& area, const RecordingDraw& recorded, const Content& content,
                        const Projection& projection, double enlargement);

/// Where an arrow ends in the drawing.
OdGePoint3d arrowTip(const Residual& residual, double enlargement);

}  // namespace tiepoint::workbench::picture
