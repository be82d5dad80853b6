#include "display/ref_points_transient.h"

#include "host_access/host_objects.h"
#include "platform/sdk/od_gi_viewport_draw.h"

namespace ZOR::reg {

namespace {

/// Where the host puts the markers: drawing mode, sub-mode, group of views, flags.
constexpr int transientMode = 4;
constexpr int transientSubMode = 768;
constexpr int transientViewGroup = 2;
constexpr int transientFlags = 0;

constexpr std::uint16_t labelColor = 7;

/// How long one unit of the device is in drawing units, in this view.
double pixelSize(const OdGsViewImpl& view) {
  const OdGeMatrix3d deviceToWorld = view.worldToDeviceMatrix().inverse();
  const OdGeMatrix3d worldToEye = view.worldToEyeMatrix();
  OdGePoint3d origin(0.0, 0.0, 0.5);
  OdGePoint3d oneRight(1.0, 0.0, 0.5);
  origin.p_transform(deviceToWorld).p_transform(worldToEye);
  oneRight.p_transform(deviceToWorld).p_transform(worldToEye);
  return oneRight.x - origin.x;
}

/// Three lines through the point, along the axes; `reach` is half their length.
void drawCross(OdGiViewportGeometry& geometry, const OdGePoint3d& p, double reach) {
  const OdGePoint3d alongX[2] = {{p.x + reach, p.y, p.z}, {p.x - reach, p.y, p.z}};
  const OdGePoint3d alongY[2] = {{p.x, p.y + reach, p.z}, {p.x, p.y - reach, p.z}};
  const OdGePoint3d alongZ[2] = {{p.x, p.y, p.z + reach}, {p.x, p.y, p.z - reach}};
  geometry.worldLine(alongX);
  geometry.worldLine(alongY);
  geometry.worldLine(alongZ);
}

void drawMarkers(const DisplayGroups& groups, OdGiSubEntityTraits& traits, OdGiViewportGeometry& geometry,
                 double reach) {
  for (const auto& [groupId, group] : groups) {
    traits.setColor(group.color);
    for (const DisplayPoint& point : group.points) drawCross(geometry, point.position, reach);
  }
}

void drawLabels(const DisplayGroups& groups, const OdGsViewImpl& view, OdGiSubEntityTraits& traits,
                OdGiViewportGeometry& geometry, double height) {
  traits.setColor(labelColor);
  for (const auto& [groupId, group] : groups) {
    for (const DisplayPoint& point : group.points) {
      geometry.text(point.position, view.viewDirection(), view.xAxis(), height, 0.0, 0.0, point.name);
    }
  }
}

}  // namespace

RefPointsTransient::RefPointsTransient(const DisplayGroups* shown)
    : transientManager(activeDocument()->transientService()),
      display(shown),
      settings(std::make_unique<RegistrationSettings>()) {
  color.setColor(0);
  color.setColorMethod(OdCmEntityColor::kByColor);
  hostApplication()->addReactor(this);
  show();
  markerSize = static_cast<std::uint64_t>(settings->sizeLabel());
  labelHeight = static_cast<std::uint64_t>(settings->heightLabelText());
  labelsVisible = settings->isVisibleLabelText();
}

RefPointsTransient::~RefPointsTransient() {
  hostApplication()->removeReactor(this);
  hide();
  settings.reset();
  if (node) node->setDrawableNull();
}

void RefPointsTransient::documentAdded(HostDocument* document) {
  transientManager = document->transientService();
  show();
}

void RefPointsTransient::documentToBeRemoved(HostDocument*) { hide(); }

void RefPointsTransient::show() {
  transientManager->addTransient(this, transientMode, transientSubMode, transientViewGroup, transientFlags);
}

void RefPointsTransient::hide() {
  if (!transientManager) return;
  transientManager->removeTransient(this);
  transientManager = nullptr;
}

void RefPointsTransient::subViewportDraw(OdGiViewportDraw* draw) const {
  OdGiViewportGeometry& geometry = draw->geometry();
  OdGiSubEntityTraits& traits = draw->subEntityTraits();
  const auto* view = static_cast<const OdGsViewImpl*>(draw->x(OdGsViewImpl::desc()));
  traits.setFillType(kOdGiFillNever);
  const double unit = pixelSize(*view);
  drawMarkers(*display, traits, geometry, static_cast<double>(markerSize) * unit);
  if (labelsVisible) drawLabels(*display, *view, traits, geometry, static_cast<double>(labelHeight) * unit);
}

}  // namespace ZOR::reg
