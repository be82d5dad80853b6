#include "workbench/survey/carry_file.h"

#include <optional>

#include "workbench/survey/line_fields.h"

namespace tiepoint::workbench {

namespace {

/// Nothing for a line that isn't one of a place.
std::optional<StationPlace> placeOfLine(const std::string& line) {
  constexpr std::size_t names = 1;
  const auto fields = fieldsOfLine(line, names);
  if (!fields || fields->size() != names + 3 || fields->front().empty()) return std::nullopt;
  StationPlace place{fields->front()};
  for (Eigen::Index axis = 0; axis < 3; ++axis) {
    const std::optional<double> coordinate = numberOfText((*fields)[names + static_cast<std::size_t>(axis)]);
    if (!coordinate) return std::nullopt;
    place.place[axis] = *coordinate;
  }
  return place;
}

}  // namespace

std::vector<StationPlace> readCarryFile(const std::string& path) {
  const LineFile file{path, Field::carryFile, RefusalKind::carryLine};
  std::vector<StationPlace> places;
  forEachLine(file, Quotes::enclosing, [&](const std::string& line, std::uint64_t number) {
    std::optional<StationPlace> place = placeOfLine(line);
    if (!place) file.refuse(number);
    places.push_back(std::move(*place));
  });
  return places;
}

}  // namespace tiepoint::workbench
