// The values by which a search for names and an iteration are judged.
#include <gtest/gtest.h>

#include <limits>

#include "workbench/values/iteration_course.h"
#include "workbench/values/naming_limits.h"

namespace tiepoint::workbench {
namespace {

TEST(NamingLimits, LetTwoMeasurementsOfATargetLieTwiceADiscrepancyApart) {
  NamingLimits limits;
  EXPECT_EQ(limits.reach(), 0.0);
  limits.discrepancy = 0.005;
  limits.closeness = 7.0;
  EXPECT_EQ(limits.reach(), 0.01);
}

bool converges(double movement, double criterion) { return IterationCourse{3, 100, movement, criterion}.converged(); }

TEST(ACourse, ConvergesWhereTheLastPassMovedNoTargetByMoreThanTheCriterion) {
  EXPECT_TRUE(converges(0.0, 0.001));
  EXPECT_TRUE(converges(0.001, 0.001));
  EXPECT_FALSE(converges(0.0010000000001, 0.001));
}

TEST(ACourse, DoesNotConvergeByNumbersThatAreNone) {
  constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
  EXPECT_FALSE(converges(notANumber, 0.001));
  EXPECT_FALSE(converges(0.0, notANumber));
  EXPECT_FALSE(converges(std::numeric_limits<double>::infinity(), 0.001));
}

}  // namespace
}  // namespace tiepoint::workbench
