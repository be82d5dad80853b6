#include "workbench/picture/page_frame.h"

#include <gmock/gmock.h>

#include "workbench/picture/painted_sheet.h"

namespace tiepoint::workbench::picture {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::IsEmpty;
using ::testing::StartsWith;

constexpr Box header{10, 10, 390, 46}, footer{10, 250, 390, 296};

std::vector<std::string> wordsOf(const Canvas& canvas) {
  std::vector<std::string> words;
  for (const PaintedText& text : canvas.texts()) words.push_back(text.text);
  return words;
}

/// In metres, with residuals in millimetres.
Content metres() {
  Content content;
  content.lengthUnit = "m";
  content.residualUnit = "mm";
  content.residualUnitsPerLength = 1000.0;
  return content;
}

TEST(PageHeader, HoldsTheTitleAboveTheSubtitle) {
  PaintedSheet sheet;
  Content content;
  content.title = "hall.tiepoint";
  content.subtitle = "Registered pairwise";
  paintHeader(sheet.canvas, header, content);
  ASSERT_THAT(wordsOf(sheet.canvas), ElementsAre("hall.tiepoint", "Registered pairwise"));
  const Box title = sheet.canvas.texts()[0].box, subtitle = sheet.canvas.texts()[1].box;
  EXPECT_TRUE(contains(header, title));
  EXPECT_TRUE(contains(header, subtitle));
  EXPECT_LT(title.bottom, subtitle.top);
  EXPECT_EQ(title.left, header.left);
  EXPECT_GT(title.height(), subtitle.height());
}

TEST(PageHeader, CutsWhatIsTooLong) {
  PaintedSheet sheet;
  Content content;
  content.title = std::string(200, 'W');
  content.subtitle = "short";
  paintHeader(sheet.canvas, header, content);
  EXPECT_THAT(wordsOf(sheet.canvas), ElementsAre(EndsWith("…"), "short"));
  EXPECT_LE(sheet.canvas.texts()[0].box.right, header.right);
}

TEST(PageHeader, IsEmptyWithoutTexts) {
  PaintedSheet sheet;
  paintHeader(sheet.canvas, header, {});
  EXPECT_THAT(wordsOf(sheet.canvas), IsEmpty());
  EXPECT_EQ(sheet.painted(wholeSheet), 0);
}

TEST(PageFooter, HasABarOfARoundLength) {
  PaintedSheet sheet;
  // 130 units are 1.3 m, so the bar is 1 m long: 100 units.
  paintFooter(sheet.canvas, footer, metres(), {0.01, 0.0});
  EXPECT_THAT(wordsOf(sheet.canvas), ElementsAre("1 m"));
  const int row = 250 + 16;
  EXPECT_EQ(sheet.at(60, row), "1d2430");
  EXPECT_EQ(sheet.at(108, row), "1d2430");
  EXPECT_EQ(sheet.at(112, row), "ffffff");
  EXPECT_NE(sheet.at(109, row - 3), "ffffff") << "a stroke across each end";
  EXPECT_NE(sheet.at(10, row - 3), "ffffff");
  EXPECT_EQ(sheet.at(60, row - 3), "ffffff");
}

TEST(PageFooter, TellsTheDrawingsOwnUnitWhereNoOtherIsKnown) {
  PaintedSheet sheet;
  paintFooter(sheet.canvas, footer, {}, {1.0, 0.0});
  EXPECT_THAT(wordsOf(sheet.canvas), ElementsAre("100 drawing units"));
}

TEST(PageFooter, HasAnArrowAsLongAsARoundResidual) {
  PaintedSheet sheet;
  // Enlarged 50 times a millimetre is 5 units, so 60 units hold 12 mm: 10 mm are 50 units.
  paintFooter(sheet.canvas, footer, metres(), {0.01, 50.0});
  EXPECT_THAT(wordsOf(sheet.canvas), ElementsAre("1 m", "residual of 10 mm, enlarged 50 times"));
  const int row = 250 + 38;
  EXPECT_NE(sheet.at(30, row), "ffffff");
  EXPECT_NE(sheet.at(57, row), "ffffff");
  EXPECT_EQ(sheet.at(61, row), "ffffff");
}

TEST(PageFooter, CutsAMeaningThatHasNoRoom) {
  PaintedSheet sheet;
  Content content = metres();
  content.residualUnit = std::string(100, 'm');
  paintFooter(sheet.canvas, footer, content, {0.01, 50.0});
  EXPECT_THAT(wordsOf(sheet.canvas),
              ElementsAre("1 m", ::testing::AllOf(StartsWith("residual of 10 mm"), EndsWith("…"))));
  for (const PaintedText& text : sheet.canvas.texts()) EXPECT_TRUE(contains(footer, text.box)) << text.text;
}

TEST(PageFooter, WritesSmallScalesInDigits) {
  PaintedSheet sheet;
  paintFooter(sheet.canvas, footer, metres(), {0.00002, 0.0});
  EXPECT_THAT(wordsOf(sheet.canvas), ElementsAre("0.002 m"));
}

}  // namespace
}  // namespace tiepoint::workbench::picture
