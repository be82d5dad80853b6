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

}  // namespace
}  // namespace tiepoint::workbench
