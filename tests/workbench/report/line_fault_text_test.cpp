#include "workbench/report/line_fault_text.h"

#include <gtest/gtest.h>

namespace tiepoint::workbench {
namespace {

LineFault fault(LineFaultKind kind, const char* found = "") {
  LineFault made;
  made.kind = kind;
  made.layout = Layout::nxyzw;
  made.line = 7;
  made.found = found;
  return made;
}

TEST(LineFaultText, TellsTextOfTwoBytesACharacter) {
  EXPECT_EQ(lineFaultText(fault(LineFaultKind::utf16)), "is UTF-16 text; save the file as plain (ANSI) text");
}

TEST(LineFaultText, TellsAZeroByte) {
  EXPECT_EQ(lineFaultText(fault(LineFaultKind::zeroByte)), "holds a zero byte, so the file isn't plain text");
}

TEST(LineFaultText, TellsABlankLine) { EXPECT_EQ(lineFaultText(fault(LineFaultKind::blank)), "is blank; take it out"); }

TEST(LineFaultText, TellsAByteOrderMark) {
  EXPECT_EQ(lineFaultText(fault(LineFaultKind::byteOrderMark)),
            "begins with a byte-order mark; save the file without it");
}

TEST(LineFaultText, TellsAMarkAtTheBeginning) {
  EXPECT_EQ(lineFaultText(fault(LineFaultKind::leadingMark, ";")), "begins with \";\"; a field must come first");
}

TEST(LineFaultText, TellsAMarkAtTheEnd) {
  EXPECT_EQ(lineFaultText(fault(LineFaultKind::trailingMark, ",")),
            "ends with \",\"; take it off the end of the lines");
}

TEST(LineFaultText, TellsAComment) {
  EXPECT_EQ(lineFaultText(fault(LineFaultKind::comment)),
            "begins with \"#\", but these files know no comments; take it out");
}

TEST(LineFaultText, CountsTheFields) {
  LineFault three = fault(LineFaultKind::fieldCount);
  three.fields = 3;
  EXPECT_EQ(lineFaultText(three), "has 3 fields where NXYZW has 5 (name x y z weight)");
  three.fields = 1;
  EXPECT_EQ(lineFaultText(three), "has 1 field where NXYZW has 5 (name x y z weight)");
}

TEST(LineFaultText, NamesTheLayoutThatTheLineHas) {
  LineFault three = fault(LineFaultKind::fieldCount);
  three.fields = 3;
  three.readsAs = Layout::xyz;
  EXPECT_EQ(lineFaultText(three), "has 3 fields where NXYZW has 5 (name x y z weight); it reads as XYZ (x y z)");
}

TEST(LineFaultText, TellsADecimalComma) {
  LineFault eight = fault(LineFaultKind::decimalComma);
  eight.fields = 8;
  eight.readsAs = Layout::xyz;
  EXPECT_EQ(lineFaultText(eight),
            "has 8 fields where NXYZW has 5 (name x y z weight); numbers take a decimal point, not a comma");
}

TEST(LineFaultText, QuotesWhatIsntANumber) {
  LineFault word = fault(LineFaultKind::notANumber, "1O.5");
  EXPECT_EQ(lineFaultText(word), "holds \"1O.5\", which isn't a number");
  word.readsAs = Layout::nxyz;
  EXPECT_EQ(lineFaultText(word), "holds \"1O.5\", which isn't a number; it reads as NXYZ (name x y z)");
}

TEST(LineFaultText, TellsAHeader) {
  EXPECT_EQ(lineFaultText(fault(LineFaultKind::header, "Easting")),
            "holds \"Easting\", which isn't a number; these files have no header, take it out");
}

TEST(LineFaultText, NamesTheLayoutOfALineThatIsWrongInNoKnownWay) {
  EXPECT_EQ(lineFaultText(fault(LineFaultKind::other)), "can't be read as NXYZW (name x y z weight)");
}

TEST(LineFaultText, PrintsNoControlCharacterOfTheFile) {
  EXPECT_EQ(lineFaultText(fault(LineFaultKind::notANumber, "\x1b[31m")), "holds \"?[31m\", which isn't a number");
}

}  // namespace
}  // namespace tiepoint::workbench
