#include "workbench/report/adjustment_names.h"

#include <fmt/format.h>

#include "workbench/report/plain_text.h"

namespace tiepoint::workbench {

std::string pointInGroup(const Registration& registration, std::size_t point) {
  const PointOutcome& row = registration.points[point];
  return fmt::format("{} in {}", printable(row.name), printable(registration.groups[row.group].name));
}

std::string pointChoice(const Registration& registration, std::size_t point) {
  const PointOutcome& row = registration.points[point];
  return fmt::format("{}:{}", printable(registration.groups[row.group].name), printable(row.name));
}

std::string stationName(const Registration& registration, std::size_t station) {
  return printable(registration.groups[station].name);
}

std::string targetName(const Registration& registration, std::size_t target) {
  return printable(registration.adjustment->targetNames[target]);
}

std::string listed(const std::vector<std::string>& names, std::size_t most) {
  if (names.size() > most) return joined(names, most);
  std::string text;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (i > 0) text += i + 1 == names.size() ? " and " : ", ";
    text += names[i];
  }
  return text;
}

}  // namespace tiepoint::workbench
