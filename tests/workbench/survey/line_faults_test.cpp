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

}  // namespace
}  // namespace tiepoint::workbench
