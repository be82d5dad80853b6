#include "workbench/picture/label_placer.h"

#include <array>
#include <cmath>
#include <limits>

namespace tiepoint::workbench::picture {

namespace {

/// Between an anchor and the corner of the nearest label.
constexpr double nearGap = 2.5;
/// Beyond the arms of a cross, and further off where it is crowded.
constexpr double armGap = 13.0;
constexpr std::array<double, 3> farGaps{24.0, 38.0, 54.0};
/// A label over more marks than these says less than it hides.
constexpr std::size_t maxMarksCovered = 4;
constexpr double lineStep = 4.0;
constexpr double lineHalfWidth = 1.0;
/// Longer ones are cut into longer pieces.
constexpr double longestLine = 1e5;

/// To the right and above first, as a label is asked for.
constexpr std::array<PagePoint, 4> corners{{{1, -1}, {1, 1}, {-1, -1}, {-1, 1}}};
constexpr std::array<PagePoint, 8> around{
    {{1, 0}, {-1, 0}, {0, -1}, {0, 1}, {0.7, -0.7}, {0.7, 0.7}, {-0.7, -0.7}, {-0.7, 0.7}}};
constexpr std::array<PagePoint, 8> between{
    {{0.9, -0.4}, {0.9, 0.4}, {-0.9, -0.4}, {-0.9, 0.4}, {0.4, -0.9}, {0.4, 0.9}, {-0.4, -0.9}, {-0.4, 0.9}}};

/// The box whose nearest side lies that far from the anchor in that direction.
Box boxTowards(const LabelWish& wish, const PagePoint& direction, double shortestGap) {
  const double gap = shortestGap + wish.clearance;
  const auto sign = [](double part) { return part > 0.0 ? 1.0 : part < 0.0 ? -1.0 : 0.0; };
  const double x = wish.anchor.x + direction.x * gap + sign(direction.x) * wish.width / 2.0;
  const double y = wish.anchor.y + direction.y * gap + sign(direction.y) * wish.height / 2.0;
  return {x - wish.width / 2.0, y - wish.height / 2.0, x + wish.width / 2.0, y + wish.height / 2.0};
}

/// Calls `visit` with every place in the order of liking, until it gives false.
template <class Visit>
void forEachPosition(const LabelWish& wish, Visit visit) {
  for (const PagePoint& corner : corners) {
    if (!visit(LabelPosition{boxTowards(wish, corner, nearGap), false})) return;
  }
  for (const PagePoint& direction : around) {
    if (!visit(LabelPosition{boxTowards(wish, direction, armGap), false})) return;
  }
  if (!wish.mayBeFar) return;
  for (const double gap : farGaps) {
    for (const auto* directions : {&around, &between}) {
      for (const PagePoint& direction : *directions) {
        if (!visit(LabelPosition{boxTowards(wish, direction, gap), true})) return;
      }
    }
  }
}

/// Small boxes along a line, as one box around all of it would cover far more.
template <class Visit>
void forEachPiece(const PagePoint& from, const PagePoint& to, Visit visit) {
  const double length = std::min(longestLine, std::hypot(to.x - from.x, to.y - from.y));
  const int steps = static_cast<int>(std::ceil(std::max(1.0, length / lineStep)));
  const auto at = [&](int step) {
    return PagePoint{from.x + (to.x - from.x) * step / steps, from.y + (to.y - from.y) * step / steps};
  };
  for (int i = 0; i < steps; ++i) {
    const PagePoint a = at(i);
    const PagePoint b = at(i + 1);
    visit(Box{std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)}.grownBy(lineHalfWidth));
  }
}

}  // namespace

LabelPlacer::LabelPlacer(const Box& area_) : area(area_), marks(area_), blocked(area_) {}

void LabelPlacer::addLine(const PagePoint& from, const PagePoint& to) {
  forEachPiece(from, to, [&](const Box& piece) { addMark(piece); });
}

void LabelPlacer::blockLine(const PagePoint& from, const PagePoint& to) {
  forEachPiece(from, to, [&](const Box& piece) { block(piece); });
}

std::optional<LabelPosition> LabelPlacer::place(const LabelWish& wish) {
  std::optional<LabelPosition> best;
  std::size_t fewest = wish.isVital ? std::numeric_limits<std::size_t>::max() : maxMarksCovered + 1;
  forEachPosition(wish, [&](const LabelPosition& candidate) {
    if (!contains(area, candidate.box) || blocked.overlapping(candidate.box) != 0) return true;
    const std::size_t covered = marks.overlapping(candidate.box);
    if (covered < fewest) {
      best = candidate;
      fewest = covered;
    }
    return fewest != 0;
  });
  if (best) block(best->box);
  return best;
}

}  // namespace tiepoint::workbench::picture
