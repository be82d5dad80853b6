// A registration as a request over JSON-RPC asks for it.
#pragma once

#include "workbench/rpc/parameters.h"
#include "workbench/values/registration_request.h"

namespace tiepoint::workbench {

/// The parameters of a survey: which files, which points, how named and how solved. Throws BadParameter.
RegistrationRequest registrationFromJson(const Parameters& parameters);
/// The names of those parameters.
std::vector<std::string> registrationParameters();

/// The parameters of a delivery. Throws BadParameter.
DrawingChanges changesFromJson(const Parameters& parameters);
OutputRequest outputsFromJson(const Parameters& parameters);
std::vector<std::string> deliveryParameters();

}  // namespace tiepoint::workbench
