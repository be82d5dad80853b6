#include "workbench/report/adjustment_verdict.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "workbench/report/adjustment_names.h"
#include "workbench/report/look_list.h"
#include "workbench/report/plain_text.h"

namespace tiepoint::workbench {

namespace {

using analysis::Adjustment;

/// Smaller ones aren't worth their digits.
constexpr double farBeyondChance = 1e-6;
/// Of the sum of squares: what other poses may gain at most without being worth a search.
constexpr double wideGap = 0.01;
/// Stations that are named as the softest.
constexpr std::size_t softestNamed = 2;

std::string line(const std::string& text) { return text.empty() ? "" : wrapped(text, textWidth, 2) + "\n"; }

std::string timesText(double factor) {
  return factor < 1000.0 ? fmt::format("{:.3g}", factor) : fmt::format("{:.0f}", factor);
}

std::string convergenceText(const Adjustment& result) {
  if (result.converged) return "";
  return fmt::format(
      "Not converged: after {} the sum of squares still falls, and all figures are those of where the search was "
      "ended. Look for a wrong name, or start from better poses with --start.",
      plural(static_cast<std::size_t>(std::max(result.iterations, 0)), "iteration"));
}

// --- Single measurements.

std::string chanceText(double p) { return p < farBeyondChance ? "far beyond chance" : fmt::format("p = {:.2g}", p); }

std::string suspectText(const Registration& registration, const LookedAt& suspect, const LengthFormat& lengths) {
  const std::string chance = chanceText(registration.adjustment->result.suspect->p);
  const std::optional<std::string> other = rivalOf(registration, suspect);
  const std::string rival = other ? fmt::format("; only {} tells against it, so either may be wrong", *other) : "";
  const std::string name = nameOf(registration, suspect);
  if (!suspect.told->leftOut) return fmt::format("Suspect: {} ({}){}", name, chance, rival);
  return fmt::format("Suspect: {} lies {} {} beside where all others see it ({}); its discrepancy shows {} {}{}", name,
                     lengths.residual(suspect.told->leftOut->error.norm()), lengths.residualUnit(), chance,
                     lengths.residual(suspect.told->residual.norm()), lengths.residualUnit(), rival);
}

std::size_t rejectedCount(const Registration& registration) {
  const std::vector<LookedAt> rows = measurementsToLookAt(registration);
  return static_cast<std::size_t>(
      std::count_if(rows.begin(), rows.end(), [](const LookedAt& row) { return row.reason == LookReason::rejected; }));
}

/// Of measurements none of which stands out.
std::string noSuspectText(const Registration& registration) {
  const Adjustment& result = registration.adjustment->result;
  if (!result.levels.criticalPoint || result.levels.tests == 0) {
    return fmt::format("No measurement is tested: a redundancy of {} is too small without given sigmas (--sigma)",
                       result.redundancy);
  }
  const std::size_t rejected = rejectedCount(registration);
  if (rejected == 0) return fmt::format("No measurement is suspect: all {} tests pass", result.levels.tests);
  return fmt::format("No measurement is suspect: {} of {} tests fail{}, {:.2g} would by chance", rejected,
                     result.levels.tests, rejected == 1 ? "s" : "",
                     result.levels.alpha * static_cast<double>(result.levels.tests));
}

std::string measurementsText(const Registration& registration, const LengthFormat& lengths) {
  if (isWithoutNoise(registration)) return "";
  const std::optional<LookedAt> suspect = suspectOf(registration);
  return suspect ? suspectText(registration, *suspect, lengths) : noSuspectText(registration);
}

// --- The whole.

bool haveGivenSigmas(const AdjustedSurvey& survey) {
  const auto& all = survey.network.observations;
  return std::any_of(all.begin(), all.end(), [](const auto& observation) { return observation.sigma != 1.0; });
}

bool haveWeights(const AdjustedSurvey& survey) {
  const auto& all = survey.network.observations;
  return std::any_of(all.begin(), all.end(), [](const auto& observation) { return observation.weight != 1.0; });
}

std::string estimatedSigmaText(const AdjustedSurvey& survey, const LengthFormat& lengths) {
  const double factor = std::sqrt(*survey.result.varianceFactor);
  if (haveGivenSigmas(survey)) {
    return fmt::format("The residuals are {} times as large as the given sigmas suggest; all figures are scaled by it",
                       timesText(factor));
  }
  return fmt::format("Estimated sigma of a coordinate{}: {} {}; nothing tests it unless sigmas are given (--sigma)",
                     haveWeights(survey) ? " of weight 1" : "", lengths.residual(factor), lengths.residualUnit());
}

std::string globalTestText(const Registration& registration) {
  const Adjustment& result = registration.adjustment->result;
  const double redundancy = static_cast<double>(result.redundancy);
  const std::string lower = timesText(std::sqrt(result.globalTest->lower / redundancy));
  const std::string upper = timesText(std::sqrt(result.globalTest->upper / redundancy));
  const std::string factor = timesText(std::sqrt(*result.varianceFactor));
  const std::string range = fmt::format("chance allows {} to {}", lower, upper);
  if (result.globalTest->passed) {
    return fmt::format("Global test passed: the residuals are {} times as large as the given sigmas suggest ({})",
                       factor, range);
  }
  if (result.sumOfSquares < result.globalTest->lower) {
    return fmt::format(
        "Global test failed: the residuals are only {} times as large as the given sigmas suggest ({}); the "
        "measurements are better than the sigmas, or not independent",
        factor, range);
  }
  return fmt::format("Global test failed: the residuals are {} times as large as the given sigmas suggest ({}){}",
                     factor, range,
                     suspectOf(registration) ? "" : "; the sigmas are too small, or several measurements are off");
}

std::string residualsText(const Registration& registration, const LengthFormat& lengths) {
  const AdjustedSurvey& survey = *registration.adjustment;
  if (isWithoutNoise(registration)) {
    return "All residuals are the rounding of numbers: measurements without any noise can't be tested";
  }
  if (survey.result.globalTest) return globalTestText(registration);
  return survey.result.varianceFactor ? estimatedSigmaText(survey, lengths) : "";
}

// --- Whether other poses could fit better.

std::string percentText(double share) {
  return share < 1e-6 ? "less than 0.0001 %" : fmt::format("at most {:.2g} %", 100.0 * share);
}

std::string gapText(const Registration& registration) {
  const AdjustedSurvey& survey = *registration.adjustment;
  const analysis::Certificate& certificate = *survey.result.certificate;
  const double gain = certificate.gap / survey.result.sumOfSquares;
  if (gain <= wideGap) {
    return fmt::format(
        "No better poses are known; any would lower the sum of squares by {}. (The bound can't tell a station whose "
        "targets lie in one plane from its mirror image.)",
        percentText(gain));
  }
  // A gross error widens the gap by itself.
  if (suspectOf(registration) && !survey.startWasGiven) {
    return "Whether other poses fit better can't be told while the suspect is in";
  }
  const std::string remedy = survey.startWasGiven
                                 ? "The given start is judged, not replaced: compare a run without --start."
                                 : "Look for a wrong name, or start from better poses with --start.";
  return fmt::format(
      "In all likelihood other poses fit better: the sum of squares could be as low as {:.2g} % of what it is. {}",
      100.0 * certificate.lowerBound / survey.result.sumOfSquares, remedy);
}

std::string certificateText(const Registration& registration) {
  const AdjustedSurvey& survey = *registration.adjustment;
  const auto& certificate = survey.result.certificate;
  if (!certificate) return "";
  const std::string other = survey.result.otherStartWon ? "; the first start would have led to a worse fit" : "";
  if (certificate->certified && certificate->unique) return "No other poses fit as well as these" + other;
  if (certificate->certified) return "No other poses fit better than these" + other;
  return isWithoutNoise(registration) ? "" : gapText(registration);
}

std::string softestText(const Registration& registration) {
  const analysis::Stiffness& network = registration.adjustment->result.network;
  // In a long chain no few stations have most of the motion.
  if (network.mode.empty()) return fmt::format("Stiffness {:.2g}; 1 is firm", network.stiffness);
  std::vector<std::string> names;
  for (std::size_t i = 0; i < network.mode.size() && i < softestNamed; ++i) {
    names.push_back(stationName(registration, network.mode[i].station));
  }
  return fmt::format("Softest: {} (stiffness {:.2g}; 1 is firm)", listed(names), network.stiffness);
}

/// The station whose origin has the largest standard deviation; nothing where none has any.
std::string leastSureText(const Registration& registration, const LengthFormat& lengths) {
  const auto& stations = registration.adjustment->result.stations;
  std::optional<std::size_t> worst;
  for (std::size_t s = 0; s < stations.size(); ++s) {
    if (stations[s] && stations[s]->positionSigma > (worst ? stations[*worst]->positionSigma : 0.0)) worst = s;
  }
  if (!worst) return "";
  return fmt::format("Least sure: {}, whose origin has a standard deviation of {} {}",
                     stationName(registration, *worst), lengths.residual(stations[*worst]->positionSigma),
                     lengths.residualUnit());
}

}  // namespace

std::string verdictText(const Registration& registration, const LengthFormat& lengths) {
  const Adjustment& result = registration.adjustment->result;
  std::string text = line(convergenceText(result));
  if (result.redundancy == 0) {
    return text + line(
                      "Nothing is checked: no measurement is redundant, so the zero residuals say nothing about the "
                      "quality. Measure more targets in common.");
  }
  return text + line(measurementsText(registration, lengths)) + line(residualsText(registration, lengths)) +
         line(certificateText(registration)) + line(leastSureText(registration, lengths)) +
         line(softestText(registration));
}

}  // namespace tiepoint::workbench
