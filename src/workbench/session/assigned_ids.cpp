#include "workbench/session/assigned_ids.h"

#include <algorithm>
#include <unordered_set>

#include "workbench/io/stand_in_names.h"

namespace tiepoint::workbench {

using namespace ZOR::reg;

AssignedIds::AssignedIds(const std::map<RefPointId, std::string>& assigned, const std::vector<SessionPoint>& before,
                         const std::vector<PointName>& made) {
  std::unordered_set<std::string> wanted;
  for (const auto& entry : assigned) wanted.insert(entry.second);
  for (const SessionPoint& point : before) {
    if (point.record.named && wanted.count(point.name) != 0) consider(point.name, point.record.commonId, false);
  }
  for (const PointName& entry : made) {
    const std::string name = nameOfStandIn(entry.name);
    if (wanted.count(name) != 0) consider(name, entry.id, true);
  }
}

void AssignedIds::consider(const std::string& name, CommonPointId id, bool isNew) {
  const auto [known, isFirst] = ids.try_emplace(name, AssignedId{id, isNew, true});
  if (isFirst || known->second.id == id) return;
  known->second = {isNew ? id : std::max(id, known->second.id), isNew, false};
}

std::optional<AssignedId> AssignedIds::of(const std::string& name) const {
  const auto known = ids.find(name);
  if (known == ids.end()) return std::nullopt;
  return known->second;
}

}  // namespace tiepoint::workbench
