#include "workbench/picture/label_sheet.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "workbench/io/text_encoding.h"

namespace tiepoint::workbench::picture {

namespace {

/// Between the rim of the drawing and a label.
constexpr double rimGap = 4.0;
/// The same name at two points that are nearer than this is one label.
constexpr double sameLabelWithin = 8.0;
constexpr double haloWidth = 1.6;
constexpr double leaderWidth = 0.8;

const TextStyle noteStyle{12.0, true, alarm, 2.0};
const TextStyle stationStyle{11.0, true, ink, haloWidth};

}  // namespace

std::vector<Label> labelsOf(const std::vector<DrawnText>& texts, const Projection& projection, double pixelSize) {
  std::vector<Label> labels;
  std::map<std::wstring, std::vector<PagePoint>> known;
  for (const DrawnText& text : texts) {
    const PagePoint anchor = projection.onPage(text.position);
    if (!isFinite(anchor) || text.text.isEmpty()) continue;
    std::vector<PagePoint>& points = known[text.text.wideText()];
    const auto isNear = [&](const PagePoint& point) { return distance(point, anchor) < sameLabelWithin; };
    if (std::any_of(points.begin(), points.end(), isNear)) continue;
    points.push_back(anchor);
    labels.push_back({anchor, utf8FromWide(text.text.wideText()), text.height / pixelSize, inkColor(text.color)});
  }
  return labels;
}

void putLargestResidualsFirst(std::vector<Label>& labels, const std::vector<Residual>& residuals) {
  std::map<std::string, double> largest;
  for (const Residual& residual : residuals) {
    const OdGeVector3d shift = residual.registered - residual.target;
    double& known = largest[residual.name];
    known = std::max(known, std::hypot(shift.x, shift.y, shift.z));
  }
  const auto residualOf = [&](const Label& label) {
    const auto found = largest.find(label.text);
    return found == largest.end() ? 0.0 : found->second;
  };
  std::stable_sort(labels.begin(), labels.end(),
                   [&](const Label& a, const Label& b) { return residualOf(a) > residualOf(b); });
}

LabelSheet::LabelSheet(Canvas& canvas_, const Box& area) : canvas(canvas_), placer(area.grownBy(-rimGap)) {}

std::optional<LabelPosition> LabelSheet::add(const LabelWish& wish, const std::string& text, const TextStyle& style) {
  const Box box = canvas.boxOf({0.0, 0.0}, text, style).grownBy(style.halo);
  LabelWish sized = wish;
  sized.width = box.width();
  sized.height = box.height();
  const auto place = placer.place(sized);
  if (place) texts.push_back({{place->box.left + style.halo, place->box.bottom - box.bottom}, text, style});
  return place;
}

void LabelSheet::addNote(const PageArrow& arrow) {
  const auto place = add({arrow.from, 0.0, 0.0, alarmRing, true, true}, arrow.note, noteStyle);
  if (!place) return;
  const PagePoint end = nearestPoint(place->box, arrow.from);
  const double length = distance(arrow.from, end);
  if (length <= alarmRing) return;
  const double share = alarmRing / length;
  leaders.push_back(
      {{arrow.from.x + (end.x - arrow.from.x) * share, arrow.from.y + (end.y - arrow.from.y) * share}, end, alarm});
}

void LabelSheet::addStationName(const PagePoint& station, const std::string& name) {
  const auto place = add({station, 0.0, 0.0, stationSize - 2.0, false, true}, name, stationStyle);
  if (place && place->isFar) leaders.push_back({station, nearestPoint(place->box, station), softInk});
}

bool LabelSheet::addLabel(const Label& label, bool mayBeFar) {
  const TextStyle style{label.height / capitalHeight, false, label.color, haloWidth};
  const auto place = add({label.anchor, 0.0, 0.0, 0.0, false, mayBeFar}, label.text, style);
  if (place && place->isFar) leaders.push_back({label.anchor, nearestPoint(place->box, label.anchor), softInk});
  return place.has_value();
}

void LabelSheet::paintLeaders() {
  for (const PageLine& leader : leaders) canvas.line(leader.from, leader.to, leader.color, leaderWidth);
}

void LabelSheet::paintTexts() {
  for (const Text& text : texts) canvas.text(text.start, text.text, text.style);
}

}  // namespace tiepoint::workbench::picture
