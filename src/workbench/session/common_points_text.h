// Names in the file of common points that the module has written.
#pragma once

#include <string>
#include <vector>

#include "workbench/values/registration.h"

namespace tiepoint::workbench {

/// The module's file of common points, a line `name x y z weight` each in windows-1251. The same bytes
/// where the module carried every name as it was written; else UTF-8 with those names, in quotation
/// marks where a name holds what separates fields.
std::string commonPointsText(const std::string& content);

/// The same file of targets that the module hasn't merged itself.
std::string commonPointsText(const std::vector<MergedTarget>& targets);

}  // namespace tiepoint::workbench
