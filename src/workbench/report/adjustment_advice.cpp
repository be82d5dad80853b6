#include "workbench/report/adjustment_advice.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <set>

#include "workbench/report/adjustment_names.h"
#include "workbench/report/doubtful_names.h"
#include "workbench/report/look_list.h"
#include "workbench/report/plain_text.h"

namespace tiepoint::workbench {

namespace {

constexpr std::size_t maxLines = 4;
/// Stations with a line each of one kind.
constexpr std::size_t maxStations = 2;
/// Of a station's own block of the normal equations, free of units: a station whose targets lie within a tenth
/// of their spread of one line is this weak about it.
constexpr double nearLine = 0.01;

using Lines = std::vector<std::string>;

// --- Names and single measurements.

bool haveOthersFailed(const Registration& registration) {
  const std::vector<LookedAt> rows = measurementsToLookAt(registration);
  return std::any_of(rows.begin(), rows.end(), [](const LookedAt& row) { return row.reason == LookReason::rejected; });
}

/// Whether the advice on the station's names says what to do about the measurement, too.
bool isMisnamed(const Registration& registration, const LookedAt& suspect) {
  if (!suspect.point) return false;
  const auto names = doubtfulNames(registration, registration.points[*suspect.point].group);
  if (!names || !names->fitsBetter) return false;
  const std::string name = targetName(registration, suspect.target);
  return std::any_of(names->exchanged.begin(), names->exchanged.end(),
                     [&](const auto& pair) { return pair.first == name; });
}

std::string suspectAdvice(const Registration& registration, const LookedAt& suspect) {
  const std::optional<std::string> rival = rivalOf(registration, suspect);
  if (!suspect.point) {
    return fmt::format("Check {}{}, or compare a run without it", nameOf(registration, suspect),
                       rival ? " and the measurement in " + *rival : "");
  }
  const std::string andRival = rival ? " and " + *rival : "";
  const std::optional<std::size_t> other = exchangedWith(registration, suspect);
  if (other) {
    return fmt::format("Check the names of {} and {}{}: each was measured where the other should be",
                       targetName(registration, suspect.target), pointInGroup(registration, *other), andRival);
  }
  return fmt::format("Measure {}{} again, or compare a run with --exclude {}",
                     pointInGroup(registration, *suspect.point), andRival, pointChoice(registration, *suspect.point));
}

void addSuspect(const Registration& registration, Lines& lines) {
  const std::optional<LookedAt> suspect = suspectOf(registration);
  if (!suspect || isMisnamed(registration, *suspect)) return;
  const char* const others = haveOthersFailed(registration)
                                 ? "; judge the other rejected ones only after that, as one bad measurement pulls many"
                                 : "";
  lines.push_back(suspectAdvice(registration, *suspect) + others);
}

void addNames(const Registration& registration, Lines& lines) {
  std::size_t told = 0;
  for (std::size_t station = 0; station < registration.groups.size() && told < maxStations; ++station) {
    const std::optional<DoubtfulNames> names = doubtfulNames(registration, station);
    if (!names) continue;
    ++told;
    lines.push_back(fmt::format("Check the names of {} in {}: exchanged, they fit {}", exchangeText(*names),
                                stationName(registration, station), names->fitsBetter ? "better" : "nearly as well"));
  }
}

// --- Geometry.

void addLines(const Registration& registration, Lines& lines) {
  const analysis::Adjustment& result = registration.adjustment->result;
  Lines near;
  for (std::size_t station = 0; station < result.stations.size(); ++station) {
    const auto& told = result.stations[station];
    if (told && told->geometry < nearLine) near.push_back(stationName(registration, station));
  }
  if (near.empty()) return;
  const bool one = near.size() == 1;
  lines.push_back(
      fmt::format("The targets of {} lie nearly on one line: add {} off it", listed(near), one ? "one" : "one each"));
}

/// The redundant share of each station's coordinates; 1 for held ones, whose poses no target could fix.
std::vector<double> redundantShares(const AdjustedSurvey& survey) {
  std::vector<double> measurements(survey.network.stations.size(), 0.0);
  for (std::size_t o = 0; o < survey.result.observations.size(); ++o) {
    if (survey.result.observations[o]) measurements[survey.network.observations[o].station] += 1.0;
  }
  std::vector<double> shares(measurements.size(), 1.0);
  for (std::size_t s = 0; s < shares.size(); ++s) {
    if (survey.result.stations[s]) shares[s] = survey.result.stations[s]->redundancy / (3.0 * measurements[s]);
  }
  return shares;
}

/// Of each target that isn't controlled, the weakest of the stations that measured it: that one gives way to
/// errors of all others.
std::map<std::size_t, std::size_t> weakStations(const AdjustedSurvey& survey, const std::set<std::size_t>& targets) {
  const std::vector<double> shares = redundantShares(survey);
  std::map<std::size_t, std::size_t> weakest;
  for (std::size_t o = 0; o < survey.result.observations.size(); ++o) {
    const analysis::Observation& seen = survey.network.observations[o];
    if (!survey.result.observations[o] || targets.count(seen.target) == 0) continue;
    const auto [entry, isFirst] = weakest.emplace(seen.target, seen.station);
    if (!isFirst && shares[seen.station] < shares[entry->second]) entry->second = seen.station;
  }
  return weakest;
}

void addUncontrolled(const Registration& registration, Lines& lines) {
  std::set<std::size_t> targets;
  for (const LookedAt& row : measurementsToLookAt(registration)) {
    if (row.reason == LookReason::uncontrolled) targets.insert(row.target);
  }
  std::map<std::size_t, Lines> names;
  for (const auto& [target, station] : weakStations(*registration.adjustment, targets)) {
    names[station].push_back(targetName(registration, target));
  }
  if (names.size() > maxStations) {
    Lines stations;
    for (const auto& entry : names) stations.push_back(stationName(registration, entry.first));
    lines.push_back(fmt::format("One more common target in each of {} would control what isn't controlled there",
                                listed(stations)));
    return;
  }
  for (auto& [station, ofStation] : names) {
    std::sort(ofStation.begin(), ofStation.end());
    lines.push_back(fmt::format("One more common target in {} would control {}", stationName(registration, station),
                                listed(ofStation)));
  }
}

}  // namespace

std::string adviceText(const Registration& registration) {
  Lines lines;
  addSuspect(registration, lines);
  addNames(registration, lines);
  addLines(registration, lines);
  addUncontrolled(registration, lines);
  if (lines.size() > maxLines) lines.resize(maxLines);
  std::string text;
  for (const std::string& advice : lines) text += wrapped(advice, textWidth, 2) + "\n";
  return text;
}

}  // namespace tiepoint::workbench
