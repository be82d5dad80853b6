// Look-ups in the name tables.
#pragma once

#include <string>
#include <unordered_map>

#include "records/tables.h"

namespace ZOR::reg {

/// From id to name; an id that stands twice has its first name. Valid as long as the table isn't
/// changed.
class NamesById {
 public:
  explicit NamesById(const NamedIdList& table);
  /// The name, or an empty text for an id that the table lacks.
  const std::string& operator[](std::uint64_t id) const;

 private:
  std::unordered_map<std::uint64_t, const std::string*> names;
};

/// From name to id; a name that stands twice has its first id.
using IdsByName = std::unordered_map<std::string, std::uint64_t>;
IdsByName idsByName(const NamedIdList& table);

/// The smallest number from 0 that is no id of the table.
std::uint64_t smallestFreeId(const NamedIdList& table);

}  // namespace ZOR::reg
