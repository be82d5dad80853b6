// Random operations, some of them cut off by the host: the mirror holds what the session tells.
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <array>

#include "matching/match_by_distance.h"
#include "matching/match_by_triangles.h"
#include "workbench/session/watched_session.h"

namespace {

using namespace ZOR::reg;
using namespace tiepoint::testing;
using namespace tiepoint::workbench;

constexpr int maxGroups = 5;
constexpr int maxPoints = 7 * maxGroups;

/// Targets of a hall, no two of whose distances are equal.
const std::array<OdGePoint3d, 8> targets{
    {{0, 0, 0}, {10, 1, 0}, {3, 17, 2}, {29, 5, 4}, {12, 31, 7}, {41, 23, 1}, {37, 47, 11}, {5, 53, 19}}};

/// Of the whole range from the first test on.
int anyBelow(int end) { return *rc::gen::resize(rc::kNominalSize, rc::gen::inRange(0, end)); }

bool oneIn(int count) { return anyBelow(count) == 0; }

template <class... Values>
auto anyOf(Values... values) {
  return *rc::gen::element(values...);
}

/// Of both kinds: those that there are, and a few that there aren't.
std::set<std::uint64_t> anyIds(int end) {
  std::set<std::uint64_t> ids;
  const int count = anyOf(0, 1, 1, 2, 4);
  for (int i = 0; i < count; ++i) ids.insert(static_cast<std::uint64_t>(anyBelow(end + 2)));
  return ids;
}

/// Most of the targets as one station sees them; where it isn't clean, some of them under a wrong name.
std::vector<Target> anyStation(bool isClean, char hall = 'T') {
  std::vector<Target> station;
  const bool isTurned = oneIn(2), isUnnamed = oneIn(3), isSparse = oneIn(5);
  const double shift = 100.0 * anyBelow(3), noise = isClean ? 0.0 : 0.001;
  for (std::size_t number = 0; number < targets.size(); ++number) {
    if (oneIn(isSparse ? 2 : 6)) continue;
    const OdGePoint3d& p = targets[number];
    const std::string ownName = hall + std::to_string(!isClean && oneIn(12) ? std::size_t{2} : number);
    const std::string otherName = isClean ? "?" : anyOf<std::string>("?", "?", "?", "\xD6");
    const std::string name = oneIn(isUnnamed ? 2 : 9) ? otherName : ownName;
    station.push_back({name, (isTurned ? -p.y : p.x) + shift + noise * static_cast<double>(number),
                       isTurned ? p.x : p.y, p.z, anyOf(1.0, 1.0, 1.0, 0.5, 0.25, 0.0)});
  }
  return station;
}

std::vector<WatchedSession::Station> anyStations() {
  std::vector<WatchedSession::Station> stations;
  const int count = anyBelow(maxGroups + 1);
  // Two halls aren't connected.
  const bool isClean = !oneIn(3), isDivided = oneIn(3);
  for (int i = 0; i < count; ++i)
    stations.emplace_back("S" + std::to_string(i), anyStation(isClean, isDivided && oneIn(2) ? 'U' : 'T'));
  return stations;
}

std::string anyName() {
  return anyOf<std::string>("?", "?", "?", "T1", "T2", "T3", "x", "N1", "N2", "N3", "a b", "\xC0/b", "");
}

/// One session and what must come of it.
class Course {
 public:
  Course() : session(anyStations()) {}

  void run() {
    if (!oneIn(8)) session.add({0, 1, 2, 3});
    const int steps = 1 + anyBelow(40);
    for (int i = 0; i < steps; ++i) {
      step();
      // Of two ids with one name an answer doesn't tell which it means; from there on nothing is certain.
      if (!session.state().unsureNames.empty()) break;
      RC_ASSERT(differences(session, reference) == std::string());
    }
    RC_CLASSIFY(solves > 0, "registers");
    RC_CLASSIFY(matches > 0, "names points");
    RC_CLASSIFY(faults > 0, "cut off by the host");
    RC_CLASSIFY(!session.state().unsureNames.empty(), "two ids with one name");
  }

 private:
  using Operation = void (Course::*)();

  void step() {
    static const std::vector<Operation> operations{
        &Course::read,       &Course::read,      &Course::add,          &Course::add,        &Course::addAll,
        &Course::addAll,     &Course::remove,    &Course::drop,         &Course::base,       &Course::unbase,
        &Course::include,    &Course::exclude,   &Course::weigh,        &Course::includeAll, &Course::includeAll,
        &Course::excludeAll, &Course::show,      &Course::zoom,         &Course::store,      &Course::renameGroup,
        &Course::rename,     &Course::rename,    &Course::rename,       &Course::clear,      &Course::keep,
        &Course::pairwise,   &Course::pairwise,  &Course::pairwise,     &Course::iterative,  &Course::distance,
        &Course::distance,   &Course::triangles, &Course::allTriangles, &Course::clouds,     &Course::bringGroup,
        &Course::dropGroup,  &Course::clear,     &Course::weigh,        &Course::weigh};
    const Operation operation = operations[static_cast<std::size_t>(anyBelow(static_cast<int>(operations.size())))];
    if (oneIn(4)) session.host.calls.failAt(static_cast<std::uint64_t>(1 + anyBelow(12)), Fault::throws);
    try {
      (this->*operation)();
    } catch (const HostFault&) {
      ++faults;
    }
    session.host.calls.stopFailing();
  }

  MirroredSession& mirrored() { return *session.mirrored; }
  SessionLists lists() { return SessionLists(session.state()); }

  void read() {
    std::map<GroupId, std::string> told;
    if (!mirrored().getAvailableGroups(told)) return;
    std::map<GroupId, std::string> outside;
    const SessionLists now = lists();
    for (const NamedId& group : now.groupNames) {
      if (!session.state().group(group.id).inSession) outside.emplace(group.id, group.name);
    }
    RC_ASSERT(outside == told);
  }
  void add() {
    Answers out;
    mirrored().addGroups(anyIds(maxGroups), out.added, out.inactiveGroups, out.inactivePoints);
  }
  void addAll() {
    Answers out;
    mirrored().addGroups({0, 1, 2, 3, 4, 5}, out.added, out.inactiveGroups, out.inactivePoints);
    mirrored().includeGroups({0, 1, 2, 3, 4, 5}, out.points, out.inactiveGroups, out.inactivePoints);
  }
  void remove() {
    Answers out;
    mirrored().removeGroups(anyIds(maxGroups), out.points, out.inactiveGroups, out.inactivePoints);
  }
  /// One that the session holds, as a rule.
  RefPointId anyPoint() {
    const auto& points = session.state().points;
    if (points.empty() || oneIn(8)) return static_cast<RefPointId>(anyBelow(maxPoints));
    return points[static_cast<std::size_t>(anyBelow(static_cast<int>(points.size())))].record.id;
  }
  void dropGroup() {
    Answers out;
    RefPointIdSet points;
    for (const RefPoint& point : lists().points) {
      if (point.groupId < 2) points.insert(point.id);
    }
    mirrored().removePoints(points, out.groups, out.inactiveGroups, out.inactivePoints);
  }
  void drop() {
    Answers out;
    mirrored().removePoints(anyIds(maxPoints), out.groups, out.inactiveGroups, out.inactivePoints);
  }
  void base() {
    Answers out;
    mirrored().setBaseGroups(anyIds(maxGroups), out.groups, out.points, out.inactiveGroups, out.inactivePoints);
  }
  void unbase() {
    Answers out;
    mirrored().unsetBaseGroups(anyIds(maxGroups), out.groups, out.points, out.inactiveGroups, out.inactivePoints);
  }
  void include() {
    Answers out;
    mirrored().includePoints(anyIds(maxPoints), out.groups, out.inactiveGroups, out.inactivePoints);
  }
  void exclude() {
    Answers out;
    mirrored().excludePoints(anyIds(maxPoints), out.groups, out.inactiveGroups, out.inactivePoints);
  }
  void weigh() {
    Answers out;
    const double weight = anyOf(0.0, 1.0, 0.5, 0.25, 0.75, -0.1, 1.1, std::numeric_limits<double>::quiet_NaN());
    RefPointIdSet points = anyIds(maxPoints);
    points.insert(anyPoint());
    mirrored().setPointsWeight(points, weight, out.inactiveGroups, out.inactivePoints);
  }
  void includeAll() {
    Answers out;
    mirrored().includeGroups(anyIds(maxGroups), out.points, out.inactiveGroups, out.inactivePoints);
  }
  void excludeAll() {
    Answers out;
    mirrored().excludeGroups(anyIds(maxGroups), out.points, out.inactiveGroups, out.inactivePoints);
  }
  void renameGroup() {
    Answers out;
    const GroupId group = static_cast<GroupId>(anyBelow(maxGroups));
    mirrored().renameGroup(group, anyOf<std::string>("A", "lpt", "Lpt7", "a.b", "S1", "\xC0"), out.points);
  }
  void rename() {
    Answers out;
    mirrored().renamePoint(anyPoint(), anyName(), out.group, out.inactiveGroups, out.inactivePoints);
  }
  void show() { mirrored().setGroupsVisible(anyIds(maxGroups), oneIn(2)); }
  void zoom() {
    mirrored().zoomToAll();
    mirrored().zoomToGroup(0);
    mirrored().zoomToPoint(1);
  }
  void store() { mirrored().storeCommonPoints(anyOf<std::string>("S0", "merged")); }
  void clear() {
    reference.clearResults();
    mirrored().clearResults();
    RC_ASSERT(session.state().discrepancies.empty());
  }
  void pairwise() {
    Answers out;
    const bool isLinked = reference.registerPairwise(lists());
    if (isLinked) ++solves;
    RC_ASSERT(mirrored().registerPairwise(out.discrepancies) == isLinked);
    RC_ASSERT(out.discrepancies == (isLinked ? reference.pointDiscrepancies : PointDiscrepancies()));
    RC_ASSERT(session.state().discrepancies == out.discrepancies);
  }
  void keep() {
    Answers out;
    mirrored().keepGroupCluster(static_cast<std::uint64_t>(anyBelow(3)), out.points, out.inactiveGroups,
                                out.inactivePoints);
  }
  void iterative() {
    Answers out;
    const auto maxIterations = anyOf<std::uint64_t>(0, 1, 5, 30);
    const double criteria = anyOf(0.0, 1e-3, 0.1);
    const bool isGood = maxIterations > 0 && criteria > 0.0;
    if (isGood) reference.registerIterative(lists(), maxIterations, criteria);
    const PointDiscrepancies before = session.state().discrepancies;
    RC_ASSERT(mirrored().registerIterative(maxIterations, criteria, out.discrepancies) == isGood);
    RC_ASSERT(session.state().discrepancies == (isGood ? reference.pointDiscrepancies : before));
  }
  void distance() {
    const double tolerance = anyOf(0.1, 0.01, 3.0, 0.0, -1.0);
    NamingChanges changes;
    matchByDistance(lists().points, reference.results.groupTransforms, tolerance, changes);
    match(changes, [&](Answers& out) {
      mirrored().matchPointsByDistance(tolerance, out.names, out.inactiveGroups, out.inactivePoints);
    });
  }
  void triangles() {
    const GroupIdSet groups = anyIds(maxGroups);
    RefPointList chosen = lists().points;
    chosen.remove_if([&](const RefPoint& point) { return groups.count(point.groupId) == 0; });
    NamingChanges changes;
    matchByTriangles(chosen, 0.01, 0.1, changes);
    match(changes, [&](Answers& out) {
      mirrored().matchGroupsByTriangles(groups, 0.01, 0.1, out.names, out.inactiveGroups, out.inactivePoints);
    });
  }
  void allTriangles() {
    NamingChanges changes;
    matchByTriangles(lists().points, 0.01, 0.1, changes);
    match(changes, [&](Answers& out) {
      mirrored().matchAllGroupsByTriangles(0.01, 0.1, out.names, out.inactiveGroups, out.inactivePoints);
    });
  }
  template <class Match>
  void match(const NamingChanges& changes, Match run) {
    if (!changes.isEmpty()) ++matches;
    const MatchReference expected(lists(), changes);
    Answers out;
    run(out);
    RC_ASSERT(out.names == expected.assignedNames);
    const auto& points = session.state().points;
    if (!session.state().unsureNames.empty()) return;
    const bool agree = std::equal(points.begin(), points.end(), expected.lists.points.begin(),
                                  expected.lists.points.end(), [](const SessionPoint& is, const RefPoint& must) {
                                    return is.record.id == must.id && is.record.commonId == must.commonId &&
                                           is.record.named == must.named && is.record.autoNamed == must.autoNamed;
                                  });
    RC_ASSERT(agree);
  }
  void clouds() {
    session.host.document().addCloud("S" + std::to_string(anyBelow(9)));
    std::list<NamedId> told;
    mirrored().getPointClouds(told);
    RC_ASSERT(session.state().clouds.size() == told.size());
  }
  void bringGroup() { session.host.document().storeGroup("new " + std::to_string(anyBelow(2)), anyStation(oneIn(2))); }

  WatchedSession session;
  SessionReference reference;
  int solves = 0, matches = 0, faults = 0;
};

RC_GTEST_PROP(MirroredSession, HoldsWhatTheSessionTellsThroughAnyOperations, ()) { Course().run(); }

}  // namespace
