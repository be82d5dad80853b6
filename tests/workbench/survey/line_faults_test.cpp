#include "workbench/survey/line_faults.h"

#include <gtest/gtest.h>

#include "workbench/report/line_fault_text.h"

namespace tiepoint::workbench {
namespace {

struct Case {
  std::string line;
  Layout layout;
  const char* complaint;
};

class LineFaults : public testing::TestWithParam<Case> {};

TEST_P(LineFaults, SaysWhatIsWrong) {
  EXPECT_EQ(lineFaultText(lineFault(GetParam().line, GetParam().layout)), GetParam().complaint);
}

using namespace std::string_literals;

INSTANTIATE_TEST_SUITE_P(
    Lines, LineFaults,
    testing::Values(
        Case{"", Layout::nxyz, "is blank; take it out"}, Case{" \t\r", Layout::xyz, "is blank; take it out"},
        Case{"P1 1 2", Layout::nxyz, "has 3 fields where NXYZ has 4 (name x y z)"},
        Case{"P1", Layout::nxyz, "has 1 field where NXYZ has 4 (name x y z)"},
        Case{"P1 1 2 3 0.5", Layout::nxyz,
             "has 5 fields where NXYZ has 4 (name x y z); it reads as NXYZW (name x y z weight)"},
        Case{"1 2 3", Layout::nxyz, "has 3 fields where NXYZ has 4 (name x y z); it reads as XYZ (x y z)"},
        Case{"P1 1 2 3", Layout::xyzw, "holds \"P1\", which isn't a number; it reads as NXYZ (name x y z)"},
        Case{"P1 1,5 2,5 3,5", Layout::nxyz,
             "has 7 fields where NXYZ has 4 (name x y z); numbers take a decimal point, not a comma"},
        Case{"P1;1,5;2,5;3,5", Layout::nxyz,
             "has 7 fields where NXYZ has 4 (name x y z); numbers take a decimal point, not a comma"},
        Case{"P1 1 2 3e", Layout::nxyz, "holds \"3e\", which isn't a number"},
        Case{"P1 1 2 +", Layout::nxyz, "holds \"+\", which isn't a number"},
        Case{"P1 1 2 .", Layout::nxyz, "holds \".\", which isn't a number"},
        Case{"P1 1 2 0x10", Layout::nxyz, "holds \"0x10\", which isn't a number"},
        Case{"name x y z", Layout::nxyz, "holds \"x\", which isn't a number; these files have no header, take it out"},
        Case{"# a comment", Layout::nxyz, "begins with \"#\", but these files know no comments; take it out"},
        Case{",P1 1 2 3", Layout::nxyz, "begins with \",\"; a field must come first"},
        Case{"P1 1 2 3;", Layout::nxyz, "ends with \";\"; take it off the end of the lines"},
        Case{"P1 1 2 3,\r", Layout::nxyz, "ends with \",\"; take it off the end of the lines"},
        Case{"\0\1\2"s, Layout::nxyz, "holds a zero byte, so the file isn't plain text"},
        Case{"\xFF\xFEP\0 \0"s, Layout::nxyz, "is UTF-16 text; save the file as plain (ANSI) text"},
        Case{"\xEF\xBB\xBF"
             "1 2 3",
             Layout::xyz, "begins with a byte-order mark; save the file without it"},
        Case{"P1 1 2 \x1B[31m", Layout::nxyz, "holds \"?[31m\", which isn't a number"},
        Case{"P1 1 2 \xCF", Layout::nxyz, "holds \"П\", which isn't a number"},
        Case{"P1 1 2 aaaaaaaaaabbbbbbbbbbccccccccccddddddddddeeeeeeeeee", Layout::nxyz,
             "holds \"aaaaaaaaaabbbbbbbbbbccccccccccdddddddddd...\", which isn't a number"}));

TEST(LineFaults, NumbersOfEveryAcceptedFormDontGetTheBlame) {
  for (const char* number : {"1", "1.", ".5", "-1.5", "+1e-3", "1E5", "nan", "-INF", "infinity", "NaN(abc)"}) {
    EXPECT_EQ(lineFaultText(lineFault(std::string("x ") + number + " 2 3", Layout::xyzw)),
              "holds \"x\", which isn't a number; it reads as NXYZ (name x y z)")
        << number;
  }
}

/// The kind alone, in the plain layout.
LineFaultKind kindOf(const std::string& line, Layout layout = Layout::nxyz) { return lineFault(line, layout).kind; }

TEST(LineFaults, TheLineHasNoNumberYetAndKnowsItsLayout) {
  const LineFault fault = lineFault("P1 1 2", Layout::nxyzw);
  EXPECT_EQ(fault.line, 0u);
  EXPECT_EQ(fault.layout, Layout::nxyzw);
  EXPECT_EQ(fault.fields, 3u);
}

TEST(LineFaults, TheFieldAtFaultIsCountedFromOne) {
  const LineFault named = lineFault("P1;1;2;x3", Layout::nxyz);
  EXPECT_EQ(named.column, 4u);
  EXPECT_EQ(named.fields, 4u);
  EXPECT_EQ(named.found, "x3");
  EXPECT_EQ(lineFault("x1 2 3", Layout::xyz).column, 1u);
}

TEST(LineFaults, TheFirstFieldAtFaultIsTheOne) {
  EXPECT_EQ(lineFault("P1 1 b c", Layout::nxyz).column, 3u);
  EXPECT_EQ(lineFault("P1 1 b c", Layout::nxyz).found, "b");
}

TEST(LineFaults, WideTextOfEitherByteOrderIsTold) {
  EXPECT_EQ(kindOf("\xFF\xFEP"), LineFaultKind::utf16);
  EXPECT_EQ(kindOf("\xFE\xFF\0P"s), LineFaultKind::utf16) << "before its zero bytes";
  EXPECT_EQ(kindOf("P\xFF\xFE 1 2 3"), LineFaultKind::other) << "only at the beginning";
}

TEST(LineFaults, AZeroByteAnywhereIsTold) {
  EXPECT_EQ(kindOf("\0"s), LineFaultKind::zeroByte);
  EXPECT_EQ(kindOf("P1 1 2 3\0"s), LineFaultKind::zeroByte);
}

TEST(LineFaults, AMarkAtTheBeginningOfANameIsNoFault) {
  EXPECT_EQ(kindOf("\xEF\xBB\xBFP1 1 2", Layout::nxyz), LineFaultKind::fieldCount);
  EXPECT_EQ(kindOf("\xEF\xBB\xBF"
                   "1 2 3 1",
                   Layout::xyzw),
            LineFaultKind::byteOrderMark);
}

TEST(LineFaults, MarksAndCommentsAreSeenBehindBlanks) {
  const LineFault leading = lineFault(" \t;P1 1 2 3", Layout::nxyz);
  EXPECT_EQ(leading.kind, LineFaultKind::leadingMark);
  EXPECT_EQ(leading.found, ";");
  EXPECT_EQ(kindOf("  # P1 1 2 3"), LineFaultKind::comment);
  const LineFault trailing = lineFault("P1 1 2 3 , \r", Layout::nxyz);
  EXPECT_EQ(trailing.kind, LineFaultKind::trailingMark);
  EXPECT_EQ(trailing.found, ",");
}

TEST(LineFaults, AMarkAtBothEndsIsTheFirst) {
  EXPECT_EQ(kindOf(",P1 1 2 3,"), LineFaultKind::leadingMark);
  EXPECT_EQ(kindOf("# 1 2 3,"), LineFaultKind::comment);
}

TEST(LineFaults, AHeaderHasNoNumberAtAll) {
  EXPECT_EQ(kindOf("name x y z"), LineFaultKind::header);
  EXPECT_EQ(kindOf("1 x y z"), LineFaultKind::notANumber) << "the name is a number";
  EXPECT_EQ(kindOf("name x y 3"), LineFaultKind::notANumber);
}

TEST(LineFaults, ADecimalCommaStandsBetweenDigitsOnALineOfOtherSeparators) {
  EXPECT_EQ(kindOf("P1 1,5 2,5 3,5"), LineFaultKind::decimalComma);
  EXPECT_EQ(kindOf("P1,1,5,2,5,3,5"), LineFaultKind::fieldCount) << "commas separate the fields";
  EXPECT_EQ(kindOf("P1 1,5"), LineFaultKind::fieldCount) << "too few fields";
  EXPECT_EQ(kindOf("P1 a,b 1 2 3"), LineFaultKind::fieldCount) << "no digits beside it";
}

TEST(LineFaults, TheLayoutThatALineWouldHaveIsProposed) {
  EXPECT_EQ(lineFault("1 2 3", Layout::nxyz).readsAs, Layout::xyz);
  EXPECT_EQ(lineFault("P1 1 2 3 1", Layout::xyz).readsAs, Layout::nxyzw);
  EXPECT_EQ(lineFault("P1 1 2 3", Layout::xyzw).readsAs, Layout::nxyz);
  EXPECT_EQ(lineFault("1 2 3 4 5 6", Layout::nxyz).readsAs, std::nullopt);
  EXPECT_EQ(lineFault("P1 1,5 2,5 3,5", Layout::nxyz).readsAs, std::nullopt);
}

TEST(LineFaults, ALongTextIsCutAfterFortyBytes) {
  EXPECT_EQ(lineFault("P1 1 2 " + std::string(40, 'a'), Layout::nxyz).found, std::string(40, 'a'));
  EXPECT_EQ(lineFault("P1 1 2 " + std::string(41, 'a'), Layout::nxyz).found, std::string(40, 'a') + "...");
}

TEST(LineFaults, ALineWithoutAFaultIsRefusedForAnotherReason) {
  EXPECT_EQ(kindOf("P1 1 2 3"), LineFaultKind::other);
  EXPECT_EQ(kindOf("1 2 3", Layout::xyz), LineFaultKind::other);
}

TEST(LineFaults, WhatOnlyBeginsLikeANumberIsNone) {
  for (const char* text : {"-", "+-1", "1e", "1e+", "1.2.3", "1e5.", "nan(", "infinite"}) {
    EXPECT_EQ(kindOf(std::string("P1 ") + text + " 2 3"), LineFaultKind::notANumber) << text;
  }
}

}  // namespace
}  // namespace tiepoint::workbench
