#include "workbench/view/view.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <stdexcept>
#include <string>

namespace tiepoint::workbench {
namespace {

/// Sine of the smallest angle between the up vector and the direction of view: below it the x axis
/// would keep less than half of its digits.
constexpr double minSineOfUp = 1e-8;

struct Axes {
  OdGeVector3d x;
  OdGeVector3d y;
  OdGeVector3d z;
};

/// Adding zero turns a negative zero into a plain one, and leaves all other numbers.
OdGeVector3d withoutNegativeZeros(const OdGeVector3d& v) { return {v.x + 0.0, v.y + 0.0, v.z + 0.0}; }

double dot(const OdGeVector3d& a, const OdGeVector3d& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }

OdGeVector3d cross(const OdGeVector3d& a, const OdGeVector3d& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

OdGeVector3d fromOrigin(const OdGePoint3d& p) { return p - OdGePoint3d{}; }

bool isFinite(const OdGeVector3d& v) { return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z); }

bool isFinite(const ViewState& state) {
  return isFinite(fromOrigin(state.position)) && isFinite(fromOrigin(state.target)) && isFinite(state.up) &&
         std::isfinite(state.width) && std::isfinite(state.height);
}

/// Unit length; nothing for a zero vector and for one that isn't finite. Divides by the largest
/// component first, so that neither huge nor tiny vectors overflow on the way.
std::optional<OdGeVector3d> normalised(const OdGeVector3d& v) {
  const double largest = std::max({std::abs(v.x), std::abs(v.y), std::abs(v.z)});
  if (largest == 0.0 || !isFinite(v)) return std::nullopt;
  const OdGeVector3d scaled{v.x / largest, v.y / largest, v.z / largest};
  const double length = std::sqrt(dot(scaled, scaled));
  return withoutNegativeZeros({scaled.x / length, scaled.y / length, scaled.z / length});
}

std::optional<OdGeVector3d> directionOf(const ViewState& state) { return normalised(state.position - state.target); }

/// The x axis that an up vector gives; nothing when it is zero or too close to the direction z.
std::optional<OdGeVector3d> xAxisOf(const OdGeVector3d& up, const OdGeVector3d& z) {
  const std::optional<OdGeVector3d> unitUp = normalised(up);
  if (!unitUp) return std::nullopt;
  const OdGeVector3d right = cross(*unitUp, z);
  if (dot(right, right) < minSineOfUp * minSineOfUp) return std::nullopt;
  return normalised(right);
}

/// The drawing's y axis stands in for an up vector that can't be used, or its z axis where the view
/// looks along y.
OdGeVector3d fallbackXAxis(const OdGeVector3d& z) {
  if (const auto x = xAxisOf({0.0, 1.0, 0.0}, z)) return *x;
  return *xAxisOf({0.0, 0.0, 1.0}, z);
}

Axes axesOf(const ViewState& state) {
  Axes axes;
  axes.z = directionOf(state).value_or(OdGeVector3d{0.0, 0.0, 1.0});
  const std::optional<OdGeVector3d> x = xAxisOf(state.up, axes.z);
  axes.x = x ? *x : fallbackXAxis(axes.z);
  axes.y = withoutNegativeZeros(cross(axes.z, axes.x));
  return axes;
}

void setRow(OdGeMatrix3d& matrix, int row, const OdGeVector3d& axis, const OdGeVector3d& eye) {
  matrix(row, 0) = axis.x;
  matrix(row, 1) = axis.y;
  matrix(row, 2) = axis.z;
  matrix(row, 3) = 0.0 - dot(axis, eye);
}

/// Pixels per drawing unit. A size that isn't positive has no say.
double scaleOf(const ViewState& state) {
  const double horizontal = state.pixelWidth / state.width;
  const double vertical = state.pixelHeight / state.height;
  if (!(state.width > 0.0) && !(state.height > 0.0)) return 1.0;
  if (!(state.width > 0.0)) return vertical;
  if (!(state.height > 0.0)) return horizontal;
  return std::min(horizontal, vertical);
}

void require(bool condition, const char* what) {
  if (!condition) throw std::invalid_argument(std::string("this gives no view: ") + what);
}

}  // namespace

OdGeMatrix3d View::viewingMatrix() const {
  const Axes axes = axesOf(current);
  const OdGeVector3d eye = fromOrigin(current.position);
  OdGeMatrix3d worldToView;
  setRow(worldToView, 0, axes.x, eye);
  setRow(worldToView, 1, axes.y, eye);
  setRow(worldToView, 2, axes.z, eye);
  return worldToView;
}

void View::set(const OdGePoint3d& position, const OdGePoint3d& target, const OdGeVector3d& upVector, double fieldWidth,
               double fieldHeight, HostProjection) {
  ViewState wanted = current;
  wanted.position = position;
  wanted.target = target;
  wanted.up = upVector;
  wanted.width = fieldWidth;
  wanted.height = fieldHeight;
  if (isFinite(wanted)) current = wanted;
}

void View::setState(const ViewState& state) {
  require(isFinite(state), "all numbers must be finite");
  require(state.width > 0.0 && state.height > 0.0, "width and height must be above zero");
  require(state.pixelWidth > 0 && state.pixelHeight > 0, "the pixel counts must be above zero");
  const std::optional<OdGeVector3d> z = directionOf(state);
  require(z.has_value(), "the position and the target must differ");
  require(xAxisOf(state.up, *z).has_value(), "the up vector must not be parallel to the direction of view");
  current = state;
}

OdGeMatrix3d View::deviceMatrix() const {
  const double scale = scaleOf(current);
  OdGeMatrix3d viewToDevice;
  for (int axis = 0; axis < 3; ++axis) viewToDevice(axis, axis) = scale;
  viewToDevice(0, 3) = 0.5 * current.pixelWidth;
  viewToDevice(1, 3) = 0.5 * current.pixelHeight;
  return viewToDevice * viewingMatrix();
}

OdGeVector3d View::direction() const { return axesOf(current).z; }

OdGeVector3d View::xAxis() const { return axesOf(current).x; }

}  // namespace tiepoint::workbench
