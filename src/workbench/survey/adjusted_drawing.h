// What an adjustment puts into a drawing, or shows of itself.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/sdk/od_gi_drawable.h"
#include "workbench/host/workbench.h"
#include "workbench/values/registration.h"
#include "workbench/values/shown_group.h"

namespace tiepoint::workbench {

/// Stores the targets as a group. False for a name that no group can have, or that is taken. Inside a
/// transaction.
bool storeAdjustedTargets(OdDbDatabase& database, const std::string& name, const std::vector<MergedTarget>& targets);

/// Calls `use` with the registered groups shown alone, each where the adjustment has placed it, and what
/// draws them. The module shows what it has solved itself; so it is given a drawing of its own, in which the
/// groups are measured where they belong.
std::string withAdjustedShown(
    Workbench& workbench, const Registration& registration,
    const std::function<std::string(const ShownGroups&, const std::vector<const OdGiDrawable*>&)>& use);

}  // namespace tiepoint::workbench
