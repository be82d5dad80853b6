// A sheet of paper to paint on, and the pixels that come of it.
#pragma once

#include <fmt/format.h>

#include <optional>
#include <string>

#include "workbench/picture/canvas.h"
#include "workbench/picture/picture_comparison.h"
#include "workbench/picture/surface.h"

namespace tiepoint::workbench::picture {

/// 400 by 300 pixels, of which each is one unit of the page.
class PaintedSheet {
 public:
  explicit PaintedSheet(const Rgb& ground = paper, double unit = 1.0) : canvas(surface.context(), unit) {
    canvas.fill(Box{0, 0, 400, 300}, ground);
  }

  /// Red, green and blue as six digits, such as "ff0000", of the pixel whose upper left corner is there.
  /// Nothing can be painted any more once it has been asked.
  std::string at(int x, int y) {
    return fmt::format("{:02x}{:02x}{:02x}", part(x, y, 0), part(x, y, 1), part(x, y, 2));
  }
  /// One of the three, from 0 to 255.
  int part(int x, int y, int which) {
    return pixels().values.at(static_cast<std::size_t>(3 * (y * pixels().width + x) + which));
  }
  /// How many pixels of an area aren't paper.
  int painted(const Box& area) {
    int count = 0;
    for (int y = static_cast<int>(area.top); y < area.bottom; ++y) {
      for (int x = static_cast<int>(area.left); x < area.right; ++x) count += at(x, y) != "ffffff" ? 1 : 0;
    }
    return count;
  }

 private:
  const tiepoint::testing::Pixels& pixels() {
    if (!finished) finished = tiepoint::testing::pixelsOf(surface.finish());
    return *finished;
  }

  Surface surface{Format::png, {400, 300}};
  std::optional<tiepoint::testing::Pixels> finished;

 public:
  Canvas canvas;
};

inline constexpr Box wholeSheet{0, 0, 400, 300};

}  // namespace tiepoint::workbench::picture
