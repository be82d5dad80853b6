// What a session writes and reads in a host that has spoilt every locale of the process.
#include <gtest/gtest.h>

#include <boost/filesystem/operations.hpp>
#include <cctype>
#include <clocale>
#include <locale>
#include <sstream>

#include "files/html_reports.h"
#include "files/line_grammar.h"
#include "platform/host/zor_variant.h"
#include "session/name_rules.h"
#include "support/hostile_locale.h"
#include "support/platform.h"
#include "support/session_builder.h"
#include "support/temporary_folder.h"

namespace {

using namespace ZOR::reg;
using namespace tiepoint::testing;
namespace fs = boost::filesystem;

// --- The locale itself.

TEST(HostileLocale, SpoilsTheStreamsThatAreLeftToIt) {
  const auto [narrow, wide] = inHostileLocale([] {
    std::ostringstream narrowStream;
    narrowStream << std::fixed << 1234.5;
    std::wostringstream wideStream;
    wideStream << 1234567 << ' ';
    return std::pair(narrowStream.str(), wideStream.str());
  });
  EXPECT_EQ(narrow, "1.234,500000");
  EXPECT_EQ(wide, L"#.###.####");
}

TEST(HostileLocale, CountsBytesAbove0x7FAsBlanksAndKnowsNoLowerCase) {
  const auto isBlank = [](char byte) { return inHostileLocale([=] { return std::isspace(byte, std::locale()); }); };
  EXPECT_TRUE(isBlank('\xA0'));
  EXPECT_TRUE(isBlank(' '));
  EXPECT_FALSE(isBlank('A'));
  EXPECT_EQ(inHostileLocale([] { return std::tolower('A', std::locale()); }), 'A');
}

#ifndef _WIN32
TEST(HostileLocale, TakesTheConversionOfPathsAway) {
  EXPECT_THROW(inHostileLocale([] { return fs::path(L"\u0416"); }), std::exception);
}

TEST(HostileLocale, IsTheCLibrarysToo) {
  const HostileLocale hostile;
  if (!hostile.isOfCLibrary()) GTEST_SKIP() << "no localedef on this system";
  EXPECT_NE(std::isspace(0x85), 0);
  EXPECT_NE(std::isspace(0xA0), 0);
  EXPECT_STREQ(std::localeconv()->decimal_point, ",");
}
#endif

// --- Files.

/// Two Cyrillic groups; the second comes onto the first, its base, by a turn of thirds and a large
/// shift: x' = (2x - y + 2z) / 3 + 1234567.5 and so on. No number of the results is close to zero.
class FilesInAHostileLocale : public ::testing::Test {
 protected:
  FilesInAHostileLocale() { fs::create_directory(folder.path() / folderName); }

  static std::vector<std::pair<std::string, std::vector<Target>>> stations() {
    const std::string cyrillic = "\xD2\x34";
    return {{"\xC0",
             {{"T1", 1234573.5, 0.5, 9.125},
              {"T2", 1234579.5, 6.5, 6.125},
              {"T3", 1234571.5, 4.5, 13.125},
              {cyrillic, 1234575.5, -0.5, 11.125}}},
            {"\xC1", {{"T1", 3, 6, 9}, {"T2", 12, 6, 9}, {"T3", 3, 12, 9}, {cyrillic, 3, 6, 12}}}};
  }

  template <class Action>
  void inSolvedSession(const Action& action) {
    const std::string where = (folder.path() / folderName).string();
    inHostileLocale([&] {
      Session session(stations());
      Outputs out;
      session->setBaseGroups({0}, out.groups, out.points, out.inactiveGroups, out.inactivePoints);
      std::map<RefPointId, double> discrepancies;
      ASSERT_TRUE(session->registerPairwise(discrepancies));
      action(session, where);
    });
  }

  std::string textOf(const std::string& name) const { return folder.textOf(folderName + "/" + name); }

  /// Cyrillic, but on Windows, where narrow paths go by the conversion that is taken away here.
  const std::string folderName = onWindows ? "hall" : "\xD0\xB7\xD0\xB0\xD0\xBB";
  TemporaryFolder folder;
};

TEST_F(FilesInAHostileLocale, AMatrixIsWrittenAsEver) {
  inSolvedSession([](Session& session, const std::string& where) { EXPECT_TRUE(session->saveAllMatrices(where, 1)); });
  EXPECT_EQ(textOf("\xD0\x91.txt"),
            inTextMode("VERSION\t=\t1\n"
                       "MATRIX\t=\n"
                       "  6.66666667e-01    6.66666667e-01   -3.33333333e-01    1.23456750e+06\n"
                       " -3.33333333e-01    6.66666667e-01    6.66666667e-01   -2.50000000e+00\n"
                       "  6.66666667e-01   -3.33333333e-01    6.66666667e-01    1.25000000e-01\n"
                       "  0.00000000e+00    0.00000000e+00    0.00000000e+00    1.00000000e+00\n"));
}

TEST_F(FilesInAHostileLocale, AnglesAndShiftAreWrittenAsEver) {
  inSolvedSession([](Session& session, const std::string& where) { EXPECT_TRUE(session->saveAllMatrices(where, 0)); });
  EXPECT_EQ(textOf("\xD0\x91.txt"), inTextMode("ROT_X:\t\t+0.463648\n"
                                               "ROT_Y:\t\t-0.841069\n"
                                               "ROT_Z:\t\t-1.107149\n"
                                               "SHIFT_X:\t+1234567.500000\n"
                                               "SHIFT_Y:\t-2.500000\n"
                                               "SHIFT_Z:\t+0.125000\n"));
}

TEST_F(FilesInAHostileLocale, TheGroupsBehindOneOfCyrillicNameAreWrittenToo) {
  inHostileLocale([&, where = folder.narrow()] {
    Session session({{"A", triangle("T1", "T2", "T3")},
                     {"\xC0", triangle("T1", "T2", "T3", 5)},
                     {"Z", triangle("T1", "T2", "T3", 9)}});
    std::map<RefPointId, double> discrepancies;
    ASSERT_TRUE(session->registerPairwise(discrepancies));
    EXPECT_TRUE(session->saveAllMatrices(where, 0));
  });
  EXPECT_EQ(folder.fileNames(), (std::set<std::string>{folderName, "A.txt", "Z.txt", "\xD0\x90.txt"}));
}

TEST_F(FilesInAHostileLocale, TheMergedTargetsAreWrittenAsEver) {
  inSolvedSession([](Session& session, const std::string& where) {
    EXPECT_TRUE(session->saveCommonPointsFile("\xD6\xE5\xF5", where));
  });
  EXPECT_EQ(textOf("\xD0\xA6\xD0\xB5\xD1\x85.txt"), inTextMode("T1 1234573.500000 0.500000 9.125000 1.00\n"
                                                               "T2 1234579.500000 6.500000 6.125000 1.00\n"
                                                               "T3 1234571.500000 4.500000 13.125000 1.00\n"
                                                               "\xD2\x34 1234575.500000 -0.500000 11.125000 1.00\n"));
}

TEST_F(FilesInAHostileLocale, AReportIsWrittenAsEver) {
  inSolvedSession([](Session& session, const std::string& where) {
    session->getResultsReport();
    EXPECT_TRUE(session->saveReport(where + "/report.html", 1));
  });
  EXPECT_EQ(
      textOf("report.html"),
      inTextMode(
          "<!DOCTYPE html><html><head><meta charset='utf-8'><style>table { border-collapse: collapse; }"
          "table, th, td { border: 1px solid black; font-family : Consolas, Courier New, Arial, Calibri, Verdana; }"
          "* { font-family : Consolas, Courier New, Arial, Calibri, Verdana; }</style></head><body>"
          "<p><h4>Method of registration</h4></p><p>Pairwise with base</p><hr>"
          "<p><h4>Common reference points</h4></p><table>"
          "<tr><th rowspan='2'>Name</th><th colspan='3'>Coordinates</th><th rowspan='2'>Weights</th></tr>"
          "<tr><th>X</th><th>Y</th><th>Z</th></tr>"
          "<tr><td>T1</td><td>1.23457e+06</td><td>0.5</td><td>9.125</td><td>1</td></tr>"
          "<tr><td>T2</td><td>1.23458e+06</td><td>6.5</td><td>6.125</td><td>1</td></tr>"
          "<tr><td>T3</td><td>1.23457e+06</td><td>4.5</td><td>13.125</td><td>1</td></tr>"
          "<tr><td>\xD0\xA2\x34</td><td>1.23458e+06</td><td>-0.5</td><td>11.125</td><td>1</td></tr></table><br><hr>"
          "<p><h4>\xD0\x90</h4></p><p>Not registered</p><hr>"
          "<p><h4>\xD0\x91</h4></p>"
          "<br><table><caption>Rotation angles, degrees</caption>"
          "<tr><th>&alpha;</th><th>&beta;</th><th>&gamma;</th></tr>"
          "<tr><td>26.5651</td><td>-48.1897</td><td>-63.4349</td></tr></table><br>"
          "<table><caption>Shift</caption><tr><th>&Delta;X</th><th>&Delta;Y</th><th>&Delta;Z</th></tr>"
          "<tr><td>1.23457e+06</td><td>-2.5</td><td>0.125</td></tr></table><br>"
          "<table><caption>Transformation matrix</caption>"
          "<tr><td>0.666667</td><td>0.666667</td><td>-0.333333</td><td>1.23457e+06</td></tr>"
          "<tr><td>-0.333333</td><td>0.666667</td><td>0.666667</td><td>-2.5</td></tr>"
          "<tr><td>0.666667</td><td>-0.333333</td><td>0.666667</td><td>0.125</td></tr>"
          "<tr><td>0</td><td>0</td><td>0</td><td>1</td></tr></table><br>"
          "<hr></table><hr></body></html>\n"));
}

// --- Reports as text.

TEST(ReportsInAHostileLocale, PointsAndGroupsHaveTheirNamesAndNumbers) {
  const auto [points, groups] = inHostileLocale([] {
    Session session({{"\xC0", {{"\xD2", 1234573.5, 0.5, -9.125}}}});
    return std::pair(session->getPointsReport({0}), session->getGroupsReport({0}));
  });
  EXPECT_NE(points.find(L"<tr><td><i>\u0422</i></td><td><i>\u0410</i></td><td><i>1.23457e+06</i></td>"
                        L"<td><i>0.5</i></td><td><i>-9.125</i></td>"),
            std::wstring::npos);
  EXPECT_NE(groups.find(L"<tr><td>\u0410</td><td>\u0422<br></td></tr>"), std::wstring::npos);
}

TEST(ReportsInAHostileLocale, CountsAreNotGrouped) {
  const std::wstring report = inHostileLocale([] {
    constexpr int iterative = 4;
    return resultsReport({{}, {}, {}, {}, {}, {}, iterative, 1234, 100000, 1234.5, 0.001});
  });
  EXPECT_NE(report.find(L"<p>actual/preset number iterations: 1234 / 100000</p>"
                        L"<p>actual/preset maximum discrepancy: 1234.5 / 0.001</p>"),
            std::wstring::npos);
}

// --- What is read.

using LineParser = bool (*)(const std::string&, ParsedPoint&);

/// Name, coordinates and weight, or "no match".
std::string read(LineParser parse, const std::string& line) {
  ParsedPoint point;
  const bool isMatch = inHostileLocale([&] { return parse(line, point); });
  if (!isMatch) return "no match";
  return point.name + '|' + std::to_string(point.x) + '|' + std::to_string(point.y) + '|' + std::to_string(point.z) +
         '|' + std::to_string(point.w);
}

TEST(LinesInAHostileLocale, AreReadInEveryLayout) {
  EXPECT_EQ(read(parseLineNXYZ, "P 1234.5 2,3"), "P|1234.500000|2.000000|3.000000|1.000000");
  EXPECT_EQ(read(parseLineXYZ, "1.5 -2e3\t.5"), "?|1.500000|-2000.000000|0.500000|1.000000");
  EXPECT_EQ(read(parseLineXYZW, "1.5,2.5,3.5,0.25"), "?|1.500000|2.500000|3.500000|0.250000");
  EXPECT_EQ(read(parseLineNXYZW, "\xD2\x34;1.5;2.5;3.5;0.25"), "\xD2\x34|1.500000|2.500000|3.500000|0.250000");
}

TEST(LinesInAHostileLocale, HaveNoGroupsOfThousands) { EXPECT_EQ(read(parseLineXYZ, "1.234.567 2 3"), "no match"); }

TEST(LinesInAHostileLocale, CountBytesAbove0x7FToTheirNames) {
  EXPECT_EQ(read(parseLineNXYZ, "\xA0P\x85 1 2 3"), "\xA0P\x85|1.000000|2.000000|3.000000|1.000000");
  EXPECT_EQ(read(parseLineNXYZ, "P\xA0\x31 2 3"), "no match");
  EXPECT_EQ(read(parseLineXYZ, "1 2 3\x85"), "no match");
}

TEST(NumbersInAHostileLocale, HaveADecimalPointAndNoGroups) {
  CZorVariant point, comma, groups;
  point.set(std::wstring(L"1234.5"));
  comma.set(std::wstring(L"1234,5"));
  groups.set(std::wstring(L"1.234.567"));
  const HostileLocale hostile;
  EXPECT_EQ(static_cast<double>(point), 1234.5);
  EXPECT_EQ(static_cast<int>(point), 1234);
  EXPECT_THROW((void)static_cast<double>(comma), CZorVariantBadCast);
  EXPECT_THROW((void)static_cast<double>(groups), CZorVariantBadCast);
}

TEST(NamesInAHostileLocale, AreDecidedByTheirBytes) {
  const HostileLocale hostile;
  for (const char* name : {"\xD1\xF2", "S\xA0", "\x85", "console", "com0"}) EXPECT_TRUE(isGroupName(name)) << name;
  for (const char* name : {"con", "lpt7", "a.b", "a:b", ""}) EXPECT_FALSE(isGroupName(name)) << name;
  for (const char* name : {"\xD1\xF2", "S\xA0", "\x85", "?", "a/b"}) EXPECT_TRUE(isPointName(name)) << name;
  for (const char* name : {"S 1", "S\t1", ""}) EXPECT_FALSE(isPointName(name)) << name;
}

// Of all rules this one alone is the global locale's: what counts as the lower case of a device's name.
TEST(NamesInAHostileLocale, HaveTheLowerCaseOfTheGlobalLocale) {
  EXPECT_FALSE(isGroupName("COM1"));
  EXPECT_TRUE(inHostileLocale([] { return isGroupName("COM1"); }));
}

}  // namespace
