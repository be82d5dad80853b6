#include "workbench/survey/weights_file.h"

#include <charconv>

#include "workbench/survey/line_fields.h"

namespace tiepoint::workbench {

namespace {

/// Nothing for a line that isn't one of a weight. What stands before the last two fields is the group.
std::optional<WeightChoice> weightOfLine(std::string line) {
  const std::optional<double> weight = weightOfText(cutLastField(line));
  const std::string point = cutLastField(line);
  if (line.empty() || point.empty() || !weight) return std::nullopt;
  return WeightChoice{{{PointRef{line, point}}, line + ":" + point}, *weight};
}

}  // namespace

std::optional<double> weightOfText(const std::string& text) {
  double weight = 0.0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), weight);
  if (error != std::errc{} || end != text.data() + text.size() || !(weight >= 0.0 && weight <= 1.0)) {
    return std::nullopt;
  }
  return weight;
}

std::vector<WeightChoice> readWeightsFile(const std::string& path) {
  const LineFile file{path, Field::weightsFile, RefusalKind::weightsLine};
  std::vector<WeightChoice> weights;
  forEachLine(file, Quotes::ordinary, [&](const std::string& line, std::uint64_t number) {
    std::optional<WeightChoice> weight = weightOfLine(line);
    if (!weight) file.refuse(number);
    weights.push_back(std::move(*weight));
  });
  return weights;
}

}  // namespace tiepoint::workbench
