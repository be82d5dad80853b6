// Whole documents compared as text.
#include "files/html_reports.h"

#include <gtest/gtest.h>

#include "platform/sdk/od_code_page.h"

namespace {

using namespace ZOR::reg;

const std::wstring plainHead =
    L"<!DOCTYPE html><html><head><meta charset='utf-8'><style>table { border-collapse: collapse; }"
    L"table, th, td { border: 1px solid black; font-family : Consolas, Courier New, Arial, Calibri, Verdana; }"
    L"</style></head><body>";
const std::wstring headWithFont =
    L"<!DOCTYPE html><html><head><meta charset='utf-8'><style>table { border-collapse: collapse; }"
    L"table, th, td { border: 1px solid black; font-family : Consolas, Courier New, Arial, Calibri, Verdana; }"
    L"* { font-family : Consolas, Courier New, Arial, Calibri, Verdana; }"
    L"</style></head><body>";
const std::wstring pointsTableHead =
    L"<table><caption>Reference points information</caption>"
    L"<tr><th rowspan=\"3\">Name</th><th rowspan=\"3\">Group name</th><th colspan=\"6\">Coordinates</th>"
    L"<th rowspan=\"3\">Discrepancy</th></tr>"
    L"<tr><th colspan=\"3\">Before registration</th><th colspan=\"3\">After registration</th></tr>"
    L"<th>X</th><th>Y</th><th>Z</th><th>X</th><th>Y</th><th>Z</th><tr></tr>";
const std::wstring groupsTableHead =
    L"<table><caption>Groups reference points</caption><tr><th>Name</th><th>Reference point name</th></tr>";

/// A session as the reports see it.
struct Source {
  RefPointList points;
  NamedIdList groups{{0, "S1"}, {1, "S2"}};
  NamedIdList names{{0, "T1"}, {1, "T2"}};
  GroupTransforms transforms;
  CommonPoints commonPoints;
  PointDiscrepancies discrepancies;
  int method = -1;

  ReportSource operator()() const {
    return {points, groups, names, transforms, commonPoints, discrepancies, method, 3, 100, 0.25, 0.001};
  }

  RefPoint& add(RefPointId id, GroupId group, CommonPointId name, double x, double y, double z) {
    RefPoint point;
    point.id = id;
    point.groupId = group;
    point.commonId = name;
    point.position = {x, y, z};
    points.push_back(point);
    return points.back();
  }
};

TEST(PointsReport, ShowsDashesForAGroupThatIsNotRegistered) {
  Source source;
  source.add(0, 0, 0, 1, 2, 3);
  EXPECT_EQ(pointsReport(source(), {0}), plainHead + pointsTableHead +
                                             L"<tr><td>T1</td><td>S1</td><td>1</td><td>2</td><td>3</td>"
                                             L"<td>-</td><td>-</td><td>-</td><td>-</td></tr></body></table></html>\n");
}

TEST(PointsReport, OfNoPointsIsHeadAndTail) {
  Source source;
  source.add(0, 0, 0, 1, 2, 3);
  EXPECT_EQ(pointsReport(source(), {}), plainHead + pointsTableHead + L"</body></table></html>\n");
}

TEST(PointsReport, ShowsRegisteredPositionsAndTheDiscrepancy) {
  Source source;
  source.add(4, 1, 1, 1, 2, 3);
  source.add(5, 1, 0, 0, 0, 0);
  // A quarter turn about Z: x goes to y.
  source.transforms[1] = {{0, -1, 0, 1, 0, 0, 0, 0, 1}, {100, 0, 0.5}};
  source.discrepancies[4] = 0.0123456789;
  EXPECT_EQ(pointsReport(source(), {4, 5, 77}),
            plainHead + pointsTableHead +
                L"<tr><td>T2</td><td>S2</td><td>1</td><td>2</td><td>3</td>"
                L"<td>98</td><td>1</td><td>3.5</td><td>0.0123457</td></tr>"
                L"<tr><td>T1</td><td>S2</td><td>0</td><td>0</td><td>0</td>"
                L"<td>100</td><td>0</td><td>0.5</td><td>-</td></tr></body></table></html>\n");
}

TEST(PointsReport, MarksTheBaseBoldAndInactivePointsItalic) {
  Source source;
  source.add(0, 0, 0, 1, 2, 3).inBase = true;
  RefPoint& left = source.add(1, 1, 0, 1, 2, 3);
  left.active = false;
  RefPoint& both = source.add(2, 0, 1, 1, 2, 3);
  both.active = false;
  both.inBase = true;
  EXPECT_EQ(pointsReport(source(), {0, 1, 2}),
            plainHead + pointsTableHead +
                L"<tr><td><b>T1</b></td><td><b>S1</b></td><td><b>1</b></td><td><b>2</b></td><td><b>3</b></td>"
                L"<td><b>-</b></td><td><b>-</b></td><td><b>-</b></td><td><b>-</b></td></tr>"
                L"<tr><td><i>T1</i></td><td><i>S2</i></td><td><i>1</i></td><td><i>2</i></td><td><i>3</i></td>"
                L"<td><i>-</i></td><td><i>-</i></td><td><i>-</i></td><td><i>-</i></td></tr>"
                L"<tr><td><b><i>T2</i></b></td><td><b><i>S1</i></b></td><td><b><i>1</i></b></td>"
                L"<td><b><i>2</i></b></td><td><b><i>3</i></b></td><td><b><i>-</i></b></td><td><b><i>-</i></b></td>"
                L"<td><b><i>-</i></b></td><td><b><i>-</i></b></td></tr></body></table></html>\n");
}

TEST(PointsReport, WritesSixSignificantDigits) {
  Source source;
  source.add(0, 0, 0, 1234567.891, -0.0001234567, 1e-7);
  const std::wstring report = pointsReport(source(), {0});
  EXPECT_NE(report.find(L"<td>1.23457e+06</td><td>-0.000123457</td><td>1e-07</td>"), std::wstring::npos);
}

TEST(Reports, ReadNamesAsWindows1251AndEscapeNothing) {
  Source source;
  source.names = {{0, "\xC0<b>"}};
  source.groups = {{0, "\xFF&"}};
  source.add(0, 0, 0, 1, 2, 3);
  source.commonPoints[0] = {{1, 2, 3}, 1.0};
  source.transforms[0] = {};
  EXPECT_NE(pointsReport(source(), {0}).find(L"<td>\u0410<b></td><td>\u044F&</td>"), std::wstring::npos);
  EXPECT_NE(groupsReport(source(), {0}).find(L"<td>\u044F&</td><td>\u0410<b><br></td>"), std::wstring::npos);
  EXPECT_NE(resultsReport(source()).find(L"<td>\u0410<b></td>"), std::wstring::npos);
  EXPECT_NE(resultsReport(source()).find(L"<h4>\u044F&</h4>"), std::wstring::npos);
}

TEST(Reports, KeepEveryByteOfAName) {
  for (int byte = 0; byte < 256; ++byte) {
    const std::string name(1, static_cast<char>(byte));
    Source source;
    source.groups = {{0, name}};
    EXPECT_NE(groupsReport(source(), {0}).find(L"<td>" + odToWide(name) + L"</td>"), std::wstring::npos) << byte;
  }
}

TEST(Reports, AMissingIdHasAnEmptyNameAndOneThatStandsTwiceItsFirst) {
  Source source;
  source.names = {{1, "first"}, {1, "second"}};
  source.groups.clear();
  source.add(0, 0, 1, 1, 2, 3);
  source.add(1, 0, 7, 1, 2, 3);
  EXPECT_NE(groupsReport(source(), {0}).find(L"<td></td><td>first<br><br></td>"), std::wstring::npos);
}

TEST(GroupsReport, ListsTheNamesInListOrderAndTheBaseInBold) {
  Source source;
  source.add(0, 0, 1, 0, 0, 0).inBase = true;
  source.add(1, 1, 0, 0, 0, 0);
  source.add(2, 0, 0, 0, 0, 0).inBase = true;
  EXPECT_EQ(groupsReport(source(), {0, 1}), headWithFont + groupsTableHead +
                                                L"<tr><td><b>S1</b></td><td><b>T2<br>T1<br></b></td></tr>"
                                                L"<tr><td>S2</td><td>T1<br></td></tr></table></body></html>\n");
}

TEST(GroupsReport, OfNoGroupsIsHeadAndTail) {
  EXPECT_EQ(groupsReport(Source()(), {}), headWithFont + groupsTableHead + L"</table></body></html>\n");
}

TEST(ResultsReport, BeforeAnySolveSaysUnknown) {
  Source source;
  source.add(0, 0, 0, 1, 2, 3);
  EXPECT_EQ(resultsReport(source()),
            headWithFont + L"<p><h4>Method of registration</h4></p><p>Unknown</p><hr><hr></body></html>\n");
}

TEST(ResultsReport, NamesTheMethods) {
  const std::pair<int, std::wstring> methods[] = {
      {0, L"Complite"},  {1, L"Complite with base"},  {2, L"Pairwise"}, {3, L"Pairwise with base"},
      {4, L"Iterative"}, {5, L"Iterative with base"}, {7, L"Unknown"},  {-1, L"Unknown"}};
  for (const auto& [method, name] : methods) {
    Source source;
    source.method = method;
    EXPECT_NE(resultsReport(source()).find(L"<p>" + name + L"</p><hr>"), std::wstring::npos) << method;
  }
}

TEST(ResultsReport, OfAnIterativeSolveTellsActualAndPresetFigures) {
  Source source;
  source.method = 5;
  EXPECT_EQ(resultsReport(source()), headWithFont +
                                         L"<p><h4>Method of registration</h4></p><p>Iterative with base</p><hr>"
                                         L"<p>Registration settings</p><p>actual/preset number iterations: 3 / 100</p>"
                                         L"<p>actual/preset maximum discrepancy: 0.25 / 0.001</p><hr></body></html>\n");
}

TEST(ResultsReport, ShowsMergedTargetsAndEachGroupsTransformation) {
  Source source;
  source.method = 3;
  source.add(0, 0, 0, 0, 0, 0);
  source.add(1, 1, 0, 0, 0, 0);
  source.commonPoints[1] = {{1.5, 2, 3}, 0.75};
  source.commonPoints[0] = {{-1, 0, 0}, 1};
  source.transforms[1] = {{0, -1, 0, 1, 0, 0, 0, 0, 1}, {10, -2.5, 0.125}};
  EXPECT_EQ(resultsReport(source()),
            headWithFont +
                L"<p><h4>Method of registration</h4></p><p>Pairwise with base</p><hr>"
                L"<p><h4>Common reference points</h4></p><table>"
                L"<tr><th rowspan='2'>Name</th><th colspan='3'>Coordinates</th><th rowspan='2'>Weights</th></tr>"
                L"<tr><th>X</th><th>Y</th><th>Z</th></tr>"
                L"<tr><td>T1</td><td>-1</td><td>0</td><td>0</td><td>1</td></tr>"
                L"<tr><td>T2</td><td>1.5</td><td>2</td><td>3</td><td>0.75</td></tr></table><br><hr>"
                L"<p><h4>S1</h4></p><p>Not registered</p><hr>"
                L"<p><h4>S2</h4></p>"
                L"<br><table><caption>Rotation angles, degrees</caption>"
                L"<tr><th>&alpha;</th><th>&beta;</th><th>&gamma;</th></tr>"
                L"<tr><td>-0</td><td>-0</td><td>-90</td></tr></table><br>"
                L"<table><caption>Shift</caption><tr><th>&Delta;X</th><th>&Delta;Y</th><th>&Delta;Z</th></tr>"
                L"<tr><td>10</td><td>-2.5</td><td>0.125</td></tr></table><br>"
                L"<table><caption>Transformation matrix</caption>"
                L"<tr><td>0</td><td>1</td><td>0</td><td>10</td></tr>"
                L"<tr><td>-1</td><td>0</td><td>0</td><td>-2.5</td></tr>"
                L"<tr><td>0</td><td>0</td><td>1</td><td>0.125</td></tr>"
                L"<tr><td>0</td><td>0</td><td>0</td><td>1</td></tr></table><br>"
                L"<hr></table><hr></body></html>\n");
}

}  // namespace
