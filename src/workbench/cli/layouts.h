// The column layouts of reference point files, by name.
#pragma once

#include <array>
#include <string>

#include "workbench/host/workbench.h"

namespace tiepoint::workbench::cli {

struct LayoutInfo {
  Layout layout;
  const char* name;
  /// What stands on a line, in order.
  const char* fields;
  bool hasName;
  std::size_t fieldCount;
};

inline constexpr std::array<LayoutInfo, 4> allLayouts{{
    {Layout::nxyz, "NXYZ", "name x y z", true, 4},
    {Layout::xyz, "XYZ", "x y z", false, 3},
    {Layout::xyzw, "XYZW", "x y z weight", false, 4},
    {Layout::nxyzw, "NXYZW", "name x y z weight", true, 5},
}};

const LayoutInfo& layoutInfo(Layout layout);

/// By name, in any case. Throws CommandError(usage).
Layout layoutByName(const std::string& name);

}  // namespace tiepoint::workbench::cli
