#include "workbench/picture/label_sheet.h"

#include <gmock/gmock.h>

#include <cmath>

namespace tiepoint::workbench::picture {
namespace {

using testing::ElementsAre;

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

}  // namespace
}  // namespace tiepoint::workbench::picture
