// Points as the module draws them, for tests of pictures.
#pragma once

#include <cmath>
#include <string>
#include <vector>

#include "platform/sdk/od_gi_viewport_draw.h"
#include "workbench/view/test_drawable.h"

namespace tiepoint::testing {

struct MarkedPoint {
  OdGePoint3d place;
  std::string name;
  std::uint16_t color = 1;
};

/// A cross of `reach` pixels to either side for each point, then a label of `height` pixels for each.
inline TestDrawable::Drawing drawingOf(const std::vector<MarkedPoint>& points, double reach = 10.0,
                                       double height = 10.0) {
  return [=](OdGiViewportDraw& draw) {
    const auto& view = static_cast<OdGsViewImpl&>(draw);
    const OdGeMatrix3d m = view.worldToDeviceMatrix();
    const double pixel = 1.0 / std::sqrt(m(0, 0) * m(0, 0) + m(0, 1) * m(0, 1) + m(0, 2) * m(0, 2));
    const double d = reach * pixel;
    for (const MarkedPoint& point : points) {
      const OdGePoint3d& p = point.place;
      const OdGePoint3d lines[3][2] = {{{p.x + d, p.y, p.z}, {p.x - d, p.y, p.z}},
                                       {{p.x, p.y + d, p.z}, {p.x, p.y - d, p.z}},
                                       {{p.x, p.y, p.z + d}, {p.x, p.y, p.z - d}}};
      draw.subEntityTraits().setColor(point.color);
      for (const auto& line : lines) draw.geometry().worldLine(line);
    }
    draw.subEntityTraits().setColor(7);
    for (const MarkedPoint& point : points) {
      draw.geometry().text(point.place, view.viewDirection(), view.xAxis(), height * pixel, 0.0, 0.0,
                           OdString(point.name));
    }
  };
}

}  // namespace tiepoint::testing
