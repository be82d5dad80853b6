#include "workbench/picture/page_frame.h"

#include <fmt/format.h>

#include <algorithm>

#include "workbench/picture/round_number.h"
#include "workbench/picture/text_fit.h"

namespace tiepoint::workbench::picture {

namespace {

const TextStyle titleStyle{15.0, true, ink, 0.0};
const TextStyle subtitleStyle{11.0, false, softInk, 0.0};
const TextStyle scaleStyle{11.0, false, ink, 0.0};
const TextStyle captionStyle{10.0, false, softInk, 0.0};

constexpr double longestBar = 130.0;
constexpr double longestSample = 60.0;
constexpr double barY = 18.0;
constexpr double captionY = 40.0;
constexpr double gap = 8.0;

void paintShortened(Canvas& canvas, const Spot& start, double width, const std::string& text, const TextStyle& style) {
  const TextRuler ruler = [&](const std::string& part) { return canvas.widthOf(part, style); };
  canvas.text(start, shortened(text, width, ruler), style);
}

/// A bar with ticks at its ends and its length beside it. Gives where it ends.
double paintBar(Canvas& canvas, const Spot& start, const Content& content, double pixelSize) {
  const double length = roundNumberUpTo(longestBar * pixelSize);
  const double right = start.x + length / pixelSize;
  canvas.line(start, {right, start.y}, ink, 2.0);
  for (const double x : {start.x, right}) canvas.line({x, start.y - 4.0}, {x, start.y + 4.0}, ink, 1.5);
  const std::string text = fmt::format("{} {}", plainNumber(length), content.lengthUnit);
  canvas.text({right + gap, start.y + 4.0}, text, scaleStyle);
  return right + gap + canvas.widthOf(text, scaleStyle);
}

void paintSample(Canvas& canvas, const Spot& start, const Content& content, const Scales& scales, double rightEnd) {
  const double onPage = scales.enlargement / (scales.pixelSize * content.residualUnitsPerLength);
  const double residual = roundNumberUpTo(longestSample / onPage);
  const double right = start.x + residual * onPage;
  canvas.arrow(start, {right, start.y}, ink, 1.3);
  paintShortened(canvas, {right + gap, start.y + 4.0}, rightEnd - right - gap,
                 fmt::format("residual of {} {}, enlarged {} times", plainNumber(residual), content.residualUnit,
                             plainNumber(scales.enlargement)),
                 scaleStyle);
}

}  // namespace

void paintHeader(Canvas& canvas, const Box& header, const Content& content) {
  paintShortened(canvas, {header.left, header.top + 14.0}, header.width(), content.title, titleStyle);
  paintShortened(canvas, {header.left, header.top + 31.0}, header.width(), content.subtitle, subtitleStyle);
}

void paintFooter(Canvas& canvas, const Box& footer, const Content& content, const Scales& scales,
                 const std::string& caption) {
  const double end = paintBar(canvas, {footer.left, footer.top + barY}, content, scales.pixelSize);
  if (scales.enlargement > 0.0) {
    paintSample(canvas, {end + 3.0 * gap, footer.top + barY}, content, scales, footer.right);
  }
  paintShortened(canvas, {footer.left, footer.top + captionY}, footer.width(), caption, captionStyle);
}

}  // namespace tiepoint::workbench::picture
