// A camera with parallel projection on a drawing.
#pragma once

#include "platform/host/view.h"

namespace tiepoint::workbench {

/// Everything that a view is set to. `position` is the eye, `target` what it looks at; the view
/// looks along target - position. Width and height of the field in drawing units; the device is
/// `pixelWidth` x `pixelHeight`, its origin in the lower left corner.
struct ViewState {
  OdGePoint3d position{0.0, 0.0, 1.0};
  OdGePoint3d target{0.0, 0.0, 0.0};
  OdGeVector3d up{0.0, 1.0, 0.0};
  double width = 100.0;
  double height = 75.0;
  int pixelWidth = 800;
  int pixelHeight = 600;
};

class View : public HostView {
 public:
  OdGeMatrix3d viewingMatrix() const override;
  OdGePoint3d position() const override { return current.position; }
  OdGePoint3d target() const override { return current.target; }
  OdGeVector3d upVector() const override { return current.up; }
  double fieldWidth() const override { return current.width; }
  double fieldHeight() const override { return current.height; }
  void set(const OdGePoint3d& position, const OdGePoint3d& target, const OdGeVector3d& upVector, double fieldWidth,
           double fieldHeight, HostProjection projection) override;

  const ViewState& state() const { return current; }
  /// Throws std::invalid_argument with one line when the state gives no view: eye on the target, up
  /// along the direction of view, sizes that aren't positive, numbers that aren't finite.
  void setState(const ViewState& state);

  /// From world coordinates to pixels: the middle of the field falls on the middle of the device.
  OdGeMatrix3d deviceMatrix() const;
  /// From the target towards the eye, unit length.
  OdGeVector3d direction() const;
  /// To the right on the screen, unit length.
  OdGeVector3d xAxis() const;

 private:
  ViewState current;
};

}  // namespace tiepoint::workbench
