#include "workbench/reading/staged_form.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "files/line_grammar.h"

namespace {

using namespace tiepoint::workbench;

/// What the module makes of a number.
double readByModule(const std::string& text) {
  ZOR::reg::ParsedPoint point;
  EXPECT_TRUE(ZOR::reg::parseLineXYZ(text + " 0 0", point)) << text;
  return point.x;
}

bool sameBits(double a, double b) { return std::memcmp(&a, &b, sizeof a) == 0; }

TEST(StagedNumbers, AreTheShortestWhereThatComesBack) {
  EXPECT_EQ(stagedNumber(1023.417), "1023.417");
  EXPECT_EQ(stagedNumber(-0.45), "-0.45");
  EXPECT_EQ(stagedNumber(0.0), "0");
  EXPECT_EQ(stagedNumber(-0.0), "-0");
  EXPECT_EQ(stagedNumber(4500000.0), "45e5");
  EXPECT_EQ(stagedNumber(1e-9), "1e-9");
  EXPECT_EQ(stagedNumber(0.001), "0.001");
}

TEST(StagedNumbers, ComeBackWhereTheShortestDoesnt) {
  const double values[] = {0.1 + 0.2,          1.0 / 3.0, 2.0 / 3.0, 4500000.1234567890, 1e22, 1e23,
                           9007199254740993.0, 1e200,     1e-200};
  for (const double value : values) EXPECT_TRUE(sameBits(readByModule(stagedNumber(value)), value)) << value;
}

TEST(StagedNumbers, AreNoneForWhatIsNoMeasurement) {
  const double values[] = {std::nan(""), INFINITY, -INFINITY,
                           1.1e200,      -9e-201,  std::numeric_limits<double>::denorm_min()};
  for (const double value : values) EXPECT_EQ(stagedNumber(value), "") << value;
}

TEST(StagedLines, AreWhatTheModuleReads) {
  const SurveyPoint plain{"P 1", 1.5, -2.25, 1e-9, 1.0, 1};
  EXPECT_EQ(stagedLine(plain, false), "P_x0020_1 1.5 -2.25 1e-9\n");
  const SurveyPoint weighted{"Т1", 1.0, 2.0, 3.0, 0.5, 1};
  EXPECT_EQ(stagedLine(weighted, true),
            "\xD2"
            "1 1 2 3 0.5\n");
}

TEST(StagedLines, HaveWeightsWhenAPointHasOne) {
  EXPECT_FALSE(needWeights({{"P1", 0, 0, 0, 1.0, 1}}));
  EXPECT_TRUE(needWeights({{"P1", 0, 0, 0, 1.0, 1}, {"P2", 0, 0, 0, 0.5, 1}}));
}

/// Bits of any double within the range, coordinates more often.
rc::Gen<double> anyMeasurement() {
  const auto exponents = rc::gen::weightedOneOf<std::uint64_t>(
      {{3, rc::gen::inRange<std::uint64_t>(1003, 1053)}, {1, rc::gen::inRange<std::uint64_t>(360, 1686)}});
  return rc::gen::apply(
      [](std::uint64_t bits, std::uint64_t exponent) {
        const std::uint64_t all = (bits & 0x800FFFFFFFFFFFFFull) | (exponent << 52);
        double value = 0.0;
        std::memcpy(&value, &all, sizeof value);
        return value;
      },
      rc::gen::resize(100, rc::gen::arbitrary<std::uint64_t>()), exponents);
}

RC_GTEST_PROP(StagedNumberLaws, ANumberOfUpTo15DigitsComesBackTheSame, ()) {
  for (int i = 0; i < 100; ++i) {
    const auto digits = *rc::gen::inRange<std::int64_t>(-999'999'999'999'999, 1'000'000'000'000'000);
    const int power = *rc::gen::inRange(0, 16);
    const double value = std::strtod((std::to_string(digits) + "e-" + std::to_string(power)).c_str(), nullptr);
    RC_ASSERT(sameBits(readByModule(stagedNumber(value)), value));
  }
}

RC_GTEST_PROP(StagedNumberLaws, NoMeasurementComesBackFartherThanTheDoubleBeside, ()) {
  for (int i = 0; i < 100; ++i) {
    const double value = *anyMeasurement();
    const double read = readByModule(stagedNumber(value));
    RC_ASSERT(read >= std::nextafter(value, -HUGE_VAL));
    RC_ASSERT(read <= std::nextafter(value, HUGE_VAL));
  }
}

TEST(StagedNumbers, OfFullLengthComeBackTheSameInNinetyNineOfAHundred) {
  int different = 0;
  for (int i = 1; i <= 100000; ++i) different += !sameBits(readByModule(stagedNumber(i / 7.0)), i / 7.0);
  EXPECT_LT(different, 1000);
}

}  // namespace
