#include "workbench/picture/palette.h"

#include <array>
#include <cmath>

namespace tiepoint::workbench::picture {

namespace {

constexpr Rgb white{255, 255, 255};
constexpr std::array<Rgb, 10> namedColors{{white,
                                           {255, 0, 0},
                                           {255, 255, 0},
                                           {0, 255, 0},
                                           {0, 255, 255},
                                           {0, 0, 255},
                                           {255, 0, 255},
                                           white,
                                           {128, 128, 128},
                                           {192, 192, 192}}};
constexpr std::uint16_t firstHue = 10;
constexpr std::uint16_t firstGrey = 250;
constexpr std::uint16_t lastColor = 255;
constexpr std::array<double, 5> strengths{1.0, 0.65, 0.5, 0.3, 0.15};
constexpr double degreesPerHue = 15.0;
constexpr double darkestGrey = 51.0;
constexpr double greyStep = (255.0 - darkestGrey) / (lastColor - firstGrey);

/// How far red is from its highest (0) to its lowest (1) at a hue; the others are red, turned.
double redLack(double degrees) {
  const double hue = std::fmod(degrees + 360.0, 360.0);
  const double fromRed = hue > 180.0 ? 360.0 - hue : hue;
  if (fromRed <= 60.0) return 0.0;
  return fromRed >= 120.0 ? 1.0 : (fromRed - 60.0) / 60.0;
}

Rgb hueColor(std::uint16_t index) {
  const int hue = index / 10 - 1;
  const double degrees = hue * degreesPerHue;
  const double highest = 255.0 * strengths[index % 10 / 2];
  const double lowest = index % 2 == 0 ? 0.0 : highest / 2.0;
  const auto part = [&](double turn) {
    return static_cast<std::uint8_t>(highest - (highest - lowest) * redLack(degrees - turn));
  };
  return {part(0.0), part(120.0), part(240.0)};
}

}  // namespace

Rgb paletteColor(std::uint16_t index) {
  if (index > lastColor) return white;
  if (index < firstHue) return namedColors[index];
  if (index < firstGrey) return hueColor(index);
  const auto grey = static_cast<std::uint8_t>(darkestGrey + greyStep * (index - firstGrey));
  return {grey, grey, grey};
}

Rgb inkColor(std::uint16_t index) {
  const Rgb color = paletteColor(index);
  return color == white ? Rgb{0, 0, 0} : color;
}

double brightness(const Rgb& color) { return (0.299 * color.red + 0.587 * color.green + 0.114 * color.blue) / 255.0; }

}  // namespace tiepoint::workbench::picture
