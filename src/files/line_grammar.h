// One line of a reference point file, in four layouts.
#pragma once

#include <string>

namespace ZOR::reg {

/// What one line holds.
struct ParsedPoint {
  /// Bytes as they stand in the file.
  std::string name;
  /// Units of the file.
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  /// Any value.
  double w = 0.0;
};

/// Each takes one line without its line feed and gives true when the whole line matches the
/// layout. Fields are separated by any run of white space, commas and semicolons; white space may
/// lead and end the line. Without a name the point is "?", without a weight it has 1.0. After a
/// line that doesn't match, `point` holds no meaningful values.
bool parseLineNXYZ(const std::string& line, ParsedPoint& point);
bool parseLineXYZ(const std::string& line, ParsedPoint& point);
bool parseLineXYZW(const std::string& line, ParsedPoint& point);
bool parseLineNXYZW(const std::string& line, ParsedPoint& point);

}  // namespace ZOR::reg
