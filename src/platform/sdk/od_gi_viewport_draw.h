// The draw of one view: traits, geometry, and the view behind them.
#pragma once

#include <cstdint>

#include "platform/sdk/od_ge_matrix3d.h"
#include "platform/sdk/od_rx_object.h"
#include "platform/sdk/od_string.h"

/// How a surface is filled.
enum OdGiFillType : int { kOdGiFillAlways = 1, kOdGiFillNever = 2 };

/// The state in which the following primitives are drawn.
class DRAWING_SDK_EXPORT OdGiSubEntityTraits {
 public:
  virtual ~OdGiSubEntityTraits();
  /// Colour index of the drawing's 256-colour palette.
  virtual void setColor(std::uint16_t color) = 0;
  virtual void setFillType(OdGiFillType type) = 0;
};

/// Primitives in world coordinates.
class DRAWING_SDK_EXPORT OdGiViewportGeometry {
 public:
  virtual ~OdGiViewportGeometry();
  /// A line between two points.
  virtual void worldLine(const OdGePoint3d points[2]) = 0;
  /// A text that starts at `position` and runs along `direction` in the plane with `normal`.
  /// `height` in drawing units; a `width` or `oblique` of 0 is the font's own.
  virtual void text(const OdGePoint3d& position, const OdGeVector3d& normal, const OdGeVector3d& direction,
                    double height, double width, double oblique, const OdString& message) = 0;
};

class DRAWING_SDK_EXPORT OdGiViewportDraw : public OdRxObject {
 public:
  static const OdRxClass* desc();
  const OdRxClass* isA() const override;

  virtual OdGiViewportGeometry& geometry() = 0;
  virtual OdGiSubEntityTraits& subEntityTraits() = 0;
};

/// A view of the graphics system, which is its own viewport draw.
class DRAWING_SDK_EXPORT OdGsViewImpl : public OdGiViewportDraw {
 public:
  static const OdRxClass* desc();
  const OdRxClass* isA() const override;

  /// From world coordinates to the view's own: rigid, the x axis to the right, y up.
  virtual OdGeMatrix3d worldToEyeMatrix() const = 0;
  /// From world coordinates to the device's: pixels.
  virtual OdGeMatrix3d worldToDeviceMatrix() const = 0;

  /// From the target towards the viewer, unit length.
  const OdGeVector3d& viewDirection() const { return direction; }
  /// The view's x axis, unit length.
  const OdGeVector3d& xAxis() const { return horizontal; }

 protected:
  OdGeVector3d direction{0.0, 0.0, 1.0};
  OdGeVector3d horizontal{1.0, 0.0, 0.0};
};
