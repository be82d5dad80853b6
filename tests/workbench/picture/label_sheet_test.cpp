#include "workbench/picture/label_sheet.h"

#include <gmock/gmock.h>

#include <cmath>

#include "workbench/picture/painted_sheet.h"

namespace tiepoint::workbench::picture {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Ten pixels for a unit; the page's lower left corner is the drawing's origin.
Projection tenPixels() {
  View view;
  view.setState({{20, 15, 1}, {20, 15, 0}, {0, 1, 0}, 40, 30, 400, 300});
  return Projection(view, {0, 0, 400, 300});
}

DrawnText textAt(double x, double y, const char* name) {
  return {7, {x, y, 0}, {0, 0, 1}, {1, 0, 0}, 1.0, OdString(name)};
}

std::vector<std::string> namesOf(const std::vector<Label>& labels) {
  std::vector<std::string> names;
  names.reserve(labels.size());
  for (const Label& label : labels) names.push_back(label.text);
  return names;
}

TEST(Labels, StandAtTheirSpotInTheHeightThatIsAskedFor) {
  const auto labels = labelsOf({textAt(3, 4, "T1")}, tenPixels(), 0.1);
  ASSERT_EQ(labels.size(), 1u);
  EXPECT_DOUBLE_EQ(labels[0].anchor.x, 30.0);
  EXPECT_DOUBLE_EQ(labels[0].anchor.y, 260.0);
  EXPECT_DOUBLE_EQ(labels[0].height, 10.0);
  EXPECT_EQ(labels[0].color, (Rgb{0, 0, 0}));
}

TEST(Labels, OfOneTargetThatSeveralGroupsMeasuredBecomeOne) {
  EXPECT_THAT(namesOf(labelsOf({textAt(3, 4, "T1"), textAt(3.05, 4, "T1"), textAt(3, 4, "T2"), textAt(9, 4, "T1")},
                               tenPixels(), 0.1)),
              ElementsAre("T1", "T2", "T1"));
}

TEST(Labels, WithoutAPlaceOrANameAreLeftOut) {
  EXPECT_THAT(
      namesOf(labelsOf({textAt(std::nan(""), 4, "T1"), textAt(3, 4, ""), textAt(3, 4, "T3")}, tenPixels(), 0.1)),
      ElementsAre("T3"));
}

TEST(Labels, AreReadAsWindows1251) {
  EXPECT_THAT(namesOf(labelsOf({textAt(3, 4, "\xCC\xE8\xF8\xE5\xED\xFC")}, tenPixels(), 0.1)), ElementsAre("Мишень"));
}

TEST(Labels, OfLargerResidualsComeFirst) {
  std::vector<Label> labels =
      labelsOf({textAt(1, 1, "T1"), textAt(4, 1, "T2"), textAt(7, 1, "T3"), textAt(9, 1, "T4")}, tenPixels(), 0.1);
  const std::vector<Residual> residuals{
      {{0, 0, 0}, {0, 0, 2}, 1, "T3", ""}, {{0, 0, 0}, {0, 3, 0}, 1, "T4", ""}, {{0, 0, 0}, {1, 0, 0}, 1, "T4", ""}};
  putLargestResidualsFirst(labels, residuals);
  EXPECT_THAT(namesOf(labels), ElementsAre("T4", "T3", "T1", "T2"));
}

/// A sheet of labels on a sheet of paper.
class PlacedLabels : public ::testing::Test {
 protected:
  static Label labelAt(double x, double y, const std::string& name) { return {{x, y}, name, 10.0, {255, 0, 0}}; }
  std::vector<PaintedText> painted() {
    labels.paintTexts();
    return sheet.canvas.texts();
  }
  /// How much of the paper the lines to far labels cover.
  int paintedLeaders() {
    labels.paintLeaders();
    return sheet.painted(wholeSheet);
  }
  /// Nothing within this distance of the spot is free.
  void crowd(const PagePoint& spot, double reach) {
    labels.places().block(Box{spot.x, spot.y, spot.x, spot.y}.grownBy(reach));
  }

  PaintedSheet sheet;
  LabelSheet labels{sheet.canvas, {50, 50, 350, 250}};
};

TEST_F(PlacedLabels, ArePaintedOnlyInTheEnd) {
  EXPECT_TRUE(labels.addLabel(labelAt(200, 150, "T1"), true));
  EXPECT_THAT(sheet.canvas.texts(), IsEmpty());
  ASSERT_EQ(painted().size(), 1u);
  EXPECT_EQ(sheet.canvas.texts()[0].text, "T1");
}

TEST_F(PlacedLabels, HaveCapitalsOfTheHeightThatIsAskedFor) {
  labels.addLabel(labelAt(200, 150, "T1"), true);
  const Box box = painted()[0].box;
  EXPECT_NEAR(box.height(), 10.0 * (capitalHeight + descent) / capitalHeight, 1e-9);
  EXPECT_GT(box.left, 200.0) << "above the right arm of the point";
  EXPECT_LT(box.bottom, 150.0);
  EXPECT_LT(box.left, 206.0);
}

TEST_F(PlacedLabels, KeepOffTheRim) {
  // To the right of its point it would just fit into the drawing, but stand at its rim.
  const double width = sheet.canvas.widthOf("T1", {10.0 / capitalHeight, false, ink, 0.0});
  labels.addLabel(labelAt(344.0 - width, 150, "T1"), true);
  EXPECT_TRUE(contains(Box{54, 54, 346, 246}, painted()[0].box));
  EXPECT_LT(painted()[0].box.right, 344.0 - width) << "it stands to the left";
}

TEST_F(PlacedLabels, AreLeftOutWhereThereIsNoRoom) {
  crowd({200, 150}, 300);
  EXPECT_FALSE(labels.addLabel(labelAt(200, 150, "T1"), true));
  labels.addStationName({200, 150}, "S1");
  labels.addNote({{200, 150}, {220, 150}, alarm, "T1 stands out"});
  EXPECT_THAT(painted(), IsEmpty());
  EXPECT_EQ(paintedLeaders(), 0);
}

TEST_F(PlacedLabels, ThatStandFarOffHaveALineThatLeadsToThem) {
  crowd({200, 150}, 20);
  EXPECT_TRUE(labels.addLabel(labelAt(200, 150, "T1"), true));
  EXPECT_GT(paintedLeaders(), 10);
}

TEST_F(PlacedLabels, ThatStandNearHaveNone) {
  EXPECT_TRUE(labels.addLabel(labelAt(200, 150, "T1"), true));
  labels.addStationName({100, 100}, "S1");
  EXPECT_EQ(paintedLeaders(), 0);
}

TEST_F(PlacedLabels, StayNearWhereTheyMayNotBeFar) {
  crowd({200, 150}, 20);
  EXPECT_FALSE(labels.addLabel(labelAt(200, 150, "T1"), false));
}

TEST_F(PlacedLabels, LeaveTheirPlaceToWhoCameFirst) {
  labels.addLabel(labelAt(200, 150, "first"), true);
  labels.addLabel(labelAt(200, 150, "second"), true);
  const auto texts = painted();
  ASSERT_EQ(texts.size(), 2u);
  EXPECT_LT(texts[0].box.bottom, 150.0);
  EXPECT_FALSE(overlap(texts[0].box, texts[1].box));
}

TEST_F(PlacedLabels, OfStationsStandBesideTheirTriangle) {
  labels.addStationName({200, 150}, "S1");
  const auto texts = painted();
  ASSERT_EQ(texts.size(), 1u);
  EXPECT_FALSE(overlap(texts[0].box, Box{200, 150, 200, 150}.grownBy(5.0)));
}

TEST_F(PlacedLabels, AStationsNameThatHadToGoFarOffIsLedTo) {
  crowd({200, 150}, 25);
  labels.addStationName({200, 150}, "S1");
  EXPECT_GT(paintedLeaders(), 5);
}

TEST_F(PlacedLabels, ANoteStandsOutsideOfItsRingInTheColourOfAlarm) {
  labels.addNote({{200, 150}, {220, 150}, {0, 0, 255}, "T1 in S1: 43.6 mm"});
  const auto texts = painted();
  ASSERT_EQ(texts.size(), 1u);
  EXPECT_EQ(texts[0].text, "T1 in S1: 43.6 mm");
  const PagePoint nearest = nearestPoint(texts[0].box, {200, 150});
  EXPECT_GE(std::hypot(nearest.x - 200, nearest.y - 150), alarmRing);
  int alarming = 0;
  for (int x = static_cast<int>(texts[0].box.left); x < texts[0].box.right; ++x) {
    for (int y = static_cast<int>(texts[0].box.top); y < texts[0].box.bottom; ++y)
      alarming += sheet.at(x, y) == "b00020";
  }
  EXPECT_GT(alarming, 10);
}

TEST_F(PlacedLabels, ANotesLineBeginsAtItsRing) {
  crowd({200, 150}, 30);
  labels.addNote({{200, 150}, {220, 150}, {0, 0, 255}, "T1"});
  EXPECT_GT(paintedLeaders(), 5);
  EXPECT_EQ(sheet.painted(Box{200, 150, 200, 150}.grownBy(7.0)), 0) << "within the ring";
}

TEST_F(PlacedLabels, ANoteCoversWhateverIsThere) {
  for (int i = 0; i < 20; ++i) labels.places().addMark(wholeSheet);
  EXPECT_FALSE(labels.addLabel(labelAt(100, 100, "T2"), true));
  labels.addNote({{200, 150}, {220, 150}, {0, 0, 255}, "T1"});
  EXPECT_EQ(painted().size(), 1u);
}

}  // namespace
}  // namespace tiepoint::workbench::picture
