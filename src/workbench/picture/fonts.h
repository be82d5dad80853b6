// The one typeface of all pictures.
#pragma once

#include <cairo.h>

#include <string>

namespace tiepoint::workbench::picture {

/// DejaVu Sans, found by its name among the installed fonts, and drawn by its outlines alone: no
/// setting of the system changes how a text comes out. It holds all letters that names can have.
class Fonts {
 public:
  /// Throws std::runtime_error with one line when the typeface isn't installed.
  static const Fonts& installed();

  cairo_font_face_t* face(bool isBold) const { return isBold ? bold : regular; }
  /// How far the text goes to the right at a size of 1.
  double widthOf(const std::string& text, bool isBold) const;

 private:
  Fonts();

  cairo_font_face_t* regular;
  cairo_font_face_t* bold;
  cairo_scaled_font_t* regularRuler;
  cairo_scaled_font_t* boldRuler;
};

/// Heights of the typeface at a size of 1: of a capital letter, and below the line.
inline constexpr double capitalHeight = 0.729;
inline constexpr double descent = 0.236;

/// Plain grey edges, and no letter moved to the pixels.
cairo_font_options_t* plainFontOptions();

}  // namespace tiepoint::workbench::picture
