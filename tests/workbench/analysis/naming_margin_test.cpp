#include "workbench/analysis/naming_margin.h"

#include <gtest/gtest.h>
#include <Eigen/Geometry>

#include <algorithm>
#include <cmath>
#include <numeric>

#include "workbench/analysis/random_networks.h"

namespace tiepoint::workbench::analysis::testing {
namespace {

constexpr double marginWithin = 1e-5;
constexpr double largestMargin = 1000.0;

double sumFor(const std::vector<FitPair>& pairs, const std::vector<std::size_t>& order, bool levelled) {
  std::vector<FitPair> named = pairs;
  for (std::size_t p = 0; p < pairs.size(); ++p) named[p].to = pairs[order[p]].to;
  return sumOfSquares(named, fitRigid(named, levelled));
}

/// Through all ways but the first.
double plainMargin(const std::vector<FitPair>& pairs, bool levelled) {
  std::vector<std::size_t> order(pairs.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  const double given = sumFor(pairs, order, levelled);
  double least = HUGE_VAL;
  while (std::next_permutation(order.begin(), order.end())) least = std::min(least, sumFor(pairs, order, levelled));
  return least - given;
}

/// Points a few units apart, measured with noise, in a station that is turned.
std::vector<FitPair> randomPairs(std::mt19937_64& random, std::size_t count, double size, double noise, bool levelled) {
  const Eigen::Vector3d turn(levelled ? 0.0 : 0.7, levelled ? 0.0 : -0.4, uniform(random, -3.0, 3.0));
  Eigen::Matrix3d rotation = Eigen::Matrix3d::Identity();
  rotation = Eigen::AngleAxisd(turn.norm(), turn.normalized()).toRotationMatrix();
  std::vector<FitPair> pairs;
  for (std::size_t p = 0; p < count; ++p) {
    const Eigen::Vector3d to(uniform(random, 0.0, size), uniform(random, 0.0, size), uniform(random, 0.0, size / 4.0));
    const Eigen::Vector3d error(normal(random), normal(random), normal(random));
    pairs.push_back({rotation * to + noise * error, to, uniform(random, 0.5, 2.0)});
  }
  return pairs;
}

TEST(NextNaming, IsTheBestOfAllWays) {
  std::mt19937_64 random(8);
  int found = 0;
  for (int round = 0; round < 300; ++round) {
    const bool levelled = round % 2 == 1;
    const std::size_t count = 2 + static_cast<std::size_t>(round) % 6;
    const auto pairs = randomPairs(random, count, round % 3 == 0 ? 40.0 : 10.0, round % 5 == 0 ? 3.0 : 0.3, levelled);
    const double wanted = plainMargin(pairs, levelled);
    const auto next = nextNaming(pairs, levelled);
    ASSERT_EQ(next.has_value(), wanted <= largestMargin) << wanted;
    if (!next) continue;
    ++found;
    EXPECT_TRUE(next->complete);
    EXPECT_NEAR(next->margin, wanted, marginWithin * std::max(1.0, std::abs(wanted)));
  }
  EXPECT_GT(found, 200);
}

TEST(NextNaming, IsTheOneThatFitsBetterWhenTwoNamesWereExchanged) {
  std::mt19937_64 random(9);
  auto pairs = randomPairs(random, 9, 12.0, 0.05, false);
  std::swap(pairs[2].to, pairs[5].to);
  const auto next = nextNaming(pairs, false);
  ASSERT_TRUE(next);
  EXPECT_LT(next->margin, 0.0);
  EXPECT_EQ(next->takenFor, (std::vector<std::size_t>{0, 1, 5, 3, 4, 2, 6, 7, 8}));
}

TEST(NextNaming, IsAsFarAsTheMirrorImageOfASymmetricLayout) {
  std::vector<FitPair> pairs;
  for (const auto& corner :
       {Eigen::Vector3d(0, 0, 0), Eigen::Vector3d(8, 0, 0), Eigen::Vector3d(8, 5, 0), Eigen::Vector3d(0, 5, 0)}) {
    pairs.push_back({corner, corner, 1e6});
  }
  const auto next = nextNaming(pairs, false);
  ASSERT_TRUE(next);
  EXPECT_NEAR(next->margin, 0.0, 1e-6);
  EXPECT_EQ(next->takenFor[0] == 0, false);
}

TEST(NextNaming, OfPointsThatAreFarApartIsNone) {
  std::mt19937_64 random(10);
  auto pairs = randomPairs(random, 12, 30.0, 0.001, false);
  for (FitPair& pair : pairs) pair.weight = 1e6;
  EXPECT_FALSE(nextNaming(pairs, false));
}

TEST(NextNaming, IsNoneWhereEverythingFitsBadly) {
  std::mt19937_64 random(11);
  auto pairs = randomPairs(random, 8, 20.0, 8.0, false);
  for (FitPair& pair : pairs) pair.weight = 1e4;
  EXPECT_FALSE(nextNaming(pairs, false));
}

/// Targets on a line, so that neighbours are the cheapest to exchange.
std::vector<FitPair> inALine(std::size_t count) {
  std::vector<FitPair> pairs;
  for (std::size_t p = 0; p < count; ++p) {
    const Eigen::Vector3d place(static_cast<double>(p * p) / 1000.0, p % 2 == 0 ? 0.0 : 3.0,
                                0.01 * static_cast<double>(p % 7));
    pairs.push_back({place, place, 1.0});
  }
  return pairs;
}

TEST(NextNaming, OfMoreTargetsThanCanBeSearchedIsTheBestExchangeAndToldAsCutOff) {
  const auto next = nextNaming(inALine(600), false);
  ASSERT_TRUE(next);
  EXPECT_FALSE(next->complete);
  EXPECT_EQ(next->takenFor[0], 2u) << "the first two of one row lie the nearest together";
  EXPECT_EQ(next->takenFor[2], 0u);
}

TEST(NextNaming, OfThousandsOfTargetsIsNotSearched) {
  const auto next = nextNaming(inALine(3000), false);
  ASSERT_TRUE(next);
  EXPECT_FALSE(next->complete);
}

TEST(NextNaming, OfTwentyTargetsInAHallIsFoundWithoutLookingAtAllWays) {
  std::mt19937_64 random(12);
  for (const double weight : {1.0, 100.0, 1e6}) {
    auto pairs = randomPairs(random, 20, 30.0, 0.002, false);
    for (FitPair& pair : pairs) pair.weight = weight;
    const auto next = nextNaming(pairs, false);
    EXPECT_TRUE(!next || next->complete) << weight;
  }
}

}  // namespace
}  // namespace tiepoint::workbench::analysis::testing
