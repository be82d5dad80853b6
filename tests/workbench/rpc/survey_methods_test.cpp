// Whole registrations over JSON-RPC, with the registration module behind the server.
#include <gmock/gmock.h>

#include <nlohmann/json.hpp>
#include <string>

#include "support/platform.h"
#include "workbench/rpc/rpc_fixture.h"
#include "workbench/temporary_folder.h"

namespace tiepoint::workbench {
namespace {

using nlohmann::json;
using tiepoint::testing::pathInJson;

/// Two stations in files; the second is shifted by 100 in x.
class SurveyMethods : public RpcTestOn {
 protected:
  SurveyMethods() : RpcTestOn(TSL_REGISTRATION) {
    writeBytes(folder.file("east.txt"), "T1 0 0 0\nT2 8 0 0\nT3 0 8 0\nT4 0 0 8\n");
    writeBytes(folder.file("west.txt"), "T1 100 0 0\nT2 108 0 0\nT3 100 8 0\nT4 100 0 8\n");
  }

  /// The parameters with both files, and what else is asked for.
  std::string both(const std::string& more = "") {
    return R"({"files":[{"layout":"NXYZ","paths":[")" + pathInJson(folder.file("east.txt")) + R"(",")" +
           pathInJson(folder.file("west.txt")) + R"("]}])" + (more.empty() ? "" : "," + more) + "}";
  }
  json groups() { return json::parse(result("document.groups"))["groups"]; }

  TemporaryFolder folder;
};

TEST_F(SurveyMethods, ResolvingTellsWhatWouldBeTakenInAndChangesNothing) {
  const json resolved = json::parse(result("survey.resolve", both()));
  EXPECT_EQ(resolved["import"]["files"].size(), 2u);
  EXPECT_EQ(resolved["import"]["files"][1]["points"], 4);
  EXPECT_EQ(resolved["warnings"], json::array());
  EXPECT_EQ(groups(), json::array());
}

/// A file without a layout is read as it tells itself, or as the parameters say.
class SurveyReadingMethods : public SurveyMethods {
 protected:
  std::string csv(const std::string& bytes, const std::string& more = "") {
    writeBytes(folder.file("north.csv"), bytes);
    return R"({"files":[{"paths":[")" + pathInJson(folder.file("north.csv")) + R"("]}])" + more + "}";
  }
  json file(const std::string& bytes, const std::string& more = "") {
    return json::parse(result("survey.resolve", csv(bytes, more)))["import"]["files"][0];
  }
};

TEST_F(SurveyReadingMethods, FindOutAFileOfAnotherForm) {
  const json reading = file("Name;X;Y;Z\nT1;1,5;2;3\n")["reading"];
  EXPECT_EQ(reading["separator"], "semicolon");
  EXPECT_EQ(reading["decimal"], "comma");
  EXPECT_EQ(reading["columns"], "name,x,y,z");
  EXPECT_EQ(file("T1 1 2 3\n")["reading"], json()) << "the module reads it";
}

TEST_F(SurveyReadingMethods, TakeColumnsMarkEncodingAndUnit) {
  const json read =
      file("T1;1,234;2;3\n", R"(,"columns":"name,n,e,h","decimal":"comma","encoding":"windows-1252","inputUnit":"ft")");
  EXPECT_EQ(read["points"], 1);
  EXPECT_EQ(read["reading"]["columns"], "name,y,x,z");
  EXPECT_EQ(read["reading"]["unit"], "ft");
}

TEST_F(SurveyReadingMethods, RefuseWhatIsAmbiguousByItsKind) {
  const json refused = json::parse(error("survey.resolve", csv("T1;1,234;5,678;9,012\n")));
  EXPECT_EQ(refused["code"], -32000);
  EXPECT_EQ(refused["data"]["kind"], "file-ambiguous");
  EXPECT_EQ(refused["data"]["field"], "files");
}

TEST_F(SurveyReadingMethods, RefuseParametersThatMeanNothing) {
  for (const char* more : {R"(,"columns":"name,x")", R"(,"columns":7)", R"(,"decimal":"dot")", R"(,"encoding":"koi8")",
                           R"(,"inputUnit":"cm")"}) {
    EXPECT_EQ(json::parse(error("survey.resolve", csv("T1 1 2 3\n", more)))["code"], -32602) << more;
  }
}

TEST_F(SurveyMethods, RegisteringGivesWhatTheCommandPrints) {
  const json registered = json::parse(result("survey.register", both(R"("base":["east"],"unit":"m")")));
  EXPECT_EQ(registered["outcome"], "registered");
  EXPECT_EQ(registered["method"], "adjust with base");
  EXPECT_NEAR(registered["groups"][1]["transform"]["shift"][0], -100.0, 1e-9);
  EXPECT_EQ(registered["points"].size(), 8u);
  EXPECT_EQ(groups().size(), 2u);
}

TEST_F(SurveyMethods, RegisteringGivesTheResidualsAndTheFiguresForAProtocol) {
  // Of four targets two are 6 mm off along z in one direction, two in the other: 3 mm from their mean.
  writeBytes(folder.file("west.txt"), "T1 0 0 0.006\nT2 8 0 -0.006\nT3 8 8 0.006\nT4 0 8 -0.006\n");
  writeBytes(folder.file("east.txt"), "T1 0 0 0\nT2 8 0 0\nT3 8 8 0\nT4 0 8 0\n");
  const json registered = json::parse(result("survey.register", both(R"("method":"pairwise","base":["east"])")));
  const json protocol = registered["protocol"];
  EXPECT_EQ(protocol["points"], 4);
  EXPECT_EQ(protocol["stations"], 1);
  // The mean of two bent surfaces is a little smaller than either, and the fit spreads that over x and y.
  constexpr double bend = 1e-5;
  for (const char* figure : {"mean", "rms", "largest"}) EXPECT_NEAR(protocol[figure], 0.003, bend) << figure;
  const json residual = registered["points"][4]["residual"];
  EXPECT_NEAR(residual[0], 0.0, bend);
  EXPECT_NEAR(residual[1], 0.0, bend);
  EXPECT_NEAR(residual[2], 0.003, bend);
  EXPECT_TRUE(registered["points"][0]["residual"].is_null());
}

TEST_F(SurveyMethods, ASurveyOfTheDrawingNeedsNoFiles) {
  result("survey.register", both());
  const json again = json::parse(result("survey.register", R"({"exclude":[{"group":"west","point":"T4"}]})"));
  EXPECT_EQ(again["outcome"], "registered");
  EXPECT_EQ(again["points"][7]["reason"], "excluded");
}

TEST_F(SurveyMethods, ResultsAreDelivered) {
  const std::string file = folder.file("motions.json");
  const json registered = json::parse(
      result("survey.register", both(R"("base":["east"],"store":"all","transforms":")" + pathInJson(file) + "\"")));
  EXPECT_EQ(registered["storedGroup"], "all");
  EXPECT_EQ(registered["transformsFile"], file);
  EXPECT_EQ(json::parse(readBytes(file))["groups"].size(), 2u);
  EXPECT_EQ(groups().size(), 3u);
}

TEST_F(SurveyMethods, ARefusalNamesItsKindAndTheParameterItIsAbout) {
  const json refusal = json::parse(error("survey.register", both(R"("base":["north"])")));
  EXPECT_EQ(refusal["code"], -32000);
  EXPECT_EQ(refusal["data"]["type"], "refusal");
  EXPECT_EQ(refusal["data"]["kind"], "no-such-group");
  EXPECT_EQ(refusal["data"]["field"], "base");
  EXPECT_EQ(refusal["message"], "base north: there is no group \"north\"; there are: east, west");
  EXPECT_EQ(groups(), json::array());
}

TEST_F(SurveyMethods, ARefusalOfAFileNamesTheParameterThatHasIt) {
  writeBytes(folder.file("control.txt"), "T1 0 0\n");
  const json refusal = json::parse(error(
      "survey.resolve", both(R"("method":"adjust","controlFile":")" + pathInJson(folder.file("control.txt")) + "\"")));
  EXPECT_EQ(refusal["data"]["kind"], "control-line");
  EXPECT_EQ(refusal["data"]["field"], "controlFile");
  const json missing = json::parse(error("survey.resolve", both(R"("method":"adjust","startFile":"none.json")")));
  EXPECT_EQ(missing["data"]["kind"], "file-missing");
  EXPECT_EQ(missing["data"]["field"], "startFile");
}

TEST_F(SurveyMethods, ParametersAreReadStrictly) {
  EXPECT_EQ(refusal("survey.register", R"({"method":"fast"})"), R"({"code":-32602,"data":"method"})");
  EXPECT_EQ(refusal("survey.register", R"({"files":[{"path":"a"}]})"), R"({"code":-32602,"data":"files"})");
  EXPECT_EQ(refusal("survey.resolve", R"({"bass":[]})"), R"({"code":-32602,"data":"bass"})");
}

}  // namespace
}  // namespace tiepoint::workbench
