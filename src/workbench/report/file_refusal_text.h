// Refusals of files in words.
#pragma once

#include <string>

#include "workbench/report/field_names.h"
#include "workbench/values/refusal.h"

namespace tiepoint::workbench {

/// As refusalText, for files that can't be read or written alone.
std::string fileRefusalText(const Refusal& refusal, FieldNames nameOf);

}  // namespace tiepoint::workbench
