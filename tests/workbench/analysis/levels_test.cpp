#include "workbench/analysis/levels.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tiepoint::workbench::analysis {
namespace {

TEST(Levels, AreTheTabulatedOnesForGivenSigmas) {
  const TestLevels levels = testLevels(0.001, 0.8, VarianceScale::aPriori, 30);
  EXPECT_NEAR(std::sqrt(levels.noncentralityAxis), 4.132, 5e-4);
  EXPECT_NEAR(levels.noncentralityPoint, 21.545, 5e-4);
  EXPECT_NEAR(*levels.criticalAxis, 3.2905, 5e-5);
  EXPECT_NEAR(*levels.criticalPoint, 16.2662, 5e-5);
}

TEST(Levels, AreTausWithTheEstimatedVariance) {
  // Of a redundancy of 10: sqrt(10) t / sqrt(9 + t^2) with Student's t = 2.2622 of 9 degrees.
  EXPECT_NEAR(*testLevels(0.05, 0.8, VarianceScale::aPosteriori, 10).criticalAxis, 1.9039, 5e-5);
  EXPECT_NEAR(*testLevels(0.05, 0.8, VarianceScale::aPosteriori, 100000).criticalAxis, 1.96, 5e-4);
  EXPECT_NEAR(*testLevels(0.05, 0.8, VarianceScale::aPosteriori, 100000).criticalPoint, 7.8147, 2e-3);
}

TEST(Levels, AreNoneWhereTheMeasurementItselfWouldBeTheVariance) {
  EXPECT_FALSE(testLevels(0.05, 0.8, VarianceScale::aPosteriori, 3).criticalPoint);
  EXPECT_FALSE(testLevels(0.05, 0.8, VarianceScale::aPosteriori, 1).criticalAxis);
  EXPECT_FALSE(testLevels(0.05, 0.8, VarianceScale::aPriori, 0).criticalAxis);
  EXPECT_FALSE(probabilityOf(2.0, VarianceScale::aPosteriori, 3));
}

TEST(Probability, OfTheCriticalStatisticIsTheLevel) {
  for (const VarianceScale scale : {VarianceScale::aPriori, VarianceScale::aPosteriori}) {
    const TestLevels levels = testLevels(0.001, 0.8, scale, 12);
    EXPECT_NEAR(*probabilityOf(*levels.criticalPoint, scale, 12), 0.001, 1e-9);
  }
}

TEST(FamilyLevel, LeavesFivePercentForAllTestsTogether) {
  EXPECT_NEAR(familyAlpha(1), 0.05, 1e-15);
  EXPECT_NEAR(std::pow(1.0 - familyAlpha(200), 200.0), 0.95, 1e-12);
}

TEST(GlobalTest, PassesBetweenTheQuantilesAlone) {
  // 10 degrees: 3.247 and 20.483.
  EXPECT_NEAR(globalTest(9.0, 10).lower, 3.247, 5e-4);
  EXPECT_NEAR(globalTest(9.0, 10).upper, 20.483, 5e-4);
  EXPECT_TRUE(globalTest(9.0, 10).passed);
  EXPECT_FALSE(globalTest(3.2, 10).passed);
  EXPECT_FALSE(globalTest(20.5, 10).passed);
}

}  // namespace
}  // namespace tiepoint::workbench::analysis
