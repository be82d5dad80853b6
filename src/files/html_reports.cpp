#include "files/html_reports.h"

#include <map>
#include <set>
#include <vector>

#include "files/html_text.h"
#include "files/string_table.h"
#include "files/transposed_matrix.h"

namespace ZOR::reg {

namespace {

/// From radians, to as many digits as the report's readers know it.
constexpr double degreesPerRadian = 57.29577951307855;

/// Numbers of the string table.
enum Words : int {
  pointsCaption = 1,
  pointName,
  pointGroupName,
  pointCoordinates,
  pointDiscrepancy,
  beforeRegistration,
  afterRegistration,
  groupsCaption,
  groupName,
  groupPointName,
  methodHeading,
  firstMethod,
  settingsHeading = 18,
  iterationsLabel,
  discrepancyLabel,
  commonPointsHeading,
  commonPointName,
  commonPointCoordinates,
  commonPointWeights,
  notRegistered,
  anglesCaption,
  shiftCaption,
  matrixCaption
};

constexpr int methodCount = 6;

/// The strings around the content of a data cell.
struct CellMarks {
  std::wstring opening = L"<td>";
  std::wstring closing = L"</td>";

  void add(const wchar_t* start, const wchar_t* end) {
    opening += start;
    closing = end + closing;
  }
};

template <class Content>
void writeCell(HtmlText& out, const CellMarks& marks, const Content& content) {
  out << marks.opening << content << marks.closing;
}

void writeCells(HtmlText& out, const CellMarks& marks, const OdGePoint3d& p) {
  writeCell(out, marks, p.x);
  writeCell(out, marks, p.y);
  writeCell(out, marks, p.z);
}

CellMarks marksOf(const RefPoint& point) {
  CellMarks marks;
  if (point.inBase) marks.add(L"<b>", L"</b>");
  if (!point.active) marks.add(L"<i>", L"</i>");
  return marks;
}

void writePointsHead(HtmlText& out) {
  out << L"<table>" << L"<caption>" << resourceString(pointsCaption) << L"</caption>";
  out << L"<tr>";
  out << L"<th rowspan=\"3\">" << resourceString(pointName) << L"</th>";
  out << L"<th rowspan=\"3\">" << resourceString(pointGroupName) << L"</th>";
  out << L"<th colspan=\"6\">" << resourceString(pointCoordinates) << L"</th>";
  out << L"<th rowspan=\"3\">" << resourceString(pointDiscrepancy) << L"</th>";
  out << L"</tr>";
  out << L"<tr>";
  out << L"<th colspan=\"3\">" << resourceString(beforeRegistration) << L"</th>";
  out << L"<th colspan=\"3\">" << resourceString(afterRegistration) << L"</th>";
  out << L"</tr>";
  // The third row stands outside any row element, with an empty one after it.
  out << L"<th>X</th><th>Y</th><th>Z</th><th>X</th><th>Y</th><th>Z</th>" << L"<tr></tr>";
}

void writeAfterRegistration(HtmlText& out, const CellMarks& marks, const RefPoint& point, const ReportSource& source) {
  const auto transform = source.groupTransforms.find(point.groupId);
  if (transform == source.groupTransforms.end()) {
    for (int cell = 0; cell < 4; ++cell) writeCell(out, marks, L"-");
    return;
  }
  writeCells(out, marks, apply(transform->second, point.position));
  const auto discrepancy = source.pointDiscrepancies.find(point.id);
  if (discrepancy == source.pointDiscrepancies.end()) {
    writeCell(out, marks, L"-");
  } else {
    writeCell(out, marks, discrepancy->second);
  }
}

const wchar_t* methodName(int method) {
  return method >= 0 && method < methodCount ? resourceString(firstMethod + method) : L"Unknown";
}

void writeIterations(HtmlText& out, const ReportSource& source) {
  out << L"<p>" << resourceString(settingsHeading) << L"</p>";
  out << L"<p>" << resourceString(iterationsLabel) << L": " << source.actualIterations << L" / " << source.maxIterations
      << L"</p>";
  out << L"<p>" << resourceString(discrepancyLabel) << L": " << source.actualDiscrepancy << L" / "
      << source.convergenceCriteria << L"</p>";
}

void writeCommonPoints(HtmlText& out, const ReportSource& source) {
  out << L"<p><h4>" << resourceString(commonPointsHeading) << L"</h4></p>" << L"<table>";
  out << L"<tr>";
  out << L"<th rowspan='2'>" << resourceString(commonPointName) << L"</th>";
  out << L"<th colspan='3'>" << resourceString(commonPointCoordinates) << L"</th>";
  out << L"<th rowspan='2'>" << resourceString(commonPointWeights) << L"</th>";
  out << L"</tr>";
  out << L"<tr><th>X</th><th>Y</th><th>Z</th></tr>";
  WideNames names(source.commonNames);
  const CellMarks plain;
  for (const auto& [id, point] : source.commonPoints) {
    out << L"<tr>";
    writeCell(out, plain, names[id]);
    writeCells(out, plain, point.position);
    writeCell(out, plain, point.weight);
    out << L"</tr>";
  }
  out << L"</table>" << L"<br>";
}

void writeAngles(HtmlText& out, const RigidTransform& transform) {
  out << L"<br>" << L"<table>" << L"<caption>" << resourceString(anglesCaption) << L"</caption>"
      << L"<tr><th>&alpha;</th><th>&beta;</th><th>&gamma;</th></tr>" << L"<tr>";
  const CellMarks plain;
  for (double angle : zxzAngles(transform)) writeCell(out, plain, angle * degreesPerRadian);
  out << L"</tr>" << L"</table>" << L"<br>";
}

void writeShift(HtmlText& out, const RigidTransform& transform) {
  out << L"<table>" << L"<caption>" << resourceString(shiftCaption) << L"</caption>"
      << L"<tr><th>&Delta;X</th><th>&Delta;Y</th><th>&Delta;Z</th></tr>" << L"<tr>";
  const CellMarks plain;
  for (double shift : transform.translation) writeCell(out, plain, shift);
  out << L"</tr>" << L"</table>" << L"<br>";
}

void writeMatrix(HtmlText& out, const RigidTransform& transform) {
  out << L"<table>" << L"<caption>" << resourceString(matrixCaption) << L"</caption>";
  const CellMarks plain;
  for (const auto& row : transposedMatrix(transform)) {
    out << L"<tr>";
    for (double value : row) writeCell(out, plain, value);
    out << L"</tr>";
  }
  out << L"</table>" << L"<br>";
}

void writeGroups(HtmlText& out, const ReportSource& source) {
  std::set<GroupId> groups;
  for (const RefPoint& point : source.sessionPoints) groups.insert(point.groupId);
  WideNames names(source.groupNames);
  for (GroupId group : groups) {
    out << L"<p><h4>" << names[group] << L"</h4></p>";
    const auto transform = source.groupTransforms.find(group);
    if (transform == source.groupTransforms.end()) {
      out << L"<p>" << resourceString(notRegistered) << L"</p>";
    } else {
      writeAngles(out, transform->second);
      writeShift(out, transform->second);
      writeMatrix(out, transform->second);
    }
    out << L"<hr>";
  }
}

}  // namespace

std::wstring pointsReport(const ReportSource& source, const RefPointIdSet& points) {
  WideNames commonNames(source.commonNames);
  WideNames groupNames(source.groupNames);
  HtmlText out;
  out.head(false);
  writePointsHead(out);
  for (const RefPoint& point : source.sessionPoints) {
    if (points.count(point.id) == 0) continue;
    const CellMarks marks = marksOf(point);
    out << L"<tr>";
    writeCell(out, marks, commonNames[point.commonId]);
    writeCell(out, marks, groupNames[point.groupId]);
    writeCells(out, marks, point.position);
    writeAfterRegistration(out, marks, point, source);
    out << L"</tr>";
  }
  out << L"</body></table></html>\n";
  return out.text();
}

std::wstring groupsReport(const ReportSource& source, const GroupIdSet& groups) {
  std::map<GroupId, std::vector<CommonPointId>> pointNames;
  std::set<GroupId> baseGroups;
  for (const RefPoint& point : source.sessionPoints) {
    pointNames[point.groupId].push_back(point.commonId);
    if (point.inBase) baseGroups.insert(point.groupId);
  }
  WideNames commonNames(source.commonNames);
  WideNames groupNames(source.groupNames);

  HtmlText out;
  out.head(true);
  out << L"<table>" << L"<caption>" << resourceString(groupsCaption) << L"</caption>" << L"<tr>" << L"<th>"
      << resourceString(groupName) << L"</th>" << L"<th>" << resourceString(groupPointName) << L"</th>" << L"</tr>";
  for (GroupId group : groups) {
    CellMarks marks;
    if (baseGroups.count(group) != 0) marks.add(L"<b>", L"</b>");
    out << L"<tr>";
    writeCell(out, marks, groupNames[group]);
    out << marks.opening;
    for (CommonPointId name : pointNames[group]) out << commonNames[name] << L"<br>";
    out << marks.closing << L"</tr>";
  }
  out << L"</table></body></html>\n";
  return out.text();
}

std::wstring resultsReport(const ReportSource& source) {
  HtmlText out;
  out.head(true);
  out << L"<p><h4>" << resourceString(methodHeading) << L"</h4></p>";
  out << L"<p>" << methodName(source.registrationMethod) << L"</p>" << L"<hr>";
  if (source.registrationMethod == 4 || source.registrationMethod == 5) writeIterations(out, source);
  if (!source.commonPoints.empty()) writeCommonPoints(out, source);
  if (!source.groupTransforms.empty()) {
    out << L"<hr>";
    writeGroups(out, source);
    // It closes nothing; the readers of this document expect it.
    out << L"</table>";
  }
  out << L"<hr></body></html>\n";
  return out.text();
}

}  // namespace ZOR::reg
