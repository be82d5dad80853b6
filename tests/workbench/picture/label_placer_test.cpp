#include "workbench/picture/label_placer.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <cmath>

namespace tiepoint::workbench::picture {
namespace {

const Box page{0, 0, 400, 300};

LabelWish wishAt(double x, double y) { return {{x, y}, 30, 12, 0.0, false, true}; }

void expectBox(const std::optional<LabelPosition>& place, const Box& expected) {
  ASSERT_TRUE(place.has_value());
  EXPECT_DOUBLE_EQ(place->box.left, expected.left);
  EXPECT_DOUBLE_EQ(place->box.top, expected.top);
  EXPECT_DOUBLE_EQ(place->box.right, expected.right);
  EXPECT_DOUBLE_EQ(place->box.bottom, expected.bottom);
}

TEST(LabelPlacer, PutsALabelRightAboveTheRightArmOfItsPoint) {
  LabelPlacer placer(page);
  const auto place = placer.place(wishAt(100, 100));
  expectBox(place, {102.5, 85.5, 132.5, 97.5});
  EXPECT_FALSE(place->isFar);
}

TEST(LabelPlacer, PutsTheNextLabelOfTheSamePointBelow) {
  LabelPlacer placer(page);
  placer.place(wishAt(100, 100));
  expectBox(placer.place(wishAt(100, 100)), {102.5, 102.5, 132.5, 114.5});
}

TEST(LabelPlacer, TurnsToTheLeftAtTheRightRim) {
  LabelPlacer placer(page);
  expectBox(placer.place(wishAt(390, 100)), {357.5, 85.5, 387.5, 97.5});
}

TEST(LabelPlacer, GoesOutOfTheWayOfAMark) {
  LabelPlacer placer(page);
  placer.addMark({110, 90, 112, 92});
  expectBox(placer.place(wishAt(100, 100)), {102.5, 102.5, 132.5, 114.5});
}

TEST(LabelPlacer, GoesOutOfTheWayOfALine) {
  LabelPlacer placer(page);
  placer.addLine({100, 100}, {140, 75});
  expectBox(placer.place(wishAt(100, 100)), {102.5, 102.5, 132.5, 114.5});
}

TEST(LabelPlacer, LeadsToALabelThatHadToGoFarOff) {
  LabelPlacer placer(page);
  placer.block(Box{80, 80, 120, 120}.grownBy(2));
  const auto place = placer.place(wishAt(100, 100));
  ASSERT_TRUE(place.has_value());
  EXPECT_TRUE(place->isFar);
  LabelWish staysNear = wishAt(100, 100);
  staysNear.mayBeFar = false;
  EXPECT_FALSE(placer.place(staysNear).has_value());
}

TEST(LabelPlacer, CoversAFewMarksRatherThanLeavingALabelOut) {
  LabelPlacer placer(page);
  for (int i = 0; i < 4; ++i) placer.addMark(page);
  EXPECT_TRUE(placer.place(wishAt(100, 100)).has_value());
}

TEST(LabelPlacer, LeavesOutALabelThatWouldHideTooMuch) {
  LabelPlacer placer(page);
  for (int i = 0; i < 5; ++i) placer.addMark(page);
  EXPECT_FALSE(placer.place(wishAt(100, 100)).has_value());
}

TEST(LabelPlacer, ShowsAVitalLabelWhateverItHides) {
  LabelPlacer placer(page);
  for (int i = 0; i < 50; ++i) placer.addMark(page);
  LabelWish vital = wishAt(100, 100);
  vital.isVital = true;
  EXPECT_TRUE(placer.place(vital).has_value());
}

TEST(LabelPlacer, KeepsClearOfItsPointWhenAskedTo) {
  LabelPlacer placer(page);
  LabelWish wish = wishAt(100, 100);
  wish.clearance = 12.0;
  expectBox(placer.place(wish), {114.5, 73.5, 144.5, 85.5});
}

TEST(LabelPlacer, LeavesOutALabelThatIsWiderThanThePage) {
  LabelPlacer placer(page);
  EXPECT_FALSE(placer.place({{100, 100}, 500, 12, 0.0, true, true}).has_value());
}

TEST(LabelPlacer, LetsNoLabelOfACrowdCoverALineThatIsBlocked) {
  LabelPlacer placer(page);
  // Short enough that as a mark it would be covered where there is no better place.
  placer.blockLine({96, 70}, {104, 70});
  int placed = 0;
  while (const auto place = placer.place(wishAt(100, 100))) {
    EXPECT_FALSE(overlap(place->box, Box{96, 69, 104, 71})) << placed;
    ++placed;
  }
  EXPECT_GT(placed, 10);
}

TEST(LabelPlacer, TakesThePlaceThatCoversTheFewestMarks) {
  LabelPlacer placer(page);
  // All places cover three marks, but the one to the lower left only two.
  for (int i = 0; i < 2; ++i) placer.addMark(page);
  placer.addMark({0, 0, 400, 100});
  placer.addMark({101, 100, 400, 300});
  placer.addMark({0, 120, 400, 300});
  expectBox(placer.place(wishAt(100, 100)), {67.5, 102.5, 97.5, 114.5});
}

TEST(LabelPlacer, AVitalLabelHidesNoOtherLabel) {
  LabelPlacer placer(page);
  placer.block(page);
  LabelWish vital = wishAt(100, 100);
  vital.isVital = true;
  EXPECT_FALSE(placer.place(vital).has_value());
}

TEST(LabelPlacer, GivesNoPlaceToALabelWhoseAnchorLiesFarOutside) {
  LabelPlacer placer(page);
  EXPECT_FALSE(placer.place(wishAt(1000, 1000)).has_value());
}

RC_GTEST_PROP(LabelPlacer, NeverLetsLabelsOverlapOrLeaveThePage, ()) {
  LabelPlacer placer(page);
  std::vector<Box> placed;
  const int count = *rc::gen::inRange(0, 120);
  for (int i = 0; i < count; ++i) {
    const PagePoint anchor{*rc::gen::inRange(-20, 420) * 1.0, *rc::gen::inRange(-20, 320) * 1.0};
    placer.addLine({anchor.x - 10, anchor.y}, {anchor.x + 10, anchor.y});
    const auto place =
        placer.place({anchor, *rc::gen::inRange(1, 90) * 1.0, *rc::gen::inRange(6, 20) * 1.0,
                      *rc::gen::inRange(0, 15) * 1.0, *rc::gen::arbitrary<bool>(), *rc::gen::arbitrary<bool>()});
    if (!place) continue;
    RC_ASSERT(contains(page, place->box));
    for (const Box& other : placed) RC_ASSERT(!overlap(other, place->box));
    placed.push_back(place->box);
  }
}

}  // namespace
}  // namespace tiepoint::workbench::picture
