#include "workbench/report/reading_refusal_text.h"

#include <gtest/gtest.h>

namespace tiepoint::workbench {
namespace {

using Roles = std::vector<ColumnRole>;
constexpr auto name = ColumnRole::name;
constexpr auto x = ColumnRole::x;
constexpr auto y = ColumnRole::y;
constexpr auto z = ColumnRole::z;
constexpr auto w = ColumnRole::weight;

ReadingOutcome outcome(ReadStatus status) {
  ReadingOutcome made;
  made.status = status;
  return made;
}

CandidateReading candidate(const Roles& roles, DecimalMark decimal = DecimalMark::point) {
  CandidateReading made;
  made.lines.separator = Separator::comma;
  made.lines.decimal = decimal;
  made.lines.columns.roles = roles;
  return made;
}

std::string text(const ReadingOutcome& of) { return readingRefusalText(of, optionOf); }

TEST(ReadingRefusalText, OffersTheReadingsOfAmbiguousColumns) {
  ReadingOutcome ambiguous = outcome(ReadStatus::ambiguousColumns);
  ambiguous.candidates = {candidate({name, x, y, z}), candidate({x, y, z, w})};
  EXPECT_EQ(text(ambiguous),
            "ambiguous: it reads as name,x,y,z divided at commas, x,y,z,w divided at commas; say which is meant, such "
            "as --columns name,x,y,z");
}

TEST(ReadingRefusalText, AsksForTheMarkWhereTheColumnsAreClear) {
  ReadingOutcome ambiguous = outcome(ReadStatus::ambiguousColumns);
  ambiguous.candidates = {candidate({x, y, z}), candidate({x, y, z}, DecimalMark::comma)};
  EXPECT_EQ(text(ambiguous),
            "ambiguous: it reads as x,y,z divided at commas, x,y,z divided at commas with decimal commas; say which is "
            "meant, such as --decimal point or --decimal comma");
}

TEST(ReadingRefusalText, AsksForTheMarkWhereCommasMayDivideThousands) {
  EXPECT_EQ(text(outcome(ReadStatus::ambiguousCommas)),
            "ambiguous: every decimal comma could stand between thousands, as in 1,234; say --decimal comma if it "
            "doesn't");
}

TEST(ReadingRefusalText, ShowsANameInEachEncoding) {
  ReadingOutcome ambiguous = outcome(ReadStatus::ambiguousEncoding);
  ambiguous.encodings = {TextEncoding::windows1251, TextEncoding::windows1252};
  ambiguous.samples = {"Т1", "Ò1"};
  EXPECT_EQ(text(ambiguous),
            "ambiguous: its names read as windows-1251 (\"Т1\"), windows-1252 (\"Ò1\"); say which is meant, such as "
            "--encoding windows-1251");
}

TEST(ReadingRefusalText, TellsOfAMarkThatContradicts) {
  EXPECT_EQ(text(outcome(ReadStatus::contradictedEncoding)),
            "its byte-order mark says another encoding; leave --encoding out");
}

TEST(ReadingRefusalText, ListsTheLinesAndCountsTheRest) {
  ReadingOutcome faulty = outcome(ReadStatus::faulty);
  faulty.faults.resize(2);
  faulty.faults[0].kind = ReadingFaultKind::zeroByte;
  faulty.faults[0].line = 3;
  faulty.faults[1].kind = ReadingFaultKind::openQuote;
  faulty.faults[1].line = 9;
  faulty.faults[1].column = 1;
  faulty.faultCount = 2;
  EXPECT_EQ(text(faulty),
            "2 lines can't be read: line 3 holds a zero byte; line 9: the quotation mark in column 1 isn't closed");
  faulty.faultCount = 40;
  EXPECT_EQ(text(faulty),
            "40 lines can't be read: line 3 holds a zero byte; line 9: the quotation mark in column 1 isn't closed; "
            "and 38 more");
}

TEST(ReadingRefusalText, SaysWhyNoReadingWasFound) {
  ReadingOutcome none = outcome(ReadStatus::noReading);
  EXPECT_EQ(text(none), "no reference points found");
  none.none.kind = NoReading::Kind::binary;
  none.none.line = 1;
  EXPECT_EQ(text(none), "line 1 holds a zero byte, so the file isn't plain text");
  none.none.kind = NoReading::Kind::tooFewFields;
  none.none.count = 2;
  EXPECT_EQ(text(none), "no reference points found: line 1 has 2 fields, and a point needs 3 at least");
  none.none.kind = NoReading::Kind::tooManyFields;
  none.none.count = 9;
  EXPECT_EQ(text(none),
            "line 1 has 9 fields, more than is known without a header; say what the columns are: --columns name,x,y,z, "
            "with - for those to be skipped");
  none.none.kind = NoReading::Kind::columns;
  none.none.columns = {ColumnsTrouble::missingZ, {"a", "b"}};
  EXPECT_EQ(text(none),
            "the header in line 1: none of \"a\", \"b\" is z or a height; say what the columns are: --columns "
            "name,x,y,z, with - for those to be skipped");
}

TEST(ReadingRefusalText, SpeaksOfParametersWhereTheFaceHasNoOptions) {
  EXPECT_EQ(readingRefusalText(outcome(ReadStatus::contradictedEncoding), fieldKey),
            "its byte-order mark says another encoding; leave encoding out");
}

TEST(ReadingRefusalText, TellsOfAnEmptyFile) { EXPECT_EQ(text(outcome(ReadStatus::empty)), "the file is empty"); }

}  // namespace
}  // namespace tiepoint::workbench
