// The program itself, asked through its standard input.
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "support/platform.h"
#ifdef _WIN32
#include "workbench/rpc/child_process_windows.h"
#else
#include "workbench/rpc/child_process.h"
#endif
#include "workbench/temporary_folder.h"

namespace {

using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using tiepoint::testing::nativePath;
using tiepoint::testing::pathInJson;

/// `tiepoint rpc` with further arguments.
class RpcProcess : public ChildProcess {
 public:
  explicit RpcProcess(const std::vector<std::string>& arguments = {}) : ChildProcess(commandOf(arguments)) {}

  std::string ask(const std::string& line) {
    send(line + "\n");
    return receiveLine();
  }
  std::string call(const std::string& method, const std::string& params = "{}") {
    return ask(R"({"jsonrpc":"2.0","id":1,"method":")" + method + R"(","params":)" + params + "}");
  }
  /// The exit status after the end of the input.
  int end() {
    closeInput();
    receiveAll();
    return wait();
  }

 private:
  static std::vector<std::string> commandOf(const std::vector<std::string>& arguments) {
    std::vector<std::string> command{TIEPOINT_PROGRAM, "rpc"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return command;
  }
};

std::string ok(const std::string& result) { return R"({"jsonrpc":"2.0","id":1,"result":)" + result + "}"; }

TEST(RpcProcess, AnswersEachRequestBeforeTheNextComes) {
  RpcProcess process;
  EXPECT_EQ(process.call("view.redraws"), ok(R"({"count":0})"));
  EXPECT_EQ(process.call("document.list"), ok(R"({"documents":[]})"));
  EXPECT_EQ(process.end(), 0);
}

TEST(RpcProcess, EndsAtTheEndOfTheInputAndSaysNothingElse) {
  RpcProcess process;
  process.closeInput();
  EXPECT_EQ(process.receiveAll(), "");
  EXPECT_EQ(process.wait(), 0);
  EXPECT_EQ(process.errors(), "");
}

TEST(RpcProcess, WritesOneLineForEachRequestInTheirOrder) {
  RpcProcess process;
  process.send(
      "{\"jsonrpc\":\"2.0\",\"id\":3,\"method\":\"view.redraws\"}\n"
      "\n"
      "{\"jsonrpc\":\"2.0\",\"method\":\"view.redraws\"}\n"
      "{\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"view.redraws\"}\n"
      "{\"jsonrpc\":\"2.0\",\"id\":2,\"method\":\"view.redraws\"}");
  process.closeInput();
  EXPECT_EQ(process.receiveAll(),
            "{\"jsonrpc\":\"2.0\",\"id\":3,\"result\":{\"count\":0}}\n"
            "{\"jsonrpc\":\"2.0\",\"id\":1,\"result\":{\"count\":0}}\n"
            "{\"jsonrpc\":\"2.0\",\"id\":2,\"result\":{\"count\":0}}\n");
  EXPECT_EQ(process.wait(), 0);
}

TEST(RpcProcess, HasNoActiveDocumentUnlessItIsTold) {
  RpcProcess process;
  EXPECT_EQ(process.call("session.begin"), R"({"jsonrpc":"2.0","id":1,"error":{"code":-32001,)"
                                           R"("message":"there is no active document; open a drawing first"}})");
}

TEST(RpcProcess, OpensTheDocumentThatItIsGivenBeforeTheFirstRequest) {
  const TemporaryFolder folder;
  RpcProcess process({"--document", folder.file("hall.tpd")});
  EXPECT_EQ(process.call("session.begin"), ok(R"({"session":1})"));
  EXPECT_EQ(process.call("document.list"), ok(R"({"documents":[{"document":1,"path":")" +
                                              pathInJson(folder.file("hall.tpd")) + R"(","active":true}]})"));
  EXPECT_THAT(folder.names(), Contains("hall.tpd"));
  EXPECT_EQ(process.end(), 0);
}

TEST(RpcProcess, FindsTheModuleBesideItself) {
  RpcProcess process;
  EXPECT_THAT(process.call("host.info"),
              StartsWith(R"({"jsonrpc":"2.0","id":1,"result":{"apiVersion":[21,8,0,0],"module":")" +
                         pathInJson(nativePath(TSL_REGISTRATION)) + R"(","commands":[{"group":"CLOUD_REGISTRATION",)"));
}

TEST(RpcProcess, TakesAnotherModule) {
  RpcProcess process({"--module", FAKE_MODULE});
  EXPECT_THAT(process.call("host.info"), HasSubstr(R"("module":")" + pathInJson(nativePath(FAKE_MODULE)) + R"(")"));
}

TEST(RpcProcess, EndsWithALineOnStandardErrorWhenTheModuleIsMissing) {
  RpcProcess process({"--module", "/nowhere/module.so"});
  process.closeInput();
  EXPECT_EQ(process.receiveAll(), "");
  EXPECT_GT(process.wait(), 0);
  EXPECT_THAT(process.errors(), HasSubstr(nativePath("/nowhere/module.so")));
}

TEST(RpcProcess, KeepsTheProfileInItsFile) {
  const TemporaryFolder folder;
  {
    RpcProcess process({"--profile", folder.file("profile.json")});
    EXPECT_EQ(process.call("profile.set", R"({"key":"SizeLabel","value":12})"), ok(R"({"value":12})"));
    EXPECT_EQ(process.end(), 0);
  }
  RpcProcess process({"--profile", folder.file("profile.json")});
  EXPECT_EQ(process.call("profile.get", R"({"key":"SizeLabel"})"), ok(R"({"value":12})"));
}

TEST(RpcProcess, LeavesADrawingThatTheNextOneFindsAsItWas) {
  const TemporaryFolder folder;
  writeBytes(folder.file("a.txt"), "T1 0.1 2 3\n");
  {
    RpcProcess process({"--document", folder.file("hall.tpd")});
    EXPECT_EQ(
        process.call("command.run", R"({"name":"TSL_REG_IMPORT_REFS","layout":"NXYZ","paths":[")" +
                                        pathInJson(folder.file("a.txt")) + "\"]}"),
        ok(R"({"messages":["Found 1 files","Command complite. 1 groups of reference points loaded in document"]})"));
    process.call("session.begin");
    EXPECT_EQ(process.end(), 0);
  }
  EXPECT_EQ(folder.names(), (std::vector<std::string>{"a.txt", "hall.tpd"}));
  RpcProcess process({"--document", folder.file("hall.tpd")});
  EXPECT_EQ(process.call("document.groups"),
            ok(R"({"groups":[{"name":"a","points":[{"name":"T1","x":0.1,"y":2.0,"z":3.0,"w":1.0}]}]})"));
}

TEST(RpcProcess, RefusesADrawingThatAnotherProcessHasOpen) {
  const TemporaryFolder folder;
  RpcProcess first({"--document", folder.file("hall.tpd")});
  ASSERT_EQ(first.call("view.redraws"), ok(R"({"count":0})"));
  RpcProcess second;
  const std::string answer = second.call("document.open", R"({"path":")" + pathInJson(folder.file("hall.tpd")) + "\"}");
  EXPECT_THAT(answer, StartsWith(R"({"jsonrpc":"2.0","id":1,"error":{"code":-32000,)"));
  EXPECT_THAT(answer, HasSubstr(R"("data":{"type":"OdError"})"));
  EXPECT_EQ(second.call("document.list"), ok(R"({"documents":[]})"));
}

TEST(RpcProcess, LivesThroughLinesThatAreNoRequests) {
  const std::string start = R"({"jsonrpc":"2.0","id":null,"error":{"code":)";
  std::string longText;
  longText.resize(20000000, 'x');
  RpcProcess process;
  EXPECT_THAT(process.ask("{"), StartsWith(start + "-32700"));
  EXPECT_THAT(process.ask("\xFF\xFE"), StartsWith(start + "-32700"));
  EXPECT_THAT(process.ask(std::string("{}\0", 3)), StartsWith(start + "-32700"));
  EXPECT_THAT(process.ask("[]"), StartsWith(start + "-32600"));
  EXPECT_THAT(process.ask(std::string(3000000, '[')), StartsWith(start + "-32600"));
  EXPECT_THAT(process.ask("\"" + longText + "\""), StartsWith(start + "-32600"));
  EXPECT_EQ(process.call("view.redraws"), ok(R"({"count":0})"));
  EXPECT_EQ(process.end(), 0);
}

TEST(RpcProcess, EndsQuietlyWhenNobodyReadsItsAnswers) {
  RpcProcess process;
  ASSERT_EQ(process.call("view.redraws"), ok(R"({"count":0})"));
  process.closeOutput();
  process.send(R"({"jsonrpc":"2.0","id":1,"method":"view.redraws"})"
               "\n");
  EXPECT_EQ(process.wait(), 0);
  EXPECT_EQ(process.errors(), "");
}

TEST(RpcProcess, CarriesOutMoreRequestsThanAPipeHolds) {
  RpcProcess process;
  std::string batch = "[";
  for (int i = 0; i < 5000; ++i) {
    batch += (i ? "," : "") + (R"({"jsonrpc":"2.0","id":)" + std::to_string(i)) + R"(,"method":"view.get"})";
  }
  const std::string answer = process.ask(batch + "]");
  EXPECT_THAT(answer, StartsWith(R"([{"jsonrpc":"2.0","id":0,"error":{"code":-32001,)"));
  EXPECT_THAT(answer, HasSubstr(R"("id":4999,)"));
  EXPECT_EQ(answer.back(), ']');
}

}  // namespace
