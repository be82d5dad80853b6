#include "workbench/values/name_table.h"

#include <algorithm>

namespace tiepoint::workbench {

using ZOR::reg::CommonPointId;

NameTable::NameTable(std::vector<PointName> entries) : list(std::move(entries)) {
  firstOf.reserve(list.size());
  for (std::size_t i = 0; i < list.size(); ++i) firstOf.emplace(list[i].id, i);
}

const std::string* NameTable::nameOf(CommonPointId id) const {
  const auto found = firstOf.find(id);
  return found == firstOf.end() ? nullptr : &list[found->second].name;
}

std::optional<CommonPointId> NameTable::idOf(const std::string& name) const {
  const auto found = std::find_if(list.begin(), list.end(), [&](const PointName& entry) { return entry.name == name; });
  if (found == list.end()) return std::nullopt;
  return found->id;
}

CommonPointId NameTable::freeId() const {
  CommonPointId id = 0;
  while (firstOf.count(id) != 0) ++id;
  return id;
}

void NameTable::append(CommonPointId id, const std::string& name) {
  list.push_back({id, name});
  firstOf.emplace(id, list.size() - 1);
}

void NameTable::eraseFirst(CommonPointId id) {
  const auto found = firstOf.find(id);
  if (found == firstOf.end()) return;
  list.erase(list.begin() + static_cast<std::ptrdiff_t>(found->second));
  // The indices behind the gap have moved.
  *this = NameTable(std::move(list));
}

}  // namespace tiepoint::workbench
