// The text of a profile's file.
#pragma once

#include <string>

#include "workbench/profile/profile_values.h"

namespace tiepoint::workbench {

/// Throws std::runtime_error with one line that names `file`, and the place in it that is wrong.
ProfileSections profileFromJson(const std::string& text, const std::string& file);

/// Indented, sections and keys in ascending order; numbers read back as the same kind and value.
/// Throws std::runtime_error for what has no form: a number that isn't finite, bytes that aren't
/// UTF-8.
std::string jsonFromProfile(const ProfileSections& sections);

}  // namespace tiepoint::workbench
