#include "workbench/geometry/certainty.h"

#include <gtest/gtest.h>

#include <random>

#include "workbench/geometry/shapes.h"

namespace tiepoint::workbench {
namespace {

constexpr double reach = 0.04;

Points somewhere(std::size_t count, std::uint64_t start) {
  std::mt19937_64 random(start);
  std::uniform_real_distribution<double> share(0.0, 1.0);
  Points points;
  for (std::size_t i = 0; i < count; ++i) {
    const double x = 60.0 * share(random);
    const double y = 60.0 * share(random);
    points.emplace_back(x, y, 8.0 * share(random));
  }
  return points;
}

Certainty certainty(const Points& there, const Points& here, std::size_t shared, double tries = 1.0) {
  const StationShape shape = shapeOf(there);
  return certaintyOf(fieldOf(shape), shapeOf(turned(here)), inOrder(shared), reach, tries,
                     [](const Placement&) { return true; });
}

TEST(Certainty, AnIrregularLayoutIsCertain) { EXPECT_EQ(certainty(irregular, irregular, 5), Certainty::certain); }

TEST(Certainty, ASymmetricLayoutIsRivalled) { EXPECT_EQ(certainty(rectangle, rectangle, 4), Certainty::rivalled); }

TEST(Certainty, ASymmetricLayoutIsCertainWhenNoOtherWayIsPossible) {
  const StationShape shape = shapeOf(rectangle);
  const Placement own = inOrder(4);
  EXPECT_EQ(certaintyOf(fieldOf(shape), shapeOf(turned(rectangle)), own, reach, 1.0,
                        [&](const Placement& way) { return way == own; }),
            Certainty::certain);
}

TEST(Certainty, OnePointMoreThanTheSymmetricOnesDecides) {
  const Points layout = joined(rectangle, {{20, 9, 4}});
  EXPECT_EQ(certainty(layout, layout, 5), Certainty::certain);
}

TEST(Certainty, PointsOnALineDontHoldAStation) {
  const Points line{{0, 0, 0}, {1, 0, 0}, {5, 0, 0}, {11, 0, 0}};
  EXPECT_EQ(certainty(line, line, 4), Certainty::loose);
}

TEST(Certainty, ThreePointsAreBelievedAmongFew) {
  const Points three(irregular.begin(), irregular.begin() + 3);
  EXPECT_EQ(certainty(three, three, 3), Certainty::certain);
  EXPECT_EQ(certainty(joined(three, somewhere(5, 1)), joined(three, somewhere(5, 2)), 3), Certainty::certain);
}

TEST(Certainty, ThreePointsThatFitBadlyMayBeChanceAmongMany) {
  Points three{{0, 0, 0}, {30, 0, 1}, {9, 24, 2}};
  const Points there = joined(three, somewhere(40, 1));
  for (Eigen::Vector3d& point : three) point *= 1.0006;  // sides of 25 to 30 m, longer by about 2 cm
  EXPECT_EQ(certainty(there, joined(three, somewhere(40, 2)), 3), Certainty::maybeChance);
}

TEST(Certainty, ThreePointsAreBelievedLessTheMoreTriesThereWere) {
  Points three(irregular.begin(), irregular.begin() + 3);
  for (Eigen::Vector3d& point : three) point *= 1.0003;
  const Points there(irregular.begin(), irregular.begin() + 3);
  EXPECT_EQ(certainty(there, three, 3), Certainty::certain);
  EXPECT_EQ(certainty(there, three, 3, 1e7), Certainty::maybeChance);
}

TEST(PointsOfSeveralWays, TellHowManyEachExplainsOrNothing) {
  const StationShape there = shapeOf(rectangle);
  EXPECT_EQ(pointsOfSeveralWays(fieldOf(there), shapeOf(turned(rectangle)), reach, 4), 4U);
  const StationShape odd = shapeOf(irregular);
  EXPECT_EQ(pointsOfSeveralWays(fieldOf(odd), shapeOf(turned(irregular)), reach, 4), 0U);
}

TEST(ExpectedByChance, GrowsWithTheCubeOfHowFarTheSidesDiffer) {
  const Points there(irregular.begin(), irregular.begin() + 3);
  const StationShape shape = shapeOf(there);
  const auto expected = [&](double stretch) {
    Points here = there;
    for (Eigen::Vector3d& point : here) point *= 1.0 + stretch;
    return expectedByChance(fieldOf(shape), shapeOf(here), inOrder(3), reach);
  };
  EXPECT_NEAR(expected(2e-4) / expected(1e-4), 8.0, 1e-6);
}

/// One pair in a narrow bound says little; the density is that of sixteen.
TEST(ExpectedByChance, IsTakenFromABoundThatHoldsEnoughOthers) {
  const Points three(irregular.begin(), irregular.begin() + 3);
  Points stretched = three;
  for (Eigen::Vector3d& point : stretched) point *= 1.0003;
  const auto expected = [&](std::size_t others) {
    const StationShape there = shapeOf(joined(three, somewhere(others, 1)));
    return expectedByChance(fieldOf(there), shapeOf(joined(stretched, somewhere(others, 2))), inOrder(3), reach);
  };
  // Triangles grow with the cube of the points, so pairs of them with the sixth power: some 64 times.
  EXPECT_GT(expected(24) / expected(12), 20.0);
  EXPECT_LT(expected(24) / expected(12), 200.0);
  // Nobody counted sixteen of them around: a bound, far below one in a million.
  EXPECT_LT(expected(0), 1e-6);
}

TEST(Certainty, WithoutThreeNamedPointsAStationIsLoose) {
  EXPECT_EQ(certainty(irregular, irregular, 0), Certainty::loose);
  EXPECT_EQ(certainty(irregular, irregular, 2), Certainty::loose);
}

TEST(Certainty, AWayThatExplainsFewerPointsIsNoRival) {
  // Half of the rectangle turned is the same, but the two points beside it aren't.
  const Points layout = joined(rectangle, {{20, 9, 4}, {-7, 2, 3}});
  EXPECT_EQ(certainty(layout, layout, 6), Certainty::certain);
}

TEST(Certainty, FarFromTheOriginAnIrregularLayoutIsCertainToo) {
  Points away = irregular;
  for (Eigen::Vector3d& point : away) point += Eigen::Vector3d(4500000, 5400000, 100);
  EXPECT_EQ(certainty(away, irregular, 5), Certainty::certain);
}

TEST(Certainty, NamesThatContradictTheLayoutAreRivalled) {
  const StationShape there = shapeOf(irregular);
  const Placement wrong{{0, 1}, {1, 0}, {2, 3}, {3, 2}};
  EXPECT_EQ(
      certaintyOf(fieldOf(there), shapeOf(turned(irregular)), wrong, reach, 1.0, [](const Placement&) { return true; }),
      Certainty::rivalled);
}

TEST(PointsOfSeveralWays, NeedTheSameNumberInEach) {
  const Points layout = joined(rectangle, {{20, 9, 4}});
  const StationShape there = shapeOf(layout);
  EXPECT_EQ(pointsOfSeveralWays(fieldOf(there), shapeOf(turned(layout)), reach, 3), 0U);
}

TEST(PointsOfSeveralWays, TakeThreePointsMoreStrictly) {
  // Isosceles but for 1.5 cm: within the reach both ways, within a quarter of it one.
  const Points nearly{{-5, 0, 0}, {5, 0, 0}, {0.015, 9, 0}};
  const StationShape there = shapeOf(nearly);
  EXPECT_EQ(pointsOfSeveralWays(fieldOf(there), shapeOf(turned(nearly)), reach, 3), 0U);
  const Points isosceles{{-5, 0, 0}, {5, 0, 0}, {0, 9, 0}};
  const StationShape even = shapeOf(isosceles);
  EXPECT_EQ(pointsOfSeveralWays(fieldOf(even), shapeOf(turned(isosceles)), reach, 3), 3U);
}

TEST(ExpectedByChance, IsNothingWhereTheSidesAgreeToTheLastDigit) {
  const Points three(irregular.begin(), irregular.begin() + 3);
  const StationShape there = shapeOf(three);
  EXPECT_EQ(expectedByChance(fieldOf(there), there, inOrder(3), reach), 0.0);
}

}  // namespace
}  // namespace tiepoint::workbench
