// A registration session together with what it holds.
#pragma once

#include <memory>

#include "session/i_multi_registrator.h"
#include "workbench/session/session_mirror.h"

namespace tiepoint::workbench {

/// Stands before a session and is one itself: passes every operation on, with the same results and
/// the same untouched outputs, and keeps what the session holds as plain data, for which the interface
/// has no query. Only who has it from the session's birth knows all, so it takes the new session.
///
/// A session tells its host last. An operation that the host ends with an error has done its part all
/// the same, and the state shows it; where memory runs out the state stays as it was, and what the
/// next answers tell whole comes right then: the flags, the names, the results.
class MirroredSession : public ZOR::reg::iMultiRegistrator {
 public:
  /// `session` is new and isn't null.
  explicit MirroredSession(std::unique_ptr<ZOR::reg::iMultiRegistrator> session);
  ~MirroredSession() override;
  MirroredSession(const MirroredSession&) = delete;
  MirroredSession& operator=(const MirroredSession&) = delete;

  /// Goes on as the other one and ends its own session. Nothing may be asked of the other after that.
  void become(MirroredSession&& other);

  /// As it stands now, until the next operation. Asks the session for what an operation may have
  /// changed without telling; that changes nothing in it.
  const SessionState& state();

  bool getAvailableGroups(std::map<ZOR::reg::GroupId, std::string>& groups) override;
  bool addGroups(const ZOR::reg::GroupIdSet& groups, std::list<ZOR::reg::RefPoint>& addedPoints,
                 ZOR::reg::GroupIdSet& inactiveGroups, ZOR::reg::RefPointIdSet& inactivePoints) override;
  bool removeGroups(const ZOR::reg::GroupIdSet& groups, ZOR::reg::RefPointIdSet& removedPoints,
                    ZOR::reg::GroupIdSet& inactiveGroups, ZOR::reg::RefPointIdSet& inactivePoints) override;
  bool removePoints(const ZOR::reg::RefPointIdSet& points, ZOR::reg::GroupIdSet& vanishedGroups,
                    ZOR::reg::GroupIdSet& inactiveGroups, ZOR::reg::RefPointIdSet& inactivePoints) override;
  void setBaseGroups(const ZOR::reg::GroupIdSet& groups, ZOR::reg::GroupIdSet& baseGroups,
                     ZOR::reg::RefPointIdSet& basePoints, ZOR::reg::GroupIdSet& inactiveGroups,
                     ZOR::reg::RefPointIdSet& inactivePoints) override;
  void unsetBaseGroups(const ZOR::reg::GroupIdSet& groups, ZOR::reg::GroupIdSet& baseGroups,
                       ZOR::reg::RefPointIdSet& basePoints, ZOR::reg::GroupIdSet& inactiveGroups,
                       ZOR::reg::RefPointIdSet& inactivePoints) override;
  void includePoints(const ZOR::reg::RefPointIdSet& points, ZOR::reg::GroupIdSet& excludedGroups,
                     ZOR::reg::GroupIdSet& inactiveGroups, ZOR::reg::RefPointIdSet& inactivePoints) override;
  void excludePoints(const ZOR::reg::RefPointIdSet& points, ZOR::reg::GroupIdSet& excludedGroups,
                     ZOR::reg::GroupIdSet& inactiveGroups, ZOR::reg::RefPointIdSet& inactivePoints) override;
  bool setPointsWeight(const ZOR::reg::RefPointIdSet& points, double weight, ZOR::reg::GroupIdSet& inactiveGroups,
                       ZOR::reg::RefPointIdSet& inactivePoints) override;
  void includeGroups(const ZOR::reg::GroupIdSet& groups, ZOR::reg::RefPointIdSet& excludedPoints,
                     ZOR::reg::GroupIdSet& inactiveGroups, ZOR::reg::RefPointIdSet& inactivePoints) override;
  void excludeGroups(const ZOR::reg::GroupIdSet& groups, ZOR::reg::RefPointIdSet& excludedPoints,
                     ZOR::reg::GroupIdSet& inactiveGroups, ZOR::reg::RefPointIdSet& inactivePoints) override;
  bool renameGroup(ZOR::reg::GroupId group, std::string newName, ZOR::reg::RefPointIdSet& groupPoints) override;
  bool renamePoint(ZOR::reg::RefPointId point, std::string newName, ZOR::reg::GroupId& group,
                   ZOR::reg::GroupIdSet& inactiveGroups, ZOR::reg::RefPointIdSet& inactivePoints) override;
  void setGroupsVisible(ZOR::reg::GroupIdSet groups, bool visible) override;
  void zoomToGroup(ZOR::reg::GroupId group) override;
  void zoomToPoint(ZOR::reg::RefPointId point) override;
  void zoomToAll() override;
  bool saveCommonPointsFile(std::string name, std::string folder) override;
  bool storeCommonPoints(std::string name) override;
  void clearResults() override;
  bool registerPairwise(std::map<ZOR::reg::RefPointId, double>& discrepancies) override;
  void getGroupClusters(std::map<std::uint64_t, ZOR::reg::GroupIdSet>& clusters) override;
  void keepGroupCluster(std::uint64_t cluster, ZOR::reg::RefPointIdSet& excludedPoints,
                        ZOR::reg::GroupIdSet& inactiveGroups, ZOR::reg::RefPointIdSet& inactivePoints) override;
  void getIterationLimits(std::uint64_t& maxIterations, double& convergenceCriteria) override;
  bool registerIterative(std::uint64_t maxIterations, double convergenceCriteria,
                         std::map<ZOR::reg::RefPointId, double>& discrepancies) override;
  bool getCommonPointNames(std::list<ZOR::reg::NamedId>& names) override;
  bool applyTransformToCloud(ZOR::reg::GroupId group, std::uint64_t cloud) override;
  bool applyTransformations() override;
  void getPointClouds(std::list<ZOR::reg::NamedId>& clouds) override;
  void getMatrixFormats(std::map<std::uint64_t, std::string>& formats) override;
  bool saveGroupMatrices(ZOR::reg::GroupIdSet groups, std::string folder, std::uint64_t format) override;
  bool saveAllMatrices(std::string folder, std::uint64_t format) override;
  std::wstring getPointsReport(ZOR::reg::RefPointIdSet points) override;
  std::wstring getGroupsReport(ZOR::reg::GroupIdSet groups) override;
  std::wstring getResultsReport() override;
  void getReportFormats(std::map<std::uint64_t, std::string>& formats) override;
  bool saveReport(std::string path, std::uint64_t format) override;
  bool hasUnnamedPointsInRegisteredGroups() override;
  bool hasUnnamedPoints() override;
  void getMatchDistanceTolerance(double& tolerance) override;
  void getTriangleMatchTolerances(double& sideTolerance, double& minSideDifference) override;
  void matchPointsByDistance(double tolerance, std::map<ZOR::reg::RefPointId, std::string>& assignedNames,
                             ZOR::reg::GroupIdSet& inactiveGroups, ZOR::reg::RefPointIdSet& inactivePoints) override;
  void matchGroupsByTriangles(const ZOR::reg::GroupIdSet& groups, double sideTolerance, double minSideDifference,
                              std::map<ZOR::reg::RefPointId, std::string>& assignedNames,
                              ZOR::reg::GroupIdSet& inactiveGroups, ZOR::reg::RefPointIdSet& inactivePoints) override;
  void matchAllGroupsByTriangles(double sideTolerance, double minSideDifference,
                                 std::map<ZOR::reg::RefPointId, std::string>& assignedNames,
                                 ZOR::reg::GroupIdSet& inactiveGroups,
                                 ZOR::reg::RefPointIdSet& inactivePoints) override;
  double getMaxPointSpread() override;
  bool getPointSpreadHistogram(std::vector<std::uint64_t>& binCounts, std::vector<double>& binEdges) override;

 private:
  void askNames();
  void askClusters();
  template <class Match>
  void match(const std::map<ZOR::reg::RefPointId, std::string>& assignedNames,
             const ZOR::reg::RefPointIdSet& inactivePoints, Match match);

  std::unique_ptr<ZOR::reg::iMultiRegistrator> session;
  SessionMirror mirror;
  // What must be asked before it is shown. A new session knows no names and no clusters; its limits
  // are the profile's.
  bool namesAreOld = false;
  bool clustersAreOld = false;
  bool limitsAreOld = true;
};

}  // namespace tiepoint::workbench
