// Where the active view looks.
#include <algorithm>
#include <cmath>
#include <vector>

#include "host_access/host_objects.h"
#include "platform/host/view.h"
#include "session/multi_registrator.h"

namespace ZOR::reg {

namespace {

/// A tenth of free space around what is zoomed to.
constexpr double zoomMargin = 1.1;

/// The active view of the current document and the service that applies it.
struct ActiveView {
  HostTransientService* service = nullptr;
  HostView* view = nullptr;
};

ActiveView activeViewOfHost() {
  HostDocument* document = activeDocument();
  HostTransientService* service = document ? document->transientService() : nullptr;
  return {service, service ? service->activeView() : nullptr};
}

bool isFinite(const OdGePoint3d& p) { return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z); }

/// Places at the end of the numbers' range are passed over: no view can be there.
void show(const ActiveView& active, const OdGePoint3d& position, const OdGePoint3d& target, double width,
          double height) {
  if (!isFinite(position) || !isFinite(target) || !std::isfinite(width) || !std::isfinite(height)) return;
  active.view->set(position, target, active.view->upVector(), width, height, HostProjection::parallel);
  active.service->applyView(active.view, 0);
  refreshViews();
}

/// The extents of points in view coordinates.
struct Field {
  double minX, maxX, minY, maxY;

  double width() const { return maxX - minX; }
  double height() const { return maxY - minY; }
  double midX() const { return (minX + maxX) / 2.0; }
  double midY() const { return (minY + maxY) / 2.0; }
};

Field fieldOf(const std::vector<OdGePoint3d>& points, const OdGeMatrix3d& worldToView) {
  OdGePoint3d first = points.front();
  first.p_transform(worldToView);
  Field field{first.x, first.x, first.y, first.y};
  for (OdGePoint3d p : points) {
    p.p_transform(worldToView);
    field.minX = std::min(field.minX, p.x);
    field.maxX = std::max(field.maxX, p.x);
    field.minY = std::min(field.minY, p.y);
    field.maxY = std::max(field.maxY, p.y);
  }
  return field;
}

}  // namespace

OdGePoint3d MultiRegistrator::shownPosition(const RefPoint& point) const {
  const auto found = results.groupTransforms.find(point.groupId);
  return found == results.groupTransforms.end() ? point.position : apply(found->second, point.position);
}

void MultiRegistrator::zoomToGroup(GroupId group) { zoomToPointsOf({group}); }

void MultiRegistrator::zoomToAll() { zoomToPointsOf(visibleGroups); }

void MultiRegistrator::zoomToPointsOf(const GroupIdSet& groups) {
  const ActiveView active = activeViewOfHost();
  if (!active.view) return;
  std::vector<OdGePoint3d> points;
  for (const RefPoint& point : sessionPoints) {
    if (groups.count(point.groupId) == 0) continue;
    // A point without a position, as a file with "nan" gives it, can't be looked at.
    if (const OdGePoint3d shown = shownPosition(point); isFinite(shown)) points.push_back(shown);
  }
  if (points.empty()) return;

  const OdGeMatrix3d worldToView = active.view->viewingMatrix();
  const Field field = fieldOf(points, worldToView);
  double width = field.width();
  double height = field.height();
  if (width == 0.0 && height == 0.0) return;
  if (width == 0.0) {
    width = active.view->fieldWidth() * (1.0 / active.view->fieldHeight()) * height;
  } else if (height == 0.0) {
    height = active.view->fieldHeight() * (1.0 / active.view->fieldWidth()) * width;
  }

  const OdGeMatrix3d viewToWorld = worldToView.inverse();
  OdGePoint3d position(field.midX(), field.midY(), 0.0);
  OdGePoint3d target(field.midX(), field.midY(), -1.0);
  position.p_transform(viewToWorld);
  target.p_transform(viewToWorld);
  show(active, position, target, width * zoomMargin, height * zoomMargin);
}

void MultiRegistrator::zoomToPoint(RefPointId id) {
  const ActiveView active = activeViewOfHost();
  if (!active.view) return;
  // An id that the session doesn't hold looks at the origin of the drawing.
  OdGePoint3d position;
  const auto point = std::find_if(sessionPoints.begin(), sessionPoints.end(),
                                  [&](const RefPoint& candidate) { return candidate.id == id; });
  if (point != sessionPoints.end()) {
    if (visibleGroups.count(point->groupId) == 0) return;
    position = shownPosition(*point);
    if (!isFinite(position)) return;
  }
  const OdGeVector3d move = position - active.view->target();
  show(active, active.view->position() + move, position, active.view->fieldWidth(), active.view->fieldHeight());
}

}  // namespace ZOR::reg
