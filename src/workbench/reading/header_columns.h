// Columns by the words above them, or by the words that a user names.
#pragma once

#include <string>
#include <variant>
#include <vector>

#include "workbench/values/reading_outcome.h"
#include "workbench/values/reading_request.h"

namespace tiepoint::workbench {

/// What the words of a header, UTF-8, say. Words that mean nothing here are skipped columns.
std::variant<Columns, ColumnsFault> columnsOfHeader(const std::vector<std::string>& words);

/// From text such as `name,e,n,h`, with `-` or `skip` for a column to be skipped, or such as
/// `name=1,x=3,y=2,z=4` or `x=Easting`, by the number of a column or the word above it. Header words
/// of all languages stand for what they mean.
std::variant<ColumnRequest, ColumnsFault> columnRequestOf(const std::string& text);

/// The columns that are asked for, in a file of that header; `header` is empty without one.
std::variant<Columns, ColumnsFault> requestedColumns(const ColumnRequest& request,
                                                     const std::vector<std::string>& header);

}  // namespace tiepoint::workbench
