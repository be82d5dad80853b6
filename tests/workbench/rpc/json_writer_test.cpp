#include "workbench/rpc/json_writer.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <string>

#include "workbench/rpc/json_parser.h"

namespace tiepoint::workbench {
namespace {

TEST(WriteJson, WritesOnOneLineWithoutBlanksInTheOrderOfEntry) {
  OrderedJson object = OrderedJson::object();
  addMember(object, "z", OrderedJson::array({1, true, nullptr, OrderedJson::array(), OrderedJson::object()}));
  addMember(object, "a", "x");
  EXPECT_EQ(writeJson(object), R"({"z":[1,true,null,[],{}],"a":"x"})");
}

TEST(WriteJson, WritesDoublesWithTheFewestDigits) {
  EXPECT_EQ(writeJson(0.1), "0.1");
  EXPECT_EQ(writeJson(1.0 / 3.0), "0.3333333333333333");
  EXPECT_EQ(writeJson(4.1752050594835e+78), "4.1752050594835e+78");
  EXPECT_EQ(writeJson(5e-324), "5e-324");
  EXPECT_EQ(writeJson(1.7976931348623157e308), "1.7976931348623157e+308");
}

TEST(WriteJson, KeepsADoubleApartFromAWholeNumber) {
  EXPECT_EQ(writeJson(3.0), "3.0");
  EXPECT_EQ(writeJson(3), "3");
  EXPECT_EQ(writeJson(1e22), "1e+22");
}

TEST(WriteJson, KeepsTheSignOfZero) {
  EXPECT_EQ(writeJson(-0.0), "-0.0");
  EXPECT_EQ(writeJson(0.0), "0.0");
  EXPECT_TRUE(std::signbit(parseJson("-0.0").get<double>()));
}

TEST(WriteJson, WritesAllOf64Bits) {
  EXPECT_EQ(writeJson(std::numeric_limits<std::uint64_t>::max()), "18446744073709551615");
}

TEST(WriteJson, EscapesWhatMustBe) {
  EXPECT_EQ(writeJson(std::string("\"\\\b\f\n\r\t\x01\0/\x7F", 11)), "\"\\\"\\\\\\b\\f\\n\\r\\t\\u0001\\u0000/\x7F\"");
}

TEST(WriteJson, WritesOtherCharactersAsTheyAre) {
  EXPECT_EQ(writeJson("\xD0\x96\xF0\x9F\x98\x80"), "\"\xD0\x96\xF0\x9F\x98\x80\"");
}

TEST(WriteJson, ReplacesBytesThatAreNotUtf8) { EXPECT_EQ(writeJson("a\xFFz"), "\"a\xEF\xBF\xBDz\""); }

TEST(AddMember, TakesTimeInProportionToTheMembers) {
  // Looking for the name before each of a million insertions would not end in the time of a test.
  OrderedJson object = OrderedJson::object();
  for (int i = 0; i < 1000000; ++i) addMember(object, std::to_string(i), i);
  EXPECT_EQ(object.size(), 1000000u);
}

RC_GTEST_PROP(WriteJsonLaw, EveryFiniteDoubleReadsBackAsItself, (std::uint64_t bits)) {
  double value = 0.0;
  std::memcpy(&value, &bits, sizeof value);
  RC_PRE(std::isfinite(value));
  const auto back = parseJson(writeJson(value)).get<double>();
  RC_ASSERT(back == value);
  RC_ASSERT(std::signbit(back) == std::signbit(value));
}

}  // namespace
}  // namespace tiepoint::workbench
