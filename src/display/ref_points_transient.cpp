#include "display/ref_points_transient.h"

#include <utility>

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

HostTransientService* serviceOf(HostDocument* document) { return document ? document->transientService() : nullptr; }

/// Takes a step whose failure can't be reported any more. It is tried twice: were the host left with
/// a pointer to nothing after a failure that passes, it would crash at its next event.
template <class Step>
void tryTwice(Step step) noexcept {
  for (int attempt = 0; attempt < 2; ++attempt) {
    try {
      if (step()) return;
    } catch (...) {
    }
  }
}

}  // namespace

RefPointsTransient::RefPointsTransient(const DisplayGroups* shown)
    : transientManager(serviceOf(activeDocument())),
      display(shown),
      settings(std::make_unique<RegistrationSettings>()) {
  color.setColor(0);
  color.setColorMethod(OdCmEntityColor::kByColor);
  try {
    enterHost();
    readSizes();
  } catch (...) {
    // The destructor won't run, and the host must not keep what isn't there.
    leaveHost();
    throw;
  }
}

RefPointsTransient::~RefPointsTransient() {
  endDrawing();
  leaveHost();
}

void RefPointsTransient::enterHost() {
  if (HostApplication* application = hostApplication()) application->addReactor(this);
  show();
}

/// Also undoes what has half happened: a host that failed while it took this object in may know it
/// all the same, and has nothing to do where it doesn't.
void RefPointsTransient::leaveHost() noexcept {
  tryTwice([this] {
    HostApplication* application = hostApplication();
    if (application) application->removeReactor(this);
    return application != nullptr;
  });
  hide();
  settings.reset();
  tryTwice([this] {
    if (node) std::exchange(node, nullptr)->setDrawableNull();
    return true;
  });
}

void RefPointsTransient::readSizes() {
  markerSize = static_cast<std::uint64_t>(settings->sizeLabel());
  labelHeight = static_cast<std::uint64_t>(settings->heightLabelText());
  labelsVisible = settings->isVisibleLabelText();
}

void RefPointsTransient::documentAdded(HostDocument* document) {
  transientManager = serviceOf(document);
  show();
}

void RefPointsTransient::documentToBeRemoved(HostDocument*) { hide(); }

void RefPointsTransient::show() {
  if (!transientManager) return;
  transientManager->addTransient(this, transientMode, transientSubMode, transientViewGroup, transientFlags);
}

/// A service that won't let go is asked for nothing more all the same: its document is about to go,
/// or this object is.
void RefPointsTransient::hide() noexcept {
  if (!transientManager) return;
  tryTwice([this] {
    transientManager->removeTransient(this);
    return true;
  });
  transientManager = nullptr;
}

void RefPointsTransient::subViewportDraw(OdGiViewportDraw* draw) const {
  if (!isDrawing) return;
  OdGiViewportGeometry& geometry = draw->geometry();
  OdGiSubEntityTraits& traits = draw->subEntityTraits();
  const auto* view = static_cast<const OdGsViewImpl*>(draw->x(OdGsViewImpl::desc()));
  // What isn't a view has no pixels.
  if (!view) return;
  traits.setFillType(kOdGiFillNever);
  const double unit = pixelSize(*view);
  drawMarkers(*display, traits, geometry, static_cast<double>(markerSize) * unit);
  if (labelsVisible) drawLabels(*display, *view, traits, geometry, static_cast<double>(labelHeight) * unit);
}

}  // namespace ZOR::reg
