#include <gtest/gtest.h>

#include <string>

#include "support/platform.h"
#include "workbench/rpc/rpc_fixture.h"
#include "workbench/temporary_folder.h"

namespace tiepoint::workbench {
namespace {

using tiepoint::testing::nativePath;
using tiepoint::testing::pathInJson;

using HostMethods = RpcTest;

TEST_F(HostMethods, TellOfTheModuleAndItsCommands) {
  EXPECT_EQ(result("host.info"),
            R"({"apiVersion":[21,8,0,0],"module":")" + pathInJson(nativePath(FAKE_MODULE)) +
                R"(","commands":[)"
                "{\"group\":\"FAKE\",\"globalName\":\"FAKE_DIALOG\",\"localName\":"
                "\"\xD0\x94\xD0\x98\xD0\x90\xD0\x9B\xD0\x9E\xD0\x93\",\"flags\":4},"
                R"({"group":"FAKE","globalName":"FAKE_THROW","localName":"FAKE_THROW","flags":0},)"
                R"({"group":"FAKE","globalName":"FAKE_SILENT","localName":"FAKE_SILENT","flags":-1}],)"
                R"("version":")" PROJECT_VERSION_TEXT "\"}");
}

// --- Commands.

TEST_F(HostMethods, RunACommandWithTheDialogsAnswer) {
  EXPECT_EQ(result("command.run", R"({"name":"FAKE_DIALOG","layout":"XYZW","paths":["b.txt","\u0416.txt"]})"),
            "{\"messages\":[\"accepted 1, filter 3, 2 paths\",\"path b.txt\",\"path \xD0\x96.txt\"]}");
}

TEST_F(HostMethods, KnowFourLayouts) {
  const char* layouts[] = {"NXYZ", "XYZ", "XYZW", "NXYZW"};
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(
        result("command.run", R"({"name":"FAKE_DIALOG","layout":")" + std::string(layouts[i]) + R"(","paths":[]})"),
        R"({"messages":["accepted 1, filter )" + std::to_string(i + 1) + R"(, 0 paths"]})");
  }
}

TEST_F(HostMethods, CancelTheDialogOfACommand) {
  EXPECT_EQ(result("command.run", R"({"name":"FAKE_DIALOG","cancel":true})"),
            R"({"messages":["accepted 0, filter 0, 0 paths"]})");
}

TEST_F(HostMethods, RunACommandThatSaysNothing) {
  EXPECT_EQ(result("command.run", R"({"name":"FAKE_SILENT","layout":"XYZ","paths":[]})"), R"({"messages":[]})");
}

TEST_F(HostMethods, NameTheParameterThatMakesNoCommand) {
  const std::pair<const char*, const char*> bad[] = {
      {R"({"name":"NO_SUCH_COMMAND","cancel":true})", "name"},
      {R"({"name":"fake_dialog","cancel":true})", "name"},
      {R"({"cancel":true})", "name"},
      {R"({"name":1,"cancel":true})", "name"},
      {R"({"name":"FAKE_DIALOG"})", "layout"},
      {R"({"name":"FAKE_DIALOG","layout":"XYZ"})", "paths"},
      {R"({"name":"FAKE_DIALOG","paths":[]})", "layout"},
      {R"({"name":"FAKE_DIALOG","cancel":false})", "layout"},
      {R"({"name":"FAKE_DIALOG","cancel":1})", "cancel"},
      {R"({"name":"FAKE_DIALOG","cancel":true,"layout":"XYZ"})", "layout"},
      {R"({"name":"FAKE_DIALOG","cancel":true,"paths":[]})", "paths"},
      {R"({"name":"FAKE_DIALOG","layout":"xyz","paths":[]})", "layout"},
      {R"({"name":"FAKE_DIALOG","layout":1,"paths":[]})", "layout"},
      {R"({"name":"FAKE_DIALOG","layout":"XYZ","paths":"a"})", "paths"},
      {R"({"name":"FAKE_DIALOG","layout":"XYZ","paths":[1]})", "paths"},
      {R"({"name":"FAKE_DIALOG","layout":"XYZ","paths":["a\u0000"]})", "paths"},
  };
  for (const auto& [params, parameter] : bad) {
    EXPECT_EQ(refusal("command.run", params), std::string(R"({"code":-32602,"data":")") + parameter + "\"}") << params;
  }
}

TEST_F(HostMethods, KeepWhatACommandStoredBeforeItThrew) {
  EXPECT_EQ(error("command.run", R"({"name":"FAKE_THROW","cancel":true})"),
            R"({"code":-32000,"message":"the command fell","data":{"type":"OdError"}})");
  EXPECT_EQ(result("document.groups"),
            R"({"groups":[{"name":"kept","points":[{"name":"T","x":0.0,"y":0.0,"z":0.0,"w":1.0}]}]})");
}

// --- The profile.

TEST_F(HostMethods, GiveNullForAKeyThatIsAbsent) {
  EXPECT_EQ(result("profile.get", R"({"key":"SizeLabel"})"), R"({"value":null})");
}

TEST_F(HostMethods, SetAKeyAndGiveItsValue) {
  EXPECT_EQ(result("profile.set", R"({"key":"SizeLabel","value":12})"), R"({"value":12})");
  EXPECT_EQ(result("profile.get", R"({"key":"SizeLabel"})"), R"({"value":12})");
  EXPECT_EQ(result("profile.get", R"({"key":"sizelabel"})"), R"({"value":null})");
}

TEST_F(HostMethods, KeepTheTypeOfAProfileValue) {
  const std::pair<const char*, const char*> values[] = {
      {"0.001", "0.001"},
      {"5.0", "5"},
      {"-0.0", "-0.0"},
      {"2147483647", "2147483647"},
      {"2147483648", "2147483648.0"},
      {"-2147483648", "-2147483648"},
      {"1e300", "1e+300"},
      {"\"nan\"", "\"nan\""},
      {"\"\"", "\"\""},
      {"\"12\"", "\"12\""},
  };
  for (const auto& [given, kept] : values) {
    EXPECT_EQ(result("profile.set", R"({"key":"K","value":)" + std::string(given) + "}"),
              R"({"value":)" + std::string(kept) + "}");
  }
}

TEST_F(HostMethods, RemoveAKeyByNull) {
  result("profile.set", R"({"key":"SizeLabel","value":12})");
  EXPECT_EQ(result("profile.set", R"({"key":"SizeLabel","value":null})"), R"({"value":null})");
  EXPECT_EQ(result("profile.get", R"({"key":"SizeLabel"})"), R"({"value":null})");
}

TEST_F(HostMethods, WriteTheSectionOfTheModule) {
  result("profile.set", R"({"key":"MaxIterations","value":7})");
  EXPECT_EQ(workbench.profile().get("PointClouds\\Registration", "MaxIterations"), ProfileValue(7));
}

TEST_F(HostMethods, RefuseWhatIsNoProfileValue) {
  for (const char* value : {"true", "[]", "{}"}) {
    EXPECT_EQ(refusal("profile.set", R"({"key":"K","value":)" + std::string(value) + "}"),
              R"({"code":-32602,"data":"value"})");
  }
  EXPECT_EQ(refusal("profile.set", R"({"key":"K"})"), R"({"code":-32602,"data":"value"})");
  EXPECT_EQ(refusal("profile.set", R"({"value":1})"), R"({"code":-32602,"data":"key"})");
  EXPECT_EQ(refusal("profile.get", R"({"key":1})"), R"({"code":-32602,"data":"key"})");
  EXPECT_EQ(refusal("profile.get", R"({"key":"K","value":1})"), R"({"code":-32602,"data":"value"})");
}

}  // namespace
}  // namespace tiepoint::workbench
