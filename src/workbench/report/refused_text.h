// A survey that couldn't be registered, for people.
#pragma once

#include <string>

#include "workbench/values/registration.h"

namespace tiepoint::workbench {

/// What keeps the groups apart, and what would help; for a registration that isn't registered.
std::string refusedText(const Registration& registration);

/// The same as one clause.
std::string whyNotRegistered(const Registration& registration);

}  // namespace tiepoint::workbench
