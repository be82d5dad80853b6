#include "workbench/report/look_list.h"

#include <fmt/format.h>

#include <algorithm>
#include <tuple>

#include "workbench/report/adjustment_names.h"
#include "workbench/report/plain_text.h"

namespace tiepoint::workbench {

namespace {

using Side = TextTable::Side;

/// A list that is longer isn't read.
constexpr std::size_t longestList = 8;

std::optional<LookReason> reasonOf(const analysis::AdjustedObservation& told, bool hasNoise) {
  if (hasNoise && told.rejected.value_or(false)) return LookReason::rejected;
  // Written so that not-a-number isn't controlled.
  if (!(told.leastRedundancy >= noControl)) return LookReason::uncontrolled;
  if (told.leastRedundancy < weakControl) return LookReason::hardlyControlled;
  return std::nullopt;
}

/// Worse ones have smaller keys.
std::tuple<int, double, double> rankOf(const LookedAt& row) {
  const double p = row.reason == LookReason::rejected ? row.told->p.value_or(0.0) : 0.0;
  const double pull = row.reason == LookReason::rejected ? row.told->statistic.value_or(0.0) : 0.0;
  const double control = row.reason == LookReason::hardlyControlled ? row.told->leastRedundancy : 0.0;
  return {static_cast<int>(row.reason), p + control, -pull};
}

void addMeasurements(const Registration& registration, std::vector<LookedAt>& rows) {
  const AdjustedSurvey& survey = *registration.adjustment;
  const bool hasNoise = !isWithoutNoise(registration);
  for (std::size_t o = 0; o < survey.result.observations.size(); ++o) {
    const auto& told = survey.result.observations[o];
    if (!told) continue;
    const auto reason = reasonOf(*told, hasNoise);
    if (reason) rows.push_back({*reason, survey.pointOf[o], survey.network.observations[o].target, &*told});
  }
  for (std::size_t t = 0; t < survey.result.control.size(); ++t) {
    const auto& told = survey.result.control[t];
    if (!told) continue;
    const auto reason = reasonOf(*told, hasNoise);
    if (reason) rows.push_back({*reason, std::nullopt, t, &*told});
  }
}

const char* remarkOf(LookReason reason) {
  switch (reason) {
    case LookReason::suspect:
      return "<- suspect";
    case LookReason::rejected:
      return "rejected";
    case LookReason::uncontrolled:
      return "not controlled";
    case LookReason::hardlyControlled:
      return "hardly controlled";
  }
  return "";
}

std::vector<std::string> rowText(const Registration& registration, const LookedAt& row, const LengthFormat& lengths) {
  const analysis::AdjustedObservation& told = *row.told;
  const std::string group =
      row.point ? printable(registration.groups[registration.points[*row.point].group].name) : std::string("control");
  return {group,
          targetName(registration, row.target),
          told.leftOut ? lengths.residual(told.leftOut->error.norm()) : "-",
          lengths.residual(told.residual.norm()),
          told.detectable ? lengths.residual(*told.detectable) : "none",
          remarkOf(row.reason)};
}

/// What the table leaves out, by reasons.
std::string restOf(const std::vector<LookedAt>& rows, std::size_t shown) {
  std::vector<std::string> counts;
  for (const LookReason reason : {LookReason::rejected, LookReason::uncontrolled, LookReason::hardlyControlled}) {
    const auto count = std::count_if(rows.begin() + static_cast<std::ptrdiff_t>(shown), rows.end(),
                                     [&](const LookedAt& row) { return row.reason == reason; });
    if (count > 0) counts.push_back(fmt::format("{} more {}", count, remarkOf(reason)));
  }
  return counts.empty() ? "" : fmt::format("  and {}; --all-points shows them\n", listed(counts));
}

std::string heading(const Registration& registration, const LengthFormat& lengths) {
  const double power = registration.adjustment->result.levels.power;
  const std::string text = fmt::format(
      "Measurements that need a look ({}): error: from where all others see the target; detectable: the error that "
      "a test finds with a probability of {:g} %",
      lengths.residualUnit(), 100.0 * power);
  return wrapped(text, textWidth, 2) + "\n";
}

}  // namespace

bool isWithoutNoise(const Registration& registration) {
  const Registered* registered = registration.registered();
  return registered && !registered->largest;
}

std::optional<LookedAt> suspectOf(const Registration& registration) {
  const Registered* registered = registration.registered();
  if (!registered || !registration.adjustment || !registration.adjustment->result.suspect) return std::nullopt;
  const AdjustedSurvey& survey = *registration.adjustment;
  const analysis::Suspect& suspect = *survey.result.suspect;
  if (suspect.isControl) {
    if (isWithoutNoise(registration)) return std::nullopt;
    return LookedAt{LookReason::suspect, std::nullopt, suspect.index, &*survey.result.control[suspect.index]};
  }
  if (!registered->outlier) return std::nullopt;
  return LookedAt{LookReason::suspect, survey.pointOf[suspect.index], survey.network.observations[suspect.index].target,
                  &*survey.result.observations[suspect.index]};
}

std::string nameOf(const Registration& registration, const LookedAt& measurement) {
  if (measurement.point) return pointInGroup(registration, *measurement.point);
  return "the given place of " + targetName(registration, measurement.target);
}

std::optional<std::string> rivalOf(const Registration& registration, const LookedAt& suspect) {
  const AdjustedSurvey& survey = *registration.adjustment;
  std::vector<std::string> others;
  for (std::size_t o = 0; o < survey.result.observations.size(); ++o) {
    const analysis::Observation& seen = survey.network.observations[o];
    const bool isSame = suspect.point && survey.pointOf[o] == *suspect.point;
    if (seen.target != suspect.target || isSame || !survey.result.observations[o]) continue;
    others.push_back(stationName(registration, seen.station));
  }
  if (suspect.point && survey.network.targets[suspect.target].control) others.emplace_back("its given place");
  return others.size() == 1 ? std::optional(others.front()) : std::nullopt;
}

std::vector<LookedAt> measurementsToLookAt(const Registration& registration) {
  std::vector<LookedAt> rows;
  if (registration.adjustment->result.redundancy == 0) return rows;
  addMeasurements(registration, rows);
  const std::optional<LookedAt> suspect = suspectOf(registration);
  if (suspect) {
    const auto same = [&](const LookedAt& row) { return row.told == suspect->told; };
    rows.erase(std::remove_if(rows.begin(), rows.end(), same), rows.end());
    rows.push_back(*suspect);
  }
  std::stable_sort(rows.begin(), rows.end(),
                   [](const LookedAt& a, const LookedAt& b) { return rankOf(a) < rankOf(b); });
  return rows;
}

std::string lookTable(const Registration& registration, const LengthFormat& lengths, const TableOptions& options) {
  const std::vector<LookedAt> rows = measurementsToLookAt(registration);
  if (rows.empty()) return "";
  const std::size_t shown = options.allRows ? rows.size() : std::min(rows.size(), longestList);
  TextTable table({Side::left, Side::left, Side::right, Side::right, Side::right});
  table.add({"group", "point", "error", "discrepancy", "detectable"});
  for (std::size_t i = 0; i < shown; ++i) table.add(rowText(registration, rows[i], lengths));
  return heading(registration, lengths) + table.text() + restOf(rows, shown);
}

}  // namespace tiepoint::workbench
