// The names of targets that a session knows.
#pragma once

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "records/ids.h"

namespace tiepoint::workbench {

/// One entry of a session's list of names.
struct PointName {
  ZOR::reg::CommonPointId id = 0;
  /// UTF-8.
  std::string name;
};

/// A session's list of names in its order, with the look-ups by which the session goes: an id that
/// stands twice is shown under its first name, and a name that stands twice means its first id.
class NameTable {
 public:
  NameTable() = default;
  explicit NameTable(std::vector<PointName> entries);

  const std::vector<PointName>& entries() const { return list; }

  /// The name under which points of that id are shown; null for an id without one.
  const std::string* nameOf(ZOR::reg::CommonPointId id) const;
  std::optional<ZOR::reg::CommonPointId> idOf(const std::string& name) const;
  /// The smallest number from 0 that is no id of the table: the id of the next name that is made.
  ZOR::reg::CommonPointId freeId() const;

  void append(ZOR::reg::CommonPointId id, const std::string& name);
  /// The first entry of that id goes, if there is one.
  void eraseFirst(ZOR::reg::CommonPointId id);

 private:
  std::vector<PointName> list;
  /// From an id to the index of its first entry.
  std::unordered_map<ZOR::reg::CommonPointId, std::size_t> firstOf;
};

}  // namespace tiepoint::workbench
