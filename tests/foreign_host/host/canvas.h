// What the module draws into: the primitives are counted.
#pragma once

#include <cstddef>

#include "platform/sdk/od_gi_viewport_draw.h"

namespace foreign {

class View;

/// Primitives of one draw or of several.
struct Drawn {
  std::size_t lines = 0;
  std::size_t texts = 0;
  /// Primitives with a coordinate or a size that isn't finite.
  std::size_t withoutPlace = 0;
};

class Canvas final : public OdRxObjectImpl<OdGsViewImpl>, private OdGiViewportGeometry, private OdGiSubEntityTraits {
 public:
  /// Shows what the view shows on a device of 1000 pixels in width; adds to `drawn`.
  Canvas(const View& view, Drawn& drawn);

  OdGiViewportGeometry& geometry() override { return *this; }
  OdGiSubEntityTraits& subEntityTraits() override { return *this; }
  OdGeMatrix3d worldToEyeMatrix() const override { return eye; }
  OdGeMatrix3d worldToDeviceMatrix() const override { return device; }

 private:
  void worldLine(const OdGePoint3d points[2]) override;
  void text(const OdGePoint3d& position, const OdGeVector3d& normal, const OdGeVector3d& direction, double height,
            double width, double oblique, const OdString& message) override;
  void setColor(std::uint16_t) override {}
  void setFillType(OdGiFillType) override {}

  OdGeMatrix3d eye;
  OdGeMatrix3d device;
  Drawn& counts;
};

}  // namespace foreign
