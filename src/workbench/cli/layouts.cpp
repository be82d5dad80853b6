#include "workbench/cli/layouts.h"

#include <fmt/format.h>

#include <algorithm>

#include "workbench/cli/exit_status.h"

namespace tiepoint::workbench::cli {

const LayoutInfo& layoutInfo(Layout layout) {
  return *std::find_if(allLayouts.begin(), allLayouts.end(), [&](const LayoutInfo& i) { return i.layout == layout; });
}

Layout layoutByName(const std::string& name) {
  std::string upper = name;
  for (char& c : upper) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  for (const LayoutInfo& info : allLayouts) {
    if (upper == info.name) return info.layout;
  }
  throw CommandError(ExitStatus::usage,
                     fmt::format("--layout {}: no such layout; choose NXYZ, XYZ, XYZW or NXYZW", name));
}

}  // namespace tiepoint::workbench::cli
