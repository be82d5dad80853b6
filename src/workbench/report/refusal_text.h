// Refusals in words.
#pragma once

#include <string>

#include "workbench/report/field_names.h"
#include "workbench/values/refusal.h"

namespace tiepoint::workbench {

/// One line: what is wrong, where, what to do. `nameOf` says what the face calls the parts of a request.
std::string refusalText(const Refusal& refusal, FieldNames nameOf = optionOf);

}  // namespace tiepoint::workbench
