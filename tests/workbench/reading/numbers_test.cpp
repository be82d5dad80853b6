#include "workbench/reading/numbers.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace tiepoint::workbench;

constexpr auto point = DecimalMark::point;
constexpr auto comma = DecimalMark::comma;

struct GoodRow {
  const char* text;
  DecimalMark mark;
  double value;
};

TEST(Numbers, AreReadAsTheNearestDouble) {
  const GoodRow rows[] = {
      {"1", point, 1.0},
      {"1.", point, 1.0},
      {".5", point, 0.5},
      {"+1.25", point, 1.25},
      {"-4.5e-1", point, -0.45},
      {"1E3", point, 1000.0},
      {"007", point, 7.0},
      {"-0", point, 0.0},
      {"4500000.123456789", point, 4500000.123456789},
      {"0.1000000000000000055511151231257827021181583404541015625", point, 0.1},
      {"12,5", comma, 12.5},
      {"-0,125", comma, -0.125},
      {"1,5e2", comma, 150.0},
      {"17", comma, 17.0},
      {"1234567,891", comma, 1234567.891},
  };
  for (const GoodRow& row : rows) {
    const ReadNumber number = readNumber(row.text, row.mark);
    EXPECT_TRUE(number.isNumber) << row.text;
    EXPECT_EQ(number.value, row.value) << row.text;
  }
}

struct BadRow {
  const char* text;
  DecimalMark mark;
  ReadingFaultKind fault;
};

TEST(Numbers, AreNothingElse) {
  constexpr auto no = ReadingFaultKind::notANumber;
  constexpr auto thousands = ReadingFaultKind::thousandsSeparator;
  const BadRow rows[] = {
      {"", point, no},
      {"-", point, no},
      {".", point, no},
      {"+-1", point, no},
      {"1e", point, no},
      {"1e+", point, no},
      {"1x", point, no},
      {"0x10", point, no},
      {"1.5m", point, no},
      {"1 5", point, no},
      {"1.2.3", point, no},
      {"1,5", point, no},
      {"1.5", comma, no},
      {"1,", comma, no},
      {",5", comma, no},
      {"\xE2\x88\x92"
       "5",
       point, no},
      {"1,234", point, thousands},
      {"1,234.5", point, thousands},
      {"1,234,567.5", point, thousands},
      {"1.234,5", comma, thousands},
      {"1.234", comma, thousands},
      {"1'234.5", point, thousands},
      {"1 234.5", point, thousands},
      {"1 234,5", comma, thousands},
      {"1_234", point, thousands},
      {"1\xC2\xA0"
       "234,5",
       comma, thousands},
      {"1\xA0"
       "234,5",
       comma, thousands},
      {"1.234.567", point, thousands},
      {"-1.234.567", point, thousands},
      {"nan", point, ReadingFaultKind::notFinite},
      {"-Inf", point, ReadingFaultKind::notFinite},
      {"INFINITY", comma, ReadingFaultKind::notFinite},
      {"NaN(0x1)", point, ReadingFaultKind::notFinite},
      {"1e201", point, ReadingFaultKind::outOfRange},
      {"-1e999999999999", point, ReadingFaultKind::outOfRange},
      {"1e-201", point, ReadingFaultKind::outOfRange},
      {"1e-999", point, ReadingFaultKind::outOfRange},
  };
  for (const BadRow& row : rows) {
    const ReadNumber number = readNumber(row.text, row.mark);
    EXPECT_FALSE(number.isNumber) << row.text;
    EXPECT_EQ(number.fault, row.fault) << row.text;
  }
}

TEST(Numbers, WithACommaMayBeThousands) {
  for (const char* text : {"1,234", "-12,345", "999,000", "+1,000"}) {
    EXPECT_TRUE(readNumber(text, comma).couldBeThousands) << text;
  }
  for (const char* text : {"0,234", "1234,567", "1,23", "1,2345", "12", "1,234e0"}) {
    EXPECT_FALSE(readNumber(text, comma).couldBeThousands) << text;
  }
  EXPECT_FALSE(readNumber("1.234", point).couldBeThousands);
}

TEST(Numbers, OfAMillionDigitsAreReadAtOnce) {
  EXPECT_EQ(readNumber("1." + std::string(1000000, '0'), point).value, 1.0);
  EXPECT_FALSE(readNumber(std::string(1000000, '1'), point).isNumber);
}

}  // namespace
