#include "workbench/picture/page_layout.h"

#include <algorithm>
#include <cmath>

namespace tiepoint::workbench::picture {

namespace {

/// The smallest page on which everything has its room, and that up to which a unit is one pixel.
constexpr double minWidth = 640.0;
constexpr double minHeight = 480.0;
constexpr double plainWidth = 960.0;
constexpr double plainHeight = 640.0;

constexpr double margin = 12.0;
constexpr double gap = 10.0;
constexpr double headerHeight = 36.0;
constexpr double footerHeight = 46.0;
constexpr double columnShare = 0.34;

double unitOf(const Size& size) {
  const double least = std::min(size.width / minWidth, size.height / minHeight);
  const double plain = std::min(size.width / plainWidth, size.height / plainHeight);
  return std::min(least, std::max(1.0, plain));
}

}  // namespace

double maxColumn(const Size& size) { return columnShare * size.width / unitOf(size); }

PageLayout layOutPage(const Size& size, double columnWidth) {
  PageLayout layout;
  layout.unit = unitOf(size);
  layout.page = {0.0, 0.0, size.width / layout.unit, size.height / layout.unit};
  const Box inner = layout.page.grownBy(-margin);
  const double width = std::floor(inner.width() - gap - columnWidth);
  const double height = std::floor(inner.height() - headerHeight - gap - footerHeight);
  layout.header = {inner.left, inner.top, inner.right, inner.top + headerHeight};
  const double top = layout.header.bottom + gap;
  layout.drawing = {inner.left, top, inner.left + width, top + height};
  layout.footer = {inner.left, layout.drawing.bottom, layout.drawing.right, inner.bottom};
  layout.column = {layout.drawing.right + gap, top, inner.right, inner.bottom};
  return layout;
}

}  // namespace tiepoint::workbench::picture
