#include "workbench/geometry/alignments.h"

#include <gmock/gmock.h>

#include "workbench/geometry/shapes.h"

namespace tiepoint::workbench {
namespace {

using testing::ElementsAre;

TEST(Alignments, AnIrregularLayoutIsLaidOntoItselfInOneWay) {
  const StationShape there = shapeOf(irregular), here = shapeOf(turned(irregular));
  EXPECT_THAT(alignments(fieldOf(there), here, 0.01, 3, 16), ElementsAre(inOrder(5)));
}

TEST(Alignments, TheOrderOfThePointsDoesntMatter) {
  const StationShape there = shapeOf(irregular);
  const Points moved = turned(irregular);
  const StationShape here = shapeOf({moved[3], moved[0], moved[4], moved[2], moved[1]});
  EXPECT_THAT(alignments(fieldOf(there), here, 0.01, 3, 16),
              ElementsAre(Placement{{0, 3}, {1, 0}, {2, 4}, {3, 2}, {4, 1}}));
}

TEST(Alignments, ARectangleIsLaidOntoItselfInFourWays) {
  const StationShape there = shapeOf(rectangle), here = shapeOf(turned(rectangle));
  const auto ways = alignments(fieldOf(there), here, 0.01, 3, 16);
  ASSERT_EQ(ways.size(), 4U);
  for (const Placement& way : ways) EXPECT_EQ(way.size(), 4U);
}

TEST(Alignments, TheWayThatExplainsMorePointsComesFirst) {
  const StationShape there = shapeOf(joined(rectangle, {{20, 9, 4}}));
  const StationShape here = shapeOf(turned(joined(rectangle, {{20, 9, 4}})));
  const auto ways = alignments(fieldOf(there), here, 0.01, 3, 16);
  ASSERT_EQ(ways.size(), 4U);
  EXPECT_EQ(ways[0], inOrder(5));
  EXPECT_EQ(ways[1].size(), 4U);
}

TEST(Alignments, OfTooManyWaysThoseWithTheMostPointsAreKept) {
  const StationShape there = shapeOf(joined(rectangle, {{20, 9, 4}}));
  const StationShape here = shapeOf(turned(joined(rectangle, {{20, 9, 4}})));
  EXPECT_THAT(alignments(fieldOf(there), here, 0.01, 3, 1), ElementsAre(inOrder(5)));
}

TEST(Alignments, OfWaysThatLayAllPointsAsManyAsAskedForAreGiven) {
  const StationShape there = shapeOf(rectangle), here = shapeOf(turned(rectangle));
  const auto ways = alignments(fieldOf(there), here, 0.01, 3, 2);
  ASSERT_EQ(ways.size(), 2U);
  EXPECT_EQ(ways[0].size(), 4U);
  EXPECT_EQ(ways[1].size(), 4U);
  EXPECT_NE(ways[0], ways[1]);
}

TEST(Alignments, WaysThatExplainTooFewPointsAreLeftOut) {
  const StationShape there = shapeOf(joined(rectangle, {{20, 9, 4}}));
  const StationShape here = shapeOf(turned(joined(rectangle, {{20, 9, 4}})));
  EXPECT_THAT(alignments(fieldOf(there), here, 0.01, 5, 16), ElementsAre(inOrder(5)));
}

TEST(Alignments, AMirroredLayoutIsNotLaidOnto) {
  Points mirrored = irregular;
  for (Eigen::Vector3d& point : mirrored) point.x() = -point.x();
  const StationShape there = shapeOf(irregular), here = shapeOf(mirrored);
  EXPECT_TRUE(alignments(fieldOf(there), here, 0.01, 4, 16).empty());
}

TEST(Alignments, EquilateralCornersLieInEveryWay) {
  const Points triangle{{0, 0, 0}, {10, 0, 0}, {5, 5 * std::sqrt(3.0), 0}};
  const StationShape there = shapeOf(triangle), here = shapeOf(turned(triangle));
  EXPECT_EQ(alignments(fieldOf(there), here, 0.01, 3, 16).size(), 6U);
}

TEST(Alignments, TargetsOfSeveralStationsCountTogether) {
  // One station saw the first three targets, the other the last three.
  const StationShape one = shapeOf({irregular[0], irregular[1], irregular[2]});
  const StationShape other = shapeOf({irregular[2], irregular[3], irregular[4]});
  TargetField field;
  field.targets = irregular;
  field.stations = {{&one, {0, 1, 2}}, {&other, {2, 3, 4}}};
  EXPECT_THAT(alignments(field, shapeOf(turned(irregular)), 0.01, 3, 16), ElementsAre(inOrder(5)));
}

TEST(Alignments, FewerThanThreePointsAreLaidInNoWay) {
  const StationShape there = shapeOf(irregular);
  EXPECT_TRUE(alignments(fieldOf(there), shapeOf({}), 0.01, 3, 16).empty());
  EXPECT_TRUE(alignments(fieldOf(there), shapeOf({irregular[0], irregular[1]}), 0.01, 3, 16).empty());
}

TEST(Alignments, ThreePointsAreAskedForAtLeast) {
  const StationShape there = shapeOf(irregular);
  const StationShape here = shapeOf(turned({irregular[0], irregular[1], irregular[2]}));
  EXPECT_THAT(alignments(fieldOf(there), here, 0.01, 0, 16), ElementsAre(inOrder(3)));
}

TEST(Alignments, PointsOnOneLineAreLaidInNoWay) {
  const Points line{{0, 0, 0}, {1, 0, 0}, {5, 0, 0}, {11, 0, 0}};
  const StationShape there = shapeOf(line);
  EXPECT_TRUE(alignments(fieldOf(there), shapeOf(turned(line)), 0.01, 3, 16).empty());
}

TEST(Alignments, AFieldWithoutStationsHoldsNone) {
  TargetField field;
  field.targets = irregular;
  EXPECT_TRUE(alignments(field, shapeOf(irregular), 0.01, 3, 16).empty());
}

TEST(Alignments, APointThatLiesBeyondTheReachIsLeftOut) {
  Points off = irregular;
  off[4].z() += 0.5;
  const StationShape there = shapeOf(irregular), here = shapeOf(turned(off));
  EXPECT_THAT(alignments(fieldOf(there), here, 0.01, 3, 16), ElementsAre(inOrder(4)));
}

TEST(Alignments, PointsWithNoiseWithinTheReachAreLaid) {
  Points noisy = irregular;
  for (std::size_t i = 0; i < noisy.size(); ++i) noisy[i].y() += i % 2 == 0 ? 0.003 : -0.003;
  const StationShape there = shapeOf(irregular), here = shapeOf(turned(noisy));
  EXPECT_THAT(alignments(fieldOf(there), here, 0.02, 5, 16), ElementsAre(inOrder(5)));
}

TEST(Alignments, CoordinatesOfMillionsAreLaidAsWell) {
  Points away = turned(irregular);
  for (Eigen::Vector3d& point : away) point += Eigen::Vector3d(4500000, 5400000, 100);
  const StationShape there = shapeOf(irregular), here = shapeOf(away);
  EXPECT_THAT(alignments(fieldOf(there), here, 0.01, 5, 16), ElementsAre(inOrder(5)));
}

TEST(Alignments, OfTwoPointsAtOneTargetTheNearerIsLaidOntoIt) {
  const Eigen::Vector3d beside = irregular[4] + Eigen::Vector3d(0.02, 0, 0);
  const StationShape there = shapeOf(irregular);
  const auto best = [&](const Points& points) {
    return alignments(fieldOf(there), shapeOf(turned(points)), 0.05, 5, 16).at(0);
  };
  EXPECT_EQ(best(joined(irregular, {beside})), inOrder(5));
  EXPECT_EQ(best(joined({beside}, irregular)), (Placement{{1, 0}, {2, 1}, {3, 2}, {4, 3}, {5, 4}}));
}

TEST(Alignments, StationsAmongManyTargetsAreLaidOntoTheirOwn) {
  const Points others{{40, 3, 1}, {52, -8, 4}, {47, 19, 6}, {33, 28, 2}};
  const StationShape there = shapeOf(joined(others, irregular));
  EXPECT_THAT(alignments(fieldOf(there), shapeOf(turned(irregular)), 0.01, 4, 16),
              ElementsAre(Placement{{0, 4}, {1, 5}, {2, 6}, {3, 7}, {4, 8}}));
}

TEST(Rivals, PutTwoPointsElsewhereOrShareFewerThanThree) {
  EXPECT_FALSE(areRivals(inOrder(4), inOrder(4)));
  EXPECT_FALSE(areRivals({{0, 0}, {1, 1}, {2, 2}, {3, 3}}, {{0, 0}, {1, 1}, {2, 2}, {3, 9}}));
  EXPECT_TRUE(areRivals({{0, 0}, {1, 1}, {2, 2}, {3, 3}, {4, 4}}, {{0, 0}, {1, 1}, {2, 2}, {3, 4}, {4, 3}}));
  EXPECT_TRUE(areRivals({{0, 0}, {1, 1}, {2, 2}}, {{0, 0}, {1, 1}, {5, 5}}));
}

}  // namespace
}  // namespace tiepoint::workbench
