// JSON of what the commands tell.
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "platform/sdk/od_ge_matrix3d.h"
#include "workbench/cli/cloud_moves.h"
#include "workbench/cli/import_files.h"

namespace tiepoint::workbench::cli {

/// Keys keep the order in which they are set.
using Json = nlohmann::ordered_json;

/// Enough digits to read back the same double; "nan", "inf" and "-inf" for what JSON has no number
/// for; null for nothing.
Json jsonNumber(double value);
Json jsonNumber(const std::optional<double>& value);
Json jsonPoint(const OdGePoint3d& point);
/// Four rows of four numbers.
Json jsonMatrix(const OdGeMatrix3d& matrix);

Json jsonImport(const Import& import);
Json jsonCloud(const CloudReport& cloud);

/// Indented by two blanks, with a line feed at the end.
std::string jsonText(const Json& json);

}  // namespace tiepoint::workbench::cli
