#include "workbench/report/adjustment_report.h"

#include <fmt/format.h>

#include <sstream>

#include "workbench/report/adjustment_verdict.h"
#include "workbench/report/length_format.h"
#include "workbench/report/plain_text.h"
#include "workbench/report/reason_text.h"
#include "workbench/report/registered_line.h"

namespace tiepoint::workbench {

namespace {

constexpr const char* head =
    "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>Registration</title>\n<style>\n"
    "body{font-family:sans-serif;margin:2em}table{border-collapse:collapse;margin:1em 0}"
    "th,td{border:1px solid #999;padding:2px 8px;text-align:right}th:first-child,td:first-child{text-align:left}"
    "caption{text-align:left;font-weight:bold;padding:4px 0}.out{color:#777;font-style:italic}\n</style>\n</head>\n"
    "<body>\n";

std::string escaped(const std::string& utf8) {
  std::string text;
  for (const char c : printable(utf8)) {
    switch (c) {
      case '&':
        text += "&amp;";
        break;
      case '<':
        text += "&lt;";
        break;
      case '>':
        text += "&gt;";
        break;
      default:
        text += c;
    }
  }
  return text;
}

/// Line breaks of a text are a terminal's; a line that goes on is indented there.
std::string verdict(const Registration& registration, const LengthFormat& lengths) {
  std::istringstream lines(verdictText(registration, lengths));
  std::string html;
  for (std::string line; std::getline(lines, line);) {
    const bool goesOn = line.compare(0, 2, "  ") == 0;
    html += goesOn ? " " + escaped(line.substr(2)) : (html.empty() ? "<p>" : "</p>\n<p>") + escaped(line);
  }
  return html.empty() ? html : html + "</p>\n";
}

/// Rows of cells under one row of headings. Cells are escaped already.
class HtmlTable {
 public:
  HtmlTable(const std::string& caption, const std::vector<std::string>& headings) {
    text = "<table>\n<caption>" + caption + "</caption>\n<tr>";
    for (const std::string& heading : headings) text += "<th>" + heading + "</th>";
    text += "</tr>\n";
  }

  void add(const std::vector<std::string>& cells, bool isOut = false) {
    text += isOut ? "<tr class=\"out\">" : "<tr>";
    for (const std::string& cell : cells) text += "<td>" + cell + "</td>";
    text += "</tr>\n";
  }

  std::string html() const { return text + "</table>\n"; }

 private:
  std::string text;
};

std::string residualCell(const std::optional<OdGeVector3d>& residual, double OdGeVector3d::*axis,
                         const LengthFormat& lengths) {
  return residual ? lengths.residual((*residual).*axis) : "-";
}

std::string placeCell(const std::optional<OdGePoint3d>& place, double OdGePoint3d::*axis, const LengthFormat& lengths) {
  return place ? lengths.position((*place).*axis) : "-";
}

/// A base's points stay where they were measured.
std::optional<OdGePoint3d> placeOf(const Registration& registration, const PointOutcome& point) {
  return registration.groups[point.group].inBase ? point.position : point.registered;
}

std::string pointTable(const Registration& registration, const LengthFormat& lengths) {
  HtmlTable table(fmt::format("Points in the common system ({}); residuals: registered less adjusted ({})",
                              lengths.positionUnit(), lengths.residualUnit()),
                  {"point", "group", "x", "y", "z", "dx", "dy", "dz", "length", "not used"});
  for (const PointOutcome& point : registration.points) {
    const auto place = placeOf(registration, point);
    table.add({escaped(point.name), escaped(registration.groups[point.group].name),
               placeCell(place, &OdGePoint3d::x, lengths), placeCell(place, &OdGePoint3d::y, lengths),
               placeCell(place, &OdGePoint3d::z, lengths), residualCell(point.residual, &OdGeVector3d::x, lengths),
               residualCell(point.residual, &OdGeVector3d::y, lengths),
               residualCell(point.residual, &OdGeVector3d::z, lengths),
               point.discrepancy ? lengths.residual(*point.discrepancy) : "-",
               point.reason ? escaped(reasonText(*point.reason)) : ""},
              !point.active);
  }
  return table.html();
}

std::string groupTable(const Registration& registration, const LengthFormat& lengths) {
  HtmlTable table(fmt::format("Groups; root mean square of their discrepancies ({})", lengths.residualUnit()),
                  {"group", "points", "in use", "RMS", "largest"});
  for (const GroupOutcome& group : registration.groups) {
    table.add({escaped(group.name) + (group.inBase ? " (base)" : ""), std::to_string(group.points),
               std::to_string(group.active), group.discrepancies ? lengths.residual(group.discrepancies->value) : "-",
               group.discrepancies ? lengths.residual(group.discrepancies->largest) : "-"});
  }
  return table.html();
}

std::string targetTable(const Registration& registration, const LengthFormat& lengths) {
  HtmlTable table(fmt::format("Adjusted targets ({})", lengths.positionUnit()), {"target", "x", "y", "z", "stations"});
  for (const MergedTarget& target : registration.registered()->targets) {
    const OdGePoint3d& p = target.position;
    table.add({escaped(target.name), lengths.position(p.x), lengths.position(p.y), lengths.position(p.z),
               std::to_string(target.sightings.value_or(0))});
  }
  return table.html();
}

std::string matrices(const Registration& registration) {
  std::string html;
  for (const GroupOutcome& group : registration.groups) {
    const auto motion = group.motion();
    if (!motion) continue;
    HtmlTable table("From the system of " + escaped(group.name) + " to the common one", {});
    for (int row = 0; row < 4; ++row) {
      std::vector<std::string> cells;
      for (int column = 0; column < 4; ++column) {
        cells.push_back(fmt::format(column < 3 ? "{:.12f}" : "{:.6f}", (*motion)(row, column)));
      }
      table.add(cells);
    }
    html += table.html();
  }
  return html;
}

}  // namespace

std::string adjustmentReport(const Registration& registration, ReportKind kind, Unit unit) {
  const LengthFormat lengths(unit);
  std::string html = head + ("<h1>" + escaped(registeredLine(registration)) + "</h1>\n");
  if (kind == ReportKind::results) html += verdict(registration, lengths);
  if (kind != ReportKind::points) html += groupTable(registration, lengths);
  if (kind == ReportKind::results) html += targetTable(registration, lengths) + matrices(registration);
  if (kind != ReportKind::groups) html += pointTable(registration, lengths);
  return html + "</body>\n</html>\n";
}

}  // namespace tiepoint::workbench
