#include "workbench/picture/drawing_part.h"

#include "workbench/picture/label_sheet.h"
#include "workbench/picture/marks.h"

namespace tiepoint::workbench::picture {

namespace {

/// Of more labels than these, those that find no room beside their points are left out: a thicket of
/// lines to far ones would hide more than they tell.
constexpr std::size_t maxWithLeaders = 200;

struct Marks {
  std::vector<PageLine> lines;
  std::vector<PageArrow> arrows;
  std::vector<PagePoint> stations;
};

Box around(const PagePoint& point, double reach) { return Box{point.x, point.y, point.x, point.y}.grownBy(reach); }

Marks marksOn(const Projection& projection, const RecordingDraw& recorded, const Content& content, double enlargement) {
  Marks marks{linesOn(projection, recorded.lines()), arrowsOn(projection, content.residuals, enlargement), {}};
  for (const Station& station : content.stations) marks.stations.push_back(projection.onPage(station.position));
  return marks;
}

void addMarks(LabelPlacer& placer, const Marks& marks) {
  for (const PageLine& line : marks.lines) placer.addLine(line.from, line.to);
  for (const PageArrow& arrow : marks.arrows) {
    placer.addLine(arrow.from, arrow.to);
    if (arrow.note.empty()) continue;
    placer.block(around(arrow.from, alarmRing));
    placer.blockLine(arrow.from, arrow.to);
  }
  for (const PagePoint& station : marks.stations) placer.block(around(station, stationSize));
}

/// Notes have the first choice of places, then stations, then the points.
LabelCount addTexts(LabelSheet& sheet, const Marks& marks, const Content& content, std::vector<Label> labels) {
  for (const PageArrow& arrow : marks.arrows) {
    if (!arrow.note.empty()) sheet.addNote(arrow);
  }
  for (std::size_t i = 0; i < marks.stations.size(); ++i) {
    sheet.addStationName(marks.stations[i], content.stations[i].name);
  }
  putLargestResidualsFirst(labels, content.residuals);
  LabelCount count{labels.size(), 0};
  for (const Label& label : labels) count.placed += sheet.addLabel(label, labels.size() <= maxWithLeaders) ? 1 : 0;
  return count;
}

}  // namespace

LabelCount paintDrawing(Canvas& canvas, const Box& area, const RecordingDraw& recorded, const Content& content,
                        const Projection& projection, double enlargement) {
  const Marks marks = marksOn(projection, recorded, content, enlargement);
  LabelSheet sheet(canvas, area);
  addMarks(sheet.places(), marks);
  const LabelCount count =
      addTexts(sheet, marks, content, labelsOf(recorded.texts(), projection, recorded.pixelSize()));

  canvas.beginClip(area);
  sheet.paintLeaders();
  paintLines(canvas, marks.lines);
  paintArrows(canvas, marks.arrows, lineWidthFor(marks.lines));
  for (std::size_t i = 0; i < marks.stations.size(); ++i) {
    paintStation(canvas, marks.stations[i], inkColor(content.stations[i].color));
  }
  sheet.paintTexts();
  canvas.endClip();
  return count;
}

}  // namespace tiepoint::workbench::picture
