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

/// The axes of the view are z = towards the viewer, x = up x z to the right, y = z x x, and the
/// origin of view coordinates is the eye. So the line of sight is x = y = 0, the eye lies in the
/// plane z = 0, and what it sees has a negative z.
///
/// `set` refuses nothing, as its caller has no way to be told: values that give no view are kept,
/// and the axes then take the nearest that do (an eye on its target looks down; an up vector that is
/// zero or along the direction of view makes way for the drawing's y axis, or its z axis). A set
/// with a number that isn't finite leaves the view as it was.
class View : public HostView {
 public:
  /// From world to view coordinates: rigid, with exact zeros and ones where the axes lie along the
  /// drawing's, and no negative zero.
  OdGeMatrix3d viewingMatrix() const override;
  OdGePoint3d position() const override { return current.position; }
  OdGePoint3d target() const override { return current.target; }
  OdGeVector3d upVector() const override { return current.up; }
  double fieldWidth() const override { return current.width; }
  double fieldHeight() const override { return current.height; }
  /// The projection stays parallel, whichever is asked for.
  void set(const OdGePoint3d& position, const OdGePoint3d& target, const OdGeVector3d& upVector, double fieldWidth,
           double fieldHeight, HostProjection projection) override;

  const ViewState& state() const { return current; }
  /// Throws std::invalid_argument with one line when the state gives no view: eye on the target, up
  /// along the direction of view, sizes that aren't positive, numbers that aren't finite.
  void setState(const ViewState& state);

  /// From world coordinates to pixels: the middle of the field falls on the middle of the device. The
  /// scale is the largest that shows the whole field, the same along all three axes: the field's
  /// width spans the device's when the field is the wider of the two, else its height does.
  OdGeMatrix3d deviceMatrix() const;
  /// From the target towards the eye, unit length.
  OdGeVector3d direction() const;
  /// To the right on the screen, unit length.
  OdGeVector3d xAxis() const;

 private:
  ViewState current;
};

}  // namespace tiepoint::workbench
