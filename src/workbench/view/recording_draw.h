// A viewport draw that writes down what it is asked to draw.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/sdk/od_gi_viewport_draw.h"
#include "workbench/view/view.h"

class OdGiDrawable;

namespace tiepoint::workbench {

struct DrawnLine {
  std::uint16_t color = 0;
  OdGePoint3d from;
  OdGePoint3d to;
};

struct DrawnText {
  std::uint16_t color = 0;
  OdGePoint3d position;
  OdGeVector3d normal;
  OdGeVector3d direction;
  double height = 0.0;
  OdString text;
};

/// Draws into lists, in the order of the calls, as seen in one view.
class RecordingDraw : public OdGsViewImpl, private OdGiViewportGeometry, private OdGiSubEntityTraits {
 public:
  explicit RecordingDraw(const View& view);

  /// Draws as a redraw of a view does: worldDraw, and viewportDraw when that gives false.
  void draw(const OdGiDrawable& drawable);

  const std::vector<DrawnLine>& lines() const { return drawnLines; }
  const std::vector<DrawnText>& texts() const { return drawnTexts; }
  /// Drawing units per pixel.
  double pixelSize() const;

  void addRef() override {}
  void release() override {}
  OdGiViewportGeometry& geometry() override { return *this; }
  OdGiSubEntityTraits& subEntityTraits() override { return *this; }
  OdGeMatrix3d worldToEyeMatrix() const override { return eye; }
  OdGeMatrix3d worldToDeviceMatrix() const override { return device; }

 private:
  void setColor(std::uint16_t newColor) override;
  void setFillType(OdGiFillType type) override;
  void worldLine(const OdGePoint3d points[2]) override;
  void text(const OdGePoint3d& position, const OdGeVector3d& normal, const OdGeVector3d& textDirection, double height,
            double width, double oblique, const OdString& message) override;

  OdGeMatrix3d eye;
  OdGeMatrix3d device;
  std::uint16_t color = 7;
  std::vector<DrawnLine> drawnLines;
  std::vector<DrawnText> drawnTexts;
};

}  // namespace tiepoint::workbench
