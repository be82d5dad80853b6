#include "workbench/profile/profile.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <utility>

#include "workbench/io/durable_file.h"
#include "workbench/profile/profile_json.h"

namespace tiepoint::workbench {
namespace {

std::runtime_error unreadable(const std::string& file) {
  return std::runtime_error(file + ": the profile can't be read; check that it is a file, and its permissions");
}

std::string contentOf(const std::string& file) {
  const std::filesystem::path path = std::filesystem::u8path(file);
  std::ifstream stream(path, std::ios::binary);
  if (!stream || std::filesystem::is_directory(path)) throw unreadable(file);
  std::string content{std::istreambuf_iterator<char>(stream), {}};
  if (stream.bad()) throw unreadable(file);
  return content;
}

}  // namespace

Profile::Profile(std::string path) : file(std::move(path)) {
  if (file.empty()) return;
  std::error_code failure;
  const auto status = std::filesystem::status(std::filesystem::u8path(file), failure);
  if (status.type() == std::filesystem::file_type::not_found) return;
  sections = profileFromJson(contentOf(file), file);
}

std::optional<ProfileValue> Profile::valueIn(const Sections& sections, const std::string& section,
                                             const std::string& key) {
  const auto keys = sections.find(section);
  if (keys == sections.end()) return std::nullopt;
  const auto value = keys->second.find(key);
  if (value == keys->second.end()) return std::nullopt;
  return value->second;
}

std::optional<ProfileValue> Profile::get(const std::string& section, const std::string& key) const {
  const std::optional<ProfileValue> own = valueIn(sections, section, key);
  return own ? own : valueIn(offered, section, key);
}

void Profile::setDefault(const std::string& section, const std::string& key, ProfileValue value) {
  offered[section][key] = std::move(value);
}

void Profile::set(const std::string& section, const std::string& key, ProfileValue value) {
  Sections changed = sections;
  changed[section][key] = std::move(value);
  replace(std::move(changed));
}

void Profile::remove(const std::string& section, const std::string& key) {
  if (!valueIn(sections, section, key)) return;
  Sections changed = sections;
  changed[section].erase(key);
  replace(std::move(changed));
}

bool Profile::hasSection(const std::string& section) const { return sections.count(section) != 0; }

void Profile::addSection(const std::string& section) { sections[section]; }

void Profile::replace(Sections changed) {
  // A profile without a file refuses the same values.
  const std::string text = jsonFromProfile(changed);
  if (!file.empty()) replaceFile(file, text);
  sections = std::move(changed);
}

}  // namespace tiepoint::workbench
