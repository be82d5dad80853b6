// Finds positions for labels, so that none hides another.
#pragma once

#include <cstddef>
#include <optional>

#include "workbench/picture/box.h"
#include "workbench/picture/box_grid.h"

namespace tiepoint::workbench::picture {

/// A text that labels a point, and the size of its box.
struct LabelWish {
  PagePoint anchor;
  double width = 0.0;
  double height = 0.0;
  /// Kept free around the anchor in any case.
  double clearance = 0.0;
  /// It is shown however many marks it covers.
  bool isVital = false;
  /// It may stand far off, with a line that leads to it.
  bool mayBeFar = true;
};

struct LabelPosition {
  Box box;
  /// It stands so far off that a line should lead to it.
  bool isFar = false;
};

/// Labels go in one after the other, the most important first. Each takes the first position around its
/// anchor where it covers the fewest marks, and no position at all if every one would hide another
/// label, leave the area or cover too many marks. The nearest position is right above the anchor's
/// right arm.
class LabelPlacer {
 public:
  explicit LabelPlacer(const Box& area);

  /// What a label may cover if there is no better position.
  void addMark(const Box& box) { marks.add(box); }
  void addLine(const PagePoint& from, const PagePoint& to);
  /// What no label may cover.
  void block(const Box& box) { blocked.add(box); }
  void blockLine(const PagePoint& from, const PagePoint& to);

  /// The position taken, which is then blocked for all later ones.
  std::optional<LabelPosition> place(const LabelWish& wish);

 private:
  Box area;
  BoxGrid marks;
  BoxGrid blocked;
};

}  // namespace tiepoint::workbench::picture
