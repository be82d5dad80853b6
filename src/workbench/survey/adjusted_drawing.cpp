#include "workbench/survey/adjusted_drawing.h"

#include <boost/algorithm/string/case_conv.hpp>
#include <map>
#include <set>

#include "workbench/session/driven_session.h"
#include "workbench/session/scratch_document.h"
#include "workbench/session/shown_groups.h"
#include "workbench/session/stored_groups.h"

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

/// As the module lets its groups be called: they become files.
bool isGroupName(const std::string& name) {
  if (name.empty() || name.find_first_of("<>/\\*|?:\".") != std::string::npos) return false;
  const std::string word = boost::algorithm::to_lower_copy(name);
  static const std::set<std::string> devices{"con", "prn", "aux", "nul"};
  const bool isPort = word.size() == 4 && (word.compare(0, 3, "com") == 0 || word.compare(0, 3, "lpt") == 0) &&
                      word[3] >= '1' && word[3] <= '9';
  return devices.count(word) == 0 && !isPort;
}

/// All groups, so that each gets the colour that it has in its own drawing.
void storePlaced(OdDbDatabase& database, const Registration& registration) {
  std::vector<StationPoints> stations(registration.groups.size());
  for (std::size_t s = 0; s < stations.size(); ++s) stations[s].name = registration.groups[s].name;
  for (const PointOutcome& point : registration.points) {
    stations[point.group].points.push_back({point.name, point.registered.value_or(point.position), point.weight});
  }
  for (const StationPoints& station : stations) storeGroup(database, station);
}

/// The groups of the one session by the ids that the registration has for them.
ShownGroups byOriginalId(const ShownGroups& shown, const SessionState& state, const Registration& registration) {
  std::map<std::string, GroupId> original;
  for (const GroupOutcome& group : registration.groups) original.emplace(group.name, group.id);
  ShownGroups result;
  for (const SessionGroup& group : state.groups) {
    const auto found = shown.find(group.id);
    if (found != shown.end()) result.emplace(original.at(group.name), found->second);
  }
  return result;
}

GroupIdSet unplaced(const SessionState& state, const Registration& registration) {
  std::map<std::string, bool> isPlaced;
  for (const GroupOutcome& group : registration.groups) isPlaced[group.name] = group.motion().has_value();
  GroupIdSet groups;
  for (const SessionGroup& group : state.groups) {
    if (!isPlaced[group.name]) groups.insert(group.id);
  }
  return groups;
}

}  // namespace

bool storeAdjustedTargets(OdDbDatabase& database, const std::string& name, const std::vector<MergedTarget>& targets) {
  if (!isGroupName(name)) return false;
  StationPoints station{name, {}};
  for (const MergedTarget& target : targets) station.points.push_back({target.name, target.position, target.weight});
  return storeGroup(database, station);
}

std::string withAdjustedShown(
    Workbench& workbench, const Registration& registration,
    const std::function<std::string(const ShownGroups&, const std::vector<const OdGiDrawable*>&)>& use) {
  const ScratchDocument scratch(workbench);
  workbench.inTransaction([&] { storePlaced(*scratch.database(), registration); });
  MirroredSession mirrored(workbench.newSession());
  DrivenSession session(mirrored);
  session.addAllGroups();
  const GroupIdSet hidden = unplaced(session.state(), registration);
  mirrored.setGroupsVisible(hidden, false);
  const ShownGroups shown = shownGroups(workbench, session.state(), hidden);
  return use(byOriginalId(shown, session.state(), registration), drawablesOf(workbench));
}

}  // namespace tiepoint::workbench
