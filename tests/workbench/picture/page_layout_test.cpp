#include "workbench/picture/page_layout.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace tiepoint::workbench::picture {
namespace {

const std::vector<Size> sizes{{400, 300},  {640, 480},  {1200, 800},  {1920, 1080},
                              {8000, 300}, {400, 8000}, {8000, 8000}, {1000, 300}};

TEST(PageLayout, HasAPixelForAUnitOnPlainSizes) {
  EXPECT_EQ(layOutPage({640, 480}, 150).unit, 1.0);
  EXPECT_EQ(layOutPage({960, 640}, 150).unit, 1.0);
}

TEST(PageLayout, GrowsAndShrinksWithThePicture) {
  EXPECT_EQ(layOutPage({1200, 800}, 150).unit, 1.25);
  EXPECT_EQ(layOutPage({1920, 1280}, 150).unit, 2.0);
  EXPECT_EQ(layOutPage({400, 300}, 150).unit, 0.625);
}

TEST(PageLayout, LetsNoPartOverlapAnotherOrLeaveThePage) {
  for (const Size& size : sizes) {
    for (const double column : {minColumn, maxColumn(size)}) {
      const PageLayout layout = layOutPage(size, column);
      const std::vector<Box> parts{layout.header, layout.drawing, layout.footer, layout.column};
      for (std::size_t i = 0; i < parts.size(); ++i) {
        EXPECT_TRUE(contains(layout.page, parts[i])) << size.width << 'x' << size.height << ' ' << i;
        EXPECT_GT(parts[i].width(), 0.0);
        EXPECT_GT(parts[i].height(), 0.0);
        for (std::size_t j = i + 1; j < parts.size(); ++j) EXPECT_FALSE(overlap(parts[i], parts[j])) << i << ' ' << j;
      }
    }
  }
}

TEST(PageLayout, GivesTheDrawingWholeUnitsAndMostOfThePage) {
  for (const Size& size : sizes) {
    const PageLayout layout = layOutPage(size, maxColumn(size));
    EXPECT_EQ(layout.drawing.width(), std::round(layout.drawing.width()));
    EXPECT_EQ(layout.drawing.height(), std::round(layout.drawing.height()));
    EXPECT_GT(layout.drawing.width(), layout.page.width() / 2.0);
    EXPECT_GT(layout.drawing.height(), layout.page.height() / 2.0);
  }
}

}  // namespace
}  // namespace tiepoint::workbench::picture
