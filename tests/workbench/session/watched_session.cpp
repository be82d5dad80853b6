#include "workbench/session/watched_session.h"

#include <algorithm>
#include <limits>

#include "session/active_flags.h"
#include "workbench/io/text_encoding.h"
#include "workbench/view/recording_draw.h"

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

/// No session has this id: operations on it run and change nothing.
constexpr std::uint64_t nobody = std::numeric_limits<std::uint64_t>::max();

template <class Test>
RefPointIdSet idsWith(const SessionState& state, Test test) {
  RefPointIdSet ids;
  for (const SessionPoint& point : state.points) {
    if (test(point.record)) ids.insert(point.record.id);
  }
  return ids;
}

/// The names of what differs.
class Differences {
 public:
  template <class Value>
  void compare(const std::string& what, const Value& mirrored, const Value& told) {
    if (!(mirrored == told)) text += (text.empty() ? "" : ", ") + what;
  }
  std::string text;
};

std::vector<std::string> spelled(const std::list<NamedId>& names) {
  std::vector<std::string> texts;
  for (const NamedId& name : names) texts.push_back(std::to_string(name.id) + ":" + name.name);
  return texts;
}

void compareFlags(WatchedSession& session, const SessionState& state, Differences& found) {
  Answers told;
  session.real->unsetBaseGroups({nobody}, told.groups, told.points, told.inactiveGroups, told.inactivePoints);
  found.compare("points of the base", idsWith(state, [](const RefPoint& point) { return point.inBase; }), told.points);
  GroupIdSet base;
  for (const SessionGroup& group : state.groups) {
    if (group.inBase) base.insert(group.id);
  }
  found.compare("base groups", base, told.groups);
  found.compare("inactive points", idsWith(state, [](const RefPoint& point) { return !point.active; }),
                told.inactivePoints);
  session.real->includeGroups({nobody}, told.points, told.inactiveGroups, told.inactivePoints);
  found.compare("excluded points", idsWith(state, [](const RefPoint& point) { return !point.included; }), told.points);
}

/// The flags follow from the records alone.
void compareOwnFlags(const SessionLists& lists, Differences& found) {
  RefPointList rebuilt = lists.points;
  rebuildActiveFlags(rebuilt);
  const bool agree = std::equal(rebuilt.begin(), rebuilt.end(), lists.points.begin(), lists.points.end(),
                                [](const RefPoint& a, const RefPoint& b) { return a.active == b.active; });
  found.compare("flags from the records", agree, true);
}

void compareNames(WatchedSession& session, const SessionState& state, const SessionLists& lists, Differences& found) {
  std::list<NamedId> names;
  session.real->getCommonPointNames(names);
  found.compare("names", spelled(lists.commonNames), spelled(names));
  const bool hasUnnamed = !idsWith(state, [](const RefPoint& point) { return !point.named; }).empty();
  found.compare("unnamed points", hasUnnamed, session.real->hasUnnamedPoints());
  const auto isUnnamed = [&](const RefPoint& point) {
    return !point.named && state.registeredGroups.count(point.groupId) != 0;
  };
  found.compare("unnamed points in registered groups", !idsWith(state, isUnnamed).empty(),
                session.real->hasUnnamedPointsInRegisteredGroups());
  std::multiset<std::wstring> shown;
  for (const SessionPoint& point : state.points) {
    if (state.visibleGroups.count(point.record.groupId) != 0) shown.insert(wideFromUtf8(point.name));
  }
  found.compare("drawn names", shown, session.drawnNames());
}

void compareNumbers(iMultiRegistrator& real, const SessionState& state, Differences& found) {
  std::uint64_t maxIterations = 0;
  double criteria = 0.0, distance = 0.0, side = 0.0, minSideDifference = 0.0;
  real.getIterationLimits(maxIterations, criteria);
  real.getMatchDistanceTolerance(distance);
  real.getTriangleMatchTolerances(side, minSideDifference);
  found.compare("iterations", state.maxIterations, maxIterations);
  found.compare("criterion", state.convergenceCriteria, criteria);
  found.compare("distance tolerance", state.matchDistanceTolerance, distance);
  found.compare("side tolerance", state.triangleSideTolerance, side);
  found.compare("side difference", state.triangleMinSideDifference, minSideDifference);
}

void compareResults(iMultiRegistrator& real, const SessionState& state, const SessionReference& reference,
                    Differences& found) {
  GroupClusters clusters;
  real.getGroupClusters(clusters);
  found.compare("clusters", state.clusters, clusters);
  found.compare("clusters of the records", reference.clusters, clusters);
  GroupIdSet registered;
  for (const auto& entry : reference.results.groupTransforms) registered.insert(entry.first);
  found.compare("registered groups", state.registeredGroups, registered);
}

}  // namespace

WatchedSession::WatchedSession(const std::vector<Station>& stations) {
  host.calls.spell(false);
  for (const auto& [name, targets] : stations) host.document().storeGroup(name, targets);
  auto session = std::make_unique<MultiRegistrator>();
  real = session.get();
  mirrored = std::make_unique<MirroredSession>(std::move(session));
}

void WatchedSession::add(const GroupIdSet& groups) {
  std::map<GroupId, std::string> available;
  mirrored->getAvailableGroups(available);
  mirrored->addGroups(groups, out.added, out.inactiveGroups, out.inactivePoints);
}

const RefPoint& WatchedSession::record(RefPointId id) {
  const auto& points = state().points;
  return std::find_if(points.begin(), points.end(), [&](const SessionPoint& point) { return point.record.id == id; })
      ->record;
}

std::multiset<std::wstring> WatchedSession::drawnNames() {
  Answers told;
  real->removeGroups({nobody}, told.points, told.inactiveGroups, told.inactivePoints);
  RecordingDraw draw(host.document().view());
  draw.draw(*host.drawables().front());
  std::multiset<std::wstring> names;
  for (const auto& text : draw.texts()) names.insert(text.text.wideText());
  return names;
}

std::string differences(WatchedSession& session, const SessionReference& reference) {
  const SessionState& state = session.state();
  const SessionLists lists(state);
  Differences found;
  compareFlags(session, state, found);
  compareOwnFlags(lists, found);
  compareNames(session, state, lists, found);
  compareNumbers(*session.real, state, found);
  compareResults(*session.real, state, reference, found);
  found.compare("reports", reference.reports(state), reportsOf(*session.real));
  GroupIdSet present, inSession;
  for (const SessionPoint& point : state.points) present.insert(point.record.groupId);
  for (const SessionGroup& group : state.groups) {
    if (group.inSession) inSession.insert(group.id);
  }
  found.compare("groups in the session", inSession, present);
  return found.text;
}

}  // namespace tiepoint::workbench
