// Every operation of the session: what it is called with, and what its outputs become.
#include <gtest/gtest.h>

#include <ostream>
#include <string>

#include "workbench/rpc/rpc_fixture.h"

namespace tiepoint::workbench {
namespace {

struct Call {
  const char* method;
  const char* params;
  /// As the fake module logs it.
  const char* called;
  const char* result;
};

void PrintTo(const Call& call, std::ostream* out) { *out << call.method << call.params; }

const Call calls[] = {
    {"getAvailableGroups", "{}", "getAvailableGroups()",
     R"({"result":true,"groups":{"0":"","2":")"
     "\xD0\xA2\xC2\x98"
     R"(","10":"ten"}})"},
    {"addGroups", R"({"groups":[0]})", "addGroups({0})",
     R"({"result":true,"addedPoints":[)"
     R"({"id":7,"groupId":0,"commonId":3,"position":[0.1,-0.0,"nan"],"weight":0.5,)"
     R"("included":true,"active":false,"inBase":true,"named":false,"autoNamed":true},)"
     R"({"id":6,"groupId":0,"commonId":4,"position":[1.0,"inf","-inf"],"weight":1.0,)"
     R"("included":false,"active":true,"inBase":false,"named":true,"autoNamed":false}],)"
     R"("inactiveGroups":[0],"inactivePoints":[6,7]})"},
    {"addGroups", R"({"groups":[3,1,3]})", "addGroups({1 3})",
     R"({"result":false,"addedPoints":[],"inactiveGroups":[],"inactivePoints":[]})"},
    {"removeGroups", R"({"groups":[2]})", "removeGroups({2})",
     R"({"result":true,"removedPoints":[1],"inactiveGroups":[2,3],"inactivePoints":[3,4,5]})"},
    {"removePoints", R"({"points":[9007199254740991]})", "removePoints({9007199254740991})",
     R"({"result":true,"vanishedGroups":[1],"inactiveGroups":[2,3],"inactivePoints":[3,4,5]})"},
    {"setBaseGroups", R"({"groups":[2]})", "setBaseGroups({2})",
     R"({"baseGroups":[1],"basePoints":[2,3],"inactiveGroups":[3,4,5],"inactivePoints":[4,5,6,7]})"},
    {"unsetBaseGroups", R"({"groups":[]})", "unsetBaseGroups({})",
     R"({"baseGroups":[1],"basePoints":[2,3],"inactiveGroups":[3,4,5],"inactivePoints":[4,5,6,7]})"},
    {"includePoints", R"({"points":[1,2]})", "includePoints({1 2})",
     R"({"excludedGroups":[1],"inactiveGroups":[2,3],"inactivePoints":[3,4,5]})"},
    {"excludePoints", R"({"points":[1,2]})", "excludePoints({1 2})",
     R"({"excludedGroups":[1],"inactiveGroups":[2,3],"inactivePoints":[3,4,5]})"},
    {"setPointsWeight", R"({"points":[1],"weight":0.25})", "setPointsWeight({1}, 0.25)",
     R"({"result":true,"inactiveGroups":[1],"inactivePoints":[2,3]})"},
    {"setPointsWeight", R"({"points":[],"weight":"nan"})", "setPointsWeight({}, nan)",
     R"({"result":true,"inactiveGroups":[1],"inactivePoints":[2,3]})"},
    {"setPointsWeight", R"({"points":[],"weight":-0.0})", "setPointsWeight({}, -0)",
     R"({"result":true,"inactiveGroups":[1],"inactivePoints":[2,3]})"},
    {"includeGroups", R"({"groups":[1]})", "includeGroups({1})",
     R"({"excludedPoints":[1],"inactiveGroups":[2,3],"inactivePoints":[3,4,5]})"},
    {"excludeGroups", R"({"groups":[1]})", "excludeGroups({1})",
     R"({"excludedPoints":[1],"inactiveGroups":[2,3],"inactivePoints":[3,4,5]})"},
    {"renameGroup", R"({"group":5,"newName":"\u0422 1"})", "renameGroup(5, \xD0\xA2 1)",
     R"({"result":true,"groupPoints":[1]})"},
    {"renamePoint", R"({"point":5,"newName":"T"})", "renamePoint(5, T)",
     R"({"result":true,"group":9,"inactiveGroups":[1],"inactivePoints":[2,3]})"},
    {"renamePoint", R"({"point":5,"newName":""})", "renamePoint(5, )",
     R"({"result":false,"group":0,"inactiveGroups":[],"inactivePoints":[]})"},
    {"setGroupsVisible", R"({"groups":[1],"visible":true})", "setGroupsVisible({1}, 1)", "{}"},
    {"setGroupsVisible", R"({"groups":[1],"visible":false})", "setGroupsVisible({1}, 0)", "{}"},
    {"zoomToGroup", R"({"group":8})", "zoomToGroup(8)", "{}"},
    {"zoomToPoint", R"({"point":8})", "zoomToPoint(8)", "{}"},
    {"zoomToAll", "{}", "zoomToAll()", "{}"},
    // The log reads the path's bytes as windows-1251.
    {"saveCommonPointsFile", R"({"name":"m","folder":"/tmp/\u65e5"})",
     "saveCommonPointsFile(m, /tmp/\xD0\xB6\xE2\x80\x94\xD2\x90)", R"({"result":true})"},
    {"storeCommonPoints", R"({"name":"m"})", "storeCommonPoints(m)", R"({"result":true})"},
    {"clearResults", "{}", "clearResults()", "{}"},
    {"registerPairwise", "{}", "registerPairwise()",
     R"({"result":true,"discrepancies":{"3":"inf","4":"-inf","5":"nan","20":-0.0,"100":0.1}})"},
    {"getGroupClusters", "{}", "getGroupClusters()", R"({"clusters":{"9":[],"10":[1,3]}})"},
    {"keepGroupCluster", R"({"cluster":1})", "keepGroupCluster(1)",
     R"({"excludedPoints":[1],"inactiveGroups":[2,3],"inactivePoints":[3,4,5]})"},
    {"getIterationLimits", "{}", "getIterationLimits()",
     R"({"maxIterations":18446744073709551615,"convergenceCriteria":0.001})"},
    {"registerIterative", R"({"maxIterations":0,"convergenceCriteria":1e-7})", "registerIterative(0, 1e-07)",
     R"({"result":false,"discrepancies":{"1":0.25}})"},
    {"getCommonPointNames", "{}", "getCommonPointNames()",
     R"({"result":true,"names":[{"id":5,"name":"T5"},{"id":1,"name":")"
     "\xD1\x8F"
     R"("}]})"},
    {"applyTransformToCloud", R"({"group":1,"cloud":2})", "applyTransformToCloud(1, 2)", R"({"result":true})"},
    {"applyTransformations", "{}", "applyTransformations()", R"({"result":false})"},
    {"getPointClouds", "{}", "getPointClouds()", R"({"clouds":[{"id":0,"name":"hall"}]})"},
    {"getMatrixFormats", "{}", "getMatrixFormats()", R"({"formats":{"0":"TRF","1":"4x4"}})"},
    {"saveGroupMatrices", R"({"groups":[4,3],"folder":"f","format":1})", "saveGroupMatrices({3 4}, f, 1)",
     R"({"result":true})"},
    {"saveAllMatrices", R"({"folder":"f","format":0})", "saveAllMatrices(f, 0)", R"({"result":true})"},
    {"getPointsReport", R"({"points":[4,3]})", "getPointsReport({3 4})",
     R"({"report":"<b>\")"
     "\xD0\x96"
     R"(\"</b>\r\n"})"},
    {"getGroupsReport", R"({"groups":[4,3]})", "getGroupsReport({3 4})", R"({"report":""})"},
    {"getReportFormats", "{}", "getReportFormats()", R"({"formats":{"0":"HTML|*.html"}})"},
    {"saveReport", R"({"path":"r.html","format":0})", "saveReport(r.html, 0)", R"({"result":true})"},
    {"hasUnnamedPointsInRegisteredGroups", "{}", "hasUnnamedPointsInRegisteredGroups()", R"({"result":false})"},
    {"hasUnnamedPoints", "{}", "hasUnnamedPoints()", R"({"result":true})"},
    {"getMatchDistanceTolerance", "{}", "getMatchDistanceTolerance()", R"({"tolerance":0.1})"},
    {"getTriangleMatchTolerances", "{}", "getTriangleMatchTolerances()",
     R"({"sideTolerance":0.001,"minSideDifference":0.1})"},
    {"matchPointsByDistance", R"({"tolerance":"inf"})", "matchPointsByDistance(inf)",
     R"({"assignedNames":{"8":"auto0","11":"auto1"},"inactiveGroups":[1],"inactivePoints":[2,3]})"},
    {"matchGroupsByTriangles", R"({"groups":[1],"sideTolerance":1,"minSideDifference":2})",
     "matchGroupsByTriangles({1}, 1, 2)",
     R"({"assignedNames":{"8":"auto0"},"inactiveGroups":[1],"inactivePoints":[2,3]})"},
    {"matchAllGroupsByTriangles", R"({"sideTolerance":1,"minSideDifference":2})", "matchAllGroupsByTriangles(1, 2)",
     R"({"assignedNames":{},"inactiveGroups":[1],"inactivePoints":[2,3]})"},
    {"getMaxPointSpread", "{}", "getMaxPointSpread()", R"({"spread":2.5})"},
    {"getPointSpreadHistogram", "{}", "getPointSpreadHistogram()",
     R"({"result":true,"binCounts":[3,0,1],"binEdges":[0.0,0.5,1e-07,1e+22]})"},
    {"getResultsReport", "{}", "", R"({"report":""})"},
};

class RegistratorMethod : public RpcTest, public ::testing::WithParamInterface<Call> {
 protected:
  RegistratorMethod() { result("session.begin"); }
};

TEST_P(RegistratorMethod, CallsItsOperationAndGivesItsOutputsInOrder) {
  EXPECT_EQ(result(GetParam().method, GetParam().params), GetParam().result);
  const std::string called = GetParam().called;
  EXPECT_EQ(result("getResultsReport"), called.empty() ? R"({"report":""})" : "{\"report\":\"" + called + "\\n\"}");
}

TEST_P(RegistratorMethod, NeedsASession) {
  result("session.end");
  EXPECT_EQ(error(GetParam().method, GetParam().params),
            R"({"code":-32001,"message":"no session is open; begin one with session.begin"})");
}

TEST_P(RegistratorMethod, NamesAParameterThatItDoesNotKnow) {
  EXPECT_EQ(refusal(GetParam().method, R"({"unheardOf":0})"), R"({"code":-32602,"data":"unheardOf"})");
}

INSTANTIATE_TEST_SUITE_P(AllOperations, RegistratorMethod, ::testing::ValuesIn(calls));

// --- Parameters that must be refused.

struct Refusal {
  const char* method;
  const char* params;
  const char* parameter;
};

void PrintTo(const Refusal& refusal, std::ostream* out) { *out << refusal.method << refusal.params; }

const Refusal refusals[] = {
    {"addGroups", "{}", "groups"},
    {"addGroups", R"({"groups":{}})", "groups"},
    {"addGroups", R"({"groups":[-1]})", "groups"},
    {"addGroups", R"({"groups":[0.5]})", "groups"},
    {"addGroups", R"({"groups":["0"]})", "groups"},
    {"addGroups", R"({"groups":[9007199254740992]})", "groups"},
    {"addGroups", R"({"groups":null})", "groups"},
    {"addGroups", R"({"group":[0]})", "group"},
    {"zoomToGroup", R"({"group":[1]})", "group"},
    {"zoomToGroup", R"({"group":"1"})", "group"},
    {"setPointsWeight", R"({"points":[1]})", "weight"},
    {"setPointsWeight", R"({"weight":1})", "points"},
    {"setPointsWeight", R"({"points":[1],"weight":"1"})", "weight"},
    {"setPointsWeight", R"({"points":[1],"weight":null})", "weight"},
    {"setPointsWeight", R"({"points":[1],"weight":1e999})", "weight"},
    {"setPointsWeight", R"({"points":[1e999],"weight":1})", "points"},
    {"setPointsWeight", R"({"points":-1e999,"weight":1})", "points"},
    {"setPointsWeight", R"({"points":1,"weight":"1"})", "points"},
    {"setGroupsVisible", R"({"groups":[1],"visible":1})", "visible"},
    {"renameGroup", R"({"group":1,"newName":1})", "newName"},
    {"renameGroup", R"({"group":1,"newName":"\u00e9"})", "newName"},
    {"renamePoint", R"({"point":1,"newName":"\ud83d\ude00"})", "newName"},
    {"storeCommonPoints", R"({"name":"\u65e5"})", "name"},
    {"saveCommonPointsFile", R"({"name":"\u65e5","folder":"f"})", "name"},
    // The log reads the path's bytes as windows-1251.
    {"saveCommonPointsFile", R"({"name":"m","folder":"a\u0000b"})", "folder"},
    {"saveReport", R"({"path":"r.html","format":1.5})", "format"},
    {"registerIterative", R"({"maxIterations":-1,"convergenceCriteria":0})", "maxIterations"},
    {"registerIterative", R"({"maxIterations":1})", "convergenceCriteria"},
    {"hasUnnamedPoints", R"({"session":"1"})", "session"},
    {"hasUnnamedPoints", R"({"session":null})", "session"},
    {"hasUnnamedPoints", R"({"session":-1})", "session"},
};

class RegistratorRefusal : public RpcTest, public ::testing::WithParamInterface<Refusal> {};

TEST_P(RegistratorRefusal, NamesTheParameterAndCallsNothing) {
  result("session.begin");
  EXPECT_EQ(refusal(GetParam().method, GetParam().params),
            std::string(R"({"code":-32602,"data":")") + GetParam().parameter + "\"}");
  EXPECT_EQ(result("getResultsReport"), R"({"report":""})");
}

INSTANTIATE_TEST_SUITE_P(BadParameters, RegistratorRefusal, ::testing::ValuesIn(refusals));

}  // namespace
}  // namespace tiepoint::workbench
