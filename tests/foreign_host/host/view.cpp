#include "view.h"

#include <cmath>

namespace foreign {

namespace {

double dot(const OdGeVector3d& a, const OdGeVector3d& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }

OdGeVector3d cross(const OdGeVector3d& a, const OdGeVector3d& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

/// Whether one can look that way: with an extent, and with an up that isn't the way itself.
bool canLook(const OdGeVector3d& way, const OdGeVector3d& up, double width, double height) {
  const OdGeVector3d right = cross(up, way);
  const double reach = dot(way, way) + dot(right, right);
  return std::isfinite(reach) && dot(right, right) > 0.0 && width > 0.0 && height > 0.0;
}

OdGeVector3d unit(const OdGeVector3d& v) {
  const double length = std::sqrt(dot(v, v));
  return {v.x / length, v.y / length, v.z / length};
}

}  // namespace

OdGeMatrix3d View::worldToEye() const {
  const OdGeVector3d towardsViewer = unit(eye - centre);
  const OdGeVector3d right = unit(cross(up, towardsViewer));
  const OdGeVector3d rows[3] = {right, cross(towardsViewer, right), towardsViewer};
  const OdGeVector3d fromOrigin = eye - OdGePoint3d();
  OdGeMatrix3d matrix;
  for (int i = 0; i < 3; ++i) {
    matrix(i, 0) = rows[i].x;
    matrix(i, 1) = rows[i].y;
    matrix(i, 2) = rows[i].z;
    matrix(i, 3) = -dot(rows[i], fromOrigin);
  }
  return matrix;
}

OdGeMatrix3d View::viewingMatrix() const {
  return answer("View::viewingMatrix", [this] { return worldToEye(); });
}

OdGePoint3d View::position() const {
  return answer("View::position", [this] { return eye; });
}

OdGePoint3d View::target() const {
  return answer("View::target", [this] { return centre; });
}

OdGeVector3d View::upVector() const {
  return answer("View::upVector", [this] { return up; });
}

double View::fieldWidth() const {
  return answer("View::fieldWidth", [this] { return fieldX; });
}

double View::fieldHeight() const {
  return answer("View::fieldHeight", [this] { return fieldY; });
}

void View::set(const OdGePoint3d& position, const OdGePoint3d& target, const OdGeVector3d& upVector, double fieldWidth,
               double fieldHeight, HostProjection projection) {
  answer("View::set", [&] {
    if (!canLook(position - target, upVector, fieldWidth, fieldHeight)) {
      // What this host itself has told wrongly comes back so.
      if (board.spoiledCall().empty()) board.complain("a view was set to look nowhere");
      return;
    }
    if (projection != HostProjection::parallel) board.complain("a view was set to perspective");
    eye = position;
    centre = target;
    up = upVector;
    fieldX = fieldWidth;
    fieldY = fieldHeight;
  });
}

}  // namespace foreign
