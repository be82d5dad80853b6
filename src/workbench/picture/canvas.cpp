#include "workbench/picture/canvas.h"

#include <cmath>

namespace tiepoint::workbench::picture {

namespace {

constexpr double fullTurn = 6.283185307179586;

}  // namespace

Canvas::Canvas(cairo_t* pen_, double unit) : pen(pen_), fonts(Fonts::installed()) {
  cairo_scale(pen, unit, unit);
  cairo_font_options_t* options = plainFontOptions();
  cairo_set_font_options(pen, options);
  cairo_font_options_destroy(options);
  cairo_set_line_join(pen, CAIRO_LINE_JOIN_ROUND);
}

void Canvas::setColor(const Rgb& color) {
  cairo_set_source_rgb(pen, color.red / 255.0, color.green / 255.0, color.blue / 255.0);
}

void Canvas::setFont(const TextStyle& style) {
  cairo_set_font_face(pen, fonts.face(style.isBold));
  cairo_set_font_size(pen, style.size);
}

double Canvas::widthOf(const std::string& text, const TextStyle& style) const {
  return fonts.widthOf(text, style.isBold) * style.size;
}

Box Canvas::boxOf(const PagePoint& start, const std::string& text, const TextStyle& style) const {
  return {start.x, start.y - capitalHeight * style.size, start.x + widthOf(text, style),
          start.y + descent * style.size};
}

void Canvas::text(const PagePoint& start, const std::string& text, const TextStyle& style) {
  if (text.empty()) return;
  setFont(style);
  if (style.halo > 0.0) {
    cairo_move_to(pen, start.x, start.y);
    cairo_text_path(pen, text.c_str());
    setColor(paper);
    cairo_set_line_width(pen, 2.0 * style.halo);
    cairo_stroke(pen);
  }
  setColor(style.color);
  cairo_move_to(pen, start.x, start.y);
  cairo_show_text(pen, text.c_str());
  cairo_new_path(pen);
  painted.push_back({text, boxOf(start, text, style)});
}

void Canvas::textEndingAt(const PagePoint& end, const std::string& words, const TextStyle& style) {
  text({end.x - widthOf(words, style), end.y}, words, style);
}

void Canvas::path(const std::vector<PagePoint>& corners) {
  for (const PagePoint& corner : corners) cairo_line_to(pen, corner.x, corner.y);
}

void Canvas::line(const PagePoint& from, const PagePoint& to, const Rgb& color, double width) {
  path({from, to});
  setColor(color);
  cairo_set_line_width(pen, width);
  cairo_stroke(pen);
}

void Canvas::fill(const std::vector<PagePoint>& corners, const Rgb& color) {
  path(corners);
  setColor(color);
  cairo_fill(pen);
}

void Canvas::outline(const std::vector<PagePoint>& corners, const Rgb& color, double width) {
  path(corners);
  cairo_close_path(pen);
  setColor(color);
  cairo_set_line_width(pen, width);
  cairo_stroke(pen);
}

void Canvas::fill(const Box& box, const Rgb& color) {
  fill({{box.left, box.top}, {box.right, box.top}, {box.right, box.bottom}, {box.left, box.bottom}}, color);
}

void Canvas::outline(const Box& box, const Rgb& color, double width) {
  outline({{box.left, box.top}, {box.right, box.top}, {box.right, box.bottom}, {box.left, box.bottom}}, color, width);
}

void Canvas::dot(const PagePoint& middle, double radius, const Rgb& color) {
  cairo_arc(pen, middle.x, middle.y, radius, 0.0, fullTurn);
  setColor(color);
  cairo_fill(pen);
}

void Canvas::ring(const PagePoint& middle, double radius, const Rgb& color, double width) {
  cairo_arc(pen, middle.x, middle.y, radius, 0.0, fullTurn);
  setColor(color);
  cairo_set_line_width(pen, width);
  cairo_stroke(pen);
}

void Canvas::arrow(const PagePoint& from, const PagePoint& to, const Rgb& color, double width) {
  const double length = std::hypot(to.x - from.x, to.y - from.y);
  if (!(length > 0.0)) return;
  const PagePoint along{(to.x - from.x) / length, (to.y - from.y) / length};
  const double head = std::min(length, 2.0 + 4.0 * width);
  const double halfHead = 0.36 * head;
  const PagePoint neck{to.x - along.x * head, to.y - along.y * head};
  line(from, {neck.x + along.x * head * 0.5, neck.y + along.y * head * 0.5}, color, width);
  fill({to,
        {neck.x - along.y * halfHead, neck.y + along.x * halfHead},
        {neck.x + along.y * halfHead, neck.y - along.x * halfHead}},
       color);
}

void Canvas::beginClip(const Box& box) {
  cairo_save(pen);
  cairo_rectangle(pen, box.left, box.top, box.width(), box.height());
  cairo_clip(pen);
}

void Canvas::endClip() { cairo_restore(pen); }

}  // namespace tiepoint::workbench::picture
