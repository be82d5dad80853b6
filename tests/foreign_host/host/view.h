// A view of the host: a parallel camera.
#pragma once

#include "platform/host/view.h"
#include "switchboard.h"

namespace foreign {

class View final : public HostView, public HostObject {
 public:
  explicit View(Switchboard& switchboard) : HostObject(switchboard, "view") {}

  OdGeMatrix3d viewingMatrix() const override;
  OdGePoint3d position() const override;
  OdGePoint3d target() const override;
  OdGeVector3d upVector() const override;
  double fieldWidth() const override;
  double fieldHeight() const override;
  void set(const OdGePoint3d& position, const OdGePoint3d& target, const OdGeVector3d& upVector, double fieldWidth,
           double fieldHeight, HostProjection projection) override;

  /// The same for the host's own use, which no fault reaches.
  OdGeMatrix3d worldToEye() const;
  double width() const { return fieldX; }

 private:
  /// From above, a field of 100 x 80 drawing units.
  OdGePoint3d eye{0.0, 0.0, 500.0};
  OdGePoint3d centre;
  OdGeVector3d up{0.0, 1.0, 0.0};
  double fieldX = 100.0;
  double fieldY = 80.0;
};

}  // namespace foreign
