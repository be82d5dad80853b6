// The operations of the session, each under its own name.
#include "workbench/rpc/registrator_operation.h"

namespace tiepoint::workbench {

namespace {

using Session = ZOR::reg::iMultiRegistrator;

void addMembership(Methods& methods) {
  methods["getAvailableGroups"] = operation(&Session::getAvailableGroups, in(), out("result", "groups"));
  methods["addGroups"] =
      operation(&Session::addGroups, in("groups"), out("result", "addedPoints", "inactiveGroups", "inactivePoints"));
  methods["removeGroups"] = operation(&Session::removeGroups, in("groups"),
                                      out("result", "removedPoints", "inactiveGroups", "inactivePoints"));
  methods["removePoints"] = operation(&Session::removePoints, in("points"),
                                      out("result", "vanishedGroups", "inactiveGroups", "inactivePoints"));
}

void addSwitches(Methods& methods) {
  methods["setBaseGroups"] = operation(&Session::setBaseGroups, in("groups"),
                                       out("baseGroups", "basePoints", "inactiveGroups", "inactivePoints"));
  methods["unsetBaseGroups"] = operation(&Session::unsetBaseGroups, in("groups"),
                                         out("baseGroups", "basePoints", "inactiveGroups", "inactivePoints"));
  methods["includePoints"] =
      operation(&Session::includePoints, in("points"), out("excludedGroups", "inactiveGroups", "inactivePoints"));
  methods["excludePoints"] =
      operation(&Session::excludePoints, in("points"), out("excludedGroups", "inactiveGroups", "inactivePoints"));
  methods["setPointsWeight"] =
      operation(&Session::setPointsWeight, in("points", "weight"), out("result", "inactiveGroups", "inactivePoints"));
  methods["includeGroups"] =
      operation(&Session::includeGroups, in("groups"), out("excludedPoints", "inactiveGroups", "inactivePoints"));
  methods["excludeGroups"] =
      operation(&Session::excludeGroups, in("groups"), out("excludedPoints", "inactiveGroups", "inactivePoints"));
}

void addNames(Methods& methods) {
  methods["renameGroup"] = operation(&Session::renameGroup, in("group", "newName"), out("result", "groupPoints"));
  methods["renamePoint"] = operation(&Session::renamePoint, in("point", "newName"),
                                     out("result", "group", "inactiveGroups", "inactivePoints"));
  methods["getCommonPointNames"] = operation(&Session::getCommonPointNames, in(), out("result", "names"));
  methods["hasUnnamedPointsInRegisteredGroups"] =
      operation(&Session::hasUnnamedPointsInRegisteredGroups, in(), out("result"));
  methods["hasUnnamedPoints"] = operation(&Session::hasUnnamedPoints, in(), out("result"));
}

void addDisplay(Methods& methods) {
  methods["setGroupsVisible"] = operation(&Session::setGroupsVisible, in("groups", "visible"), out());
  methods["zoomToGroup"] = operation(&Session::zoomToGroup, in("group"), out());
  methods["zoomToPoint"] = operation(&Session::zoomToPoint, in("point"), out());
  methods["zoomToAll"] = operation(&Session::zoomToAll, in(), out());
}

void addSolving(Methods& methods) {
  methods["clearResults"] = operation(&Session::clearResults, in(), out());
  methods["registerPairwise"] = operation(&Session::registerPairwise, in(), out("result", "discrepancies"));
  methods["getGroupClusters"] = operation(&Session::getGroupClusters, in(), out("clusters"));
  methods["keepGroupCluster"] =
      operation(&Session::keepGroupCluster, in("cluster"), out("excludedPoints", "inactiveGroups", "inactivePoints"));
  methods["getIterationLimits"] =
      operation(&Session::getIterationLimits, in(), out("maxIterations", "convergenceCriteria"));
  methods["registerIterative"] = operation(&Session::registerIterative, in("maxIterations", "convergenceCriteria"),
                                           out("result", "discrepancies"));
}

void addMatching(Methods& methods) {
  methods["getMatchDistanceTolerance"] = operation(&Session::getMatchDistanceTolerance, in(), out("tolerance"));
  methods["getTriangleMatchTolerances"] =
      operation(&Session::getTriangleMatchTolerances, in(), out("sideTolerance", "minSideDifference"));
  methods["matchPointsByDistance"] = operation(&Session::matchPointsByDistance, in("tolerance"),
                                               out("assignedNames", "inactiveGroups", "inactivePoints"));
  methods["matchGroupsByTriangles"] =
      operation(&Session::matchGroupsByTriangles, in("groups", "sideTolerance", "minSideDifference"),
                out("assignedNames", "inactiveGroups", "inactivePoints"));
  methods["matchAllGroupsByTriangles"] =
      operation(&Session::matchAllGroupsByTriangles, in("sideTolerance", "minSideDifference"),
                out("assignedNames", "inactiveGroups", "inactivePoints"));
  methods["getMaxPointSpread"] = operation(&Session::getMaxPointSpread, in(), out("spread"));
  methods["getPointSpreadHistogram"] =
      operation(&Session::getPointSpreadHistogram, in(), out("result", "binCounts", "binEdges"));
}

void addDrawingOutput(Methods& methods) {
  methods["storeCommonPoints"] = operation(&Session::storeCommonPoints, in("name"), out("result"));
  methods["applyTransformToCloud"] = operation(&Session::applyTransformToCloud, in("group", "cloud"), out("result"));
  methods["applyTransformations"] = operation(&Session::applyTransformations, in(), out("result"));
  methods["getPointClouds"] = operation(&Session::getPointClouds, in(), out("clouds"));
}

void addFileOutput(Methods& methods) {
  methods["saveCommonPointsFile"] =
      operation(&Session::saveCommonPointsFile, in("name", path("folder")), out("result"));
  methods["getMatrixFormats"] = operation(&Session::getMatrixFormats, in(), out("formats"));
  methods["saveGroupMatrices"] =
      operation(&Session::saveGroupMatrices, in("groups", path("folder"), "format"), out("result"));
  methods["saveAllMatrices"] = operation(&Session::saveAllMatrices, in(path("folder"), "format"), out("result"));
  methods["getPointsReport"] = operation(&Session::getPointsReport, in("points"), out("report"));
  methods["getGroupsReport"] = operation(&Session::getGroupsReport, in("groups"), out("report"));
  methods["getResultsReport"] = operation(&Session::getResultsReport, in(), out("report"));
  methods["getReportFormats"] = operation(&Session::getReportFormats, in(), out("formats"));
  methods["saveReport"] = operation(&Session::saveReport, in(path("path"), "format"), out("result"));
}

}  // namespace

void addRegistratorMethods(Methods& methods) {
  addMembership(methods);
  addSwitches(methods);
  addNames(methods);
  addDisplay(methods);
  addSolving(methods);
  addMatching(methods);
  addDrawingOutput(methods);
  addFileOutput(methods);
}

}  // namespace tiepoint::workbench
