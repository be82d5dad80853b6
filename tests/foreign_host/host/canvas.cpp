#include "canvas.h"

#include <cmath>

#include "view.h"

namespace foreign {

namespace {

constexpr double deviceWidth = 1000.0;

bool hasPlace(const OdGePoint3d& p) { return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z); }

OdGeMatrix3d scaling(double factor) {
  OdGeMatrix3d matrix;
  for (int i = 0; i < 3; ++i) matrix(i, i) = factor;
  return matrix;
}

}  // namespace

Canvas::Canvas(const View& view, Drawn& drawn)
    : eye(view.worldToEye()), device(scaling(deviceWidth / view.width()) * eye), counts(drawn) {
  horizontal = {eye(0, 0), eye(0, 1), eye(0, 2)};
  direction = {eye(2, 0), eye(2, 1), eye(2, 2)};
}

void Canvas::worldLine(const OdGePoint3d points[2]) {
  ++counts.lines;
  if (!hasPlace(points[0]) || !hasPlace(points[1])) ++counts.withoutPlace;
}

void Canvas::text(const OdGePoint3d& position, const OdGeVector3d&, const OdGeVector3d&, double height, double, double,
                  const OdString& message) {
  ++counts.texts;
  if (!hasPlace(position) || !std::isfinite(height) || message.isEmpty()) ++counts.withoutPlace;
}

}  // namespace foreign
