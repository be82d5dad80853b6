#include "workbench/picture/legend_column.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "workbench/picture/painted_sheet.h"
#include "workbench/picture/surface.h"

namespace tiepoint::workbench::picture {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Not;

TEST(Legend, ShowsAllRowsThatFit) {
  EXPECT_EQ(rowsThatFit(8, 8).shown, 8u);
  EXPECT_EQ(rowsThatFit(8, 8).left, 0u);
  EXPECT_EQ(rowsThatFit(0, 8).shown, 0u);
}

TEST(Legend, KeepsTheLastRowForWhatItLeavesOut) {
  EXPECT_EQ(rowsThatFit(9, 8).shown, 7u);
  EXPECT_EQ(rowsThatFit(9, 8).left, 2u);
  EXPECT_EQ(rowsThatFit(9, 0).shown, 0u);
  EXPECT_EQ(rowsThatFit(9, 0).left, 9u);
}

Content groups(std::size_t count) {
  Content content;
  content.residualHead = "RMS, mm";
  for (std::size_t i = 0; i < count; ++i) content.groups.push_back({"S" + std::to_string(i), 1, 10 + i, "1.5"});
  return content;
}

constexpr Box column{460, 58, 628, 468};

std::vector<PaintedText> paintedLegend(const Content& content, const Box& box = column) {
  Surface surface(Format::png, {640, 480});
  Canvas canvas(surface.context(), 1.0);
  paintLegend(canvas, box, content, View());
  return canvas.texts();
}

std::vector<std::string> textsOf(const std::vector<PaintedText>& painted) {
  std::vector<std::string> texts;
  texts.reserve(painted.size());
  for (const PaintedText& text : painted) texts.push_back(text.text);
  return texts;
}

TEST(Legend, ListsEachGroupWithItsPointsAndItsResidual) {
  EXPECT_THAT(textsOf(paintedLegend(groups(2))),
              ElementsAre("group", "points", "RMS, mm", "S0", "10", "1.5", "S1", "11", "1.5", "x", "y"));
}

TEST(Legend, HasNoColumnOfResidualsWithoutAny) {
  Content content;
  content.groups = {{"S1", 1, 8, ""}};
  EXPECT_THAT(textsOf(paintedLegend(content)), ElementsAre("group", "points", "S1", "8", "x", "y"));
}

TEST(Legend, CutsALongListAndSaysHowManyAreLeft) {
  const auto texts = textsOf(paintedLegend(groups(200)));
  EXPECT_THAT(texts, Contains("S0"));
  EXPECT_THAT(texts, Contains("and 184 more"));
  EXPECT_THAT(texts, Contains("S15"));
  EXPECT_THAT(texts, Not(Contains("S16")));
}

TEST(Legend, ListsNineGroupsBeforeRemarksTakeTheirRoom) {
  Content content = groups(9);
  for (int i = 0; i < 60; ++i) content.remarks.push_back("Remark.");
  const auto texts = textsOf(paintedLegend(content));
  EXPECT_THAT(texts, Contains("S8"));
  EXPECT_THAT(texts, Contains("Remark."));
  EXPECT_THAT(texts, Contains("..."));
}

TEST(Legend, CutsRemarksSoThatNineGroupsStandAboveThem) {
  Content content = groups(9);
  for (int i = 0; i < 60; ++i) content.remarks.push_back("Remark.");
  // Eight remarks would fill the room to the last unit, and leave none for the dots.
  const Box taller{column.left, column.top, column.right, column.bottom + 3.0};
  const auto painted = paintedLegend(content, taller);
  const auto boxOf = [&](const std::string& text) {
    return std::find_if(painted.begin(), painted.end(), [&](const PaintedText& p) { return p.text == text; })->box;
  };
  EXPECT_LT(boxOf("S8").bottom, boxOf("Remark.").top);
  // Ten rows and the paddings: the remarks begin 190 below the column's top at the earliest.
  EXPECT_GE(boxOf("Remark.").top, column.top + 190.0);
  // The axes stand in the lowest 76.
  EXPECT_LE(boxOf("...").bottom, taller.bottom - 76.0);
}

TEST(Legend, CutsALongName) {
  Content content = groups(1);
  content.groups[0].name = "A station with a very long name indeed";
  EXPECT_THAT(textsOf(paintedLegend(content)), Contains(::testing::EndsWith("…")));
}

TEST(Legend, KeepsAllItsTextsApartAndWithinTheColumn) {
  for (const std::size_t count : {0u, 1u, 9u, 30u, 5000u}) {
    Content content = groups(count);
    if (count > 0) content.groups[0].name = "Станция с очень длинным именем";
    content.remarks = {"Stands out: T13 in S4, 43.634 mm, 22.8 times the median.",
                       "Triangles: stations, each at its system's origin.", "Averyveryveryveryveryverylongwordindeed."};
    const auto painted = paintedLegend(content);
    for (std::size_t i = 0; i < painted.size(); ++i) {
      EXPECT_TRUE(contains(column, painted[i].box)) << count << ' ' << painted[i].text;
      for (std::size_t j = i + 1; j < painted.size(); ++j) {
        EXPECT_FALSE(overlap(painted[i].box, painted[j].box)) << painted[i].text << " / " << painted[j].text;
      }
    }
  }
}

TEST(Legend, NamesTheAxesThatShow) {
  View front;
  front.setState({{0, -1, 0}, {0, 0, 0}, {0, 0, 1}, 4, 3, 40, 30});
  Surface surface(Format::png, {640, 480});
  Canvas canvas(surface.context(), 1.0);
  paintLegend(canvas, column, {}, front);
  const auto texts = textsOf(canvas.texts());
  EXPECT_THAT(texts, Contains("x"));
  EXPECT_THAT(texts, Contains("z"));
  EXPECT_THAT(texts, Not(Contains("y")));
}

constexpr Box sheetColumn{10, 10, 180, 290};

/// The box of a text that was painted; an empty one where it wasn't.
Box boxOf(const Canvas& canvas, const std::string& text) {
  for (const PaintedText& painted : canvas.texts()) {
    if (painted.text == text) return painted.box;
  }
  return {};
}

TEST(Legend, EndsItsNumbersBelowOneAnother) {
  PaintedSheet sheet;
  Content content = groups(2);
  content.groups[0].points = 1;
  content.groups[1].points = 23456;
  content.groups[1].residual = "120.25";
  paintLegend(sheet.canvas, sheetColumn, content, View());
  EXPECT_NEAR(boxOf(sheet.canvas, "1").right, boxOf(sheet.canvas, "23456").right, 1e-9);
  EXPECT_NEAR(boxOf(sheet.canvas, "1.5").right, 170.0, 1e-9);
  EXPECT_NEAR(boxOf(sheet.canvas, "120.25").right, 170.0, 1e-9);
  EXPECT_NEAR(boxOf(sheet.canvas, "points").right, boxOf(sheet.canvas, "1").right, 1e-9);
}

TEST(Legend, ShowsTheColourOfEachGroupBesideItsName) {
  PaintedSheet sheet;
  Content content = groups(2);
  content.groups[1].color = 5;
  paintLegend(sheet.canvas, sheetColumn, content, View());
  const Box first = boxOf(sheet.canvas, "S0"), second = boxOf(sheet.canvas, "S1");
  EXPECT_LT(first.bottom, second.top);
  EXPECT_EQ(sheet.at(26, static_cast<int>(first.middle().y)), "ff0000");
  EXPECT_EQ(sheet.at(26, static_cast<int>(second.middle().y)), "0000ff");
  EXPECT_LT(30.0, first.left);
}

TEST(Legend, HasItsRemarksBetweenTheGroupsAndTheAxes) {
  PaintedSheet sheet;
  Content content = groups(1);
  content.remarks = {"First.", "Second."};
  paintLegend(sheet.canvas, sheetColumn, content, View());
  const Box first = boxOf(sheet.canvas, "First."), second = boxOf(sheet.canvas, "Second.");
  EXPECT_LT(boxOf(sheet.canvas, "S0").bottom, first.top);
  EXPECT_NEAR(second.bottom - first.bottom, 14.0 + 5.0, 1e-9) << "with a gap between two";
  EXPECT_LE(second.bottom, 290.0 - 76.0);
  EXPECT_LT(second.bottom, boxOf(sheet.canvas, "x").top);
}

TEST(Legend, DrawsTheAxesAsTheViewHasThem) {
  PaintedSheet sheet;
  paintLegend(sheet.canvas, sheetColumn, {}, View());
  const Box x = boxOf(sheet.canvas, "x"), y = boxOf(sheet.canvas, "y");
  EXPECT_GT(x.left, y.right) << "x to the right";
  EXPECT_LT(y.bottom, x.top) << "y up";
  const PagePoint origin{95, 252};
  EXPECT_NE(sheet.at(static_cast<int>(origin.x) + 12, static_cast<int>(origin.y)), "ffffff");
  EXPECT_NE(sheet.at(static_cast<int>(origin.x), static_cast<int>(origin.y) - 12), "ffffff");
  EXPECT_EQ(sheet.at(static_cast<int>(origin.x) - 12, static_cast<int>(origin.y)), "ffffff");
}

TEST(Legend, IsAsWideAsItsLongestName) {
  PaintedSheet sheet;
  Content content = groups(1);
  const double narrow = legendWidth(sheet.canvas, content);
  content.groups[0].name = "Station of the north";
  const double wide = legendWidth(sheet.canvas, content);
  EXPECT_GT(wide, narrow);
  content.groups[0].name = std::string(200, 'W');
  const double widest = legendWidth(sheet.canvas, content);
  EXPECT_GT(widest, wide);
  content.groups[0].name = std::string(400, 'W');
  EXPECT_EQ(legendWidth(sheet.canvas, content), widest) << "longer ones are cut";
}

}  // namespace
}  // namespace tiepoint::workbench::picture
