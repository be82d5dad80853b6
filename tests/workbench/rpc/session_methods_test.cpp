#include <gtest/gtest.h>

#include "workbench/rpc/rpc_fixture.h"

namespace tiepoint::workbench {
namespace {

using SessionMethods = RpcTest;

TEST_F(SessionMethods, CountSessionsFromOne) {
  EXPECT_EQ(result("session.begin"), R"({"session":1})");
  EXPECT_EQ(result("session.begin"), R"({"session":2})");
}

TEST_F(SessionMethods, NeverUseANumberTwice) {
  result("session.begin");
  EXPECT_EQ(result("session.end", R"({"session":1})"), "{}");
  EXPECT_EQ(result("session.begin"), R"({"session":2})");
}

TEST_F(SessionMethods, BeginNoSessionWithoutAnActiveDocument) {
  result("document.close");
  EXPECT_EQ(error("session.begin"), R"({"code":-32001,"message":"there is no active document; open a drawing first"})");
}

TEST_F(SessionMethods, UseNoNumberForASessionThatCouldNotBegin) {
  result("document.close");
  error("session.begin");
  workbench.openTemporaryDocument();
  EXPECT_EQ(result("session.begin"), R"({"session":1})");
}

TEST_F(SessionMethods, MeanTheNewestSessionThatIsStillOpen) {
  result("session.begin");
  result("session.begin");
  result("session.begin");
  result("session.end", R"({"session":3})");
  result("zoomToGroup", R"({"group":1})");
  EXPECT_EQ(result("getResultsReport", R"({"session":1})"), R"({"report":""})");
  EXPECT_EQ(result("getResultsReport", R"({"session":2})"), R"({"report":"zoomToGroup(1)\n"})");
}

TEST_F(SessionMethods, MeanTheSessionThatIsNamed) {
  result("session.begin");
  result("session.begin");
  result("zoomToGroup", R"({"session":1,"group":1})");
  EXPECT_EQ(result("getResultsReport", R"({"session":2})"), R"({"report":""})");
  EXPECT_EQ(result("getResultsReport", R"({"session":1.0})"), R"({"report":"zoomToGroup(1)\n"})");
}

TEST_F(SessionMethods, RefuseANumberThatNamesNoSession) {
  result("session.begin");
  EXPECT_EQ(error("hasUnnamedPoints", R"({"session":2})"), R"({"code":-32001,"message":"there is no session 2"})");
  EXPECT_EQ(error("hasUnnamedPoints", R"({"session":0})"), R"({"code":-32001,"message":"there is no session 0"})");
  EXPECT_EQ(error("session.end", R"({"session":9007199254740991})"),
            R"({"code":-32001,"message":"there is no session 9007199254740991"})");
}

TEST_F(SessionMethods, EndASessionOnce) {
  result("session.begin");
  EXPECT_EQ(result("session.end", R"({"session":1})"), "{}");
  EXPECT_EQ(error("session.end", R"({"session":1})"), R"({"code":-32001,"message":"there is no session 1"})");
}

TEST_F(SessionMethods, EndTheNewestWithoutANumber) {
  result("session.begin");
  result("session.begin");
  EXPECT_EQ(result("session.end"), "{}");
  EXPECT_EQ(error("hasUnnamedPoints", R"({"session":2})"), R"({"code":-32001,"message":"there is no session 2"})");
  EXPECT_EQ(result("hasUnnamedPoints", R"({"session":1})"), R"({"result":true})");
}

TEST_F(SessionMethods, KeepASessionWhoseDocumentIsClosed) {
  result("session.begin");
  result("document.close");
  EXPECT_EQ(result("hasUnnamedPoints"), R"({"result":true})");
}

// --- What a session holds.

/// The fake session's limits and tolerances.
constexpr const char* numbers =
    R"("maxIterations":18446744073709551615,"convergenceCriteria":0.001,"tolerance":0.1,"sideTolerance":0.001,)"
    R"("minSideDifference":0.1,)";

TEST_F(SessionMethods, TellThatANewSessionHoldsNothing) {
  result("session.begin");
  EXPECT_EQ(result("session.state"),
            R"({"groups":[],"points":[],"names":[],"unsureNames":[],"visibleGroups":[],"registeredGroups":[],)"
            R"("discrepancies":{},"clusters":{},)" +
                std::string(numbers) + R"("clouds":[],"lastReport":"none"})");
}

TEST_F(SessionMethods, TellWhatASessionHolds) {
  result("session.begin");
  result("getAvailableGroups");
  result("addGroups", R"({"groups":[0]})");
  result("getPointClouds");
  result("getGroupsReport", R"({"groups":[0]})");
  EXPECT_EQ(result("session.state"),
            R"({"groups":[{"id":0,"name":"","inSession":true,"inBase":false},)"
            "{\"id\":2,\"name\":\"\xD0\xA2\xC2\x98\",\"inSession\":false,\"inBase\":false},"
            R"({"id":10,"name":"ten","inSession":false,"inBase":false}],"points":[)"
            R"({"id":7,"groupId":0,"commonId":3,"position":[0.1,-0.0,"nan"],"weight":0.5,"included":true,)"
            R"("active":false,"inBase":true,"named":false,"autoNamed":true,"name":""},)"
            R"({"id":6,"groupId":0,"commonId":4,"position":[1.0,"inf","-inf"],"weight":1.0,"included":false,)"
            R"("active":false,"inBase":false,"named":true,"autoNamed":false,"name":""}],)"
            "\"names\":[{\"id\":5,\"name\":\"T5\"},{\"id\":1,\"name\":\"\xD1\x8F\"}],"
            R"("unsureNames":[],"visibleGroups":[0],"registeredGroups":[],"discrepancies":{},"clusters":{},)" +
                std::string(numbers) + R"("clouds":[{"id":0,"name":"hall"}],"lastReport":"groups"})");
}

TEST_F(SessionMethods, TellWhatTheSessionHoldsThatIsNamed) {
  result("session.begin");
  result("session.begin");
  result("getPointClouds", R"({"session":1})");
  EXPECT_NE(result("session.state", R"({"session":1})").find(R"("clouds":[{"id":0,"name":"hall"}])"),
            std::string::npos);
  EXPECT_NE(result("session.state").find(R"("clouds":[])"), std::string::npos);
  EXPECT_EQ(error("session.state", R"({"session":3})"), R"({"code":-32001,"message":"there is no session 3"})");
}

}  // namespace
}  // namespace tiepoint::workbench
