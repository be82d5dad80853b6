// The column layouts of reference point files, by name.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>

namespace tiepoint::workbench {

/// The row of the import dialog's filter list.
enum class Layout : int { nxyz = 1, xyz = 2, xyzw = 3, nxyzw = 4 };

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

/// By name, in any case.
std::optional<Layout> layoutByName(const std::string& name);

}  // namespace tiepoint::workbench
