#include "workbench/picture/page_frame.h"

#include <fmt/format.h>

#include <string>

#include "workbench/picture/round_number.h"
#include "workbench/picture/text_fit.h"

namespace tiepoint::workbench::picture {

namespace {

const TextStyle titleStyle{15.0, true, ink, 0.0};
const TextStyle subtitleStyle{11.0, false, softInk, 0.0};
const TextStyle scaleStyle{11.0, false, ink, 0.0};

constexpr double longestBar = 130.0;
constexpr double longestSample = 60.0;
constexpr double barY = 16.0;
constexpr double sampleY = 38.0;
constexpr double gap = 8.0;

void paintShortened(Canvas& canvas, const PagePoint& start, double width, const std::string& text,
                    const TextStyle& style) {
  const TextRuler ruler = [&](const std::string& part) { return canvas.widthOf(part, style); };
  canvas.text(start, shortened(text, width, ruler), style);
}

/// The text behind a bar or an arrow, with what is left of the footer for it.
void paintMeaning(Canvas& canvas, double end, double y, const Box& footer, const std::string& text) {
  const double left = end + gap;
  paintShortened(canvas, {left, y + 4.0}, footer.right - left, text, scaleStyle);
}

void paintBar(Canvas& canvas, const Box& footer, const Content& content, double pixelSize) {
  const double length = roundNumberUpTo(longestBar * pixelSize);
  const double y = footer.top + barY;
  const double right = footer.left + length / pixelSize;
  canvas.line({footer.left, y}, {right, y}, ink, 2.0);
  for (const double x : {footer.left, right}) canvas.line({x, y - 4.0}, {x, y + 4.0}, ink, 1.5);
  paintMeaning(canvas, right, y, footer, fmt::format("{} {}", plainNumber(length), content.lengthUnit));
}

void paintSample(Canvas& canvas, const Box& footer, const Content& content, const Scales& scales) {
  const double onPage = scales.enlargement / (scales.pixelSize * content.residualUnitsPerLength);
  const double residual = roundNumberUpTo(longestSample / onPage);
  const double y = footer.top + sampleY;
  const double right = footer.left + residual * onPage;
  canvas.arrow({footer.left, y}, {right, y}, ink, 1.3);
  paintMeaning(canvas, right, y, footer,
               fmt::format("residual of {} {}, enlarged {} times", plainNumber(residual), content.residualUnit,
                           plainNumber(scales.enlargement)));
}

}  // namespace

void paintHeader(Canvas& canvas, const Box& header, const Content& content) {
  paintShortened(canvas, {header.left, header.top + 14.0}, header.width(), content.title, titleStyle);
  paintShortened(canvas, {header.left, header.top + 31.0}, header.width(), content.subtitle, subtitleStyle);
}

void paintFooter(Canvas& canvas, const Box& footer, const Content& content, const Scales& scales) {
  paintBar(canvas, footer, content, scales.pixelSize);
  if (scales.enlargement > 0.0) paintSample(canvas, footer, content, scales);
}

}  // namespace tiepoint::workbench::picture
