// One registration session.
#pragma once

#include <cstdint>
#include <vector>

#include "display/ref_points_transient.h"
#include "files/html_reports.h"
#include "host_access/registration_settings.h"
#include "matching/naming_state.h"
#include "platform/pointclouds/point_cloud_definition.h"
#include "records/display_group.h"
#include "session/i_multi_registrator.h"
#include "session/matrix_formats.h"
#include "solver/solve_results.h"

namespace ZOR::reg {

/// Everything between the drawing and the host's dialog: what was read, what the user switched,
/// what the solver found, and what the markers show. Records refer to one another by ids; nothing
/// is written to the drawing but by storeCommonPoints and the two apply operations.
///
/// One class, several sources by concern: membership, switches, names, zooms, cluster_choice,
/// document_binding, solving, matching, common_points_file,
/// matrix_files, reports.
class MultiRegistrator : public iMultiRegistrator {
 public:
  /// Reads the settings and puts the markers into the active document, if there is one.
  MultiRegistrator();
  ~MultiRegistrator() override;
  MultiRegistrator(const MultiRegistrator&) = delete;
  MultiRegistrator& operator=(const MultiRegistrator&) = delete;

  bool getAvailableGroups(std::map<GroupId, std::string>& groups) override;
  bool addGroups(const GroupIdSet& groups, std::list<RefPoint>& addedPoints, GroupIdSet& inactiveGroups,
                 RefPointIdSet& inactivePoints) override;
  bool removeGroups(const GroupIdSet& groups, RefPointIdSet& removedPoints, GroupIdSet& inactiveGroups,
                    RefPointIdSet& inactivePoints) override;
  bool removePoints(const RefPointIdSet& points, GroupIdSet& vanishedGroups, GroupIdSet& inactiveGroups,
                    RefPointIdSet& inactivePoints) override;
  void setBaseGroups(const GroupIdSet& groups, GroupIdSet& baseGroups, RefPointIdSet& basePoints,
                     GroupIdSet& inactiveGroups, RefPointIdSet& inactivePoints) override;
  void unsetBaseGroups(const GroupIdSet& groups, GroupIdSet& baseGroups, RefPointIdSet& basePoints,
                       GroupIdSet& inactiveGroups, RefPointIdSet& inactivePoints) override;
  void includePoints(const RefPointIdSet& points, GroupIdSet& excludedGroups, GroupIdSet& inactiveGroups,
                     RefPointIdSet& inactivePoints) override;
  void excludePoints(const RefPointIdSet& points, GroupIdSet& excludedGroups, GroupIdSet& inactiveGroups,
                     RefPointIdSet& inactivePoints) override;
  bool setPointsWeight(const RefPointIdSet& points, double weight, GroupIdSet& inactiveGroups,
                       RefPointIdSet& inactivePoints) override;
  void includeGroups(const GroupIdSet& groups, RefPointIdSet& excludedPoints, GroupIdSet& inactiveGroups,
                     RefPointIdSet& inactivePoints) override;
  void excludeGroups(const GroupIdSet& groups, RefPointIdSet& excludedPoints, GroupIdSet& inactiveGroups,
                     RefPointIdSet& inactivePoints) override;
  bool renameGroup(GroupId group, std::string newName, RefPointIdSet& groupPoints) override;
  bool renamePoint(RefPointId point, std::string newName, GroupId& group, GroupIdSet& inactiveGroups,
                   RefPointIdSet& inactivePoints) override;
  void setGroupsVisible(GroupIdSet groups, bool visible) override;
  void zoomToGroup(GroupId group) override;
  void zoomToPoint(RefPointId point) override;
  void zoomToAll() override;
  bool saveCommonPointsFile(std::string name, std::string folder) override;
  bool storeCommonPoints(std::string name) override;
  void clearResults() override;
  bool registerPairwise(std::map<RefPointId, double>& discrepancies) override;
  void getGroupClusters(std::map<std::uint64_t, GroupIdSet>& clusters) override;
  void keepGroupCluster(std::uint64_t cluster, RefPointIdSet& excludedPoints, GroupIdSet& inactiveGroups,
                        RefPointIdSet& inactivePoints) override;
  void getIterationLimits(std::uint64_t& maxIterations, double& convergenceCriteria) override;
  bool registerIterative(std::uint64_t maxIterations, double convergenceCriteria,
                         std::map<RefPointId, double>& discrepancies) override;
  bool getCommonPointNames(std::list<NamedId>& names) override;
  bool applyTransformToCloud(GroupId group, std::uint64_t cloud) override;
  bool applyTransformations() override;
  void getPointClouds(std::list<NamedId>& clouds) override;
  void getMatrixFormats(std::map<std::uint64_t, std::string>& formats) override;
  bool saveGroupMatrices(GroupIdSet groups, std::string folder, std::uint64_t format) override;
  bool saveAllMatrices(std::string folder, std::uint64_t format) override;
  std::wstring getPointsReport(RefPointIdSet points) override;
  std::wstring getGroupsReport(GroupIdSet groups) override;
  std::wstring getResultsReport() override;
  void getReportFormats(std::map<std::uint64_t, std::string>& formats) override;
  bool saveReport(std::string path, std::uint64_t format) override;
  bool hasUnnamedPointsInRegisteredGroups() override;
  bool hasUnnamedPoints() override;
  void getMatchDistanceTolerance(double& tolerance) override;
  void getTriangleMatchTolerances(double& sideTolerance, double& minSideDifference) override;
  void matchPointsByDistance(double tolerance, std::map<RefPointId, std::string>& assignedNames,
                             GroupIdSet& inactiveGroups, RefPointIdSet& inactivePoints) override;
  void matchGroupsByTriangles(const GroupIdSet& groups, double sideTolerance, double minSideDifference,
                              std::map<RefPointId, std::string>& assignedNames, GroupIdSet& inactiveGroups,
                              RefPointIdSet& inactivePoints) override;
  void matchAllGroupsByTriangles(double sideTolerance, double minSideDifference,
                                 std::map<RefPointId, std::string>& assignedNames, GroupIdSet& inactiveGroups,
                                 RefPointIdSet& inactivePoints) override;
  double getMaxPointSpread() override;
  bool getPointSpreadHistogram(std::vector<std::uint64_t>& binCounts, std::vector<double>& binEdges) override;

  /// Fits every group onto the reference group as it stands; no operation of the interface calls
  /// it. `workingPoints` comes from prepareSolvePoints; points whose name the reference group
  /// lacks are left out. `discrepancies` is added to, not emptied.
  void registerComplete(const std::list<RefPoint>& workingPoints, GroupId referenceGroup,
                        std::map<RefPointId, double>& discrepancies);

 private:
  // The end of every operation that changes what may be solved.
  void rebuildActive(GroupIdSet& inactiveGroups, RefPointIdSet& inactivePoints);
  void reportBase(GroupIdSet& baseGroups, RefPointIdSet& basePoints, GroupIdSet& inactiveGroups,
                  RefPointIdSet& inactivePoints);

  // Display.
  void rebuildDisplay();
  void rebuildVisibleDisplay();
  void refreshDisplayNames(const RefPointIdSet& points);
  void applyTransformsToDisplay();

  // The end of every matching.
  void applyMatch(const NamingChanges& changes, std::map<RefPointId, std::string>& assignedNames,
                  GroupIdSet& inactiveGroups, RefPointIdSet& inactivePoints);

  // Results.
  ReportSource reportSource() const;

  // Drawing.
  void syncFromDrawing();

  // Zooms.
  OdGePoint3d shownPosition(const RefPoint& point) const;
  void zoomToPointsOf(const GroupIdSet& groups);

  void setBase(const GroupIdSet& groups, bool inBase);
  void setIncluded(const RefPointIdSet& points, bool included);
  void setGroupsIncluded(const GroupIdSet& groups, bool included);

  // Members in the order of their construction.
  RefPointsTransient transient;
  /// The formats of matrices refer to it.
  SolveResults results;
  MatrixFormats matrixFormats;
  std::vector<std::uint8_t> groupColors;
  RegistrationSettings settings;
  NamedIdList groupNames;
  NamedIdList commonNames;
  RefPointList allPoints;
  std::vector<hostDbPointCloudDefinitionPtr> clouds;
  RefPointList sessionPoints;
  GroupClusters groupClusters;
  double convergenceCriteria = 0.0;
  double actualDiscrepancy = 0.0;
  std::uint64_t maxIterations = 0;
  std::uint64_t actualIterations = 0;
  double matchDistanceTolerance = 0.1;
  double triangleSideTolerance = 0.001;
  double triangleMinSideDifference = 0.1;
  PointDiscrepancies pointDiscrepancies;
  std::wstring reportText;
  GroupIdSet visibleGroups;
  DisplayGroups visibleDisplay;
  DisplayGroups allDisplay;
  DisplayGroups untransformedDisplay;
};

}  // namespace ZOR::reg
