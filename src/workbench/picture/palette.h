// The drawing's 256 colours.
#pragma once

#include <cstdint>

namespace tiepoint::workbench::picture {

struct Rgb {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;

  friend bool operator==(const Rgb& a, const Rgb& b) {
    return a.red == b.red && a.green == b.green && a.blue == b.blue;
  }
};

/// 1 to 9: the six full hues, white and two greys. 10 to 249: 24 hues in steps of 15 degrees, ten
/// entries each, five of falling brightness with a paler one beside each. 250 to 255: greys up to
/// white. Any other index is drawn as 7.
Rgb paletteColor(std::uint16_t index);

/// The same on white paper, where white turns black, as a drawing's foreground does.
Rgb inkColor(std::uint16_t index);

/// 0 (black) to 1 (white), as the eye weighs the parts.
double brightness(const Rgb& color);

}  // namespace tiepoint::workbench::picture
