// The one interface through which a host drives a registration session.
#pragma once

#include <cstdint>
#include <list>
#include <map>
#include <string>
#include <vector>

#include "records/tables.h"

namespace ZOR::reg {

/// One registration session: groups of reference points that were read from the active drawing,
/// what the user switched, weighted and named, and what a solve found.
///
/// Every call runs to its end on the caller's thread. An operation refuses by a false result and
/// leaves the session as it was. Output arguments are emptied first and then filled; where an
/// operation refuses, they stay as they were handed in. Where a comment says otherwise, it holds.
///
/// Four outputs recur, each filled from the state at the end of the operation:
/// `inactiveGroups`, the groups of the session without an active point; `inactivePoints`, the
/// points that aren't active; `excludedGroups`, the groups without an included point;
/// `excludedPoints`, the points that aren't included.
///
/// Names and paths are narrow: names windows-1251, paths in the platform's narrow encoding.
/// Coordinates and distances are in drawing units.
class iMultiRegistrator {
 public:
  virtual ~iMultiRegistrator() = default;

  /// Reads what is new in the drawing; gives the groups that aren't in the session. False when no
  /// group is known.
  virtual bool getAvailableGroups(std::map<GroupId, std::string>& groups) = 0;

  virtual bool addGroups(const GroupIdSet& groups, std::list<RefPoint>& addedPoints, GroupIdSet& inactiveGroups,
                         RefPointIdSet& inactivePoints) = 0;
  virtual bool removeGroups(const GroupIdSet& groups, RefPointIdSet& removedPoints, GroupIdSet& inactiveGroups,
                            RefPointIdSet& inactivePoints) = 0;
  virtual bool removePoints(const RefPointIdSet& points, GroupIdSet& vanishedGroups, GroupIdSet& inactiveGroups,
                            RefPointIdSet& inactivePoints) = 0;

  virtual void setBaseGroups(const GroupIdSet& groups, GroupIdSet& baseGroups, RefPointIdSet& basePoints,
                             GroupIdSet& inactiveGroups, RefPointIdSet& inactivePoints) = 0;
  virtual void unsetBaseGroups(const GroupIdSet& groups, GroupIdSet& baseGroups, RefPointIdSet& basePoints,
                               GroupIdSet& inactiveGroups, RefPointIdSet& inactivePoints) = 0;
  virtual void includePoints(const RefPointIdSet& points, GroupIdSet& excludedGroups, GroupIdSet& inactiveGroups,
                             RefPointIdSet& inactivePoints) = 0;
  virtual void excludePoints(const RefPointIdSet& points, GroupIdSet& excludedGroups, GroupIdSet& inactiveGroups,
                             RefPointIdSet& inactivePoints) = 0;
  /// `weight` from 0.0 to 1.0, both allowed; false for anything else.
  virtual bool setPointsWeight(const RefPointIdSet& points, double weight, GroupIdSet& inactiveGroups,
                               RefPointIdSet& inactivePoints) = 0;
  virtual void includeGroups(const GroupIdSet& groups, RefPointIdSet& excludedPoints, GroupIdSet& inactiveGroups,
                             RefPointIdSet& inactivePoints) = 0;
  virtual void excludeGroups(const GroupIdSet& groups, RefPointIdSet& excludedPoints, GroupIdSet& inactiveGroups,
                             RefPointIdSet& inactivePoints) = 0;

  virtual bool renameGroup(GroupId group, std::string newName, RefPointIdSet& groupPoints) = 0;
  /// Writes the point's group to `group` also when the name is refused because the group has it.
  virtual bool renamePoint(RefPointId point, std::string newName, GroupId& group, GroupIdSet& inactiveGroups,
                           RefPointIdSet& inactivePoints) = 0;

  virtual void setGroupsVisible(GroupIdSet groups, bool visible) = 0;
  virtual void zoomToGroup(GroupId group) = 0;
  virtual void zoomToPoint(RefPointId point) = 0;
  virtual void zoomToAll() = 0;

  /// Writes the merged targets to the text file `folder`/`name`.txt. True once the file is open,
  /// whatever comes of the writing: on a full disk it is cut short.
  virtual bool saveCommonPointsFile(std::string name, std::string folder) = 0;
  /// Stores the merged targets as a new group of the drawing.
  virtual bool storeCommonPoints(std::string name) = 0;

  virtual void clearResults() = 0;

  /// False when the groups aren't connected; getGroupClusters then says which are. The earlier
  /// discrepancies are gone even then, and `discrepancies` is empty.
  virtual bool registerPairwise(std::map<RefPointId, double>& discrepancies) = 0;
  virtual void getGroupClusters(std::map<std::uint64_t, GroupIdSet>& clusters) = 0;
  /// Excludes the groups of all other clusters.
  virtual void keepGroupCluster(std::uint64_t cluster, RefPointIdSet& excludedPoints, GroupIdSet& inactiveGroups,
                                RefPointIdSet& inactivePoints) = 0;

  virtual void getIterationLimits(std::uint64_t& maxIterations, double& convergenceCriteria) = 0;
  /// `convergenceCriteria` bounds how far the merged targets move in one pass, drawing units. False,
  /// with `discrepancies` empty, unless both limits are above 0.
  virtual bool registerIterative(std::uint64_t maxIterations, double convergenceCriteria,
                                 std::map<RefPointId, double>& discrepancies) = 0;

  virtual bool getCommonPointNames(std::list<NamedId>& names) = 0;

  /// `cloud` is the cloud's place in the list that getPointClouds gave.
  virtual bool applyTransformToCloud(GroupId group, std::uint64_t cloud) = 0;
  /// Moves every cloud that bears a registered group's name.
  virtual bool applyTransformations() = 0;
  virtual void getPointClouds(std::list<NamedId>& clouds) = 0;

  virtual void getMatrixFormats(std::map<std::uint64_t, std::string>& formats) = 0;
  virtual bool saveGroupMatrices(GroupIdSet groups, std::string folder, std::uint64_t format) = 0;
  virtual bool saveAllMatrices(std::string folder, std::uint64_t format) = 0;

  virtual std::wstring getPointsReport(RefPointIdSet points) = 0;
  virtual std::wstring getGroupsReport(GroupIdSet groups) = 0;
  virtual std::wstring getResultsReport() = 0;
  virtual void getReportFormats(std::map<std::uint64_t, std::string>& formats) = 0;
  virtual bool saveReport(std::string path, std::uint64_t format) = 0;

  virtual bool hasUnnamedPointsInRegisteredGroups() = 0;
  virtual bool hasUnnamedPoints() = 0;

  virtual void getMatchDistanceTolerance(double& tolerance) = 0;
  virtual void getTriangleMatchTolerances(double& sideTolerance, double& minSideDifference) = 0;
  virtual void matchPointsByDistance(double tolerance, std::map<RefPointId, std::string>& assignedNames,
                                     GroupIdSet& inactiveGroups, RefPointIdSet& inactivePoints) = 0;
  virtual void matchGroupsByTriangles(const GroupIdSet& groups, double sideTolerance, double minSideDifference,
                                      std::map<RefPointId, std::string>& assignedNames, GroupIdSet& inactiveGroups,
                                      RefPointIdSet& inactivePoints) = 0;
  virtual void matchAllGroupsByTriangles(double sideTolerance, double minSideDifference,
                                         std::map<RefPointId, std::string>& assignedNames, GroupIdSet& inactiveGroups,
                                         RefPointIdSet& inactivePoints) = 0;

  virtual double getMaxPointSpread() = 0;
  virtual bool getPointSpreadHistogram(std::vector<std::uint64_t>& binCounts, std::vector<double>& binEdges) = 0;
};

/// The module's export ZOR::reg::GetMultiRegistrator: a new session that the caller owns. Without
/// memory for it: null when a new handler is set, which is called, std::bad_alloc when none is.
using GetMultiRegistratorFunction = iMultiRegistrator* (*)();

}  // namespace ZOR::reg
