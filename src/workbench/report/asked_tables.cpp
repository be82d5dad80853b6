#include "workbench/report/asked_tables.h"

#include <fmt/format.h>

#include <cmath>

#include "workbench/report/adjustment_names.h"
#include "workbench/report/plain_text.h"
#include "workbench/report/worst_rows.h"

namespace tiepoint::workbench {

namespace {

using Side = TextTable::Side;
using Row = std::vector<std::string>;

std::string traceTable(const Registration& registration, const analysis::Trace& trace, const LengthFormat& lengths,
                       bool all) {
  const AdjustedSurvey& survey = *registration.adjustment;
  const std::string name = pointInGroup(registration, survey.pointOf[trace.observation]);
  if (trace.stations.empty()) {
    return fmt::format("Effect of {}: it takes no part, or isn't controlled: an error may have any effect\n", name);
  }
  TextTable table({Side::left, Side::right, Side::right, Side::right, Side::right, Side::right});
  table.add({"group", "shift", "rotation", "shift without", "rotation without", "target without"});
  std::vector<double> badness;
  for (const analysis::TracedStation& station : trace.stations) badness.push_back(station.effect.shift);
  const std::vector<std::size_t> rows = rowsToShow(badness, all);
  for (const std::size_t i : rows) {
    const analysis::TracedStation& station = trace.stations[i];
    Row row{stationName(registration, station.station)};
    for (const double length : {station.effect.shift, station.effect.rotation * lengths.lever(), station.leftOut.shift,
                                station.leftOut.rotation * lengths.lever(), station.displacement}) {
      row.push_back(lengths.residual(length));
    }
    table.add(std::move(row));
  }
  const std::string heading =
      fmt::format("Effect of {} ({}; rotation at {}): of an error that its test doesn't find, and of leaving it out",
                  name, lengths.residualUnit(), lengths.leverText());
  return wrapped(heading, textWidth, 2) + "\n" + table.text() + restLine(rows.size(), trace.stations.size(), "group");
}

}  // namespace

std::string carriedTable(const Registration& registration, const LengthFormat& lengths) {
  const auto& carried = registration.adjustment->result.carried;
  if (carried.empty()) return "";
  TextTable table({Side::left, Side::right, Side::right, Side::right, Side::right, Side::right, Side::right});
  table.add({"group", "x", "y", "z", "sigma x", "sigma y", "sigma z"});
  for (const analysis::CarriedPosition& point : carried) {
    Row row{stationName(registration, point.point.station)};
    for (const double coordinate : point.position) row.push_back(lengths.position(coordinate));
    for (const double variance : point.covariance.diagonal()) row.push_back(lengths.residual(std::sqrt(variance)));
    table.add(std::move(row));
  }
  return fmt::format("Carried points in the common system ({}; sigmas: {})\n{}", lengths.positionUnit(),
                     lengths.residualUnit(), table.text());
}

std::string traceTables(const Registration& registration, const LengthFormat& lengths, const TableOptions& options) {
  std::string text;
  for (const analysis::Trace& trace : registration.adjustment->result.traces) {
    text += (text.empty() ? "" : "\n") + traceTable(registration, trace, lengths, options.allRows);
  }
  return text;
}

}  // namespace tiepoint::workbench
