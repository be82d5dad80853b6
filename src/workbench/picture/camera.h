// The camera of a picture, and where on the page it puts a place.
#pragma once

#include <vector>

#include "platform/sdk/od_ge_matrix3d.h"
#include "workbench/picture/box.h"
#include "workbench/picture/picture_request.h"
#include "workbench/view/view.h"

namespace tiepoint::workbench::picture {

/// Lengths below this are shown as none: what is divided by them leaves the range of numbers.
inline constexpr double shortestLength = 1e-100;

/// False for a place without finite coordinates, and for one so far off that the squares of its
/// coordinates leave the range of numbers.
bool canBeShown(const OdGePoint3d& place);

/// Where the viewer is, seen from the points, and what is up on the screen. Neither has a length of its own.
struct Looks {
  OdGeVector3d towardsViewer;
  OdGeVector3d up;
};

/// `places`, which can be shown, have a say where the direction is theirs.
Looks looksFrom(Direction direction, const std::vector<OdGePoint3d>& places);

/// Looks at all of the places; they keep `margin` pixels from the rim. A single place is shown in a
/// field one drawing unit wide. `places` can be shown, and there is one at least.
ViewState cameraOn(const std::vector<OdGePoint3d>& places, const Looks& looks, int pixelWidth, int pixelHeight,
                   double margin);

/// From world coordinates to a page, whose area shows what a view sees.
class Projection {
 public:
  Projection(const View& view, const Box& area_) : toDevice(view.deviceMatrix()), area(area_) {}

  PagePoint onPage(OdGePoint3d place) const {
    place.p_transform(toDevice);
    return {area.left + place.x, area.bottom - place.y};
  }

 private:
  OdGeMatrix3d toDevice;
  Box area;
};

}  // namespace tiepoint::workbench::picture
