#include "workbench/values/registration.h"

#include <algorithm>
#include <stdexcept>

namespace tiepoint::workbench {

const GroupOutcome& Registration::group(ZOR::reg::GroupId id) const {
  const auto found = std::lower_bound(groups.begin(), groups.end(), id,
                                      [](const GroupOutcome& g, ZOR::reg::GroupId wanted) { return g.id < wanted; });
  if (found == groups.end() || found->id != id) throw std::out_of_range("no group of that id");
  return *found;
}

}  // namespace tiepoint::workbench
