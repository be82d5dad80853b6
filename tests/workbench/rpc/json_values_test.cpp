#include "workbench/rpc/json_values.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <string>

#include "workbench/rpc/json_parser.h"
#include "workbench/rpc/json_writer.h"

namespace tiepoint::workbench {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

template <class Convert>
std::string complaint(Convert convert, const std::string& text) {
  try {
    convert(parseJson(text));
  } catch (const BadValue& error) {
    return error.what();
  }
  return "no complaint";
}

TEST(JsonValues, TakeWholeNumbersUpToTheGreatestThatADoubleCounts) {
  EXPECT_EQ(wholeFromJson(parseJson("0")), 0u);
  EXPECT_EQ(wholeFromJson(parseJson("9007199254740991")), 9007199254740991u);
}

TEST(JsonValues, TakeWholeNumbersWithAPointOrAnExponent) {
  EXPECT_EQ(wholeFromJson(parseJson("3.0")), 3u);
  EXPECT_EQ(wholeFromJson(parseJson("1e3")), 1000u);
  EXPECT_EQ(wholeFromJson(parseJson("9007199254740991.0")), 9007199254740991u);
  EXPECT_EQ(wholeFromJson(parseJson("-0.0")), 0u);
}

TEST(JsonValues, RefuseWhatIsNoWholeNumberInRange) {
  for (const char* text : {"-1", "9007199254740992", "18446744073709551616", "1e300", "0.5", "-1.0", "\"1\"", "true",
                           "null", "[]", "{}"}) {
    EXPECT_EQ(complaint(wholeFromJson, text), "must be a whole number from 0 to 9007199254740991") << text;
  }
}

TEST(JsonValues, TakeAnyNumberForADouble) {
  EXPECT_EQ(doubleFromJson(parseJson("1")), 1.0);
  EXPECT_EQ(doubleFromJson(parseJson("-2.5e-3")), -0.0025);
  EXPECT_EQ(doubleFromJson(parseJson("9007199254740993")), 9007199254740992.0);
}

TEST(JsonValues, TakeTheNamesOfDoublesThatJsonLacks) {
  EXPECT_TRUE(std::isnan(doubleFromJson("nan")));
  EXPECT_EQ(doubleFromJson("inf"), std::numeric_limits<double>::infinity());
  EXPECT_EQ(doubleFromJson("-inf"), -std::numeric_limits<double>::infinity());
}

TEST(JsonValues, RefuseOtherTextForADouble) {
  for (const char* text : {"\"NaN\"", "\"+inf\"", "\"1\"", "\"\"", "true", "null", "[1]"}) {
    EXPECT_EQ(complaint(doubleFromJson, text), "must be a number, \"nan\", \"inf\" or \"-inf\"") << text;
  }
}

TEST(JsonValues, WriteDoublesByValueOrName) {
  EXPECT_EQ(writeJson(toJson(0.1)), "0.1");
  EXPECT_EQ(writeJson(toJson(-0.0)), "-0.0");
  EXPECT_EQ(writeJson(toJson(std::numeric_limits<double>::quiet_NaN())), "\"nan\"");
  EXPECT_EQ(writeJson(toJson(-std::numeric_limits<double>::quiet_NaN())), "\"nan\"");
  EXPECT_EQ(writeJson(toJson(std::numeric_limits<double>::infinity())), "\"inf\"");
  EXPECT_EQ(writeJson(toJson(-std::numeric_limits<double>::infinity())), "\"-inf\"");
}

TEST(JsonValues, TakeOnlyTrueAndFalseForASwitch) {
  EXPECT_TRUE(boolFromJson(true));
  EXPECT_FALSE(boolFromJson(false));
  for (const char* text : {"0", "1", "\"true\"", "null"}) {
    EXPECT_EQ(complaint(boolFromJson, text), "must be true or false") << text;
  }
}

TEST(JsonValues, TakeASetInAnyOrderAndDuplicatesAsOne) {
  EXPECT_THAT(idsFromJson(parseJson("[10,2,2.0,10,0]")), ElementsAre(0u, 2u, 10u));
  EXPECT_THAT(idsFromJson(parseJson("[]")), IsEmpty());
}

TEST(JsonValues, RefuseWhatIsNoArrayOfIds) {
  EXPECT_EQ(complaint(idsFromJson, "{}"), "must be an array of ids");
  EXPECT_EQ(complaint(idsFromJson, "1"), "must be an array of ids");
  EXPECT_EQ(complaint(idsFromJson, "[1,\"2\"]"), "must be a whole number from 0 to 9007199254740991");
}

TEST(JsonValues, TakeNamesIntoWindows1251) {
  EXPECT_EQ(nameFromJson("\xD0\xA2"
                         "1\xC2\x98"),
            "\xD2"
            "1\x98");
  EXPECT_EQ(complaint(nameFromJson, "\"T\\u00e9\""),
            "can't be encoded: the character \"\xC3\xA9\" (U+00E9) isn't in windows-1251");
}

TEST(JsonValues, WriteNamesFromWindows1251) {
  EXPECT_EQ(writeJson(toJson(std::string("\xD2"
                                         "1\x98"))),
            "\"\xD0\xA2"
            "1\xC2\x98\"");
}

TEST(JsonValues, TakePathsAsTheyAre) {
  EXPECT_EQ(pathFromJson("/a/\xE6\x97\xA5.txt"), "/a/\xE6\x97\xA5.txt");
  EXPECT_EQ(complaint(pathFromJson, R"("a\u0000b")"), "must be a path without a zero byte");
  EXPECT_EQ(complaint(pathFromJson, "1"), "must be a string");
}

TEST(JsonValues, TakeAsManyDoublesAsAreAskedFor) {
  EXPECT_THAT(doublesFromJson(parseJson("[1,2.5]"), 2), ElementsAre(1.0, 2.5));
  const auto three = [](const Json& value) { return doublesFromJson(value, 3); };
  EXPECT_EQ(complaint(three, "[1,2]"), "must be an array of 3 numbers");
  EXPECT_EQ(complaint(three, "{}"), "must be an array of numbers");
}

TEST(JsonValues, WriteSetsAscending) {
  EXPECT_EQ(writeJson(toJson(std::set<std::uint64_t>{10, 9, 100})), "[9,10,100]");
}

TEST(JsonValues, WriteMapKeysInNumericOrder) {
  EXPECT_EQ(writeJson(toJson(std::map<std::uint64_t, double>{{100, 1.0}, {20, 2.0}, {3, 0.5}})),
            R"({"3":0.5,"20":2.0,"100":1.0})");
}

TEST(JsonValues, WriteListsInTheirOrder) {
  EXPECT_EQ(writeJson(toJson(std::vector<std::uint64_t>{3, 1, 2})), "[3,1,2]");
  EXPECT_EQ(writeJson(toJson(std::list<ZOR::reg::NamedId>{{5, "b"}, {1, "a"}})),
            R"([{"id":5,"name":"b"},{"id":1,"name":"a"}])");
}

TEST(JsonValues, WriteAReferencePointWithAllItsFields) {
  const ZOR::reg::RefPoint point{7, 1, 3, {0.5, -0.0, 1e9}, 0.25, true, false, true, false, true};
  EXPECT_EQ(writeJson(toJson(point)),
            R"({"id":7,"groupId":1,"commonId":3,"position":[0.5,-0.0,1e+09],"weight":0.25,)"
            R"("included":true,"active":false,"inBase":true,"named":false,"autoNamed":true})");
}

}  // namespace
}  // namespace tiepoint::workbench
