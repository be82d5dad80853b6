// Why a survey file wasn't read, and what to do.
#pragma once

#include <string>

#include "workbench/report/field_names.h"
#include "workbench/values/reading_outcome.h"

namespace tiepoint::workbench {

/// One line, without the file's name.
std::string readingRefusalText(const ReadingOutcome& outcome, FieldNames nameOf);

}  // namespace tiepoint::workbench
