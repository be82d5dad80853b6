#include "session/display_data.h"

#include "session/collectors.h"
#include "session/name_tables.h"

namespace ZOR::reg {

DisplayGroups displayOf(const RefPointList& points, const NamedIdList& groupNames, const NamedIdList& commonNames,
                        const std::vector<std::uint8_t>& colors) {
  const NamesById groupName(groupNames);
  const NamesById commonName(commonNames);
  DisplayGroups display;
  std::size_t rank = 0;
  for (GroupId group : groupsOf(points)) {
    DisplayGroup& shown = display[group];
    shown.name = OdString(groupName[group], CP_ANSI_1251);
    shown.color = colors[rank++ % colors.size()];
  }
  for (const RefPoint& point : points) {
    display[point.groupId].points.push_back(
        {point.position, OdString(commonName[point.commonId], CP_ANSI_1251), point.id});
  }
  return display;
}

DisplayGroups restrictedTo(const GroupIdSet& visibleGroups, const DisplayGroups& display) {
  DisplayGroups shown;
  for (const auto& entry : display) {
    if (visibleGroups.count(entry.first) != 0) shown.insert(shown.end(), entry);
  }
  return shown;
}

void moveMarkers(const GroupTransforms& transforms, DisplayGroups& display) {
  for (auto& [group, shown] : display) {
    const auto found = transforms.find(group);
    if (found == transforms.end()) continue;
    for (DisplayPoint& point : shown.points) point.position = apply(found->second, point.position);
  }
}

std::map<RefPointId, OdString> displayNamesOf(const RefPointIdSet& points, const RefPointList& sessionPoints,
                                              const NamedIdList& commonNames) {
  const NamesById commonName(commonNames);
  std::map<RefPointId, OdString> names;
  for (const RefPoint& point : sessionPoints) {
    if (points.count(point.id) != 0) names.emplace(point.id, OdString(commonName[point.commonId], CP_ANSI_1251));
  }
  return names;
}

void renameMarkers(const std::map<RefPointId, OdString>& names, DisplayGroups& display) {
  for (auto& entry : display) {
    for (DisplayPoint& marker : entry.second.points) {
      if (const auto name = names.find(marker.id); name != names.end()) marker.name = name->second;
    }
  }
}

}  // namespace ZOR::reg
