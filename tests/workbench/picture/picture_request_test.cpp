#include "workbench/picture/picture_request.h"

#include <gtest/gtest.h>

namespace tiepoint::workbench::picture {
namespace {

TEST(PictureRequest, TakesItsFormatFromTheEnding) {
  EXPECT_EQ(formatOfPath("hall.png"), Format::png);
  EXPECT_EQ(formatOfPath("out/hall.SVG"), Format::svg);
  EXPECT_EQ(formatOfPath("a.b.pdf"), Format::pdf);
}

TEST(PictureRequest, KnowsNoOtherEnding) {
  for (const char* path : {"hall", "hall.jpg", "hall.png.txt", "png", ".png", "", "hall.png ", "hallpng"}) {
    EXPECT_EQ(formatOfPath(path), std::nullopt) << path;
  }
}

TEST(PictureRequest, ReadsASizeWithinTheLimits) {
  for (const auto& [text, width, height] :
       {std::tuple{"640x480", 640, 480}, std::tuple{"400x300", 400, 300}, std::tuple{"8000x8000", 8000, 8000}}) {
    const auto size = parseSize(text);
    ASSERT_TRUE(size.has_value()) << text;
    EXPECT_EQ(size->width, width);
    EXPECT_EQ(size->height, height);
  }
}

TEST(PictureRequest, ReadsNothingElseAsASize) {
  for (const char* text : {"",         "x",        "640",       "640x",      "x480",
                           "640X480",  "640*480",  "640x480x3", "640 x 480", " 640x480",
                           "640x480 ", "-640x480", "+640x480",  "640.0x480", "0x0",
                           "399x300",  "400x299",  "8001x480",  "640x8001",  "99999999999999999999x480",
                           "6e2x480",  "640x480px"}) {
    EXPECT_FALSE(parseSize(text).has_value()) << text;
  }
}

TEST(PictureRequest, KnowsItsDirectionsByName) {
  EXPECT_EQ(directionByName("top"), Direction::top);
  EXPECT_EQ(directionByName("front"), Direction::front);
  EXPECT_EQ(directionByName("side"), Direction::side);
  EXPECT_EQ(directionByName("iso"), Direction::iso);
  EXPECT_EQ(directionByName("fit"), Direction::fit);
  EXPECT_EQ(directionByName("Top"), std::nullopt);
  EXPECT_EQ(directionByName(""), std::nullopt);
}

}  // namespace
}  // namespace tiepoint::workbench::picture
