// What is drawn at the points: crosses, arrows of residuals, stations.
#pragma once

#include <string>
#include <vector>

#include "workbench/picture/camera.h"
#include "workbench/picture/canvas.h"
#include "workbench/picture/picture_content.h"
#include "workbench/view/recording_draw.h"

namespace tiepoint::workbench::picture {

struct PageLine {
  PagePoint from;
  PagePoint to;
  Rgb color;
};

struct PageArrow {
  PagePoint from;
  PagePoint to;
  Rgb color;
  /// Not empty for the one that stands out.
  std::string note;
};

inline constexpr double alarmRing = 12.0;
inline constexpr double stationSize = 7.0;

bool isFinite(const PagePoint& point);
double distance(const PagePoint& a, const PagePoint& b);

/// The recorded lines, apart from those that the view shows as a dot.
std::vector<PageLine> linesOn(const Projection& projection, const std::vector<DrawnLine>& recorded);

/// How wide the lines of crosses of this size are.
double lineWidthFor(const std::vector<PageLine>& lines);

/// Bright colours get a darker seam, or they would vanish on paper.
void paintLines(Canvas& canvas, const std::vector<PageLine>& lines);

/// Where an arrow ends in the drawing.
OdGePoint3d arrowTip(const Residual& residual, double enlargement);

std::vector<PageArrow> arrowsOn(const Projection& projection, const std::vector<Residual>& residuals,
                                double enlargement);

/// Plain ones first; those with a note lie above them, in the colour of alarm, from a ring.
void paintArrows(Canvas& canvas, const std::vector<PageArrow>& arrows, double width);

void paintStation(Canvas& canvas, const PagePoint& middle, const Rgb& color);

/// A cross of the legend, drawn as the markers are.
void paintSwatch(Canvas& canvas, const PagePoint& middle, const Rgb& color);

}  // namespace tiepoint::workbench::picture
