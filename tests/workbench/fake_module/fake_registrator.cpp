#include "workbench/fake_module/fake_registrator.h"

#include <boost/math/policies/error_handling.hpp>
#include <limits>
#include <new>
#include <sstream>
#include <stdexcept>

#include "platform/sdk/od_db_dictionary.h"
#include "workbench/fake_module/fake_host_access.h"

namespace {

using namespace ZOR::reg;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

std::ostream& operator<<(std::ostream& out, const std::set<std::uint64_t>& ids) {
  out << '{';
  const char* separator = "";
  for (std::uint64_t id : ids) {
    out << separator << id;
    separator = " ";
  }
  return out << '}';
}

void throwAsAsked(const std::string& name) {
  if (name == "throw OdError") throw OdError(eInvalidInput, "the drawing's own words");
  if (name == "throw wrong class") throw OdError_NotThatKindOfClass(OdDbObject::desc(), OdDbDictionary::desc());
  if (name == "throw bad_alloc") throw std::bad_alloc();
  if (name == "throw rounding_error") throw boost::math::rounding_error("the number's own words");
  if (name == "throw logic_error") throw std::logic_error("a mistake's own words");
  if (name == "throw int") throw 5;
  if (name == "store and throw") {
    fakeStoreGroup(name);
    throw OdError(eInvalidInput, "after the change");
  }
}

class FakeRegistrator : public iMultiRegistrator {
 public:
  bool getAvailableGroups(std::map<GroupId, std::string>& groups) override {
    log << "getAvailableGroups()\n";
    groups = {{10, "ten"}, {2, "\xD2\x98"}, {0, ""}};
    return true;
  }
  bool addGroups(const GroupIdSet& groups, std::list<RefPoint>& addedPoints, GroupIdSet& inactiveGroups,
                 RefPointIdSet& inactivePoints) override {
    log << "addGroups(" << groups << ")\n";
    if (groups != GroupIdSet{0}) return false;
    addedPoints.push_back({7, 0, 3, {0.1, -0.0, notANumber}, 0.5, true, false, true, false, true});
    addedPoints.push_back({6, 0, 4, {1.0, infinity, -infinity}, 1.0, false, true, false, true, false});
    inactiveGroups = {0};
    inactivePoints = {6, 7};
    return true;
  }
  bool removeGroups(const GroupIdSet& groups, RefPointIdSet& removedPoints, GroupIdSet& inactiveGroups,
                    RefPointIdSet& inactivePoints) override {
    log << "removeGroups(" << groups << ")\n";
    return fill(removedPoints, inactiveGroups, inactivePoints);
  }
  bool removePoints(const RefPointIdSet& points, GroupIdSet& vanishedGroups, GroupIdSet& inactiveGroups,
                    RefPointIdSet& inactivePoints) override {
    log << "removePoints(" << points << ")\n";
    return fill(vanishedGroups, inactiveGroups, inactivePoints);
  }
  void setBaseGroups(const GroupIdSet& groups, GroupIdSet& baseGroups, RefPointIdSet& basePoints,
                     GroupIdSet& inactiveGroups, RefPointIdSet& inactivePoints) override {
    log << "setBaseGroups(" << groups << ")\n";
    fill(baseGroups, basePoints, inactiveGroups, inactivePoints);
  }
  void unsetBaseGroups(const GroupIdSet& groups, GroupIdSet& baseGroups, RefPointIdSet& basePoints,
                       GroupIdSet& inactiveGroups, RefPointIdSet& inactivePoints) override {
    log << "unsetBaseGroups(" << groups << ")\n";
    fill(baseGroups, basePoints, inactiveGroups, inactivePoints);
  }
  void includePoints(const RefPointIdSet& points, GroupIdSet& excludedGroups, GroupIdSet& inactiveGroups,
                     RefPointIdSet& inactivePoints) override {
    log << "includePoints(" << points << ")\n";
    fill(excludedGroups, inactiveGroups, inactivePoints);
  }
  void excludePoints(const RefPointIdSet& points, GroupIdSet& excludedGroups, GroupIdSet& inactiveGroups,
                     RefPointIdSet& inactivePoints) override {
    log << "excludePoints(" << points << ")\n";
    fill(excludedGroups, inactiveGroups, inactivePoints);
  }
  bool setPointsWeight(const RefPointIdSet& points, double weight, GroupIdSet& inactiveGroups,
                       RefPointIdSet& inactivePoints) override {
    log << "setPointsWeight(" << points << ", " << weight << ")\n";
    return fill(inactiveGroups, inactivePoints);
  }
  void includeGroups(const GroupIdSet& groups, RefPointIdSet& excludedPoints, GroupIdSet& inactiveGroups,
                     RefPointIdSet& inactivePoints) override {
    log << "includeGroups(" << groups << ")\n";
    fill(excludedPoints, inactiveGroups, inactivePoints);
  }
  void excludeGroups(const GroupIdSet& groups, RefPointIdSet& excludedPoints, GroupIdSet& inactiveGroups,
                     RefPointIdSet& inactivePoints) override {
    log << "excludeGroups(" << groups << ")\n";
    fill(excludedPoints, inactiveGroups, inactivePoints);
  }
  bool renameGroup(GroupId group, std::string newName, RefPointIdSet& groupPoints) override {
    log << "renameGroup(" << group << ", " << newName << ")\n";
    throwAsAsked(newName);
    return fill(groupPoints);
  }
  bool renamePoint(RefPointId point, std::string newName, GroupId& group, GroupIdSet& inactiveGroups,
                   RefPointIdSet& inactivePoints) override {
    log << "renamePoint(" << point << ", " << newName << ")\n";
    if (newName.empty()) return false;
    group = 9;
    return fill(inactiveGroups, inactivePoints);
  }
  void setGroupsVisible(GroupIdSet groups, bool visible) override {
    log << "setGroupsVisible(" << groups << ", " << visible << ")\n";
  }
  void zoomToGroup(GroupId group) override { log << "zoomToGroup(" << group << ")\n"; }
  void zoomToPoint(RefPointId point) override { log << "zoomToPoint(" << point << ")\n"; }
  void zoomToAll() override {
    log << "zoomToAll()\n";
    fakeRefresh();
  }
  bool saveCommonPointsFile(std::string name, std::string folder) override {
    log << "saveCommonPointsFile(" << name << ", " << folder << ")\n";
    return true;
  }
  bool storeCommonPoints(std::string name) override {
    log << "storeCommonPoints(" << name << ")\n";
    fakeStoreGroup(name);
    return true;
  }
  void clearResults() override { log << "clearResults()\n"; }
  bool registerPairwise(std::map<RefPointId, double>& discrepancies) override {
    log << "registerPairwise()\n";
    discrepancies = {{100, 0.1}, {20, -0.0}, {3, infinity}, {4, -infinity}, {5, notANumber}};
    return true;
  }
  void getGroupClusters(std::map<std::uint64_t, GroupIdSet>& clusters) override {
    log << "getGroupClusters()\n";
    clusters = {{10, {3, 1}}, {9, {}}};
  }
  void keepGroupCluster(std::uint64_t cluster, RefPointIdSet& excludedPoints, GroupIdSet& inactiveGroups,
                        RefPointIdSet& inactivePoints) override {
    log << "keepGroupCluster(" << cluster << ")\n";
    fill(excludedPoints, inactiveGroups, inactivePoints);
  }
  void getIterationLimits(std::uint64_t& maxIterations, double& convergenceCriteria) override {
    log << "getIterationLimits()\n";
    maxIterations = 18446744073709551615u;
    convergenceCriteria = 0.001;
  }
  bool registerIterative(std::uint64_t maxIterations, double convergenceCriteria,
                         std::map<RefPointId, double>& discrepancies) override {
    log << "registerIterative(" << maxIterations << ", " << convergenceCriteria << ")\n";
    discrepancies = {{1, 0.25}};
    return false;
  }
  bool getCommonPointNames(std::list<NamedId>& names) override {
    log << "getCommonPointNames()\n";
    names = {{5, "T5"}, {1, "\xFF"}};
    return true;
  }
  bool applyTransformToCloud(GroupId group, std::uint64_t cloud) override {
    log << "applyTransformToCloud(" << group << ", " << cloud << ")\n";
    return true;
  }
  bool applyTransformations() override {
    log << "applyTransformations()\n";
    return false;
  }
  void getPointClouds(std::list<NamedId>& clouds) override {
    log << "getPointClouds()\n";
    clouds = {{0, "hall"}};
  }
  void getMatrixFormats(std::map<std::uint64_t, std::string>& formats) override {
    log << "getMatrixFormats()\n";
    formats = {{0, "TRF"}, {1, "4x4"}};
  }
  bool saveGroupMatrices(GroupIdSet groups, std::string folder, std::uint64_t format) override {
    log << "saveGroupMatrices(" << groups << ", " << folder << ", " << format << ")\n";
    return true;
  }
  bool saveAllMatrices(std::string folder, std::uint64_t format) override {
    log << "saveAllMatrices(" << folder << ", " << format << ")\n";
    return true;
  }
  std::wstring getPointsReport(RefPointIdSet points) override {
    log << "getPointsReport(" << points << ")\n";
    return L"<b>\"\u0416\"</b>\r\n";
  }
  std::wstring getGroupsReport(GroupIdSet groups) override {
    log << "getGroupsReport(" << groups << ")\n";
    return L"";
  }
  std::wstring getResultsReport() override {
    const std::string text = log.str();
    log.str({});
    return OdString(text).wideText();
  }
  void getReportFormats(std::map<std::uint64_t, std::string>& formats) override {
    log << "getReportFormats()\n";
    formats = {{0, "HTML|*.html"}};
  }
  bool saveReport(std::string path, std::uint64_t format) override {
    log << "saveReport(" << path << ", " << format << ")\n";
    return true;
  }
  bool hasUnnamedPointsInRegisteredGroups() override {
    log << "hasUnnamedPointsInRegisteredGroups()\n";
    return false;
  }
  bool hasUnnamedPoints() override {
    log << "hasUnnamedPoints()\n";
    return true;
  }
  void getMatchDistanceTolerance(double& tolerance) override {
    log << "getMatchDistanceTolerance()\n";
    tolerance = 0.1;
  }
  void getTriangleMatchTolerances(double& sideTolerance, double& minSideDifference) override {
    log << "getTriangleMatchTolerances()\n";
    sideTolerance = 0.001;
    minSideDifference = 0.1;
  }
  void matchPointsByDistance(double tolerance, std::map<RefPointId, std::string>& assignedNames,
                             GroupIdSet& inactiveGroups, RefPointIdSet& inactivePoints) override {
    log << "matchPointsByDistance(" << tolerance << ")\n";
    assignedNames = {{11, "auto1"}, {8, "auto0"}};
    fill(inactiveGroups, inactivePoints);
  }
  void matchGroupsByTriangles(const GroupIdSet& groups, double sideTolerance, double minSideDifference,
                              std::map<RefPointId, std::string>& assignedNames, GroupIdSet& inactiveGroups,
                              RefPointIdSet& inactivePoints) override {
    log << "matchGroupsByTriangles(" << groups << ", " << sideTolerance << ", " << minSideDifference << ")\n";
    assignedNames = {{8, "auto0"}};
    fill(inactiveGroups, inactivePoints);
  }
  void matchAllGroupsByTriangles(double sideTolerance, double minSideDifference,
                                 std::map<RefPointId, std::string>& assignedNames, GroupIdSet& inactiveGroups,
                                 RefPointIdSet& inactivePoints) override {
    log << "matchAllGroupsByTriangles(" << sideTolerance << ", " << minSideDifference << ")\n";
    assignedNames = {};
    fill(inactiveGroups, inactivePoints);
  }
  double getMaxPointSpread() override {
    log << "getMaxPointSpread()\n";
    return 2.5;
  }
  bool getPointSpreadHistogram(std::vector<std::uint64_t>& binCounts, std::vector<double>& binEdges) override {
    log << "getPointSpreadHistogram()\n";
    binCounts = {3, 0, 1};
    binEdges = {0.0, 0.5, 1e-7, 1e22};
    return true;
  }

 private:
  /// Gives the outputs different values, in order: {1}, {2, 3}, {3, 4, 5}, {4, 5, 6, 7}.
  template <class... Sets>
  static bool fill(Sets&... outputs) {
    std::uint64_t place = 1;
    const auto fillOne = [&](std::set<std::uint64_t>& ids) {
      for (std::uint64_t i = 0; i < place; ++i) ids.insert(place + i);
      ++place;
    };
    (fillOne(outputs), ...);
    return true;
  }

  std::ostringstream log;
};

}  // namespace

iMultiRegistrator* newFakeRegistrator() { return new FakeRegistrator; }
