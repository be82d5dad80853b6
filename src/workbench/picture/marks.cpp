#include "workbench/picture/marks.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

namespace tiepoint::workbench::picture {

namespace {

constexpr double brightFrom = 0.45;
constexpr double seamDarkness = 0.45;
constexpr double seamWidth = 1.3;
constexpr double widthForLength = 0.065;
constexpr double thinnestLine = 0.8;
constexpr double thickestLine = 1.3;
/// By how much of the thinnest each line is wider than the one upon it, and how many of them count.
constexpr double widening = 0.8;
constexpr int deepestSeen = 3;
/// Ends that are nearer than this are the same.
constexpr double sameLine = 2.0;
/// A line that shows as less than this isn't seen.
constexpr double shortestLine = 0.3;
constexpr double alarmArrowWidth = 3.0;
constexpr double swatchReach = 6.0;
constexpr double swatchWidth = 2.0;

bool isBright(const Rgb& color) { return brightness(color) >= brightFrom; }

Rgb seamColor(const Rgb& color) {
  const auto darker = [](std::uint8_t part) { return static_cast<std::uint8_t>(part * seamDarkness); };
  return {darker(color.red), darker(color.green), darker(color.blue)};
}

/// Finds the lines that lie upon one another.
class LineStacks {
 public:
  /// How many of the lines so far lie where this one does; from now on it is one of them.
  int depthOf(const PageLine& line) {
    const Cell own = cellOf(line);
    int depth = 0;
    for (long long x = own.first - 1; x <= own.first + 1; ++x) {
      for (long long y = own.second - 1; y <= own.second + 1; ++y) depth += countIn({x, y}, line);
    }
    cells[own].push_back(line);
    return depth;
  }

 private:
  using Cell = std::pair<long long, long long>;

  static Cell cellOf(const PageLine& line) {
    const auto cell = [](double a, double b) { return std::llround((a + b) / 2.0 / sameLine); };
    return {cell(line.from.x, line.to.x), cell(line.from.y, line.to.y)};
  }

  int countIn(const Cell& cell, const PageLine& line) const {
    const auto found = cells.find(cell);
    if (found == cells.end()) return 0;
    return static_cast<int>(std::count_if(found->second.begin(), found->second.end(), [&](const PageLine& other) {
      return distance(line.from, other.from) < sameLine && distance(line.to, other.to) < sameLine;
    }));
  }

  std::map<Cell, std::vector<PageLine>> cells;
};

/// A target that several groups measured has their crosses one upon the other. The deeper a line lies
/// the wider it is, so that it shows behind those above.
std::vector<double> lineWidths(const std::vector<PageLine>& lines) {
  const double thin = lineWidthFor(lines);
  std::vector<double> widths(lines.size());
  LineStacks stacks;
  for (std::size_t i = lines.size(); i-- > 0;) {
    widths[i] = thin * (1.0 + widening * std::min(stacks.depthOf(lines[i]), deepestSeen));
  }
  return widths;
}

}  // namespace

bool isFinite(const PagePoint& point) { return std::isfinite(point.x) && std::isfinite(point.y); }

double distance(const PagePoint& a, const PagePoint& b) { return std::hypot(a.x - b.x, a.y - b.y); }

std::vector<PageLine> linesOn(const Projection& projection, const std::vector<DrawnLine>& recorded) {
  std::vector<PageLine> lines;
  for (const DrawnLine& line : recorded) {
    const PageLine drawn{projection.onPage(line.from), projection.onPage(line.to), inkColor(line.color)};
    if (isFinite(drawn.from) && isFinite(drawn.to) && distance(drawn.from, drawn.to) > shortestLine) {
      lines.push_back(drawn);
    }
  }
  return lines;
}

double lineWidthFor(const std::vector<PageLine>& lines) {
  double longest = 0.0;
  for (const PageLine& line : lines) longest = std::max(longest, distance(line.from, line.to));
  return std::clamp(longest * widthForLength, thinnestLine, thickestLine);
}

void paintLines(Canvas& canvas, const std::vector<PageLine>& lines) {
  const std::vector<double> widths = lineWidths(lines);
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (!isBright(lines[i].color)) continue;
    canvas.line(lines[i].from, lines[i].to, seamColor(lines[i].color), widths[i] + seamWidth);
  }
  for (std::size_t i = 0; i < lines.size(); ++i) canvas.line(lines[i].from, lines[i].to, lines[i].color, widths[i]);
}

OdGePoint3d arrowTip(const Residual& residual, double enlargement) {
  const OdGeVector3d shift = residual.registered - residual.target;
  return residual.target + OdGeVector3d{shift.x * enlargement, shift.y * enlargement, shift.z * enlargement};
}

std::vector<PageArrow> arrowsOn(const Projection& projection, const std::vector<Residual>& residuals,
                                double enlargement) {
  std::vector<PageArrow> arrows;
  for (const Residual& residual : residuals) {
    const PageArrow arrow{projection.onPage(residual.target), projection.onPage(arrowTip(residual, enlargement)),
                          inkColor(residual.color), residual.note};
    if (isFinite(arrow.from) && isFinite(arrow.to)) arrows.push_back(arrow);
  }
  return arrows;
}

void paintArrows(Canvas& canvas, const std::vector<PageArrow>& arrows, double width) {
  for (const PageArrow& arrow : arrows) {
    if (!arrow.note.empty()) continue;
    canvas.arrow(arrow.from, arrow.to, isBright(arrow.color) ? seamColor(arrow.color) : arrow.color, width);
  }
  for (const PageArrow& arrow : arrows) {
    if (arrow.note.empty()) continue;
    canvas.ring(arrow.from, alarmRing, paper, 4.0);
    canvas.ring(arrow.from, alarmRing, alarm, 2.0);
    canvas.arrow(arrow.from, arrow.to, paper, alarmArrowWidth + 2.0);
    canvas.arrow(arrow.from, arrow.to, alarm, alarmArrowWidth);
  }
}

void paintStation(Canvas& canvas, const PagePoint& middle, const Rgb& color) {
  const double s = stationSize;
  const std::vector<PagePoint> triangle{
      {middle.x, middle.y - s}, {middle.x + 0.87 * s, middle.y + 0.5 * s}, {middle.x - 0.87 * s, middle.y + 0.5 * s}};
  canvas.outline(triangle, paper, 4.0);
  canvas.fill(triangle, color);
  canvas.outline(triangle, ink, 1.2);
  canvas.dot(middle, 1.6, paper);
}

void paintSwatch(Canvas& canvas, const PagePoint& middle, const Rgb& color) {
  const auto cross = [&](const Rgb& paint, double width) {
    canvas.line({middle.x - swatchReach, middle.y}, {middle.x + swatchReach, middle.y}, paint, width);
    canvas.line({middle.x, middle.y - swatchReach}, {middle.x, middle.y + swatchReach}, paint, width);
  };
  if (isBright(color)) cross(seamColor(color), swatchWidth + seamWidth);
  cross(color, swatchWidth);
}

}  // namespace tiepoint::workbench::picture
