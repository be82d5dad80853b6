#include "workbench/view/recording_draw.h"

#include "platform/sdk/od_gi_drawable.h"

namespace tiepoint::workbench {
namespace {

/// The colour that a drawable starts with, whatever the one before it has set.
constexpr std::uint16_t initialColor = 7;

}  // namespace

RecordingDraw::RecordingDraw(const View& view) : eye(view.viewingMatrix()), device(view.deviceMatrix()) {
  direction = view.direction();
  horizontal = view.xAxis();
}

void RecordingDraw::draw(const OdGiDrawable& drawable) {
  color = initialColor;
  // Nothing here is drawn for all views at once, so that a world draw has nothing to draw on.
  if (!drawable.worldDraw(nullptr)) drawable.viewportDraw(this);
}

double RecordingDraw::pixelSize() const {
  const OdGeMatrix3d deviceToWorld = device.inverse();
  OdGePoint3d origin{0.0, 0.0, 0.5};
  OdGePoint3d nextPixel{1.0, 0.0, 0.5};
  origin.p_transform(deviceToWorld).p_transform(eye);
  nextPixel.p_transform(deviceToWorld).p_transform(eye);
  return nextPixel.x - origin.x;
}

void RecordingDraw::setColor(std::uint16_t newColor) { color = newColor; }

void RecordingDraw::setFillType(OdGiFillType) {}

void RecordingDraw::worldLine(const OdGePoint3d points[2]) { drawnLines.push_back({color, points[0], points[1]}); }

void RecordingDraw::text(const OdGePoint3d& position, const OdGeVector3d& normal, const OdGeVector3d& textDirection,
                         double height, double, double, const OdString& message) {
  drawnTexts.push_back({color, position, normal, textDirection, height, message});
}

}  // namespace tiepoint::workbench
