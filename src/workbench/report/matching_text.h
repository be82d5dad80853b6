// Why a matching named nothing or left stations out, in words.
#pragma once

#include <string>

#include "workbench/values/finding.h"

namespace tiepoint::workbench {

/// As findingText, for the reasons of a matching alone.
std::string matchingText(const Finding& finding);

}  // namespace tiepoint::workbench
