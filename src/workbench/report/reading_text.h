// What is said about the reading of survey files.
#pragma once

#include <string>

#include "workbench/report/field_names.h"
#include "workbench/values/reading_outcome.h"

namespace tiepoint::workbench {

/// One line: `UTF-8, semicolons, decimal comma; columns name,y,x,z; 2 comments skipped`.
std::string readingLine(const FileReading& reading);

/// `name,x,y,z`, as it can be asked for.
std::string columnsText(const Columns& columns);

/// `semicolons`.
std::string separatorText(Separator separator);

/// `line 3 has 5 fields, expected 4`.
std::string readingFaultText(const ReadingFault& fault, FieldNames nameOf);

std::string columnsFaultText(const ColumnsFault& fault);

}  // namespace tiepoint::workbench
