#include "workbench/picture/surface.h"

#include <gmock/gmock.h>

#include <utility>
#include <vector>

#include "workbench/picture/canvas.h"

namespace tiepoint::workbench::picture {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

std::string sheet(Format format) {
  Surface surface(format, {400, 300});
  Canvas canvas(surface.context(), 1.0);
  canvas.fill(Box{0, 0, 400, 300}, paper);
  canvas.text({20, 40}, "T13 Мишень", {12.0, false, ink, 1.0});
  canvas.arrow({50, 50}, {90, 80}, alarm, 2.0);
  return surface.finish();
}

TEST(Surface, GivesTheBytesOfItsFormat) {
  EXPECT_THAT(sheet(Format::png), StartsWith("\x89PNG\r\n\x1A\n"));
  EXPECT_THAT(sheet(Format::svg), StartsWith("<?xml"));
  EXPECT_THAT(sheet(Format::pdf), StartsWith("%PDF-"));
}

TEST(Surface, HasTheSizeThatWasAskedFor) {
  const std::string png = sheet(Format::png);
  EXPECT_EQ(png.substr(16, 8), std::string("\0\0\x01\x90\0\0\x01\x2C", 8));
  EXPECT_THAT(sheet(Format::svg), HasSubstr("width=\"400px\" height=\"300px\" viewBox=\"0 0 400 300\""));
  EXPECT_THAT(sheet(Format::pdf), HasSubstr("/MediaBox [ 0 0 300 225 ]"));
}

TEST(Surface, CountsInPixelsWhateverItsFormatCountsIn) {
  const auto unitOf = [](Format format) {
    const Surface surface(format, {400, 300});
    cairo_matrix_t toSheet;
    cairo_get_matrix(surface.context(), &toSheet);
    return std::pair(toSheet.xx, toSheet.yy);
  };
  EXPECT_EQ(unitOf(Format::png), std::pair(1.0, 1.0));
  EXPECT_EQ(unitOf(Format::svg), std::pair(1.0, 1.0));
  EXPECT_EQ(unitOf(Format::pdf), std::pair(0.75, 0.75));
}

TEST(Surface, TakesNoArrowWithoutALength) {
  const auto bytesWith = [](const std::vector<PagePoint>& ends) {
    Surface surface(Format::svg, {400, 300});
    Canvas canvas(surface.context(), 1.0);
    for (const PagePoint& end : ends) canvas.arrow({50, 50}, end, alarm, 2.0);
    return surface.finish();
  };
  EXPECT_EQ(bytesWith({{50, 50}}), bytesWith({}));
  EXPECT_NE(bytesWith({{50, 51}}), bytesWith({}));
}

TEST(Surface, GivesTheSameBytesForTheSameDrawing) {
  for (const Format format : {Format::png, Format::svg, Format::pdf}) EXPECT_TRUE(sheet(format) == sheet(format));
}

TEST(Surface, TellsNoDate) {
  EXPECT_THAT(sheet(Format::pdf), Not(HasSubstr("Date")));
  EXPECT_THAT(sheet(Format::png), Not(HasSubstr("tIME")));
}

}  // namespace
}  // namespace tiepoint::workbench::picture
