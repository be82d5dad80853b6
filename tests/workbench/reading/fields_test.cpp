#include "workbench/reading/fields.h"

#include <gmock/gmock.h>

namespace {

using namespace tiepoint::workbench;
using Texts = std::vector<std::string>;

Texts fieldsOf(const std::string& line, Separator separator, QuoteTrouble expected = QuoteTrouble::none) {
  FieldList fields;
  EXPECT_EQ(splitFields(line, separator, fields), expected) << line;
  Texts texts;
  for (std::size_t i = 0; i < fields.size(); ++i) texts.push_back(fields[i].text);
  return texts;
}

struct Row {
  const char* line;
  Separator separator;
  Texts fields;
};

TEST(Fields, AreWhatStandsBetweenSeparators) {
  const Row rows[] = {
      {"P1 1 2 3", Separator::blank, {"P1", "1", "2", "3"}},
      {"  P1\t 1   2 3 ", Separator::blank, {"P1", "1", "2", "3"}},
      {"P1,1,2,3", Separator::comma, {"P1", "1", "2", "3"}},
      {" P1 , 1 , 2,3 ", Separator::comma, {"P1", "1", "2", "3"}},
      {"P1,,2,", Separator::comma, {"P1", "", "2", ""}},
      {",1", Separator::comma, {"", "1"}},
      {"P 1;1,5;2", Separator::semicolon, {"P 1", "1,5", "2"}},
      {"P 1\t1\t\t2", Separator::tab, {"P 1", "1", "", "2"}},
      {"P1\t1\t", Separator::tab, {"P1", "1", ""}},
      {"\tP1", Separator::tab, {"", "P1"}},
      {"P1; 1 ,2\t3 4", Separator::mixed, {"P1", "1", "2", "3", "4"}},
      {"P1;;1 , ,2", Separator::mixed, {"P1", "", "1", "", "2"}},
      {"P1 1,", Separator::mixed, {"P1", "1", ""}},
      {";P1", Separator::mixed, {"", "P1"}},
      {"", Separator::blank, {}},
      {"   ", Separator::mixed, {}},
      {"", Separator::comma, {""}},
  };
  for (const Row& row : rows) EXPECT_EQ(fieldsOf(row.line, row.separator), row.fields) << row.line;
}

TEST(Fields, MayStandInQuotes) {
  const Row rows[] = {
      {R"("P 1" 1 2)", Separator::blank, {"P 1", "1", "2"}},
      {R"("a,b",1)", Separator::comma, {"a,b", "1"}},
      {R"( "a" , 1)", Separator::comma, {"a", "1"}},
      {R"("say ""so""";1)", Separator::semicolon, {R"(say "so")", "1"}},
      {R"("";1)", Separator::semicolon, {"", "1"}},
      {"\"a\tb\"\t1", Separator::tab, {"a\tb", "1"}},
      {R"("a;b" 1)", Separator::mixed, {"a;b", "1"}},
      {R"(12" 1)", Separator::blank, {R"(12")", "1"}},
  };
  for (const Row& row : rows) EXPECT_EQ(fieldsOf(row.line, row.separator), row.fields) << row.line;
}

TEST(Fields, EndAtAQuoteThatNobodyCloses) {
  EXPECT_EQ(fieldsOf(R"(a,"b,c)", Separator::comma, QuoteTrouble::openQuote), (Texts{"a", "b,c"}));
  EXPECT_EQ(fieldsOf(R"(a,"b"")", Separator::comma, QuoteTrouble::openQuote), (Texts{"a", "b\""}));
}

TEST(Fields, HoldNothingBehindAClosingQuote) {
  EXPECT_EQ(fieldsOf(R"(a,"b"c,d)", Separator::comma, QuoteTrouble::textAfterQuote), (Texts{"a", "b"}));
  EXPECT_EQ(fieldsOf(R"("b"c d)", Separator::blank, QuoteTrouble::textAfterQuote), (Texts{"b"}));
}

TEST(Fields, CountUpToTheLastThatHoldsSomething) {
  FieldList fields;
  splitFields("a;;b;;", Separator::semicolon, fields);
  EXPECT_EQ(fields.size(), 5u);
  EXPECT_EQ(fields.sizeWithoutEmptyEnd(), 3u);
}

TEST(Fields, OfALineKeepNothingOfTheLineBefore) {
  FieldList fields;
  splitFields("\"long name\";1;2;3", Separator::semicolon, fields);
  splitFields("a;1", Separator::semicolon, fields);
  ASSERT_EQ(fields.size(), 2u);
  EXPECT_EQ(fields[0].text, "a");
  EXPECT_FALSE(fields[0].isQuoted);
}

}  // namespace
