#include "workbench/rpc/json_text.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <string>

namespace tiepoint::workbench {
namespace {

std::string nested(int levels) {
  return std::string(static_cast<std::size_t>(levels), '[') + std::string(static_cast<std::size_t>(levels), ']');
}

TEST(ParseJson, ReadsMembersInAnyOrderAndWhiteSpace) {
  const Json value = parseJson(" {\"b\" : [1,\t-2.5 , true, null],\n \"a\":\"x\"}\r");
  EXPECT_EQ(value.at("a"), "x");
  EXPECT_EQ(value.at("b").size(), 4u);
}

TEST(ParseJson, RefusesTextThatIsNotJson) {
  for (const char* text : {"", "{", "[1,]", "{\"a\":1,}", "nan", "NaN", "Infinity", "'a'", "{a:1}", "1 2", "// c\n1",
                           "01", "+1", ".5", "1.", "\"\n\"", "tru"}) {
    EXPECT_THROW(parseJson(text), NotJson) << text;
  }
}

TEST(ParseJson, RefusesBytesThatAreNotUtf8) {
  EXPECT_THROW(parseJson("\"\xFF\""), NotJson);
  EXPECT_THROW(parseJson("\"\xED\xA0\x80\""), NotJson);
  EXPECT_THROW(parseJson("\"\xC0\x80\""), NotJson);
}

TEST(ParseJson, RefusesALoneSurrogate) { EXPECT_THROW(parseJson(R"("\ud800")"), NotJson); }

TEST(ParseJson, RefusesAZeroByteEvenBehindAWholeValue) {
  EXPECT_THROW(parseJson(std::string("1\0", 2)), NotJson);
  EXPECT_THROW(parseJson(std::string("{}\0{}", 5)), NotJson);
}

TEST(ParseJson, RefusesTwoMembersOfOneName) {
  EXPECT_THROW(parseJson(R"({"a":1,"a":1})"), NotJson);
  EXPECT_THROW(parseJson(R"([{"b":{"a":1,"\u0061":2}}])"), NotJson);
}

TEST(ParseJson, AllowsOneNameInSeveralObjects) {
  EXPECT_NO_THROW(parseJson(R"({"a":{"a":{"a":1},"b":{"a":1}},"b":[{"a":1},{"a":1}]})"));
}

TEST(ParseJson, ReadsANumberBeyondTheRangeOfDoublesAsAValueThatNothingTakes) {
  EXPECT_EQ(parseJson("1e999").dump(), "[[]]");
  EXPECT_EQ(parseJson(R"({"a":[1e308,-1e999,1E+400],"1e999":"\"1e999","b":1e-999})").dump(),
            R"({"1e999":"\"1e999","a":[1e+308,[[]],[[]]],"b":0.0})");
  EXPECT_EQ(parseJson(std::string(400, '9')).dump(), "[[]]");
}

TEST(ParseJson, RefusesWhatIsNoJsonBesideANumberThatIsTooGreat) {
  for (const char* text :
       {"[1e999", "[1e999,]", "1e9991e999", "[1e999,01e999]", "[1e999,1.e999]", "1e999\"", "{\"a\":1e999,\"a\":1}"}) {
    EXPECT_THROW(parseJson(text), NotJson) << text;
  }
}

TEST(ParseJson, GoesAsDeepAsItSays) {
  EXPECT_NO_THROW(parseJson(nested(deepestNesting)));
  EXPECT_THROW(parseJson(nested(deepestNesting + 1)), TooDeep);
}

TEST(ParseJson, SurvivesNestingOfAnyDepth) {
  EXPECT_THROW(parseJson(nested(5000000)), TooDeep);
  EXPECT_THROW(parseJson(std::string(5000000, '[')), TooDeep);
  std::string objects;
  for (int i = 0; i < 1000000; ++i) objects += "{\"a\":";
  EXPECT_THROW(parseJson(objects), TooDeep);
}

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

RC_GTEST_PROP(JsonTextLaw, EveryFiniteDoubleReadsBackAsItself, (std::uint64_t bits)) {
  double value = 0.0;
  std::memcpy(&value, &bits, sizeof value);
  RC_PRE(std::isfinite(value));
  const auto back = parseJson(writeJson(value)).get<double>();
  RC_ASSERT(std::memcmp(&back, &value, sizeof value) == 0);
}

RC_GTEST_PROP(JsonTextLaw, ParsingNeverFailsInAnotherWay, (const std::string& text)) {
  try {
    parseJson(text);
  } catch (const NotJson&) {
  } catch (const TooDeep&) {
  }
}

}  // namespace
}  // namespace tiepoint::workbench
