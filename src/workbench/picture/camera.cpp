#include "workbench/picture/camera.h"

#include <Eigen/Eigenvalues>
#include <algorithm>
#include <cmath>
#include <limits>

namespace tiepoint::workbench::picture {

namespace {

constexpr double farthest = 1e100;

Eigen::Vector3d vector(const OdGePoint3d& place) { return {place.x, place.y, place.z}; }
Eigen::Vector3d vector(const OdGeVector3d& v) { return {v.x, v.y, v.z}; }
OdGePoint3d point(const Eigen::Vector3d& v) { return {v.x(), v.y(), v.z()}; }
OdGeVector3d direction(const Eigen::Vector3d& v) { return {v.x(), v.y(), v.z()}; }

/// The vector or its opposite: the one whose largest part is positive.
Eigen::Vector3d mostlyPositive(const Eigen::Vector3d& v) {
  Eigen::Index largest = 0;
  v.cwiseAbs().maxCoeff(&largest);
  return v[largest] < 0.0 ? Eigen::Vector3d(-v) : v;
}

Looks acrossTheSpread(const std::vector<OdGePoint3d>& places) {
  Eigen::Vector3d mean = Eigen::Vector3d::Zero();
  for (const OdGePoint3d& place : places) mean += vector(place) / static_cast<double>(places.size());
  Eigen::Matrix3d spread = Eigen::Matrix3d::Zero();
  for (const OdGePoint3d& place : places) spread += (vector(place) - mean) * (vector(place) - mean).transpose();
  if (spread.isZero(0.0)) return {{0, 0, 1}, {0, 1, 0}};
  // In ascending order of the spread along them.
  const Eigen::Matrix3d axes = Eigen::SelfAdjointEigenSolver<Eigen::Matrix3d>(spread).eigenvectors();
  const Eigen::Vector3d towardsViewer = mostlyPositive(axes.col(0));
  return {direction(towardsViewer), direction(towardsViewer.cross(mostlyPositive(axes.col(2))))};
}

Eigen::AlignedBox3d extentsAlong(const Eigen::Matrix3d& axes, const std::vector<OdGePoint3d>& places) {
  Eigen::AlignedBox3d extents;
  for (const OdGePoint3d& place : places) extents.extend(axes * vector(place));
  return extents;
}

}  // namespace

bool canBeShown(const OdGePoint3d& place) {
  const auto isNear = [](double coordinate) { return std::abs(coordinate) <= farthest; };
  return isNear(place.x) && isNear(place.y) && isNear(place.z);
}

Looks looksFrom(Direction wanted, const std::vector<OdGePoint3d>& places) {
  switch (wanted) {
    case Direction::front:
      return {{0, -1, 0}, {0, 0, 1}};
    case Direction::side:
      return {{1, 0, 0}, {0, 0, 1}};
    case Direction::iso:
      return {{1, -1, 1}, {0, 0, 1}};
    case Direction::fit:
      return acrossTheSpread(places);
    case Direction::top:
      break;
  }
  return {{0, 0, 1}, {0, 1, 0}};
}

ViewState cameraOn(const std::vector<OdGePoint3d>& places, const Looks& looks, int pixelWidth, int pixelHeight,
                   double margin) {
  Eigen::Matrix3d axes;
  axes.row(2) = vector(looks.towardsViewer).normalized();
  axes.row(0) = vector(looks.up).cross(vector(looks.towardsViewer)).normalized();
  axes.row(1) = axes.row(2).cross(axes.row(0));
  const Eigen::AlignedBox3d extents = extentsAlong(axes, places);

  const Eigen::Vector3d sizes = extents.sizes();
  double pixelSize = std::max(sizes.x() / (pixelWidth - 2.0 * margin), sizes.y() / (pixelHeight - 2.0 * margin));
  // A field so small that a place's digits no longer tell its pixels apart shows a single place.
  const double farthestOut = extents.min().cwiseAbs().cwiseMax(extents.max().cwiseAbs()).maxCoeff();
  const double finest = std::max(farthestOut * 1e-13, shortestLength);
  if (!(pixelSize > finest)) pixelSize = std::max(1.0 / (pixelWidth - 2.0 * margin), finest);

  ViewState state;
  const Eigen::Vector3d middle = axes.transpose() * extents.center();
  state.width = pixelSize * pixelWidth;
  state.height = pixelSize * pixelHeight;
  state.target = point(middle);
  state.position = point(middle + axes.row(2).transpose() * std::max(state.width, state.height));
  state.up = direction(axes.row(1));
  state.pixelWidth = pixelWidth;
  state.pixelHeight = pixelHeight;
  return state;
}

}  // namespace tiepoint::workbench::picture
