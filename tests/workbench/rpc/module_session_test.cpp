// The registration module behind the server: from files to moved clouds.
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "support/platform.h"
#include "workbench/rpc/json_parser.h"
#include "workbench/rpc/rpc_fixture.h"
#include "workbench/temporary_folder.h"

namespace tiepoint::workbench {
namespace {

using tiepoint::testing::nativePath;
using tiepoint::testing::pathInJson;

using ::testing::DoubleNear;
using ::testing::EndsWith;
using ::testing::Pointwise;
using ::testing::StartsWith;

/// Four targets from one station, and the same from a station that stands 100 to the west: all
/// coordinates are whole, and so is the way between the two.
constexpr const char* eastGroup =
    R"({"name":"east","points":[{"name":"T1","x":0,"y":0,"z":0,"w":1},{"name":"T2","x":8,"y":0,"z":0,"w":1},)"
    R"({"name":"T3","x":0,"y":8,"z":0,"w":1},{"name":"T4","x":0,"y":0,"z":8,"w":1}]})";
constexpr const char* westGroup =
    R"({"name":"west","points":[{"name":"T1","x":100,"y":0,"z":0,"w":1},{"name":"T2","x":108,"y":0,"z":0,"w":1},)"
    R"({"name":"T3","x":100,"y":8,"z":0,"w":1},{"name":"?","x":0,"y":0,"z":0,"w":1}]})";

/// What a fit of coordinates of a hundred may lose.
constexpr double rounding = 1e-12;

class ModuleSession : public RpcTestOn {
 protected:
  ModuleSession() : RpcTestOn(TSL_REGISTRATION) {}

  void beginWithBothStations() {
    result("document.storeGroup", eastGroup);
    result("document.storeGroup", westGroup);
    ASSERT_EQ(result("session.begin"), R"({"session":1})");
    ASSERT_EQ(result("getAvailableGroups"), R"({"result":true,"groups":{"0":"east","1":"west"}})");
  }
  /// The response to an import of files of the folder.
  std::string import(const std::string& layout, const std::vector<std::string>& names) {
    std::string paths;
    for (const std::string& name : names)
      paths += (paths.empty() ? "\"" : ",\"") + pathInJson(folder.file(name)) + "\"";
    return result("command.run",
                  R"({"name":"TSL_REG_IMPORT_REFS","layout":")" + layout + R"(","paths":[)" + paths + "]}");
  }

  TemporaryFolder folder;
};

TEST_F(ModuleSession, RegistersItsCommand) {
  EXPECT_EQ(
      result("host.info"),
      R"({"apiVersion":[21,8,0,0],"module":")" + pathInJson(nativePath(TSL_REGISTRATION)) +
          R"(","commands":[{"group":"CLOUD_REGISTRATION",)"
          R"("globalName":"TSL_REG_IMPORT_REFS","localName":"TSL_REG_IMPORT_REFS","flags":4}],"version":")" PROJECT_VERSION_TEXT
          "\"}");
}

// --- The import.

TEST_F(ModuleSession, ImportsFilesIntoTheDrawing) {
  writeBytes(folder.file("hall.01.txt"), "T1 1 2 3\nT2,4,5,6\n");
  writeBytes(folder.file("\xD0\x97\xD0\xB0\xD0\xBB.txt"), "T1 1 2 3 0.5\n");
  EXPECT_EQ(import("NXYZ", {"hall.01.txt"}),
            R"({"messages":["Found 1 files","Command complite. 1 groups of reference points loaded in document"]})");
  EXPECT_EQ(import("NXYZW", {"\xD0\x97\xD0\xB0\xD0\xBB.txt"}),
            R"({"messages":["Found 1 files","Command complite. 1 groups of reference points loaded in document"]})");
  EXPECT_EQ(result("document.groups"),
            R"({"groups":[{"name":"hall.01","points":[{"name":"T1","x":1.0,"y":2.0,"z":3.0,"w":1.0},)"
            R"({"name":"T2","x":4.0,"y":5.0,"z":6.0,"w":1.0}]},)"
            "{\"name\":\"\xD0\x97\xD0\xB0\xD0\xBB\",\"points\":[{\"name\":\"T1\",\"x\":1.0,\"y\":2.0,\"z\":3.0,\"w\":0."
            "5}]}]}");
}

TEST_F(ModuleSession, SaysWhatItCouldNotImport) {
  writeBytes(folder.file("header.txt"), "Name X Y Z\nT1 1 2 3\n");
  EXPECT_EQ(
      import("NXYZ", {"header.txt", "missing.txt"}),
      R"({"messages":["Found 2 files","Warning: reference points are not found in the file header",)"
      R"("Warning: don't open file missing","Command complite. 0 groups of reference points loaded in document"]})");
}

TEST_F(ModuleSession, ImportsNothingTwice) {
  writeBytes(folder.file("a.txt"), "1 2 3\n");
  import("XYZ", {"a.txt"});
  EXPECT_EQ(import("XYZ", {"a.txt"}),
            R"({"messages":["Found 1 files","Command complite. 0 groups of reference points loaded in document"]})");
}

TEST_F(ModuleSession, ImportsNothingWhenTheDialogIsCancelled) {
  EXPECT_EQ(result("command.run", R"({"name":"TSL_REG_IMPORT_REFS","cancel":true})"), R"({"messages":[]})");
}

TEST_F(ModuleSession, ImportsNothingWithoutADocument) {
  writeBytes(folder.file("a.txt"), "1 2 3\n");
  result("document.close");
  EXPECT_EQ(import("XYZ", {"a.txt"}), R"({"messages":[]})");
}

// --- A registration.

TEST_F(ModuleSession, HasNoGroupsInAnEmptyDrawing) {
  result("session.begin");
  EXPECT_EQ(result("getAvailableGroups"), R"({"result":false,"groups":{}})");
  EXPECT_EQ(result("getCommonPointNames"), R"({"result":false,"names":[]})");
  EXPECT_EQ(result("getPointClouds"), R"({"clouds":[]})");
  EXPECT_EQ(result("hasUnnamedPoints"), R"({"result":false})");
}

TEST_F(ModuleSession, AddsGroupsAndTellsWhatIsInactive) {
  beginWithBothStations();
  const std::string added = result("addGroups", R"({"groups":[0,1]})");
  EXPECT_THAT(added, StartsWith(R"({"result":true,"addedPoints":[{"id":0,"groupId":0,"commonId":0,)"
                                R"("position":[0.0,0.0,0.0],"weight":1.0,"included":true,"active":true,)"
                                R"("inBase":false,"named":true,"autoNamed":false},{"id":1,)"));
  EXPECT_THAT(added, EndsWith(R"(,"inactiveGroups":[],"inactivePoints":[3,7]})"));
  EXPECT_EQ(result("addGroups", R"({"groups":[0,1]})"),
            R"({"result":false,"addedPoints":[],"inactiveGroups":[],"inactivePoints":[]})");
}

TEST_F(ModuleSession, RegistersAndMovesTheClouds) {
  beginWithBothStations();
  result("addGroups", R"({"groups":[0,1]})");
  result("setBaseGroups", R"({"groups":[0]})");
  EXPECT_THAT(result("registerPairwise"), StartsWith(R"({"result":true,"discrepancies":{"4":)"));
  result("document.addCloud", R"({"name":"west"})");
  result("document.addCloud", R"({"name":"north"})");
  EXPECT_EQ(result("getPointClouds"), R"({"clouds":[{"id":0,"name":"west"},{"id":1,"name":"north"}]})");
  EXPECT_EQ(result("applyTransformations"), R"({"result":true})");

  const Json clouds = parseJson(result("document.clouds")).at("clouds");
  const std::vector<double> westToCommon{1, 0, 0, -100, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
  EXPECT_THAT(clouds.at(0).at("matrix").get<std::vector<double>>(), Pointwise(DoubleNear(rounding), westToCommon));
  EXPECT_EQ(
      clouds.at(1).dump(),
      R"({"matrix":[1.0,0.0,0.0,0.0,0.0,1.0,0.0,0.0,0.0,0.0,1.0,0.0,0.0,0.0,0.0,1.0],"name":"north","source":""})");
}

TEST_F(ModuleSession, TellsItsStateAfterARegistration) {
  beginWithBothStations();
  result("addGroups", R"({"groups":[0,1]})");
  result("setBaseGroups", R"({"groups":[0]})");
  result("renamePoint", R"({"point":3,"newName":"T9"})");
  result("setPointsWeight", R"({"points":[5],"weight":0.5})");
  result("excludePoints", R"({"points":[7]})");
  result("registerPairwise");
  const Json state = parseJson(result("session.state"));
  EXPECT_EQ(state.at("groups").dump(), R"([{"id":0,"inBase":true,"inSession":true,"name":"east"},)"
                                       R"({"id":1,"inBase":false,"inSession":true,"name":"west"}])");
  EXPECT_EQ(state.at("names").dump(), R"([{"id":0,"name":"T1"},{"id":1,"name":"T2"},{"id":2,"name":"T3"},)"
                                      R"({"id":4,"name":"?"},{"id":5,"name":"T9"}])");
  EXPECT_EQ(state.at("points").at(3).dump(),
            R"({"active":false,"autoNamed":false,"commonId":5,"groupId":0,"id":3,"inBase":true,"included":true,)"
            R"("name":"T9","named":true,"position":[0.0,0.0,8.0],"weight":1.0})");
  EXPECT_EQ(state.at("points").at(5).at("weight"), 0.5);
  EXPECT_EQ(state.at("points").at(7).at("included"), false);
  EXPECT_EQ(state.at("registeredGroups").dump(), "[1]");
  EXPECT_EQ(state.at("visibleGroups").dump(), "[0,1]");
  EXPECT_EQ(state.at("discrepancies").size(), 3u);
}

TEST_F(ModuleSession, StoresTheMergedTargetsAsAGroup) {
  beginWithBothStations();
  result("addGroups", R"({"groups":[0,1]})");
  result("registerPairwise");
  EXPECT_EQ(result("storeCommonPoints", R"({"name":"east"})"), R"({"result":false})");
  EXPECT_EQ(result("storeCommonPoints", R"({"name":"merged"})"), R"({"result":true})");
  EXPECT_EQ(result("getAvailableGroups"), R"({"result":true,"groups":{"2":"merged"}})");
}

TEST_F(ModuleSession, ShowsItsMarkersInTheView) {
  beginWithBothStations();
  result("addGroups", R"({"groups":[0]})");
  result("view.set",
         R"({"position":[0,0,1],"target":[0,0,0],"up":[0,1,0],"width":800,"height":600,"pixels":[800,600]})");
  EXPECT_THAT(result("view.draw"), StartsWith(R"({"lines":[{"color":1,"from":[10.0,0.0,0.0],"to":[-10.0,0.0,0.0]},)"
                                              R"({"color":1,"from":[0.0,10.0,0.0],"to":[0.0,-10.0,0.0]},)"
                                              R"({"color":1,"from":[0.0,0.0,10.0],"to":[0.0,0.0,-10.0]},)"));
  EXPECT_THAT(result("view.draw"),
              EndsWith(R"({"color":7,"position":[0.0,0.0,8.0],"normal":[0.0,0.0,1.0],"direction":[1.0,0.0,0.0],)"
                       R"("height":10.0,"text":"T4"}],"pixelSize":1.0})"));
}

TEST_F(ModuleSession, AsksForRedrawsWhenItsDisplayChanges) {
  beginWithBothStations();
  EXPECT_EQ(result("view.redraws"), R"({"count":0})");
  result("setGroupsVisible", R"({"groups":[0],"visible":true})");
  EXPECT_EQ(result("view.redraws"), R"({"count":1})");
}

TEST_F(ModuleSession, ReadsTheProfileOnceWhenItBegins) {
  result("session.begin");
  result("profile.set", R"({"key":"MaxIterations","value":7})");
  result("profile.set", R"({"key":"ConvergenceCriteria","value":0.25})");
  result("session.begin");
  EXPECT_EQ(result("getIterationLimits", R"({"session":1})"), R"({"maxIterations":100,"convergenceCriteria":0.001})");
  EXPECT_EQ(result("getIterationLimits", R"({"session":2})"), R"({"maxIterations":7,"convergenceCriteria":0.25})");
}

// --- Documents that come and go under a session.

constexpr const char* nothingDrawn = R"({"lines":[],"texts":[],"pixelSize":)";

TEST_F(ModuleSession, ShowsItsMarkersInADocumentThatComesIn) {
  beginWithBothStations();
  result("addGroups", R"({"groups":[0]})");
  workbench.openTemporaryDocument();
  EXPECT_THAT(result("view.draw"), StartsWith(R"({"lines":[{"color":1,)"));
}

TEST_F(ModuleSession, LeavesNoMarkersBehindInAnyDocumentWhenItEnds) {
  beginWithBothStations();
  result("addGroups", R"({"groups":[0]})");
  workbench.openTemporaryDocument();
  result("session.end");
  EXPECT_THAT(result("view.draw"), StartsWith(nothingDrawn));
  result("document.activate", R"({"document":1})");
  EXPECT_THAT(result("view.draw"), StartsWith(nothingDrawn));
}

TEST_F(ModuleSession, LeavesNoMarkersBehindAfterItsDocumentsWereClosed) {
  beginWithBothStations();
  result("addGroups", R"({"groups":[0]})");
  workbench.openTemporaryDocument();
  result("document.close", R"({"document":2})");
  result("session.end");
  EXPECT_THAT(result("view.draw"), StartsWith(nothingDrawn));
}

TEST_F(ModuleSession, GoesOnWhenItsDocumentIsClosed) {
  beginWithBothStations();
  result("addGroups", R"({"groups":[0,1]})");
  result("document.addCloud", R"({"name":"west"})");
  result("getPointClouds");
  result("document.close");
  EXPECT_EQ(result("zoomToAll"), "{}");
  EXPECT_THAT(result("registerPairwise"), StartsWith(R"({"result":true,)"));
  EXPECT_EQ(result("storeCommonPoints", R"({"name":"merged"})"), R"({"result":false})");
  EXPECT_EQ(refusal("applyTransformations", "{}"), R"({"code":-32000,"data":{"type":"OdError"}})");
  EXPECT_EQ(result("getPointClouds"), R"({"clouds":[]})");
}

TEST_F(ModuleSession, ReadsTheGroupsOfTheDocumentThatIsActive) {
  beginWithBothStations();
  workbench.openTemporaryDocument();
  result("document.storeGroup", R"({"name":"north","points":[{"name":"T9","x":0,"y":0,"z":0,"w":1}]})");
  EXPECT_EQ(result("getAvailableGroups"), R"({"result":true,"groups":{"0":"east","1":"west","2":"north"}})");
}

}  // namespace
}  // namespace tiepoint::workbench
