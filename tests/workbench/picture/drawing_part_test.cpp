#include "workbench/picture/drawing_part.h"

#include <gmock/gmock.h>

#include <cmath>

#include "workbench/picture/marked_points.h"
#include "workbench/picture/marks.h"
#include "workbench/picture/painted_sheet.h"

namespace tiepoint::workbench::picture {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using tiepoint::testing::MarkedPoint;

constexpr Box area{50, 50, 350, 250};

/// Ten pixels for a unit, from above; the area's lower left corner is the drawing's origin.
View tenPixels() {
  View view;
  view.setState({{15, 10, 1}, {15, 10, 0}, {0, 1, 0}, 30, 20, 300, 200});
  return view;
}

class DrawingPart : public ::testing::Test {
 protected:
  LabelCount paint(const std::vector<MarkedPoint>& points, double enlargement = 0.0) {
    const TestDrawable drawable(tiepoint::testing::drawingOf(points));
    RecordingDraw recorded(tenPixels());
    recorded.draw(drawable);
    return paintDrawing(sheet.canvas, area, recorded, content, Projection(tenPixels(), area), enlargement);
  }
  std::vector<std::string> words() const {
    std::vector<std::string> all;
    for (const PaintedText& text : sheet.canvas.texts()) all.push_back(text.text);
    return all;
  }

  PaintedSheet sheet;
  Content content;
};

TEST_F(DrawingPart, ShowsACrossAndALabelAtEachPoint) {
  const LabelCount count = paint({{{5, 5, 0}, "T1", 1}, {{20, 15, 0}, "T2", 5}});
  EXPECT_EQ(count.all, 2u);
  EXPECT_EQ(count.placed, 2u);
  EXPECT_THAT(words(), ElementsAre("T1", "T2"));
  // The first point stands at (100, 200) of the page, the second at (250, 100).
  EXPECT_NE(sheet.at(95, 200), "ffffff");
  EXPECT_NE(sheet.at(100, 195), "ffffff");
  EXPECT_NE(sheet.at(245, 100), "ffffff");
  EXPECT_GT(sheet.part(95, 200, 0), sheet.part(95, 200, 2)) << "red";
  EXPECT_GT(sheet.part(245, 100, 2), sheet.part(245, 100, 0)) << "blue";
}

TEST_F(DrawingPart, PaintsNothingOutsideOfItsArea) {
  paint({{{0, 10, 0}, "left", 1},
         {{30, 10, 0}, "right", 1},
         {{15, 0, 0}, "below", 1},
         {{15, 20, 0}, "above", 1},
         {{-5, -5, 0}, "away", 1}});
  EXPECT_EQ(sheet.painted(wholeSheet), sheet.painted(area));
  EXPECT_GT(sheet.painted(area), 0);
}

TEST_F(DrawingPart, CountsTheLabelsThatFoundNoRoom) {
  std::vector<MarkedPoint> crowd;
  for (int i = 0; i < 60; ++i) {
    crowd.push_back({{15.0 + 0.9 * (i % 5), 10.0 + 0.01 * i, 0}, "A long name of a target, " + std::to_string(i), 1});
  }
  const LabelCount count = paint(crowd);
  EXPECT_EQ(count.all, 60u);
  EXPECT_LT(count.placed, 60u);
  EXPECT_EQ(count.placed, words().size());
}

TEST_F(DrawingPart, LetsNoLabelHideAnother) {
  std::vector<MarkedPoint> many;
  for (int i = 0; i < 25; ++i) {
    many.push_back({{1.0 + i % 5 * 6.0, 2.0 + i / 5 * 3.5, 0}, "T" + std::to_string(i), 1});
  }
  paint(many);
  const auto& texts = sheet.canvas.texts();
  EXPECT_GE(texts.size(), 20u);
  for (std::size_t i = 0; i < texts.size(); ++i) {
    EXPECT_TRUE(contains(area, texts[i].box)) << texts[i].text;
    for (std::size_t j = i + 1; j < texts.size(); ++j) EXPECT_FALSE(overlap(texts[i].box, texts[j].box));
  }
}

TEST_F(DrawingPart, EnlargesResiduals) {
  content.residuals = {{{5, 5, 0}, {5.1, 5, 0}, 5, "T1", ""}};
  paint({{{5, 5, 0}, "", 1}}, 100.0);
  // The arrow is ten units, a hundred pixels long.
  EXPECT_NE(sheet.at(150, 200), "ffffff");
  EXPECT_NE(sheet.at(196, 200), "ffffff");
  EXPECT_EQ(sheet.at(203, 200), "ffffff");
}

TEST_F(DrawingPart, KeepsLabelsOffTheRingOfWhatStandsOut) {
  content.residuals = {{{15, 10, 0}, {15.1, 10, 0}, 5, "T1", "T1 stands out"}};
  paint({{{15, 10, 0}, "T1", 1}, {{15.5, 10.5, 0}, "T2", 1}}, 50.0);
  EXPECT_THAT(words(), ElementsAre("T1 stands out", "T1", "T2")) << "the note had the first choice";
  const Box ring = Box{200, 150, 200, 150}.grownBy(alarmRing);
  for (const PaintedText& text : sheet.canvas.texts()) EXPECT_FALSE(overlap(ring, text.box)) << text.text;
  EXPECT_EQ(sheet.at(200, 138), "b00020");
}

TEST_F(DrawingPart, NamesStationsBeforePoints) {
  content.stations = {{"S1", 1, {15, 10, 0}}};
  paint({{{15, 10, 0}, "T1", 5}});
  EXPECT_THAT(words(), ElementsAre("S1", "T1"));
  EXPECT_EQ(sheet.at(200, 150), "ffffff") << "the dot of its triangle, above the cross";
  for (const PaintedText& text : sheet.canvas.texts()) {
    EXPECT_FALSE(overlap(Box{200, 150, 200, 150}.grownBy(stationSize), text.box)) << text.text;
  }
}

TEST_F(DrawingPart, LetsNoLabelOfACrowdCoverAStation) {
  content.stations = {{"S1", 1, {15, 10, 0}}};
  std::vector<MarkedPoint> crowd;
  for (int i = 0; i < 40; ++i) crowd.push_back({{11, 9, 0}, "T" + std::to_string(100 + i), 5});
  EXPECT_GT(paint(crowd).placed, 12u);
  for (const PaintedText& text : sheet.canvas.texts()) {
    EXPECT_FALSE(overlap(Box{200, 150, 200, 150}.grownBy(stationSize), text.box)) << text.text;
  }
}

TEST_F(DrawingPart, GivesLargerResidualsTheFirstChoice) {
  content.residuals = {{{15, 10, 0}, {15.01, 10, 0}, 1, "T2", ""}};
  paint({{{15, 10, 0}, "T1", 1}, {{15, 10, 0}, "T2", 1}});
  EXPECT_THAT(words(), ElementsAre("T2", "T1"));
}

TEST_F(DrawingPart, LeadsToFarLabelsOnlyWhileTheyAreFew) {
  // All at one spot; around it there is room for a dozen labels, and farther off for more.
  const auto placedOf = [this](int count) {
    std::vector<MarkedPoint> points;
    for (int i = 0; i < count; ++i) points.push_back({{15, 10, 0}, "T" + std::to_string(1000 + i), 1});
    return paint(points).placed;
  };
  const std::size_t few = placedOf(200);
  EXPECT_GT(few, 12u);
  EXPECT_LE(placedOf(201), 12u);
}

TEST_F(DrawingPart, IsEmptyOfNothing) {
  const LabelCount count = paint({});
  EXPECT_EQ(count.all, 0u);
  EXPECT_EQ(count.placed, 0u);
  EXPECT_THAT(words(), IsEmpty());
  EXPECT_EQ(sheet.painted(wholeSheet), 0);
}

TEST_F(DrawingPart, PassesOverPointsWithoutAPlace) {
  const LabelCount count = paint({{{std::nan(""), 5, 0}, "T1", 1}, {{5, 5, 0}, "T2", 1}});
  EXPECT_EQ(count.all, 1u);
  EXPECT_THAT(words(), Not(Contains("T1")));
}

}  // namespace
}  // namespace tiepoint::workbench::picture
