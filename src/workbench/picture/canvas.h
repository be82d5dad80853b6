// A pen for pages: texts, lines, shapes, in the page's own unit.
#pragma once

#include <cairo.h>

#include <string>
#include <vector>

#include "workbench/picture/box.h"
#include "workbench/picture/fonts.h"
#include "workbench/picture/painted_text.h"
#include "workbench/picture/palette.h"

namespace tiepoint::workbench::picture {

inline constexpr Rgb paper{255, 255, 255};
inline constexpr Rgb ink{29, 36, 48};
inline constexpr Rgb softInk{102, 112, 133};
inline constexpr Rgb rule{208, 213, 221};
/// Of what is wrong. No group's colour, and darker than their red.
inline constexpr Rgb alarm{176, 0, 32};

struct TextStyle {
  double size = 11.0;
  bool isBold = false;
  Rgb color = ink;
  /// How far the paper shines around the letters.
  double halo = 0.0;
};

class Canvas {
 public:
  /// `unit`: pixels of the context for one unit of the page.
  Canvas(cairo_t* pen, double unit);

  double widthOf(const std::string& text, const TextStyle& style) const;
  /// The box of a text whose line begins at `start`.
  Box boxOf(const PagePoint& start, const std::string& text, const TextStyle& style) const;
  void text(const PagePoint& start, const std::string& text, const TextStyle& style);
  void textEndingAt(const PagePoint& end, const std::string& text, const TextStyle& style);
  /// All texts so far, in their order.
  const std::vector<PaintedText>& texts() const { return painted; }

  void line(const PagePoint& from, const PagePoint& to, const Rgb& color, double width);
  void fill(const std::vector<PagePoint>& corners, const Rgb& color);
  void outline(const std::vector<PagePoint>& corners, const Rgb& color, double width);
  void fill(const Box& box, const Rgb& color);
  void outline(const Box& box, const Rgb& color, double width);
  void dot(const PagePoint& middle, double radius, const Rgb& color);
  void ring(const PagePoint& middle, double radius, const Rgb& color, double width);
  /// A shaft with a head at `to`; a short one is all head.
  void arrow(const PagePoint& from, const PagePoint& to, const Rgb& color, double width);

  /// From now on nothing is drawn outside of the box; `endClip` ends that.
  void beginClip(const Box& box);
  void endClip();

 private:
  void path(const std::vector<PagePoint>& corners);
  void setColor(const Rgb& color);
  void setFont(const TextStyle& style);

  cairo_t* pen;
  const Fonts& fonts;
  std::vector<PaintedText> painted;
};

}  // namespace tiepoint::workbench::picture
