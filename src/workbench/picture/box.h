// Points and boxes on a page, in its units: x to the right, y downwards.
#pragma once

#include <algorithm>

namespace tiepoint::workbench::picture {

struct PagePoint {
  double x = 0.0;
  double y = 0.0;
};

struct Box {
  double left = 0.0;
  double top = 0.0;
  double right = 0.0;
  double bottom = 0.0;

  double width() const { return right - left; }
  double height() const { return bottom - top; }
  PagePoint middle() const { return {(left + right) / 2.0, (top + bottom) / 2.0}; }
  Box grownBy(double margin) const { return {left - margin, top - margin, right + margin, bottom + margin}; }
};

/// Boxes that only touch don't overlap.
inline bool overlap(const Box& a, const Box& b) {
  return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

inline bool contains(const Box& outer, const Box& inner) {
  return outer.left <= inner.left && outer.top <= inner.top && inner.right <= outer.right &&
         inner.bottom <= outer.bottom;
}

inline bool contains(const Box& outer, const PagePoint& point) {
  return contains(outer, Box{point.x, point.y, point.x, point.y});
}

/// The point of the box that is nearest to the given one.
inline PagePoint nearestPoint(const Box& box, const PagePoint& to) {
  return {std::clamp(to.x, box.left, box.right), std::clamp(to.y, box.top, box.bottom)};
}

}  // namespace tiepoint::workbench::picture
