#include "workbench/survey/weights_file.h"

#include <boost/filesystem/fstream.hpp>
#include <charconv>

#include "workbench/survey/file_survey.h"
#include "workbench/values/refusal.h"

namespace tiepoint::workbench {

namespace {

constexpr const char* separators = " \t,;\r";

/// Cuts the last field off the line; empty when there is none.
std::string cutLastField(std::string& line) {
  line.erase(line.find_last_not_of(separators) + 1);
  const std::size_t before = line.find_last_of(separators);
  std::string field = before == std::string::npos ? line : line.substr(before + 1);
  line.erase(before == std::string::npos ? 0 : before);
  line.erase(line.find_last_not_of(separators) + 1);
  return field;
}

std::optional<WeightChoice> weightOfLine(std::string line, const std::string& path, std::uint64_t number) {
  line.erase(std::min(line.find('#'), line.size()));
  line.erase(0, std::min(line.find_first_not_of(separators), line.size()));
  if (line.empty()) return std::nullopt;
  const std::optional<double> weight = weightOfText(cutLastField(line));
  const std::string point = cutLastField(line);
  if (line.empty() || point.empty() || !weight) {
    Refusal refusal{RefusalKind::weightsLine, Field::weightsFile, path};
    refusal.count = number;
    throw Refused(std::move(refusal));
  }
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
  surveyFile(path);
  boost::filesystem::ifstream in{boost::filesystem::path(path)};
  std::vector<WeightChoice> weights;
  std::uint64_t number = 0;
  for (std::string line; std::getline(in, line);) {
    if (auto weight = weightOfLine(line, path, ++number)) weights.push_back(std::move(*weight));
  }
  return weights;
}

}  // namespace tiepoint::workbench
