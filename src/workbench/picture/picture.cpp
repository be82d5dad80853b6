#include "workbench/picture/picture.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "workbench/picture/camera.h"
#include "workbench/picture/canvas.h"
#include "workbench/picture/drawing_part.h"
#include "workbench/picture/legend_column.h"
#include "workbench/picture/marks.h"
#include "workbench/picture/page_frame.h"
#include "workbench/picture/round_number.h"
#include "workbench/picture/surface.h"

namespace tiepoint::workbench::picture {

namespace {

/// Free space around all that is looked at: a marker's arm, and some more for the labels.
constexpr double viewMargin = 36.0;
/// The longest arrow, as a share of the drawing's shorter side.
constexpr double arrowShare = 0.22;
constexpr double arrowLimit = 130.0;

RecordingDraw recorded(const View& view, const std::vector<const OdGiDrawable*>& drawables) {
  RecordingDraw draw(view);
  for (const OdGiDrawable* drawable : drawables) draw.draw(*drawable);
  return draw;
}

void addShown(std::vector<OdGePoint3d>& positions, const OdGePoint3d& position) {
  if (canBeShown(position)) positions.push_back(position);
}

/// A marker lies around its point in every view, however large it is there.
std::vector<OdGePoint3d> shownPositions(const Content& content, const std::vector<const OdGiDrawable*>& drawables) {
  std::vector<OdGePoint3d> positions;
  const RecordingDraw draw = recorded(View(), drawables);
  for (const DrawnLine& line : draw.lines()) {
    addShown(positions,
             {(line.from.x + line.to.x) / 2.0, (line.from.y + line.to.y) / 2.0, (line.from.z + line.to.z) / 2.0});
  }
  if (positions.empty()) throw NothingToShow();
  for (const Station& station : content.stations) addShown(positions, station.position);
  return positions;
}

double enlargementFor(const std::vector<Residual>& residuals, double longestArrow) {
  double largest = 0.0;
  for (const Residual& residual : residuals) {
    const OdGeVector3d shift = residual.registered - residual.target;
    const double length = std::hypot(shift.x, shift.y, shift.z);
    if (std::isfinite(length)) largest = std::max(largest, length);
  }
  return largest > shortestLength ? roundNumberUpTo(longestArrow / largest) : 0.0;
}

/// A view on the positions and the tips of all arrows, and how much longer than they are the arrows get.
struct Shot {
  View view;
  double enlargement = 0.0;
};

Shot shotOf(const Box& area, const Content& content, const std::vector<const OdGiDrawable*>& drawables,
            Direction direction) {
  std::vector<OdGePoint3d> positions = shownPositions(content, drawables);
  const int width = static_cast<int>(area.width());
  const int height = static_cast<int>(area.height());
  // Of the positions alone, so that the arrows don't turn the view.
  const Looks looks = looksFrom(direction, positions);
  const ViewState without = cameraOn(positions, looks, width, height, viewMargin);
  const double longestArrow = std::min(arrowLimit, arrowShare * std::min(width, height)) * without.width / width;
  Shot shot;
  shot.enlargement = enlargementFor(content.residuals, longestArrow);
  std::vector<OdGePoint3d> tips = positions;
  for (const Residual& residual : content.residuals) addShown(tips, arrowTip(residual, shot.enlargement));
  shot.view.setState(cameraOn(tips, looks, width, height, viewMargin));
  return shot;
}

const char* directionText(Direction direction) {
  switch (direction) {
    case Direction::front:
      return "Seen from the front.";
    case Direction::side:
      return "Seen from the right.";
    case Direction::iso:
      return "Seen from above, front right; the scale applies to the picture plane.";
    case Direction::fit:
      return "Seen facing the widest spread of the points.";
    case Direction::top:
      break;
  }
  return "Seen from above.";
}

Content withRemarks(Content content, const LabelCount& labels, Direction direction) {
  if (labels.placed < labels.all) {
    content.remarks.push_back(fmt::format("No room for {} of {} labels.", labels.all - labels.placed, labels.all));
  }
  content.remarks.push_back(directionText(direction));
  return content;
}

PageLayout layoutFor(const Canvas& canvas, const Size& size, const Content& content) {
  const double wanted = legendWidth(canvas, content);
  return layOutPage(size, std::ceil(std::clamp(wanted, minColumn, maxColumn(size))));
}

}  // namespace

Picture drawPicture(const Request& request, const Content& content, const std::vector<const OdGiDrawable*>& drawables) {
  Surface surface(request.format, request.size);
  Canvas canvas(surface.context(), layOutPage(request.size, minColumn).unit);
  Picture picture;
  picture.layout = layoutFor(canvas, request.size, content);
  const PageLayout& layout = picture.layout;
  const Shot shot = shotOf(layout.drawing, content, drawables, request.direction);
  const RecordingDraw drawn = recorded(shot.view, drawables);

  canvas.fill(layout.page, paper);
  paintHeader(canvas, layout.header, content);
  const LabelCount labels =
      paintDrawing(canvas, layout.drawing, drawn, content, Projection(shot.view, layout.drawing), shot.enlargement);
  canvas.outline(layout.drawing, rule, 1.0);
  paintLegend(canvas, layout.column, withRemarks(content, labels, request.direction), shot.view);
  paintFooter(canvas, layout.footer, content, {drawn.pixelSize(), shot.enlargement});
  picture.texts = canvas.texts();
  picture.bytes = surface.finish();
  return picture;
}

}  // namespace tiepoint::workbench::picture
