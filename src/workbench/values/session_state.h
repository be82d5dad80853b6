// What the session has answered so far, kept as plain data.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "records/tables.h"

namespace tiepoint::workbench {

struct SessionGroup {
  ZOR::reg::GroupId id = 0;
  /// UTF-8.
  std::string name;
  bool inBase = false;
};

/// A point as the session holds it: the record's flags and weight follow the answers.
struct SessionPoint {
  ZOR::reg::RefPoint record;
  /// UTF-8.
  std::string name;
};

struct SessionState {
  /// In ascending id, which is the drawing's order.
  std::vector<SessionGroup> groups;
  /// In the session's order.
  std::vector<SessionPoint> points;
  /// Of the last solve, drawing units.
  ZOR::reg::PointDiscrepancies discrepancies;

  /// Throws std::out_of_range for an id that the session doesn't have.
  const SessionGroup& group(ZOR::reg::GroupId id) const;
};

/// The text as a session shows it: its names are windows-1251, and what that lacks is "?". Throws
/// EncodingError when it isn't UTF-8.
std::string sessionName(const std::string& utf8);

/// The point may take part: it is switched on, weighs something and has a name. A weight that is no
/// number weighs nothing.
inline bool isEligible(const ZOR::reg::RefPoint& point) {
  return point.included && (point.weight < 0.0 || point.weight > 0.0) && point.named;
}

}  // namespace tiepoint::workbench
