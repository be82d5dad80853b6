#include "workbench/report/reading_text.h"

#include <gtest/gtest.h>

namespace tiepoint::workbench {
namespace {

const std::vector<ColumnRole> nameAndPlace{ColumnRole::name, ColumnRole::x, ColumnRole::y, ColumnRole::z};

FileReading plainReading() {
  FileReading reading;
  reading.encoding = TextEncoding::utf8;
  reading.lines.separator = Separator::semicolon;
  reading.lines.columns.roles = nameAndPlace;
  return reading;
}

TEST(ReadingLine, SaysEncodingSeparatorAndColumns) {
  EXPECT_EQ(readingLine(plainReading()), "UTF-8, semicolons; columns name,x,y,z");
}

TEST(ReadingLine, SaysWhatElseWasMet) {
  FileReading reading = plainReading();
  reading.hasMark = true;
  reading.lines.decimal = DecimalMark::comma;
  reading.header = {"Punkt", "Ost", "Nord", "H\xC3\xB6he"};
  reading.unit = LengthUnit::usSurveyFoot;
  reading.commentCount = 1;
  reading.blankCount = 2;
  EXPECT_EQ(readingLine(reading),
            "UTF-8 with a byte-order mark, semicolons, decimal comma; columns name,x,y,z; header \"Punkt\", \"Ost\", "
            "\"Nord\", \"H\xC3\xB6he\"; usft converted to m; 1 comment skipped; 2 blank lines skipped");
}

TEST(ReadingLine, SaysThatTheHeaderStandsInAComment) {
  FileReading reading = plainReading();
  reading.header = {"x", "y", "z"};
  reading.headerIsComment = true;
  EXPECT_EQ(readingLine(reading), "UTF-8, semicolons; columns name,x,y,z; header in a comment \"x\", \"y\", \"z\"");
}

TEST(ReadingLine, DefusesWhatSteersATerminal) {
  FileReading reading = plainReading();
  reading.header = {"a\x1B[2J"};
  EXPECT_EQ(readingLine(reading).find('\x1B'), std::string::npos);
}

TEST(ColumnsText, IsWhatTheOptionTakes) {
  EXPECT_EQ(columnsText({{ColumnRole::skipped, ColumnRole::name, ColumnRole::y, ColumnRole::x, ColumnRole::z,
                          ColumnRole::weight},
                         false}),
            "-,name,y,x,z,w");
  EXPECT_EQ(columnsText({}), "");
}

TEST(SeparatorText, NamesEach) {
  EXPECT_EQ(separatorText(Separator::tab), "tabs");
  EXPECT_EQ(separatorText(Separator::comma), "commas");
  EXPECT_EQ(separatorText(Separator::blank), "blanks");
  EXPECT_EQ(separatorText(Separator::mixed), "mixed separators");
}

ReadingFault fault(ReadingFaultKind kind) {
  ReadingFault made;
  made.kind = kind;
  made.line = 7;
  made.column = 3;
  made.found = "1;2";
  made.expected = "4";
  made.role = ColumnRole::y;
  return made;
}

TEST(ReadingFaultText, SaysWhereAndWhat) {
  const struct {
    ReadingFaultKind kind;
    const char* text;
  } rows[] = {
      {ReadingFaultKind::emptyName, "line 7: the name in column 3 is empty; write ? for a point without a name"},
      {ReadingFaultKind::separatorInName, "line 7: the name \"1;2\" holds a separator; put it in quotation marks"},
      {ReadingFaultKind::notANumber, "line 7: \"1;2\" in column 3 (y) isn't a number"},
      {ReadingFaultKind::thousandsSeparator,
       "line 7: \"1;2\" in column 3 (y) may have a mark between thousands; write it without"},
      {ReadingFaultKind::notFinite, "line 7: \"1;2\" in column 3 (y) isn't a finite number"},
      {ReadingFaultKind::outOfRange, "line 7: \"1;2\" in column 3 (y) is out of range"},
      {ReadingFaultKind::openQuote, "line 7: the quotation mark in column 3 isn't closed"},
      {ReadingFaultKind::textAfterQuote, "line 7: text follows the closing quotation mark in column 3"},
      {ReadingFaultKind::zeroByte, "line 7 holds a zero byte"},
      {ReadingFaultKind::badEncoding,
       "line 7: the name \"1;2\" isn't text in the file's encoding; name another with --encoding"},
      {ReadingFaultKind::lineTooLong, "line 7 is longer than 1048576 bytes, so this isn't a survey file"},
  };
  for (const auto& row : rows) EXPECT_EQ(readingFaultText(fault(row.kind), optionOf), row.text);
}

TEST(ReadingFaultText, CountsTheFields) {
  ReadingFault few = fault(ReadingFaultKind::fieldCount);
  few.found = "5";
  EXPECT_EQ(readingFaultText(few, optionOf), "line 7 has 5 fields, expected 4");
  few.found = "1";
  EXPECT_EQ(readingFaultText(few, optionOf), "line 7 has 1 field, expected 4");
}

TEST(ReadingFaultText, NamesTheOptionAsTheFaceDoes) {
  EXPECT_EQ(readingFaultText(fault(ReadingFaultKind::badEncoding), fieldKey),
            "line 7: the name \"1;2\" isn't text in the file's encoding; name another with encoding");
}

TEST(ColumnsFaultText, SaysWhichColumnIsMissingOrUnclear) {
  const struct {
    ColumnsTrouble trouble;
    const char* text;
  } rows[] = {
      {ColumnsTrouble::unknownWords, "none of \"a\", \"b\" is known as a column"},
      {ColumnsTrouble::missingX, "none of \"a\", \"b\" is x or easting"},
      {ColumnsTrouble::missingY, "none of \"a\", \"b\" is y or northing"},
      {ColumnsTrouble::missingZ, "none of \"a\", \"b\" is z or a height"},
      {ColumnsTrouble::doubled, "\"a\", \"b\" name the same column"},
      {ColumnsTrouble::nameUnclear, "no column is known as the name, and \"a\", \"b\" might be it"},
      {ColumnsTrouble::unknownWord, "\"a\", \"b\" is no column; choose from name, x, y, z, e, n, h, w and - to skip"},
      {ColumnsTrouble::badNumber, "\"a\", \"b\" must name a column of its own, by its number from 1 on or its header"},
      {ColumnsTrouble::wordNotInHeader, "the file has no column \"a\", \"b\""},
  };
  for (const auto& row : rows) EXPECT_EQ(columnsFaultText({row.trouble, {"a", "b"}}), row.text);
  EXPECT_EQ(columnsFaultText({ColumnsTrouble::doubled, {"X (Hochwert)"}}),
            "\"X (Hochwert)\" names two different columns");
}

}  // namespace
}  // namespace tiepoint::workbench
