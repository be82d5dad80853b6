// The workbench's profile: sections of keys with values, kept in a JSON file.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <variant>

#include "platform/host/profile.h"

namespace tiepoint::workbench {

/// The section that the registration module reads.
inline constexpr const char* registrationSection = "PointClouds\\Registration";

using ProfileValue = std::variant<int, double, std::string>;

class Profile {
 public:
  /// With no file: the values live as long as the object. A file that is missing is an empty
  /// profile and is made at the first `set`; one that can't be read or isn't a profile throws
  /// std::runtime_error with one line that names it.
  explicit Profile(std::string file = {});

  std::optional<ProfileValue> get(const std::string& section, const std::string& key) const;
  /// Writes the file whole (beside it and renamed, so that it is never torn). Throws
  /// std::runtime_error and keeps the old value when that fails.
  void set(const std::string& section, const std::string& key, ProfileValue value);
  void remove(const std::string& section, const std::string& key);

  /// The application service that the host's "GetApp" gives: a new counted object that reads this
  /// profile, which must outlive it.
  HostAppService* newAppService();

 private:
  using Sections = std::map<std::string, std::map<std::string, ProfileValue>>;
  void save(const Sections& sections) const;

  std::string file;
  Sections sections;
};

}  // namespace tiepoint::workbench
