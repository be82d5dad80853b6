#include "workbench/report/station_table.h"

#include <fmt/format.h>

#include <limits>

#include "workbench/report/adjustment_names.h"
#include "workbench/report/doubtful_names.h"
#include "workbench/report/plain_text.h"
#include "workbench/report/worst_rows.h"

namespace tiepoint::workbench {

namespace {

using analysis::AdjustedStation;
using Side = TextTable::Side;

/// What is estimated from no redundancy at all isn't told.
bool haveScale(const analysis::Adjustment& result) {
  return result.scale == analysis::VarianceScale::aPriori || result.varianceFactor;
}

/// The least controlled of a station's measurements.
struct Weakest {
  std::size_t measurements = 0;
  std::size_t point = 0;
  std::optional<double> detectable;
};

std::vector<Weakest> weakestOf(const Registration& registration) {
  const AdjustedSurvey& survey = *registration.adjustment;
  std::vector<Weakest> all(registration.groups.size());
  for (std::size_t o = 0; o < survey.result.observations.size(); ++o) {
    const auto& told = survey.result.observations[o];
    if (!told) continue;
    Weakest& weakest = all[survey.network.observations[o].station];
    const bool isWeaker = weakest.detectable && (!told->detectable || *told->detectable > *weakest.detectable);
    if (++weakest.measurements > 1 && !isWeaker) continue;
    weakest.point = survey.pointOf[o];
    weakest.detectable = told->detectable;
  }
  return all;
}

std::string remarkOf(const Registration& registration, std::size_t station) {
  const AdjustedStation& told = *registration.adjustment->result.stations[station];
  std::vector<std::string> remarks;
  if (told.levelled) remarks.emplace_back("level");
  const std::optional<DoubtfulNames> names = doubtfulNames(registration, station);
  if (names) remarks.push_back(fmt::format("names exchanged? {}", exchangeText(*names)));
  return joined(remarks);
}

std::vector<std::string> rowText(const Registration& registration, std::size_t station, const Weakest& weakest,
                                 const LengthFormat& lengths) {
  const analysis::Adjustment& result = registration.adjustment->result;
  const std::string name = stationName(registration, station);
  const auto& told = result.stations[station];
  if (!told) return {name, registration.groups[station].inBase && weakest.measurements > 0 ? "base" : "not registered"};
  const auto sigma = [&](double value) { return haveScale(result) ? lengths.residual(value) : std::string("-"); };
  return {name,
          sigma(told->positionSigma),
          sigma(told->rotationSigma * lengths.lever()),
          sigma(told->largestPointSigma),
          weakest.detectable ? lengths.residual(*weakest.detectable) : "none",
          printable(registration.points[weakest.point].name),
          fmt::format("{:.1f} of {}", told->redundancy, 3 * weakest.measurements),
          remarkOf(registration, station)};
}

std::vector<double> badnessOf(const Registration& registration) {
  std::vector<double> badness;
  for (const auto& told : registration.adjustment->result.stations) {
    badness.push_back(told ? told->largestPointSigma : std::numeric_limits<double>::infinity());
  }
  return badness;
}

std::string heading(const LengthFormat& lengths) {
  const std::string text = fmt::format(
      "Stations ({}): standard deviations of the origin, of the rotation at {} and of the least certain target; the "
      "detectable error of the least controlled target; redundant coordinates",
      lengths.residualUnit(), lengths.leverText());
  return wrapped(text, textWidth, 2) + "\n";
}

}  // namespace

std::string stationTable(const Registration& registration, const LengthFormat& lengths, const TableOptions& options) {
  TextTable table({Side::left, Side::right, Side::right, Side::right, Side::right, Side::left, Side::right});
  table.add({"group", "origin", "rotation", "target", "detectable", "in", "redundant"});
  const std::vector<Weakest> weakest = weakestOf(registration);
  const std::vector<std::size_t> rows = rowsToShow(badnessOf(registration), options.allRows);
  for (const std::size_t i : rows) table.add(rowText(registration, i, weakest[i], lengths));
  return heading(lengths) + table.text() + restLine(rows.size(), registration.groups.size(), "group");
}

}  // namespace tiepoint::workbench
