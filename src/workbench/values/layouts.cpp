#include "workbench/values/layouts.h"

#include <algorithm>

namespace tiepoint::workbench {

const LayoutInfo& layoutInfo(Layout layout) {
  return *std::find_if(allLayouts.begin(), allLayouts.end(), [&](const LayoutInfo& i) { return i.layout == layout; });
}

std::optional<Layout> layoutByName(const std::string& name) {
  std::string upper = name;
  for (char& c : upper) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  for (const LayoutInfo& info : allLayouts) {
    if (upper == info.name) return info.layout;
  }
  return std::nullopt;
}

}  // namespace tiepoint::workbench
