#include "workbench/picture/drawing_part.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "workbench/host/text_encoding.h"
#include "workbench/picture/label_placer.h"

namespace tiepoint::workbench::picture {

namespace {

/// Between the rim of the drawing and a label.
constexpr double rimGap = 4.0;
/// The same name at two spots that are nearer than this is one label.
constexpr double sameSpot = 8.0;
constexpr double haloWidth = 1.6;
/// Bright colours get a darker seam, or they would vanish on paper.
constexpr double brightFrom = 0.45;
constexpr double seamDarkness = 0.45;
constexpr double seamWidth = 1.3;
constexpr double thinnestLine = 0.8;
constexpr double thickestLine = 1.7;
/// A line that shows as less than this isn't seen.
constexpr double shortestLine = 0.3;
constexpr double arrowWidth = 1.3;
constexpr double alarmArrowWidth = 3.0;
constexpr double alarmRing = 12.0;
constexpr double stationSize = 7.0;
constexpr double stationTextSize = 11.0;
constexpr double noteTextSize = 12.0;

struct PageLine {
  Spot from;
  Spot to;
  Rgb color;
};

struct PageArrow {
  Spot from;
  Spot to;
  Rgb color;
  std::string note;
};

bool isFinite(const Spot& spot) { return std::isfinite(spot.x) && std::isfinite(spot.y); }
double distance(const Spot& a, const Spot& b) { return std::hypot(a.x - b.x, a.y - b.y); }

Rgb seamColor(const Rgb& color) {
  const auto darker = [](std::uint8_t part) { return static_cast<std::uint8_t>(part * seamDarkness); };
  return {darker(color.red), darker(color.green), darker(color.blue)};
}

std::vector<PageLine> linesOn(const Projection& projection, const std::vector<DrawnLine>& recorded) {
  std::vector<PageLine> lines;
  for (const DrawnLine& line : recorded) {
    const PageLine drawn{projection.spotOf(line.from), projection.spotOf(line.to), inkColor(line.color)};
    if (isFinite(drawn.from) && isFinite(drawn.to) && distance(drawn.from, drawn.to) > shortestLine) {
      lines.push_back(drawn);
    }
  }
  return lines;
}

/// Small crosses have thin lines.
double lineWidthFor(const std::vector<PageLine>& lines) {
  double longest = 0.0;
  for (const PageLine& line : lines) longest = std::max(longest, distance(line.from, line.to));
  return std::clamp(longest * 0.075, thinnestLine, thickestLine);
}

void paintLines(Canvas& canvas, const std::vector<PageLine>& lines) {
  const double width = lineWidthFor(lines);
  for (const PageLine& line : lines) {
    if (brightness(line.color) < brightFrom) continue;
    canvas.line(line.from, line.to, seamColor(line.color), width + seamWidth);
  }
  for (const PageLine& line : lines) canvas.line(line.from, line.to, line.color, width);
}

std::vector<PageArrow> arrowsOn(const Projection& projection, const std::vector<Residual>& residuals,
                                double enlargement) {
  std::vector<PageArrow> arrows;
  for (const Residual& residual : residuals) {
    const PageArrow arrow{projection.spotOf(residual.target), projection.spotOf(arrowTip(residual, enlargement)),
                          inkColor(residual.color), residual.note};
    if (isFinite(arrow.from) && isFinite(arrow.to)) arrows.push_back(arrow);
  }
  return arrows;
}

void paintArrows(Canvas& canvas, const std::vector<PageArrow>& arrows) {
  for (const PageArrow& arrow : arrows) {
    if (!arrow.note.empty()) continue;
    canvas.arrow(arrow.from, arrow.to, brightness(arrow.color) < brightFrom ? arrow.color : seamColor(arrow.color),
                 arrowWidth);
  }
  for (const PageArrow& arrow : arrows) {
    if (arrow.note.empty()) continue;
    canvas.ring(arrow.from, alarmRing, paper, 4.0);
    canvas.ring(arrow.from, alarmRing, alarm, 2.0);
    canvas.arrow(arrow.from, arrow.to, paper, alarmArrowWidth + 2.0);
    canvas.arrow(arrow.from, arrow.to, alarm, alarmArrowWidth);
  }
}

void paintStation(Canvas& canvas, const Spot& place, const Rgb& color) {
  const double s = stationSize;
  const std::vector<Spot> triangle{
      {place.x, place.y - s}, {place.x + 0.87 * s, place.y + 0.5 * s}, {place.x - 0.87 * s, place.y + 0.5 * s}};
  canvas.outline(triangle, paper, 4.0);
  canvas.fill(triangle, color);
  canvas.outline(triangle, ink, 1.2);
  canvas.dot(place, 1.6, paper);
}

/// Labels with their places, painted after all of them are known.
class LabelSheet {
 public:
  LabelSheet(Canvas& canvas_, const Box& area) : canvas(canvas_), placer(area.grownBy(-rimGap)) {}

  LabelPlacer& places() { return placer; }

  bool add(const Spot& anchor, const std::string& text, const TextStyle& style, double clearance) {
    const Box box = canvas.boxOf({0.0, 0.0}, text, style).grownBy(style.halo);
    const auto place = placer.place({anchor, box.width(), box.height(), clearance});
    if (!place) return false;
    placed.push_back({{place->box.left + style.halo, place->box.bottom - box.bottom}, text, style});
    if (place->isFar || clearance > 0.0) leaders.push_back({anchor, nearestSpot(place->box, anchor), style.color});
    return true;
  }

  void paintLeaders(double clearanceOfNotes) {
    for (const PageLine& leader : leaders) {
      const double length = distance(leader.from, leader.to);
      const double skipped = leader.color == alarm ? clearanceOfNotes : 0.0;
      if (length <= skipped) continue;
      const Spot begin{leader.from.x + (leader.to.x - leader.from.x) * skipped / length,
                       leader.from.y + (leader.to.y - leader.from.y) * skipped / length};
      canvas.line(begin, leader.to, leader.color == alarm ? alarm : softInk, 0.8);
    }
  }

  void paintTexts() {
    for (const auto& label : placed) canvas.text(label.start, label.text, label.style);
  }

 private:
  struct Placed {
    Spot start;
    std::string text;
    TextStyle style;
  };

  Canvas& canvas;
  LabelPlacer placer;
  std::vector<Placed> placed;
  std::vector<PageLine> leaders;
};

void addMarks(LabelPlacer& placer, const std::vector<PageLine>& lines, const std::vector<PageArrow>& arrows,
              const std::vector<Spot>& stations) {
  for (const PageLine& line : lines) placer.addLine(line.from, line.to);
  for (const PageArrow& arrow : arrows) {
    placer.addLine(arrow.from, arrow.to);
    if (arrow.note.empty()) continue;
    placer.block(Box{arrow.from.x, arrow.from.y, arrow.from.x, arrow.from.y}.grownBy(3.0));
    placer.addMark(Box{arrow.from.x, arrow.from.y, arrow.from.x, arrow.from.y}.grownBy(alarmRing));
  }
  for (const Spot& station : stations) {
    placer.block(Box{station.x, station.y, station.x, station.y}.grownBy(stationSize));
  }
}

LabelCount addLabels(LabelSheet& sheet, const std::vector<Label>& labels) {
  LabelCount count;
  for (const Label& label : labels) {
    ++count.all;
    const TextStyle style{label.height / capitalHeight, false, inkColor(label.color), haloWidth};
    count.placed += sheet.add(label.anchor, label.text, style, 0.0) ? 1 : 0;
  }
  return count;
}

}  // namespace

OdGePoint3d arrowTip(const Residual& residual, double enlargement) {
  const OdGeVector3d shift = residual.registered - residual.target;
  return residual.target + OdGeVector3d{shift.x * enlargement, shift.y * enlargement, shift.z * enlargement};
}

std::vector<Label> labelsOf(const std::vector<DrawnText>& texts, const Projection& projection, double pixelSize) {
  std::vector<Label> labels;
  std::map<std::wstring, std::vector<Spot>> known;
  for (const DrawnText& text : texts) {
    const Spot anchor = projection.spotOf(text.position);
    if (!isFinite(anchor) || text.text.isEmpty()) continue;
    std::vector<Spot>& spots = known[text.text.wideText()];
    const auto isNear = [&](const Spot& spot) { return distance(spot, anchor) < sameSpot; };
    if (std::any_of(spots.begin(), spots.end(), isNear)) continue;
    spots.push_back(anchor);
    labels.push_back({anchor, utf8FromWide(text.text.wideText()), text.height / pixelSize, text.color});
  }
  return labels;
}

LabelCount paintDrawing(Canvas& canvas, const Box& area, const RecordingDraw& recorded, const Content& content,
                        const Projection& projection, double enlargement) {
  const std::vector<PageLine> lines = linesOn(projection, recorded.lines());
  const std::vector<PageArrow> arrows = arrowsOn(projection, content.residuals, enlargement);
  std::vector<Spot> stations;
  for (const Station& station : content.stations) stations.push_back(projection.spotOf(station.place));

  LabelSheet sheet(canvas, area);
  addMarks(sheet.places(), lines, arrows, stations);
  for (const PageArrow& arrow : arrows) {
    if (!arrow.note.empty()) sheet.add(arrow.from, arrow.note, {noteTextSize, true, alarm, 2.0}, alarmRing);
  }
  for (std::size_t i = 0; i < stations.size(); ++i) {
    sheet.add(stations[i], content.stations[i].name, {stationTextSize, true, ink, haloWidth}, stationSize);
  }
  const LabelCount count = addLabels(sheet, labelsOf(recorded.texts(), projection, recorded.pixelSize()));

  canvas.beginClip(area);
  sheet.paintLeaders(alarmRing);
  paintLines(canvas, lines);
  paintArrows(canvas, arrows);
  for (std::size_t i = 0; i < stations.size(); ++i) {
    paintStation(canvas, stations[i], inkColor(content.stations[i].color));
  }
  sheet.paintTexts();
  canvas.endClip();
  return count;
}

}  // namespace tiepoint::workbench::picture
