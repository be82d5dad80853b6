// What picture is asked for.
#pragma once

#include <optional>
#include <string>

namespace tiepoint::workbench::picture {

enum class Format { png, svg, pdf };

/// Pixels of a PNG; an SVG and a PDF are as many times 1/96 inch wide and high, so that all three have
/// the same proportions.
struct Size {
  int width = 1200;
  int height = 800;
};

inline constexpr Size smallestSize{400, 300};
inline constexpr Size largestSize{8000, 8000};

/// From where the points are looked at.
enum class Direction {
  /// From above; x to the right, y up.
  top,
  /// Along y; x to the right, z up.
  front,
  /// Against x; y to the right, z up.
  side,
  /// From above at the front right: all three axes show at the same length.
  iso,
  /// Across the plane in which the points spread the most, its longest extent to the right.
  fit
};

/// By the ending of a path: .png, .svg or .pdf, in small or capital letters.
std::optional<Format> formatOfPath(const std::string& path);

/// "WxH", two whole numbers within the limits.
std::optional<Size> parseSize(const std::string& text);

std::optional<Direction> directionByName(const std::string& name);

}  // namespace tiepoint::workbench::picture
