#include "workbench/picture/label_placer.h"

#include <array>
#include <cmath>

namespace tiepoint::workbench::picture {

namespace {

/// Between an anchor and the corner of the nearest label.
constexpr double nearGap = 2.5;
/// Beyond the arms of a cross, and further off where it is crowded.
constexpr double armGap = 13.0;
constexpr std::array<double, 2> farGaps{24.0, 38.0};
/// A label over more marks than these says less than it hides.
constexpr std::size_t mostMarksCovered = 4;
constexpr double lineStep = 4.0;
constexpr double lineHalfWidth = 1.0;

/// To the right and above first, as a label is asked for.
constexpr std::array<Spot, 4> corners{{{1, -1}, {1, 1}, {-1, -1}, {-1, 1}}};
constexpr std::array<Spot, 8> around{
    {{1, 0}, {-1, 0}, {0, -1}, {0, 1}, {0.7, -0.7}, {0.7, 0.7}, {-0.7, -0.7}, {-0.7, 0.7}}};

/// The box whose nearest side lies that far from the anchor in that direction.
Box boxTowards(const LabelWish& wish, const Spot& direction, double shortestGap) {
  const double gap = shortestGap + wish.clearance;
  const auto sign = [](double part) { return part > 0.0 ? 1.0 : part < 0.0 ? -1.0 : 0.0; };
  const double x = wish.anchor.x + direction.x * gap + sign(direction.x) * wish.width / 2.0;
  const double y = wish.anchor.y + direction.y * gap + sign(direction.y) * wish.height / 2.0;
  return {x - wish.width / 2.0, y - wish.height / 2.0, x + wish.width / 2.0, y + wish.height / 2.0};
}

/// Calls `visit` with every place in the order of liking, until it gives false.
template <class Visit>
void forEachPlace(const LabelWish& wish, Visit visit) {
  for (const Spot& corner : corners) {
    if (!visit(LabelPlace{boxTowards(wish, corner, nearGap), false})) return;
  }
  for (const Spot& direction : around) {
    if (!visit(LabelPlace{boxTowards(wish, direction, armGap), false})) return;
  }
  for (const double gap : farGaps) {
    for (const Spot& direction : around) {
      if (!visit(LabelPlace{boxTowards(wish, direction, gap), true})) return;
    }
  }
}

}  // namespace

LabelPlacer::LabelPlacer(const Box& area_) : area(area_), marks(area_), blocked(area_) {}

void LabelPlacer::addLine(const Spot& from, const Spot& to) {
  const double length = std::hypot(to.x - from.x, to.y - from.y);
  const int steps = static_cast<int>(std::ceil(std::max(1.0, std::min(length, 1e5) / lineStep)));
  for (int i = 0; i < steps; ++i) {
    const auto along = [&](double a, double b, int step) { return a + (b - a) * step / steps; };
    const Box piece{std::min(along(from.x, to.x, i), along(from.x, to.x, i + 1)),
                    std::min(along(from.y, to.y, i), along(from.y, to.y, i + 1)),
                    std::max(along(from.x, to.x, i), along(from.x, to.x, i + 1)),
                    std::max(along(from.y, to.y, i), along(from.y, to.y, i + 1))};
    addMark(piece.grownBy(lineHalfWidth));
  }
}

std::optional<LabelPlace> LabelPlacer::place(const LabelWish& wish) {
  std::optional<LabelPlace> best;
  std::size_t fewest = mostMarksCovered + 1;
  forEachPlace(wish, [&](const LabelPlace& candidate) {
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
