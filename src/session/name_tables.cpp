#include "session/name_tables.h"

#include <unordered_set>

namespace ZOR::reg {

NamesById::NamesById(const NamedIdList& table) {
  names.reserve(table.size());
  for (const NamedId& entry : table) names.emplace(entry.id, &entry.name);
}

const std::string& NamesById::operator[](std::uint64_t id) const {
  static const std::string none;
  const auto found = names.find(id);
  return found == names.end() ? none : *found->second;
}

IdsByName idsByName(const NamedIdList& table) {
  IdsByName ids;
  ids.reserve(table.size());
  for (const NamedId& entry : table) ids.emplace(entry.name, entry.id);
  return ids;
}

std::uint64_t smallestFreeId(const NamedIdList& table) {
  std::unordered_set<std::uint64_t> used;
  used.reserve(table.size());
  for (const NamedId& entry : table) used.insert(entry.id);
  std::uint64_t id = 0;
  while (used.count(id) != 0) ++id;
  return id;
}

}  // namespace ZOR::reg
