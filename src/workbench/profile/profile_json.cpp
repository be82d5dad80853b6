#include "workbench/profile/profile_json.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>

namespace tiepoint::workbench {
namespace {

using nlohmann::json;

std::runtime_error notAProfile(const std::string& file, const std::string& why) {
  return std::runtime_error(file + ": not a profile: " + why);
}

std::string wrongKind(const std::string& section, const std::string& key) {
  return "the value of \"" + key + "\" in the section \"" + section + "\" is neither a number nor a string";
}

std::string lineOf(const std::string& text, std::size_t byte) {
  const auto end = text.begin() + static_cast<std::ptrdiff_t>(std::min(byte, text.size()));
  return std::to_string(1 + std::count(text.begin(), end, '\n'));
}

json parse(const std::string& text, const std::string& file) {
  try {
    return json::parse(text);
  } catch (const json::parse_error& error) {
    throw notAProfile(file, "line " + lineOf(text, error.byte) + " isn't JSON");
  } catch (const json::out_of_range&) {
    throw notAProfile(file, "it has a number that is too large");
  }
}

ProfileValue numberFrom(const json& number) {
  constexpr int least = std::numeric_limits<int>::min();
  constexpr int most = std::numeric_limits<int>::max();
  // An unsigned value above the signed range would come out negative.
  const bool inSignedRange = !number.is_number_unsigned() || number.get<std::uint64_t>() <= most;
  if (number.is_number_integer() && inSignedRange && number.get<std::int64_t>() >= least) return number.get<int>();
  return number.get<double>();
}

/// Nothing for a value of another kind.
std::optional<ProfileValue> valueFrom(const json& value) {
  if (value.is_string()) return value.get<std::string>();
  if (value.is_number()) return numberFrom(value);
  return std::nullopt;
}

json jsonFrom(const ProfileValue& value) {
  if (const double* number = std::get_if<double>(&value); number && !std::isfinite(*number)) {
    throw std::runtime_error("a profile can't store a number that isn't finite");
  }
  return std::visit([](const auto& held) { return json(held); }, value);
}

}  // namespace

ProfileSections profileFromJson(const std::string& text, const std::string& file) {
  const json root = parse(text, file);
  if (!root.is_object()) throw notAProfile(file, "it isn't an object of sections");
  ProfileSections sections;
  for (const auto& [sectionName, section] : root.items()) {
    if (!section.is_object()) throw notAProfile(file, "the section \"" + sectionName + "\" isn't an object");
    auto& keys = sections[sectionName];
    for (const auto& [key, value] : section.items()) {
      const std::optional<ProfileValue> read = valueFrom(value);
      if (!read) throw notAProfile(file, wrongKind(sectionName, key));
      keys[key] = *read;
    }
  }
  return sections;
}

std::string jsonFromProfile(const ProfileSections& sections) {
  json root = json::object();
  for (const auto& [sectionName, keys] : sections) {
    json& section = root[sectionName] = json::object();
    for (const auto& [key, value] : keys) section[key] = jsonFrom(value);
  }
  try {
    return root.dump(2) + "\n";
  } catch (const json::type_error&) {
    throw std::runtime_error("a profile can't store text that isn't UTF-8");
  }
}

}  // namespace tiepoint::workbench
