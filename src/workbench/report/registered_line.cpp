#include "workbench/report/registered_line.h"

#include <fmt/format.h>

#include <algorithm>

#include "workbench/report/plain_text.h"

namespace tiepoint::workbench {

std::string baseNames(const Registration& registration, std::size_t most) {
  std::vector<std::string> names;
  for (const GroupOutcome& group : registration.groups) {
    if (group.inBase) names.push_back(printable(group.name));
  }
  return joined(names, most);
}

std::string registeredLine(const Registration& registration, std::size_t maxBases) {
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
