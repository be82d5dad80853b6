#include "workbench/rpc/rpc_server.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <sstream>
#include <string>

#include "workbench/rpc/rpc_fixture.h"

namespace tiepoint::workbench {
namespace {

// What begins the answer to a text that is no request, up to the message.
constexpr const char* notJson = R"({"jsonrpc":"2.0","id":null,"error":{"code":-32700,"message":"Parse error: )";
constexpr const char* notARequest = R"({"jsonrpc":"2.0","id":null,"error":{"code":-32600,"message":"Invalid Request: )";

class RpcServerTest : public RpcTest {
 protected:
  /// The start of the answer, as long as the expected one.
  std::string answerStart(const std::string& text, const std::string& expected) {
    return server.answer(text).substr(0, expected.size());
  }
};

TEST_F(RpcServerTest, AnswersARequest) {
  EXPECT_EQ(server.answer(R"({"jsonrpc":"2.0","id":1,"method":"view.redraws"})"),
            R"({"jsonrpc":"2.0","id":1,"result":{"count":0}})");
}

TEST_F(RpcServerTest, GivesTheIdBackAsItWas) {
  for (const char* id : {"0", "-7", "1.5", "\"a\\\"\xD0\x96\"", "null", "18446744073709551615"}) {
    EXPECT_EQ(server.answer(std::string(R"({"method":"view.redraws","id":)") + id + R"(,"jsonrpc":"2.0"})"),
              std::string(R"({"jsonrpc":"2.0","id":)") + id + R"(,"result":{"count":0}})");
  }
}

TEST_F(RpcServerTest, RefusesAnIdOfAnotherType) {
  for (const char* id : {"true", "[]", "{}", "[1]"}) {
    const std::string text = std::string(R"({"jsonrpc":"2.0","method":"view.redraws","id":)") + id + "}";
    EXPECT_EQ(answerStart(text, notARequest), notARequest) << id;
  }
}

TEST_F(RpcServerTest, CarriesOutANotificationAndIsSilent) {
  EXPECT_EQ(server.answer(R"({"jsonrpc":"2.0","method":"session.begin"})"), "");
  EXPECT_EQ(result("zoomToGroup", R"({"group":4})"), "{}");
  EXPECT_EQ(server.answer(R"({"jsonrpc":"2.0","method":"zoomToPoint","params":{"point":5}})"), "");
  EXPECT_EQ(result("getResultsReport"), R"({"report":"zoomToGroup(4)\nzoomToPoint(5)\n"})");
}

TEST_F(RpcServerTest, IsSilentAboutANotificationThatFails) {
  EXPECT_EQ(server.answer(R"({"jsonrpc":"2.0","method":"no.such.method"})"), "");
  EXPECT_EQ(server.answer(R"({"jsonrpc":"2.0","method":"zoomToGroup","params":{"group":-1}})"), "");
}

TEST_F(RpcServerTest, RefusesTextThatIsNotJson) {
  for (const char* text : {"{", "hello", "{\"jsonrpc\":\"2.0\",\"id\":1,\"id\":1}", "\"\xFF\"", "[1,"}) {
    EXPECT_EQ(answerStart(text, notJson), notJson) << text;
  }
}

TEST_F(RpcServerTest, RefusesJsonThatIsNoRequest) {
  for (const char* text : {"1", "null", "\"a\"", "{}", R"({"jsonrpc":"2.0"})", R"({"method":"view.redraws"})",
                           R"({"jsonrpc":"1.0","method":"view.redraws"})", R"({"jsonrpc":2.0,"method":"view.redraws"})",
                           R"({"jsonrpc":"2.0","method":1})", R"({"jsonrpc":"2.0","method":"view.redraws","params":1})",
                           R"({"jsonrpc":"2.0","method":"view.redraws","params":null})"}) {
    EXPECT_EQ(answerStart(text, notARequest), notARequest) << text;
  }
}

TEST_F(RpcServerTest, GivesTheIdOfWhatIsNoRequestWhereItHasOne) {
  const std::string expected = R"({"jsonrpc":"2.0","id":"x","error":{"code":-32600,)";
  EXPECT_EQ(answerStart(R"({"jsonrpc":"1.0","method":"view.redraws","id":"x"})", expected), expected);
}

TEST_F(RpcServerTest, RefusesNestingThatIsTooDeep) {
  EXPECT_EQ(answerStart(std::string(100000, '['), notARequest), notARequest);
  const std::string deep = std::string(1000, '[') + std::string(1000, ']');
  const std::string request = R"({"jsonrpc":"2.0","id":1,"method":"addGroups","params":{"groups":)" + deep + "}}";
  EXPECT_EQ(answerStart(request, notARequest), notARequest);
}

TEST_F(RpcServerTest, RefusesAnUnknownMethod) {
  EXPECT_EQ(error("no.such.method"), R"({"code":-32601,"message":"Method not found: no.such.method"})");
  EXPECT_EQ(error("AddGroups"), R"({"code":-32601,"message":"Method not found: AddGroups"})");
  EXPECT_EQ(error(""), R"({"code":-32601,"message":"Method not found: "})");
}

TEST_F(RpcServerTest, NamesAnUnknownParameter) {
  EXPECT_EQ(error("view.redraws", R"({"extra":1})"),
            R"({"code":-32602,"message":"Invalid params: extra is unknown","data":"extra"})");
}

TEST_F(RpcServerTest, NamesAMissingParameter) {
  EXPECT_EQ(error("document.open"), R"({"code":-32602,"message":"Invalid params: path is missing","data":"path"})");
}

TEST_F(RpcServerTest, NamesAParameterOfTheWrongType) {
  EXPECT_EQ(error("document.open", R"({"path":1})"),
            R"({"code":-32602,"message":"Invalid params: path must be a string","data":"path"})");
}

TEST_F(RpcServerTest, TakesParametersByNameAlone) {
  EXPECT_EQ(refusal("document.open", R"(["a"])"), R"({"code":-32602,"data":"params"})");
  EXPECT_EQ(result("view.redraws", "[]"), R"({"count":0})");
}

TEST_F(RpcServerTest, AnswersABatchInItsOrder) {
  EXPECT_EQ(server.answer(R"([{"jsonrpc":"2.0","id":2,"method":"view.redraws"},1,)"
                          R"({"jsonrpc":"2.0","id":1,"method":"no.such.method"},)"
                          R"({"jsonrpc":"2.0","method":"view.redraws"}])"),
            R"([{"jsonrpc":"2.0","id":2,"result":{"count":0}},)"
            R"({"jsonrpc":"2.0","id":null,"error":{"code":-32600,"message":"Invalid Request: it must be an object"}},)"
            R"({"jsonrpc":"2.0","id":1,"error":{"code":-32601,"message":"Method not found: no.such.method"}}])");
}

TEST_F(RpcServerTest, AnswersABatchOfOneWithAnArray) {
  EXPECT_EQ(server.answer(R"([{"jsonrpc":"2.0","id":2,"method":"view.redraws"}])"),
            R"([{"jsonrpc":"2.0","id":2,"result":{"count":0}}])");
}

TEST_F(RpcServerTest, RefusesAnEmptyBatchWithOneResponse) {
  EXPECT_EQ(server.answer("[]"),
            R"({"jsonrpc":"2.0","id":null,"error":{"code":-32600,"message":"Invalid Request: the batch is empty"}})");
}

TEST_F(RpcServerTest, RefusesABatchWithinABatch) {
  EXPECT_EQ(
      server.answer(R"([[{"jsonrpc":"2.0","id":2,"method":"view.redraws"}]])"),
      R"([{"jsonrpc":"2.0","id":null,"error":{"code":-32600,"message":"Invalid Request: it must be an object"}}])");
}

TEST_F(RpcServerTest, IsSilentAboutABatchOfNotifications) {
  EXPECT_EQ(server.answer(R"([{"jsonrpc":"2.0","method":"view.redraws"},{"jsonrpc":"2.0","method":"nothing"}])"), "");
}

TEST_F(RpcServerTest, GoesOnInABatchAfterAFailure) {
  EXPECT_EQ(server.answer(R"([{"jsonrpc":"2.0","id":1,"method":"session.begin","params":{"x":1}},)"
                          R"({"jsonrpc":"2.0","id":2,"method":"session.begin"}])"),
            R"([{"jsonrpc":"2.0","id":1,"error":{"code":-32602,"message":"Invalid params: x is unknown","data":"x"}},)"
            R"({"jsonrpc":"2.0","id":2,"result":{"session":1}}])");
}

TEST_F(RpcServerTest, TellsTheKindOfWhatLeavesTheModule) {
  result("session.begin");
  const auto thrown = [&](const std::string& name) {
    return error("renameGroup", R"({"group":1,"newName":")" + name + "\"}");
  };
  EXPECT_EQ(thrown("throw OdError"),
            R"({"code":-32000,"message":"the drawing's own words","data":{"type":"OdError"}})");
  EXPECT_EQ(thrown("throw rounding_error"),
            R"({"code":-32000,"message":"the number's own words","data":{"type":"boost::math::rounding_error"}})");
  EXPECT_EQ(thrown("throw bad_alloc"),
            R"({"code":-32000,"message":"std::bad_alloc","data":{"type":"std::bad_alloc"}})");
  EXPECT_EQ(thrown("throw logic_error"),
            R"({"code":-32000,"message":"a mistake's own words","data":{"type":"std::logic_error"}})");
  EXPECT_EQ(thrown("throw int"),
            R"({"code":-32000,"message":"an exception without a message","data":{"type":"unknown"}})");
}

TEST_F(RpcServerTest, TellsAWrongClassFromOtherErrorsOfTheDrawing) {
  result("session.begin");
  EXPECT_EQ(refusal("renameGroup", R"({"group":1,"newName":"throw wrong class"})"),
            R"({"code":-32000,"data":{"type":"OdError_NotThatKindOfClass"}})");
}

TEST_F(RpcServerTest, GoesOnAfterAnException) {
  result("session.begin");
  error("renameGroup", R"({"group":1,"newName":"throw bad_alloc"})");
  EXPECT_EQ(result("hasUnnamedPoints"), R"({"result":true})");
}

TEST_F(RpcServerTest, UndoesInTheDrawingWhatAnOperationChangedBeforeItThrew) {
  result("session.begin");
  EXPECT_EQ(refusal("renameGroup", R"({"group":1,"newName":"store and throw"})"),
            R"({"code":-32000,"data":{"type":"OdError"}})");
  EXPECT_EQ(result("document.groups"), R"({"groups":[]})");
}

TEST_F(RpcServerTest, KeepsInTheDrawingWhatAnOperationChanged) {
  result("session.begin");
  EXPECT_EQ(result("storeCommonPoints", R"({"name":"merged"})"), R"({"result":true})");
  EXPECT_EQ(result("document.groups"),
            R"({"groups":[{"name":"merged","points":[{"name":"T","x":0.0,"y":0.0,"z":0.0,"w":1.0}]}]})");
}

// --- Lines.

TEST_F(RpcServerTest, ServesALineForALine) {
  std::istringstream in(
      "{\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"view.redraws\"}\n"
      "\n \t\r\n"
      "{\"jsonrpc\":\"2.0\",\"method\":\"view.redraws\"}\n"
      "{\"jsonrpc\":\"2.0\",\"id\":2,\"method\":\"view.redraws\"}\r\n"
      "{\"jsonrpc\":\"2.0\",\"id\":3,\"method\":\"view.redraws\"}");
  std::ostringstream out;
  server.serve(in, out);
  EXPECT_EQ(out.str(),
            "{\"jsonrpc\":\"2.0\",\"id\":1,\"result\":{\"count\":0}}\n"
            "{\"jsonrpc\":\"2.0\",\"id\":2,\"result\":{\"count\":0}}\n"
            "{\"jsonrpc\":\"2.0\",\"id\":3,\"result\":{\"count\":0}}\n");
}

TEST_F(RpcServerTest, EndsItsSessionsAtTheEndOfTheInput) {
  std::istringstream in(R"({"jsonrpc":"2.0","id":1,"method":"session.begin"})");
  std::ostringstream out;
  server.serve(in, out);
  EXPECT_EQ(refusal("hasUnnamedPoints", "{}"),
            R"({"code":-32001,"message":"no session is open; begin one with session.begin"})");
}

TEST_F(RpcServerTest, StopsServingWhenNobodyTakesItsAnswers) {
  std::istringstream in(
      "{\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"session.begin\"}\n"
      "{\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"session.begin\"}\n");
  std::ostringstream out;
  out.setstate(std::ios::badbit);
  server.serve(in, out);
  EXPECT_EQ(result("session.begin"), R"({"session":1})");
}

/// Counts how often it is flushed.
class FlushCounter : public std::stringbuf {
 public:
  int flushes = 0;

 protected:
  int sync() override {
    ++flushes;
    return std::stringbuf::sync();
  }
};

TEST_F(RpcServerTest, FlushesAfterEachResponse) {
  std::istringstream in(
      "{\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"view.redraws\"}\n"
      "{\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"view.redraws\"}\n");
  FlushCounter buffer;
  std::ostream out(&buffer);
  server.serve(in, out);
  EXPECT_EQ(buffer.flushes, 2);
}

// --- Whatever comes in.

RC_GTEST_FIXTURE_PROP(RpcServerTest, AnswersAnyTextWithOneLineOfJson, (const std::string& text)) {
  const std::string answered = server.answer(text);
  RC_ASSERT(answered.substr(0, 16) == R"({"jsonrpc":"2.0")" || answered.substr(0, 1) == "[");
  RC_ASSERT(answered.find('\n') == std::string::npos);
}

}  // namespace
}  // namespace tiepoint::workbench
