#include "workbench/report/registered_line.h"

#include <fmt/format.h>

#include <algorithm>

#include "workbench/report/plain_text.h"

namespace tiepoint::workbench {

namespace {

/// Targets with given places that take part.
std::size_t controlCount(const AdjustedSurvey& survey) {
  std::size_t count = 0;
  for (std::size_t t = 0; t < survey.result.targets.size(); ++t) {
    if (survey.network.targets[t].control && survey.result.targets[t]) ++count;
  }
  return count;
}

std::string adjustedLine(const Registration& registration, std::size_t maxBases) {
  const std::string base = registration.usesBase ? " with base " + baseNames(registration, maxBases) : "";
  if (!registration.adjustment) return "Adjusted" + base;
  const AdjustedSurvey& survey = *registration.adjustment;
  const std::string control = plural(controlCount(survey), "control target");
  switch (survey.result.datum.kind) {
    case analysis::DatumKind::base:
      return "Adjusted" + base;
    case analysis::DatumKind::control:
      return "Adjusted with " + control;
    case analysis::DatumKind::baseAndControl:
      return fmt::format("Adjusted{} and {}", base, control);
    case analysis::DatumKind::free:
      break;
  }
  if (!survey.result.datum.frame) return "Adjusted freely";
  return fmt::format("Adjusted freely, in the system of {}",
                     printable(registration.groups[*survey.result.datum.frame].name));
}

}  // namespace

std::string baseNames(const Registration& registration, std::size_t most) {
  std::vector<std::string> names;
  for (const GroupOutcome& group : registration.groups) {
    if (group.inBase) names.push_back(printable(group.name));
  }
  return joined(names, most);
}

std::string registeredLine(const Registration& registration, std::size_t maxBases) {
  if (registration.method == RegistrationMethod::adjust) return adjustedLine(registration, maxBases);
  return fmt::format("Registered {}{}",
                     registration.method == RegistrationMethod::iterative ? "iteratively" : "pairwise",
                     registration.usesBase ? " with base " + baseNames(registration, maxBases) : "");
}

std::size_t activeCount(const Registration& registration) {
  const auto& points = registration.points;
  return static_cast<std::size_t>(
      std::count_if(points.begin(), points.end(), [](const PointOutcome& point) { return point.active; }));
}

}  // namespace tiepoint::workbench
