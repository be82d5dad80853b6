#include "workbench/report/discrepancy_tables.h"

#include <fmt/format.h>

#include <limits>

#include "workbench/report/plain_text.h"
#include "workbench/report/worst_rows.h"

namespace tiepoint::workbench {

namespace {

using Side = TextTable::Side;
using Row = std::vector<std::string>;

// --- Points.

/// What the axes leave of a line has no room for the median.
std::string markOf(const Registered& registered, std::size_t point, bool axes) {
  const bool standsOut = registered.outlier && registered.outlier->point == point;
  const bool isLargest = registered.largest == point;
  if (!standsOut) return isLargest ? "<- largest" : "";
  const char* const mark = isLargest ? "<- largest" : "<- stands out";
  if (axes || !registered.outlier->timesMedian) return mark;
  return fmt::format("{}, {:.1f} times the median", mark, *registered.outlier->timesMedian);
}

/// The indices of the points that have a discrepancy.
std::vector<std::size_t> pointsWithDiscrepancy(const Registration& registration) {
  std::vector<std::size_t> points;
  for (std::size_t i = 0; i < registration.points.size(); ++i) {
    if (registration.points[i].discrepancy) points.push_back(i);
  }
  return points;
}

std::vector<double> badnessOf(const Registration& registration, const std::vector<std::size_t>& points) {
  std::vector<double> badness;
  for (const std::size_t i : points) badness.push_back(*registration.points[i].discrepancy);
  return badness;
}

void addAxes(const std::optional<OdGeVector3d>& residual, const LengthFormat& lengths, Row& row) {
  if (!residual) {
    row.insert(row.end(), 3, "-");
  } else {
    for (const double along : {residual->x, residual->y, residual->z}) row.push_back(lengths.residual(along));
  }
}

Row pointRow(const Registration& registration, std::size_t index, const LengthFormat& lengths, bool axes) {
  const Registered& registered = *registration.registered();
  const PointOutcome& point = registration.points[index];
  Row row{printable(registration.groups[point.group].name), printable(point.name),
          lengths.residual(*point.discrepancy)};
  if (axes) addAxes(point.residual, lengths, row);
  if (registered.atBase) row.push_back(point.atBase ? lengths.residual(*point.atBase) : "-");
  row.push_back(markOf(registered, index, axes));
  return row;
}

std::string pointHeading(const Registration& registration, const LengthFormat& lengths, bool axes, bool atBase) {
  const char* const target = registration.method == RegistrationMethod::adjust ? "adjusted" : "merged";
  const std::string text =
      fmt::format("Discrepancies ({}): from the registered point to its {} target{}{}", lengths.residualUnit(), target,
                  axes ? "; dx, dy, dz: the point minus the target, in the common system" : "",
                  atBase ? "; at base: to the base's own measurement" : "");
  return wrapped(text, textWidth, 2) + "\n";
}

// --- Groups.

void addRms(TextTable& table, const std::string& name, const std::optional<Rms>& discrepancies,
            const std::optional<Rms>& atBase, bool hasBase, const LengthFormat& lengths) {
  if (!discrepancies) return;
  Row row{name, std::to_string(discrepancies->count)};
  for (const double value : {discrepancies->mean, discrepancies->value, discrepancies->largest}) {
    row.push_back(lengths.residual(value));
  }
  if (hasBase) {
    row.push_back(atBase ? std::to_string(atBase->count) : "-");
    row.push_back(atBase ? lengths.residual(atBase->value) : "-");
  }
  table.add(std::move(row));
}

}  // namespace

std::vector<double> badnessOf(const std::vector<GroupOutcome>& groups) {
  std::vector<double> badness;
  for (const GroupOutcome& group : groups) {
    badness.push_back(group.discrepancies ? group.discrepancies->value : std::numeric_limits<double>::infinity());
  }
  return badness;
}

std::string discrepanciesByPoint(const Registration& registration, const LengthFormat& lengths,
                                 const TableOptions& options) {
  const bool atBase = registration.registered()->atBase.has_value();
  // Residuals of an adjustment are judged by their signs, too.
  const bool axes = options.axes || registration.method == RegistrationMethod::adjust;
  Row head{"group", "point", "discrepancy"};
  if (axes) head.insert(head.end(), {"dx", "dy", "dz"});
  if (atBase) head.emplace_back("at base");
  std::vector<Side> sides(head.size(), Side::right);
  sides[0] = sides[1] = Side::left;
  TextTable table(std::move(sides));
  table.add(std::move(head));
  const std::vector<std::size_t> points = pointsWithDiscrepancy(registration);
  const std::vector<std::size_t> rows = rowsToShow(badnessOf(registration, points), options.allRows);
  for (const std::size_t row : rows) table.add(pointRow(registration, points[row], lengths, axes));
  return pointHeading(registration, lengths, axes, atBase) + table.text() +
         restLine(rows.size(), points.size(), "point");
}

std::string discrepanciesByGroup(const Registration& registration, const LengthFormat& lengths,
                                 const TableOptions& options) {
  const Registered& registered = *registration.registered();
  const bool atBase = registered.atBase.has_value();
  TextTable table({Side::left, Side::right, Side::right, Side::right, Side::right, Side::right, Side::right});
  Row head{"group", "points", "mean", "RMS", "largest"};
  if (atBase) head.insert(head.end(), {"at base", "RMS at base"});
  table.add(std::move(head));
  const std::vector<std::size_t> rows = rowsToShow(badnessOf(registration.groups), options.allRows);
  for (const std::size_t i : rows) {
    const GroupOutcome& group = registration.groups[i];
    addRms(table, printable(group.name), group.discrepancies, group.atBase, atBase, lengths);
  }
  addRms(table, "all", registered.discrepancies, registered.atBase, atBase, lengths);
  return fmt::format("Discrepancies by group ({})\n{}{}", lengths.residualUnit(), table.text(),
                     restLine(rows.size(), registration.groups.size(), "group"));
}

std::string protocolText(const Registration& registration, const LengthFormat& lengths) {
  const Registered& registered = *registration.registered();
  const char* const unit = lengths.residualUnit();
  std::string text;
  if (registered.protocol) {
    const Rms& figures = registered.protocol->discrepancies;
    const std::string line =
        fmt::format("For the protocol: mean {1} {0}, RMS {2} {0}, largest {3} {0} over {4} in {5}", unit,
                    lengths.residual(figures.mean), lengths.residual(figures.value), lengths.residual(figures.largest),
                    plural(figures.count, "point"), plural(registered.protocol->stations, "station"));
    text += wrapped(line, textWidth, 2) + "\n";
  } else if (registered.discrepancies) {
    text += "For the protocol: no figures, as the iterations haven't converged\n";
  }
  if (registered.atBase) {
    text += fmt::format("RMS at the base: {} {} over {}\n", lengths.residual(registered.atBase->value), unit,
                        plural(registered.atBase->count, "point"));
  }
  return text;
}

}  // namespace tiepoint::workbench
