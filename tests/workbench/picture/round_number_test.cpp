#include "workbench/picture/round_number.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <cmath>

namespace tiepoint::workbench::picture {
namespace {

TEST(RoundNumber, IsOneTwoOrFiveTimesAPowerOfTen) {
  EXPECT_EQ(roundNumberUpTo(1.0), 1.0);
  EXPECT_EQ(roundNumberUpTo(1.99), 1.0);
  EXPECT_EQ(roundNumberUpTo(2.0), 2.0);
  EXPECT_EQ(roundNumberUpTo(4.99), 2.0);
  EXPECT_EQ(roundNumberUpTo(5.0), 5.0);
  EXPECT_EQ(roundNumberUpTo(9.99), 5.0);
  EXPECT_EQ(roundNumberUpTo(10.0), 10.0);
  EXPECT_EQ(roundNumberUpTo(0.3), 0.2);
  EXPECT_EQ(roundNumberUpTo(0.05), 0.05);
  EXPECT_EQ(roundNumberUpTo(0.0499), 0.02);
  EXPECT_EQ(roundNumberUpTo(123456.0), 100000.0);
  EXPECT_EQ(roundNumberUpTo(1000.0), 1000.0);
  EXPECT_EQ(roundNumberUpTo(std::nextafter(1000.0, 0.0)), 500.0);
}

TEST(RoundNumber, ReachesToTheEndsOfTheNumbers) {
  EXPECT_EQ(roundNumberUpTo(1.7e308), 1e308);
  EXPECT_EQ(roundNumberUpTo(3e-310), 2e-310);
}

TEST(RoundNumber, IsWrittenWithTheDigitsThatItHas) {
  EXPECT_EQ(plainNumber(500.0), "500");
  EXPECT_EQ(plainNumber(0.002), "0.002");
  EXPECT_EQ(plainNumber(200000.0), "200000");
  EXPECT_EQ(plainNumber(1.0), "1");
  EXPECT_EQ(plainNumber(0.5), "0.5");
  EXPECT_EQ(plainNumber(5e7), "50000000");
  EXPECT_EQ(plainNumber(2e-7), "0.0000002");
  EXPECT_EQ(plainNumber(5e15), "5e+15");
  EXPECT_EQ(plainNumber(2e-12), "2e-12");
}

RC_GTEST_PROP(RoundNumber, IsNeverAboveItsLimitNorBelowTwoFifthsOfIt, (int exponent, unsigned short digits)) {
  const double limit = (1.0 + digits) * std::pow(10.0, exponent % 200);
  const double number = roundNumberUpTo(limit);
  RC_ASSERT(number <= limit);
  RC_ASSERT(number > limit * 0.399999);
}

}  // namespace
}  // namespace tiepoint::workbench::picture
