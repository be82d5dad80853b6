// A view of the host: a camera on the drawing.
#pragma once

#include "platform/sdk/od_ge_matrix3d.h"

enum class HostProjection : int { parallel = 0, perspective = 1 };

class HostView {
 public:
  virtual ~HostView() = default;

  /// World to view: rigid, x to the right, y up, z towards the viewer.
  virtual OdGeMatrix3d viewingMatrix() const = 0;
  virtual OdGePoint3d position() const = 0;
  virtual OdGePoint3d target() const = 0;
  virtual OdGeVector3d upVector() const = 0;
  /// Width and height of the field, in drawing units.
  virtual double fieldWidth() const = 0;
  virtual double fieldHeight() const = 0;
  /// Sets all of them at once.
  virtual void set(const OdGePoint3d& position, const OdGePoint3d& target, const OdGeVector3d& upVector,
                   double fieldWidth, double fieldHeight, HostProjection projection) = 0;
};
