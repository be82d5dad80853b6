// The drawing itself: markers, arrows, stations and labels.
#pragma once

#include <cstddef>

#include "workbench/picture/camera.h"
#include "workbench/picture/canvas.h"
#include "workbench/picture/picture_content.h"
#include "workbench/view/recording_draw.h"

namespace tiepoint::workbench::picture {

/// How many labels there are, and how many found room.
struct LabelCount {
  std::size_t all = 0;
  std::size_t placed = 0;
};

/// Paints what was recorded, and what the content adds, within the area. Residuals are drawn
/// `enlargement` times their length.
LabelCount paintDrawing(Canvas& canvas, const Box& area, const RecordingDraw& recorded, const Content& content,
                        const Projection& projection, double enlargement);

}  // namespace tiepoint::workbench::picture
