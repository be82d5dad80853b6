#include "workbench/reading/point_line.h"

#include <gtest/gtest.h>

#include "workbench/reading/outcome_text.h"

namespace {

using namespace tiepoint::workbench;
using tiepoint::testing::faultText;

constexpr ColumnRole name = ColumnRole::name;
constexpr ColumnRole x = ColumnRole::x;
constexpr ColumnRole y = ColumnRole::y;
constexpr ColumnRole z = ColumnRole::z;
constexpr ColumnRole weight = ColumnRole::weight;
constexpr ColumnRole skipped = ColumnRole::skipped;

LineReading by(Separator separator, std::vector<ColumnRole> roles = {name, x, y, z}, bool openEnded = false) {
  return {separator, DecimalMark::point, {std::move(roles), openEnded}};
}

std::string readBy(const LineReading& reading, const std::string& line) {
  PointLine reader(reading);
  SurveyPoint point;
  if (const auto fault = reader.read(line, point)) return faultText(*fault);
  std::ostringstream text;
  text << point.name << "|" << point.x << " " << point.y << " " << point.z << " w" << point.w;
  return text.str();
}

struct Row {
  LineReading reading;
  std::string line;
  const char* outcome;
};

void expectAll(const std::vector<Row>& rows) {
  for (const Row& row : rows) EXPECT_EQ(readBy(row.reading, row.line), row.outcome) << row.line;
}

TEST(KindOfALine, IsCommentByItsFirstMark) {
  for (const char* line : {"#", "# a", "  #a", "\t#a", "//", "// a", "%a", "!a", "#;1;2;3"}) {
    EXPECT_EQ(kindOfLine(line, Separator::semicolon), LineKind::comment) << line;
    EXPECT_EQ(kindOfLine(line, Separator::blank), LineKind::comment) << line;
  }
  for (const char* line : {"/ 1 2 3", "a # b", "\"#1\" 1 2 3", "-", "'", "*", "/"}) {
    EXPECT_EQ(kindOfLine(line, Separator::blank), LineKind::text) << line;
  }
}

TEST(KindOfALine, IsCommentBehindASemicolonThatDividesNothing) {
  EXPECT_EQ(kindOfLine(" ;a", Separator::blank), LineKind::comment);
  EXPECT_EQ(kindOfLine(";a", Separator::comma), LineKind::comment);
  EXPECT_EQ(kindOfLine(";a", Separator::tab), LineKind::comment);
  EXPECT_EQ(kindOfLine(";a", Separator::semicolon), LineKind::text);
  EXPECT_EQ(kindOfLine(";a", Separator::mixed), LineKind::text);
}

TEST(KindOfALine, IsBlankWithoutAnythingButSeparators) {
  for (const char* line : {"", " ", "\t", ";;;", " , ; \t", "\f", "\v"}) {
    EXPECT_EQ(kindOfLine(line, Separator::semicolon), LineKind::blank) << line;
    EXPECT_EQ(kindOfLine(line, Separator::blank), LineKind::blank) << line;
  }
  EXPECT_EQ(kindOfLine("\xC2\xA0", Separator::blank), LineKind::text) << "a no-break blank";
}

TEST(PointLine, FillsWhatItsColumnsSay) {
  expectAll({
      {by(Separator::blank), "A 1 2 3", "A|1 2 3 w1"},
      {by(Separator::semicolon, {z, y, x, name}), "3;2;1;A", "A|1 2 3 w1"},
      {by(Separator::tab, {x, y, z}), "1\t2\t3", "?|1 2 3 w1"},
      {by(Separator::comma, {x, y, z, weight}), "1,2,3,0.5", "?|1 2 3 w0.5"},
      {by(Separator::comma, {skipped, name, skipped, x, y, z}), "1,A,,1,2,3", "A|1 2 3 w1"},
      {by(Separator::comma, {name, skipped, x, y, z}), "A,no number,1,2,3", "A|1 2 3 w1"},
      {{Separator::semicolon, DecimalMark::comma, {{x, y, z}, false}}, "1,5;2;3,25", "?|1.5 2 3.25 w1"},
  });
}

TEST(PointLine, KeepsNothingOfTheLineBefore) {
  PointLine reader(by(Separator::comma, {x, y, z}));
  SurveyPoint point{"A", 9.0, 9.0, 9.0, 0.25, 4};
  EXPECT_FALSE(reader.read("1,2,3", point));
  EXPECT_EQ(point.name, "?");
  EXPECT_EQ(point.w, 1.0);
  EXPECT_EQ(point.line, 4u);
}

TEST(PointLine, CountsFieldsAsTheSeparatorLeavesThem) {
  expectAll({
      {by(Separator::semicolon), "A;1;2;3;;;", "A|1 2 3 w1"},
      {by(Separator::semicolon), "A;1;2", "0 count '3' not 4"},
      {by(Separator::semicolon), "A;1;2;3;4", "0 count '5' not 4"},
      {by(Separator::semicolon), "A;1;2;3;;4", "0 count '6' not 4"},
      {by(Separator::semicolon), "A;1;2;", "0.4 no-number"},
      {by(Separator::tab), "A\t1\t\t3", "0.3 no-number"},
      {by(Separator::blank), "A 1 2 3 4", "0 count '5' not 4"},
      {by(Separator::semicolon, {name, x, y, z}, true), "A;1;2;3;4;wall", "A|1 2 3 w1"},
      {by(Separator::semicolon, {name, x, y, z}, true), "A;1;2", "0 count '3' not 4"},
  });
}

// A name with a blank in it makes up for a coordinate that isn't there.
TEST(PointLine, OfAMixtureLeavesNoFieldEmpty) {
  expectAll({
      {by(Separator::mixed), "A 1, 2; 3", "A|1 2 3 w1"},
      {by(Separator::mixed), "P 1;10;20;", "0 count '5' not 4"},
      {by(Separator::mixed), "P 1,10,20,", "0 count '5' not 4"},
      {by(Separator::mixed), "A;;1;2", "0.2 no-number"},
  });
}

TEST(PointLine, OfAMixtureDividesAtNoCommaThatMayBeADecimalMark) {
  expectAll({
      {by(Separator::mixed, {x, y, z}), "1,5;2", "0 count '2' not 3"},
      {by(Separator::mixed, {x, y, z}), "1 -2,5", "0 count '2' not 3"},
      {by(Separator::mixed), "A;100;200,5", "0 count '3' not 4"},
      {by(Separator::mixed, {name, x, y, z, weight}), "A 1,5\t2,5", "0 count '3' not 5"},
      {by(Separator::mixed), "A 1,2,3", "A|1 2 3 w1"},
      {by(Separator::mixed), "A,1 2 3", "A|1 2 3 w1"},
      {by(Separator::mixed, {x, y, z}), "1, 2 3", "?|1 2 3 w1"},
      {by(Separator::mixed, {x, y, z}), "1 ,2 3", "?|1 2 3 w1"},
  });
}

TEST(PointLine, TellsTheFirstFaultFromTheLeft) {
  expectAll({
      {by(Separator::comma), ",x,y,z", "0.1 empty-name"},
      {by(Separator::comma), "\" \",1,2,3", "0.1 empty-name ' '"},
      {by(Separator::comma), "A,x,y,z", "0.2 no-number 'x'"},
      {by(Separator::comma), "A,1,nan,z", "0.3 not-finite 'nan'"},
      {by(Separator::comma), "A,1,2,1e201", "0.4 out-of-range '1e201'"},
      {by(Separator::comma), "A,1,2,1e-201", "0.4 out-of-range '1e-201'"},
      {by(Separator::semicolon), "A;1,234.5;2;3", "0.2 thousands '1,234.5'"},
      {by(Separator::comma), "\"A,1,2,3", "0.1 open-quote 'A,1,2,3'"},
      {by(Separator::comma), "A,\"1\"2,3,4", "0.2 text-after-quote '1'"},
      {by(Separator::blank), "A,B 1 2 3", "0.1 separator-in-name 'A,B'"},
      {by(Separator::blank), "A;B 1 2 3", "0.1 separator-in-name 'A;B'"},
      {by(Separator::blank), "\"A;B\" 1 2 3", "A;B|1 2 3 w1"},
      {by(Separator::tab), "A;B\t1\t2\t3", "A;B|1 2 3 w1"},
      {by(Separator::blank), std::string("A 1 2 3\0", 8), "0 zero-byte"},
  });
}

TEST(PointLine, RemembersEveryDecimalCommaOfItsNumbers) {
  PointLine reader({Separator::semicolon, DecimalMark::comma, {{name, x, y, z, skipped}, false}});
  SurveyPoint point;
  EXPECT_FALSE(reader.read("1,5;1;2;3;4,5", point));
  EXPECT_FALSE(reader.commas().any) << "in a name or a skipped column it is none";
  EXPECT_FALSE(reader.read("A;1,234;2;3;4", point));
  EXPECT_TRUE(reader.commas().any);
  EXPECT_FALSE(reader.commas().certain);
  EXPECT_FALSE(reader.read("A;1,23;2;3;4", point));
  EXPECT_FALSE(reader.read("A;1,234;2;3;4", point));
  EXPECT_TRUE(reader.commas().certain);
}

TEST(Excerpts, AreAtMostSixtyBytesOfWholeCharacters) {
  const std::string sixty(60, 'a');
  EXPECT_EQ(excerpt(sixty), sixty);
  EXPECT_EQ(excerpt(sixty + "b"), sixty + "...");
  const std::string fiftyNine(59, 'a');
  EXPECT_EQ(excerpt(fiftyNine + "ö" + "b"), fiftyNine + "...");
  EXPECT_EQ(excerpt(std::string(57, 'a') + "𝄞b"), std::string(57, 'a') + "...");
  EXPECT_EQ(excerpt(std::string(58, 'a') + "öb"), std::string(58, 'a') + "ö...");
}

}  // namespace
