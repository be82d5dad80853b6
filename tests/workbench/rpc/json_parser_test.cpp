#include "workbench/rpc/json_parser.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <string>

namespace tiepoint::workbench {
namespace {

std::string nested(std::size_t levels) { return std::string(levels, '[') + std::string(levels, ']'); }

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

TEST(ParseJson, TakesTimeInProportionToTheText) {
  // Looking at all elements after each of them would not end in the time of a test.
  std::string text = "[{}";
  for (int i = 0; i < 300000; ++i) text += ",{\"a\":1}";
  EXPECT_EQ(parseJson(text + "]").size(), 300001u);
}

RC_GTEST_PROP(ParseJsonLaw, ParsingNeverFailsInAnotherWay, (const std::string& text)) {
  try {
    parseJson(text);
  } catch (const NotJson&) {
  } catch (const TooDeep&) {
  }
}

}  // namespace
}  // namespace tiepoint::workbench
