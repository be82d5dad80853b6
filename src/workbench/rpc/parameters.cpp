#include "workbench/rpc/parameters.h"

#include <algorithm>

namespace tiepoint::workbench {

void Parameters::requireKnown(const std::vector<std::string>& known) const {
  for (const auto& [name, value] : members.items()) {
    if (std::find(known.begin(), known.end(), name) == known.end()) throw BadParameter(name, "is unknown");
  }
}

const Json& Parameters::required(const std::string& parameter) const {
  const auto found = members.find(parameter);
  if (found == members.end()) throw BadParameter(parameter, "is missing");
  return *found;
}

}  // namespace tiepoint::workbench
