// The column beside the drawing: the groups with their colours, remarks, and the axes.
#pragma once

#include <cstddef>

#include "workbench/picture/canvas.h"
#include "workbench/picture/picture_content.h"
#include "workbench/view/view.h"

namespace tiepoint::workbench::picture {

/// How wide the column would like to be.
double legendWidth(const Canvas& canvas, const Content& content);

/// Of `count` rows, as many as fit into `room` rows, where one more row says how many are left out.
struct RowChoice {
  std::size_t shown = 0;
  std::size_t left = 0;
};
RowChoice rowsThatFit(std::size_t count, std::size_t room);

void paintLegend(Canvas& canvas, const Box& column, const Content& content, const View& view);

}  // namespace tiepoint::workbench::picture
