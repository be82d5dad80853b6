// Files of results whose content is made here, not by the module.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "workbench/values/output_file.h"
#include "workbench/values/registration.h"

namespace tiepoint::workbench {

/// The matrices in plain form, the transformations as JSON and the picture, as far as they are asked for;
/// `picture` makes the picture's bytes. Nothing for a survey that isn't registered. The registration must
/// outlive the files.
std::vector<OutputFile> outputs(const Registration& registration, const OutputRequest& wanted, Unit unit,
                                std::function<std::string()> picture = {});

}  // namespace tiepoint::workbench
