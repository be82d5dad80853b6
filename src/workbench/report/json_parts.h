// JSON of what the commands tell.
#pragma once

#include <Eigen/Core>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "platform/sdk/od_ge_matrix3d.h"
#include "workbench/values/registration.h"

namespace tiepoint::workbench {

/// Keys keep the order in which they are set.
using OrderedJson = nlohmann::ordered_json;

/// Enough digits to read back the same double; "nan", "inf" and "-inf" for what JSON has no number
/// for; null for nothing.
OrderedJson jsonNumber(double value);
OrderedJson jsonNumber(const std::optional<double>& value);
OrderedJson jsonPoint(const OdGePoint3d& point);
OrderedJson jsonVector(const Eigen::Vector3d& vector);
OrderedJson jsonVector(const std::optional<Eigen::Vector3d>& vector);
/// Four rows of four numbers.
OrderedJson jsonMatrix(const OdGeMatrix3d& matrix);
/// Row by row, of any size.
OrderedJson jsonRows(const Eigen::Ref<const Eigen::MatrixXd>& matrix);

OrderedJson jsonRms(const std::optional<Rms>& rms);

/// "pairwise", "iterative" or "adjust".
const char* methodKey(RegistrationMethod method);

OrderedJson jsonImport(const ImportReport& import);
OrderedJson jsonCloud(const CloudReport& cloud);

/// Indented by two blanks, with a line feed at the end.
std::string jsonText(const OrderedJson& json);

}  // namespace tiepoint::workbench
