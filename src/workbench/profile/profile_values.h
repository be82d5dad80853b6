// What a profile holds.
#pragma once

#include <map>
#include <string>
#include <variant>

namespace tiepoint::workbench {

/// A whole number of 32 bits, any other number, or UTF-8 text.
using ProfileValue = std::variant<int, double, std::string>;

/// By section and key.
using ProfileSections = std::map<std::string, std::map<std::string, ProfileValue>>;

}  // namespace tiepoint::workbench
