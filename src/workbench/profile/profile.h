// The workbench's profile: sections of keys with values, kept in a JSON file.
#pragma once

#include <optional>
#include <string>

#include "platform/host/profile.h"
#include "workbench/profile/profile_values.h"

namespace tiepoint::workbench {

/// The section that the registration module reads.
inline constexpr const char* registrationSection = "PointClouds\\Registration";

/// The file holds {"section": {"key": value}}. A number written without point and exponent is whole
/// as long as it fits; every other number is a double.
class Profile {
 public:
  /// With no file: the values live as long as the object. A file that is missing is an empty
  /// profile and is made at the first `set`; one that can't be read or isn't a profile throws
  /// std::runtime_error with one line that names it, and the section and key of a value that is
  /// neither a number nor a text.
  explicit Profile(std::string file = {});
  Profile(const Profile&) = delete;
  Profile& operator=(const Profile&) = delete;

  std::optional<ProfileValue> get(const std::string& section, const std::string& key) const;
  /// Writes the file whole (beside it and renamed, so that it is never torn). Throws
  /// std::runtime_error and keeps the old value when that fails, and for a number that isn't finite
  /// or bytes that aren't UTF-8, which have no form in the file.
  void set(const std::string& section, const std::string& key, ProfileValue value);
  /// A value that `get` gives as long as the profile has none of its own; the file never gets it.
  void setDefault(const std::string& section, const std::string& key, ProfileValue value);
  /// Takes the key away, as `set`; does nothing when there is none.
  void remove(const std::string& section, const std::string& key);

  bool hasSection(const std::string& section) const;
  /// Makes the section when it is missing: in memory, the file gets it with the next `set`.
  void addSection(const std::string& section);

  /// The application service that the host's "GetApp" gives: a new counted object that reads this
  /// profile, which must outlive it.
  HostAppService* newAppService();
  /// How many objects of this profile (services, profiles, sections) are given out and not released.
  int objectsGivenOut() const { return givenOut; }

 private:
  using Sections = ProfileSections;
  static std::optional<ProfileValue> valueIn(const Sections& sections, const std::string& section,
                                             const std::string& key);
  void replace(Sections changed);

  std::string file;
  Sections sections;
  Sections offered;
  int givenOut = 0;
};

}  // namespace tiepoint::workbench
