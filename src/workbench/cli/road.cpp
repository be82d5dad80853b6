#include "workbench/cli/road.h"

#include <fmt/format.h>

#include <algorithm>
#include <functional>

#include "workbench/cli/exit_status.h"
#include "workbench/cli/geometry_warnings.h"
#include "workbench/cli/iterative_run.h"
#include "workbench/cli/mismatch_warnings.h"
#include "workbench/cli/output_targets.h"
#include "workbench/cli/picture_options.h"
#include "workbench/cli/point_choice.h"
#include "workbench/cli/road_checks.h"
#include "workbench/cli/staging_folder.h"
#include "workbench/cli/survey_picture.h"
#include "workbench/geometry/rigid_motion.h"
#include "workbench/io/text_encoding.h"
#include "workbench/report/plain_text.h"

namespace tiepoint::workbench::cli {

using namespace ZOR::reg;

namespace {

GroupIdSet activeGroups(const SessionState& state) {
  GroupIdSet groups;
  for (const SessionPoint& point : state.points) {
    if (point.record.active) groups.insert(point.record.groupId);
  }
  return groups;
}

bool isActiveBase(const SessionPoint& point) { return point.record.active && point.record.inBase; }
bool isActiveOther(const SessionPoint& point) { return point.record.active && !point.record.inBase; }

template <class Test>
bool anyPoint(const SessionState& state, Test test) {
  return std::any_of(state.points.begin(), state.points.end(), test);
}

void chooseBase(DrivenSession& session, const RegisterOptions& options) {
  GroupIdSet base;
  for (const std::string& name : options.base) base.insert(chosenGroup(session.state(), name, "--base"));
  session.setBase(base);
}

/// Exclusions and weights, in that order.
class PointChoices {
 public:
  explicit PointChoices(const RegisterOptions& options) : exclude(options.exclude) {
    if (!options.weightsFile.empty()) weights = readWeightsFile(options.weightsFile);
    for (const std::string& text : options.weight) weights.push_back(parseWeightOption(text));
  }

  /// Applies those whose points are known already; a matching may name the others.
  void applyKnown(DrivenSession& session) {
    const auto isKnown = [&](const std::string& text) { return findPoints(session.state(), text).has_value(); };
    PointChoices known;
    const auto firstKnown = std::stable_partition(exclude.begin(), exclude.end(), std::not_fn(isKnown));
    known.exclude.assign(firstKnown, exclude.end());
    exclude.erase(firstKnown, exclude.end());
    const auto firstKnownWeight = std::stable_partition(
        weights.begin(), weights.end(), [&](const WeightChoice& choice) { return !isKnown(choice.point); });
    known.weights.assign(firstKnownWeight, weights.end());
    weights.erase(firstKnownWeight, weights.end());
    known.apply(session);
  }

  /// Throws CommandError(usage) for points that there aren't.
  void apply(DrivenSession& session) const {
    for (const std::string& text : exclude) {
      const PointChoice choice = chosenPoints(session.state(), text, "--exclude");
      if (choice.wholeGroup) {
        session.excludeGroups({choice.group});
      } else {
        session.excludePoints(choice.points);
      }
    }
    for (const WeightChoice& choice : weights) {
      session.setWeight(chosenPoints(session.state(), choice.point, "weight").points, choice.weight);
    }
  }

 private:
  PointChoices() = default;
  std::vector<std::string> exclude;
  std::vector<WeightChoice> weights;
};

/// Base, exclusions, weights and, if asked for, names. The base comes after the names: the
/// operation that looks for points on one spot sees no base points.
void applyChoices(Workbench& workbench, DrivenSession& session, const RegisterOptions& options, Road& road) {
  PointChoices choices(options);
  if (!options.match.empty()) {
    choices.applyKnown(session);
    road.match = matchPoints(workbench, session, options);
  }
  choices.apply(session);
  chooseBase(session, options);
}

/// The groups that still take part although they aren't in the cluster. Several bases are one group
/// there, named by the first.
GroupIdSet activeOutside(const GroupIdSet& cluster, const SessionState& state) {
  const auto isBase = [&](GroupId group) { return state.group(group).inBase; };
  const bool hasBase = std::any_of(cluster.begin(), cluster.end(), isBase);
  GroupIdSet others;
  for (const GroupId group : activeGroups(state)) {
    if (cluster.count(group) == 0 && !(hasBase && isBase(group))) others.insert(group);
  }
  return others;
}

/// Groups outside every cluster stay in the session when one cluster is kept; they would keep it
/// from being solved.
void keepCluster(DrivenSession& session, std::uint64_t number, Warnings& warnings) {
  const GroupClusters clusters = session.clusters();
  const auto kept = clusters.find(number);
  if (kept == clusters.end()) {
    throw CommandError(ExitStatus::usage, clusters.empty()
                                              ? fmt::format("--keep-cluster {}: no groups hang together", number)
                                              : fmt::format("--keep-cluster {}: the clusters are 0 to {}", number,
                                                            clusters.rbegin()->first));
  }
  session.keepCluster(number);
  const GroupIdSet others = activeOutside(kept->second, session.state());
  if (!others.empty()) session.excludeGroups(others);

  const GroupIdSet active = activeGroups(session.state());
  std::vector<std::string> left;
  for (const SessionGroup& group : session.state().groups) {
    if (active.count(group.id) == 0) left.push_back(group.name);
  }
  warnings.add(fmt::format("cluster {} is kept; left out: {}", number, joined(left)));
}

bool baseIsLost(const SessionState& state, const RegisterOptions& options) {
  return !options.base.empty() && anyPoint(state, isActiveOther) && !anyPoint(state, isActiveBase);
}

Outcome solveIteratively(DrivenSession& session, const RegisterOptions& options, Road& road, Warnings& warnings) {
  IterativeRun run = runIterative(session, options, warnings);
  road.iterations = run.course;
  road.links = std::move(run.links);
  return run.registered ? Outcome::registered : Outcome::notLinked;
}

Outcome solve(DrivenSession& session, const RegisterOptions& options, Road& road, Warnings& warnings) {
  session.restoreMarkers();
  if (baseIsLost(session.state(), options)) return Outcome::baseLost;
  if (road.isIterative) return solveIteratively(session, options, road, warnings);
  if (session.registerPairwise()) {
    if (options.keepCluster) warnings.add("the groups hang together as they are; --keep-cluster changed nothing");
    return Outcome::registered;
  }
  if (!options.keepCluster) return Outcome::notLinked;
  keepCluster(session, *options.keepCluster, warnings);
  road.keptCluster = options.keepCluster;
  session.clearResults();
  session.restoreMarkers();
  if (baseIsLost(session.state(), options)) return Outcome::baseLost;
  return session.registerPairwise() ? Outcome::registered : Outcome::notLinked;
}

/// It looks like any other in the results.
void warnOfWeakLinks(const MatchReport& match, Warnings& warnings) {
  for (const MatchReason& reason : match.reasons) {
    if (reason.key == "weak-link") warnings.add(reason.text);
  }
}

/// Not at all when the names aren't certain.
Outcome solveNamed(DrivenSession& session, const RegisterOptions& options, Road& road, Warnings& warnings) {
  if (road.match && road.match->isRefused) return Outcome::notNamed;
  const Outcome outcome = solve(session, options, road, warnings);
  if (!road.match || outcome != Outcome::registered) return outcome;
  checkDiscrepancies(session.state(), *road.match);
  if (road.match->isRefused) return Outcome::notNamed;
  warnOfWeakLinks(*road.match, warnings);
  return outcome;
}

/// A registered survey from which stations are missing looks complete; so it is said.
void warnOfLeftOut(const SessionState& state, Warnings& warnings) {
  GroupIdSet included, active;
  for (const SessionPoint& point : state.points) {
    if (point.record.included) included.insert(point.record.groupId);
    if (point.record.active) active.insert(point.record.groupId);
  }
  for (const SessionGroup& group : state.groups) {
    if (included.count(group.id) == 0 || active.count(group.id) != 0) continue;
    warnings.add(fmt::format("{} {}; see the points that are out", group.name,
                             group.inBase ? "takes no part as a base" : "isn't registered"));
  }
}

void requireRigid(const SessionState& state, const SolvedTransforms& solved) {
  for (const auto& [group, motion] : solved.toCommon) {
    if (isRigid(motion)) continue;
    throw CommandError(ExitStatus::refused, fmt::format("the transformation of {} is no rigid motion; are its "
                                                        "coordinates far too large?",
                                                        state.group(group).name));
  }
}

void describe(Workbench& workbench, DrivenSession& session, Road& road) {
  std::vector<GroupId> groups;
  for (const SessionGroup& group : session.state().groups) groups.push_back(group.id);
  SolvedTransforms solved = solvedTransforms(workbench, session.operations(), groups);
  requireRigid(session.state(), solved);
  road.results = describeResults(session.state(), solved);
  // While the stations still move, the largest discrepancy says nothing of its point.
  if (road.iterations && !road.iterations->converged()) road.results.standOut.reset();
  road.targets = std::move(solved.targets);
}

std::size_t lineFeeds(const std::string& text) {
  return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

/// The line feeds of the whole file: one ends each target's line, and a name may hold some. The last
/// stands at the end, so that a file that was cut short has fewer.
std::size_t lineFeedsOf(const std::vector<MergedTarget>& targets) {
  std::size_t all = targets.size();
  for (const MergedTarget& target : targets) all += lineFeeds(target.name);
  return all;
}

void writeCommonPoints(DrivenSession& session, const RegisterOptions& options, const CommonPointsTarget& target,
                       Road& road) {
  const StagingFolder staging;
  const bool isOpened = session.operations().saveCommonPointsFile(target.name, staging.path());
  const std::string content = staging.content(target.fileName);
  if (!isOpened || lineFeeds(content) != lineFeedsOf(road.targets)) {
    throw CommandError(ExitStatus::file, fmt::format("{}: the common points can't be written{}", target.path,
                                                     isOpened ? " to their end; is the disk full?" : ""));
  }
  putFile(options, {"--common-points", target.path}, content);
  road.commonPointsFile = target.path;
}

void storeTargets(DrivenSession& session, const std::string& name, Road& road) {
  if (!session.operations().storeCommonPoints(nameFromUtf8(name))) {
    const auto& groups = road.state.groups;
    const bool isThere = std::any_of(groups.begin(), groups.end(),
                                     [&](const SessionGroup& group) { return group.name == sessionName(name); });
    throw CommandError(ExitStatus::refused,
                       fmt::format("--store {}: {}", name,
                                   isThere ? "the drawing has a group of this name already; choose another"
                                           : "no group may be called so (none of <>/\\*|?:\". and no device's name)"));
  }
  road.storedGroup = name;
}

/// What the user wants from the results: all of it reaches the drawing, or nothing.
class Delivery {
 public:
  explicit Delivery(const RegisterOptions& options_)
      : options(options_),
        clouds(cloudsToAdd(options_.clouds, "--cloud")),
        files(options_),
        wantedPicture(pictureRequest(options_.picture, registerPictureNames)) {
    if (!options.commonPoints.empty()) commonPoints = commonPointsTarget(options);
    if (!options.moved.empty() && !options.apply) {
      throw CommandError(ExitStatus::usage, "--moved writes moved clouds, so it needs --apply");
    }
  }

  const std::optional<picture::Request>& picture() const { return wantedPicture; }

  void deliver(Workbench& workbench, DrivenSession& session, Road& road) const {
    const auto action = [&] { carryOut(workbench, session, road); };
    if (clouds.empty() && !options.apply && options.store.empty()) {
      action();
    } else {
      workbench.inTransaction(action);
    }
  }

 private:
  void carryOut(Workbench& workbench, DrivenSession& session, Road& road) const {
    files.requireFree(road.state, road.results);
    const OdDbDatabasePtr database = workbench.requireActiveDocument().database();
    addClouds(*database, clouds);
    road.clouds = foreseenMoves(*database, session.state(), road.results);
    if (options.apply) applyMoves(*database, session.operations(), road.clouds, options.force);
    for (CloudReport& cloud : road.clouds) {
      if (!options.apply) cloud.move = CloudMove::notAsked;
      if (!options.moved.empty() && !cloud.source.empty()) {
        requireNotRead(options, {"--moved", copyPath(cloud, options.moved)});
      }
    }
    if (!options.store.empty()) storeTargets(session, options.store, road);
    if (commonPoints) writeCommonPoints(session, options, *commonPoints, road);
    if (!options.moved.empty()) writeCopies(road.clouds, options.moved, options.force);
    road.files = files.write(session.operations(), road.state, road.results);
    if (wantedPicture) {
      const LengthFormat lengths(options.unit);
      files.writePicture(registeredPicture(workbench, session, road, lengths, *wantedPicture), road.files);
    }
  }

  const RegisterOptions& options;
  std::vector<CloudOption> clouds;
  std::optional<CommonPointsTarget> commonPoints;
  ResultFiles files;
  std::optional<picture::Request> wantedPicture;
};

void travelWith(Workbench& workbench, DrivenSession& session, const RegisterOptions& options, const Delivery& delivery,
                Road& road, Warnings& warnings) {
  if (!session.addAllGroups()) {
    throw CommandError(ExitStatus::refused, "the drawing holds no reference points; name files to take in");
  }
  applyChoices(workbench, session, options, road);
  requireFiniteCoordinates(session.state());
  road.outcome = solveNamed(session, options, road, warnings);
  road.state = session.state();
  road.reasons = reasonsOut(road.state);
  road.usesBase = anyPoint(road.state, isActiveBase);
  if (road.outcome == Outcome::notNamed) return;
  if (road.outcome != Outcome::registered) {
    road.links = describeLinks(road.state, session.clusters());
    return;
  }
  warnOfLeftOut(road.state, warnings);
  warnOfGeometry(road.state, warnings);
  warnOfMismatches(road.state, warnings);
  describe(workbench, session, road);
  delivery.deliver(workbench, session, road);
}

}  // namespace

Road travel(Workbench& workbench, const RegisterOptions& options, Warnings& warnings) {
  checkMethod(options);
  checkMatch(options);
  const std::vector<LayoutFiles> runs = importRuns(options.files);
  const Delivery delivery(options);
  openDrawing(workbench, options.host.document, !runs.empty());
  checkGroupNames(workbench, options, runs);

  Road road;
  road.document = options.host.document;
  road.isIterative = options.method == "iterative";
  if (!runs.empty()) {
    road.import = rehearseImport(workbench, runs, warnings);
    makeDrawing(workbench, options.host.document);
    carryOutImport(workbench, runs, road.import, warnings);
  }
  if (delivery.picture()) suitMarkers(workbench, delivery.picture()->size);
  MirroredSession mirrored(workbench.newSession());
  DrivenSession session(mirrored);
  travelWith(workbench, session, options, delivery, road, warnings);
  return road;
}

}  // namespace tiepoint::workbench::cli
