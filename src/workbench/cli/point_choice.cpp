#include "workbench/cli/point_choice.h"

#include <fmt/format.h>

#include <boost/filesystem/fstream.hpp>
#include <charconv>
#include <optional>
#include <set>

#include "workbench/cli/exit_status.h"
#include "workbench/cli/file_survey.h"
#include "workbench/report/suggestion.h"

namespace tiepoint::workbench::cli {

using namespace ZOR::reg;

namespace {

constexpr const char* separators = " \t,;\r";

[[noreturn]] void refuse(const std::string& message) { throw CommandError(ExitStatus::usage, message); }

std::vector<std::string> groupNames(const SessionState& state) {
  std::vector<std::string> names;
  for (const SessionGroup& group : state.groups) names.push_back(group.name);
  return names;
}

std::vector<std::string> pointNames(const SessionState& state, GroupId group) {
  std::vector<std::string> names;
  for (const SessionPoint& point : state.points) {
    if (point.record.groupId == group) names.push_back(point.name);
  }
  return names;
}

std::optional<GroupId> groupOfName(const SessionState& state, const std::string& text) {
  const std::string name = sessionName(text);
  for (const SessionGroup& group : state.groups) {
    if (group.name == name) return group.id;
  }
  return std::nullopt;
}

RefPointIdSet pointsOfName(const SessionState& state, GroupId group, const std::string& text) {
  const std::string name = sessionName(text);
  RefPointIdSet points;
  for (const SessionPoint& point : state.points) {
    if (point.record.groupId == group && point.name == name) points.insert(point.record.id);
  }
  return points;
}

PointChoice wholeGroup(const SessionState& state, GroupId group) {
  PointChoice choice{group, true, {}};
  for (const SessionPoint& point : state.points) {
    if (point.record.groupId == group) choice.points.insert(point.record.id);
  }
  return choice;
}

/// A number from 0 to 1, the whole of the text.
std::optional<double> weightOf(const std::string& text) {
  double weight = 0.0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), weight);
  if (error != std::errc{} || end != text.data() + text.size() || !(weight >= 0.0 && weight <= 1.0))
    return std::nullopt;
  return weight;
}

/// Cuts the last field off the line; empty when there is none.
std::string takeLastField(std::string& line) {
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
  const std::string weightText = takeLastField(line);
  const std::string point = takeLastField(line);
  const std::optional<double> weight = weightOf(weightText);
  if (line.empty() || point.empty() || !weight) {
    throw CommandError(ExitStatus::file,
                       fmt::format("{}: line {} isn't \"GROUP POINT WEIGHT\" with a weight from 0 to 1", path, number));
  }
  return WeightChoice{line + ":" + point, *weight};
}

}  // namespace

GroupId chosenGroup(const SessionState& state, const std::string& name, const std::string& option) {
  if (const auto group = groupOfName(state, name)) return *group;
  refuse(fmt::format("{} {}: there is no group \"{}\"{}", option, name, name, suggestion(name, groupNames(state))));
}

std::optional<PointChoice> findPoints(const SessionState& state, const std::string& text) {
  if (const auto group = groupOfName(state, text)) return wholeGroup(state, *group);
  for (std::size_t colon = text.find(':'); colon != std::string::npos; colon = text.find(':', colon + 1)) {
    const auto group = groupOfName(state, text.substr(0, colon));
    if (!group) continue;
    PointChoice choice{*group, false, pointsOfName(state, *group, text.substr(colon + 1))};
    if (!choice.points.empty()) return choice;
  }
  return std::nullopt;
}

PointChoice chosenPoints(const SessionState& state, const std::string& text, const std::string& option) {
  if (auto choice = findPoints(state, text)) return *choice;
  for (std::size_t colon = text.find(':'); colon != std::string::npos; colon = text.find(':', colon + 1)) {
    const std::string group = text.substr(0, colon);
    const auto id = groupOfName(state, group);
    if (!id) continue;
    const std::string point = text.substr(colon + 1);
    refuse(fmt::format("{} {}: group \"{}\" has no point \"{}\"{}", option, text, group, point,
                       suggestion(point, pointNames(state, *id))));
  }
  const std::string name = text.substr(0, text.find(':'));
  refuse(fmt::format("{} {}: there is no group \"{}\"{}", option, text, name, suggestion(name, groupNames(state))));
}

WeightChoice parseWeightOption(const std::string& text) {
  const std::size_t equals = text.rfind('=');
  if (equals == std::string::npos || equals == 0) {
    refuse(fmt::format("--weight {}: write it as GROUP:POINT=WEIGHT", text));
  }
  const auto weight = weightOf(text.substr(equals + 1));
  if (!weight) refuse(fmt::format("--weight {}: the weight must be a number from 0 to 1", text));
  return {text.substr(0, equals), *weight};
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

}  // namespace tiepoint::workbench::cli
