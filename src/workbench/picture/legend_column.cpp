#include "workbench/picture/legend_column.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <vector>

#include "workbench/picture/axis_letters.h"
#include "workbench/picture/marks.h"
#include "workbench/picture/text_fit.h"

namespace tiepoint::workbench::picture {

namespace {

constexpr double padding = 10.0;
constexpr double rowHeight = 17.0;
constexpr double remarkHeight = 14.0;
constexpr double remarkGap = 5.0;
constexpr double swatchWidth = 20.0;
constexpr double columnGap = 10.0;
constexpr double maxNameWidth = 150.0;
constexpr double axesHeight = 76.0;
constexpr double axisLength = 22.0;
/// Below this an axis points at the viewer, and its letter would lie on the others'.
constexpr double shortestAxis = 0.12;
/// So many groups are listed before remarks take their room.
constexpr std::size_t minRows = 9;

const TextStyle nameStyle{11.0, false, ink, 0.0};
const TextStyle numberStyle{11.0, false, softInk, 0.0};
const TextStyle headStyle{9.5, false, softInk, 0.0};
const TextStyle remarkStyle{10.0, false, ink, 0.0};
const TextStyle axisStyle{11.0, true, softInk, 0.0};

constexpr const char* groupHead = "group";
constexpr const char* pointsHead = "points";

/// How wide the two columns of numbers are.
struct NumberWidths {
  double points = 0.0;
  double residuals = 0.0;
};

NumberWidths numberWidths(const Canvas& canvas, const Content& content) {
  NumberWidths widths{canvas.widthOf(pointsHead, headStyle), canvas.widthOf(content.residualHead, headStyle)};
  for (const GroupEntry& group : content.groups) {
    widths.points = std::max(widths.points, canvas.widthOf(std::to_string(group.points), numberStyle));
    widths.residuals = std::max(widths.residuals, canvas.widthOf(group.residual, numberStyle));
  }
  return widths;
}

double numbersRoom(const NumberWidths& widths) {
  return widths.points + columnGap + (widths.residuals > 0.0 ? widths.residuals + columnGap : 0.0);
}

/// One line of the table, its texts standing on `y`.
void paintRow(Canvas& canvas, const Box& column, double y, const NumberWidths& widths, const std::string& points,
              const std::string& residual, const TextStyle& style) {
  const double right = column.right - padding;
  const double pointsRight = widths.residuals > 0.0 ? right - widths.residuals - columnGap : right;
  canvas.textEndingAt({pointsRight, y}, points, style);
  canvas.textEndingAt({right, y}, residual, style);
}

void paintTable(Canvas& canvas, const Box& room, const Content& content) {
  const NumberWidths widths = numberWidths(canvas, content);
  const double nameLeft = room.left + padding + swatchWidth;
  const double nameWidth = room.right - padding - numbersRoom(widths) - nameLeft;
  double y = room.top + padding + 8.0;
  canvas.text({room.left + padding, y}, groupHead, headStyle);
  paintRow(canvas, room, y, widths, pointsHead, content.residualHead, headStyle);
  const auto rows = static_cast<std::size_t>(std::max(0.0, std::floor((room.bottom - y - 6.0) / rowHeight)));
  const RowChoice choice = rowsThatFit(content.groups.size(), rows);
  y += 3.0;
  for (std::size_t i = 0; i < choice.shown; ++i) {
    y += rowHeight;
    const GroupEntry& group = content.groups[i];
    paintSwatch(canvas, {room.left + padding + 6.0, y - 4.0}, inkColor(group.color));
    const TextRuler ruler = [&](const std::string& text) { return canvas.widthOf(text, nameStyle); };
    canvas.text({nameLeft, y}, shortened(group.name, nameWidth, ruler), nameStyle);
    paintRow(canvas, room, y, widths, std::to_string(group.points), group.residual, numberStyle);
  }
  if (choice.left > 0) canvas.text({nameLeft, y + rowHeight}, fmt::format("and {} more", choice.left), numberStyle);
}

struct RemarkLine {
  std::string text;
  /// From the foot of the line before it.
  double height = remarkHeight;
};

std::vector<RemarkLine> remarkLines(const Canvas& canvas, const std::vector<std::string>& remarks, double width) {
  const TextRuler ruler = [&](const std::string& text) { return canvas.widthOf(text, remarkStyle); };
  std::vector<RemarkLine> lines;
  for (const std::string& remark : remarks) {
    double gap = lines.empty() ? 0.0 : remarkGap;
    for (const std::string& text : wrapped(remark, width, ruler)) {
      lines.push_back({text, remarkHeight + gap});
      gap = 0.0;
    }
  }
  return lines;
}

double heightOf(const std::vector<RemarkLine>& lines) {
  return std::accumulate(lines.begin(), lines.end(), 0.0,
                         [](double sum, const RemarkLine& line) { return sum + line.height; });
}

/// Takes away from the end what is too much, and says so.
void shortenTo(double height, std::vector<RemarkLine>& lines) {
  if (heightOf(lines) <= height) return;
  while (!lines.empty() && heightOf(lines) > height - remarkHeight) lines.pop_back();
  lines.push_back({"..."});
}

/// Gives where the remarks begin; they end at the foot of the room.
double paintRemarks(Canvas& canvas, const Box& room, const std::vector<std::string>& remarks) {
  std::vector<RemarkLine> lines = remarkLines(canvas, remarks, room.width() - 2.0 * padding);
  shortenTo(room.height(), lines);
  const double top = room.bottom - heightOf(lines);
  double y = top;
  for (const RemarkLine& line : lines) {
    y += line.height;
    canvas.text({room.left + padding, y - 4.0}, line.text, remarkStyle);
  }
  return top;
}

struct Axis {
  const char* letter;
  OdGeVector3d along;
};

void paintAxes(Canvas& canvas, const Box& box, const View& view) {
  const OdGeMatrix3d toView = view.viewingMatrix();
  const PagePoint origin = box.middle();
  const std::array<Axis, 3> axes{{{"x", {1, 0, 0}}, {"y", {0, 1, 0}}, {"z", {0, 0, 1}}}};
  std::vector<const char*> letters;
  std::vector<PagePoint> ends;
  for (const Axis& axis : axes) {
    const auto part = [&](int row) {
      return toView(row, 0) * axis.along.x + toView(row, 1) * axis.along.y + toView(row, 2) * axis.along.z;
    };
    const PagePoint along{part(0), -part(1)};
    if (std::hypot(along.x, along.y) < shortestAxis) continue;
    letters.push_back(axis.letter);
    ends.push_back({along.x * axisLength, along.y * axisLength});
    canvas.arrow(origin, {origin.x + ends.back().x, origin.y + ends.back().y}, softInk, 1.2);
  }
  const std::vector<PagePoint> points = letterPositions(ends);
  for (std::size_t i = 0; i < letters.size(); ++i) {
    const double left = origin.x + points[i].x - canvas.widthOf(letters[i], axisStyle) / 2.0;
    canvas.text({left, origin.y + points[i].y + 3.5}, letters[i], axisStyle);
  }
  canvas.dot(origin, 2.0, softInk);
}

}  // namespace

double legendWidth(const Canvas& canvas, const Content& content) {
  double names = canvas.widthOf(groupHead, headStyle);
  for (const GroupEntry& group : content.groups) {
    names = std::max(names, std::min(maxNameWidth, canvas.widthOf(group.name, nameStyle)));
  }
  return 2.0 * padding + swatchWidth + names + numbersRoom(numberWidths(canvas, content));
}

RowChoice rowsThatFit(std::size_t count, std::size_t room) {
  if (count <= room) return {count, 0};
  const std::size_t shown = room > 0 ? room - 1 : 0;
  return {shown, count - shown};
}

void paintLegend(Canvas& canvas, const Box& column, const Content& content, const View& view) {
  canvas.outline(column, rule, 1.0);
  const Box axes{column.left, column.bottom - axesHeight, column.right, column.bottom};
  const double forTable = 2.0 * padding + rowHeight * static_cast<double>(1 + std::min(minRows, content.groups.size()));
  const double remarksTop =
      paintRemarks(canvas, {column.left, column.top + forTable, column.right, axes.top}, content.remarks);
  paintTable(canvas, {column.left, column.top, column.right, remarksTop - 8.0}, content);
  paintAxes(canvas, axes, view);
}

}  // namespace tiepoint::workbench::picture
