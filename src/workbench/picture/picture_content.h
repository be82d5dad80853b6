// What a picture tells beside what the module draws.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/sdk/od_ge_point3d.h"

namespace tiepoint::workbench::picture {

/// One row of the legend. All texts here are UTF-8 and ready to be shown.
struct GroupEntry {
  std::string name;
  /// Of the drawing's palette, as all colours here.
  std::uint16_t color = 7;
  std::size_t points = 0;
  /// Such as "1.2"; empty when there is none.
  std::string residual;
};

struct Station {
  std::string name;
  std::uint16_t color = 7;
  OdGePoint3d position;
};

/// From the merged target to where one group has it.
struct Residual {
  OdGePoint3d target;
  OdGePoint3d registered;
  std::uint16_t color = 7;
  /// Of the target. Labels of larger residuals have the first choice of their places.
  std::string name;
  /// Told beside its arrow when it isn't empty: it stands out.
  std::string note;
};

struct Content {
  std::string title;
  std::string subtitle;
  /// Of the drawing, such as "m".
  std::string lengthUnit = "drawing units";
  /// The unit in which residuals are given, and how many of it make one drawing unit.
  std::string residualUnit = "drawing units";
  double residualUnitsPerLength = 1.0;
  /// Over the legend's last column; empty when no group has a residual.
  std::string residualHead;
  std::vector<GroupEntry> groups;
  std::vector<Station> stations;
  std::vector<Residual> residuals;
  /// Paragraphs below the legend.
  std::vector<std::string> remarks;
};

}  // namespace tiepoint::workbench::picture
