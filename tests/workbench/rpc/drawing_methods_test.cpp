#include <gtest/gtest.h>

#include <string>

#include "platform/pointclouds/point_cloud_definition.h"
#include "platform/sdk/od_db_dictionary.h"
#include "workbench/rpc/rpc_fixture.h"

namespace tiepoint::workbench {
namespace {

using DrawingMethods = RpcTest;

constexpr const char* noDocument = R"({"code":-32001,"message":"there is no active document; open a drawing first"})";

TEST_F(DrawingMethods, ShowNothingInANewDrawing) {
  EXPECT_EQ(result("document.groups"), R"({"groups":[]})");
  EXPECT_EQ(result("document.clouds"), R"({"clouds":[]})");
}

TEST_F(DrawingMethods, StoreAGroupAsItStands) {
  EXPECT_EQ(
      result("document.storeGroup", R"({"name":"g","points":[{"name":"?","x":-0.0,"y":"inf","z":"nan","w":"-inf"},)"
                                    R"({"w":2,"z":5e-324,"y":0.1,"x":1e22,"name":""}]})"),
      R"({"result":true})");
  EXPECT_EQ(result("document.groups"),
            R"({"groups":[{"name":"g","points":[{"name":"?","x":-0.0,"y":"inf","z":"nan","w":"-inf"},)"
            R"({"name":"","x":1e+22,"y":0.1,"z":5e-324,"w":2.0}]}]})");
}

TEST_F(DrawingMethods, StoreAGroupWithoutPoints) {
  EXPECT_EQ(result("document.storeGroup", R"({"name":"g","points":[]})"), R"({"result":true})");
  EXPECT_EQ(result("document.groups"), R"({"groups":[{"name":"g","points":[]}]})");
}

TEST_F(DrawingMethods, StoreNamesOfTheCodePage) {
  EXPECT_EQ(
      result("document.storeGroup", R"({"name":"\u0426\u0098","points":[{"name":"\u044f","x":0,"y":0,"z":0,"w":0}]})"),
      R"({"result":true})");
  EXPECT_EQ(result("document.groups"),
            "{\"groups\":[{\"name\":\"\xD0\xA6\xC2\x98\",\"points\":[{\"name\":\"\xD1\x8F\","
            "\"x\":0.0,\"y\":0.0,\"z\":0.0,\"w\":0.0}]}]}");
}

TEST_F(DrawingMethods, RefuseNamesOutsideTheCodePage) {
  // Two such groups would have one name in every session.
  EXPECT_EQ(refusal("document.storeGroup", R"({"name":"\u65e5","points":[]})"), R"({"code":-32602,"data":"name"})");
  EXPECT_EQ(refusal("document.storeGroup", R"({"name":"g","points":[{"name":"\u00e9","x":0,"y":0,"z":0,"w":0}]})"),
            R"({"code":-32602,"data":"points"})");
  EXPECT_EQ(refusal("document.addCloud", R"({"name":"\u65e5"})"), R"({"code":-32602,"data":"name"})");
  EXPECT_EQ(result("document.groups"), R"({"groups":[]})");
  EXPECT_EQ(result("document.clouds"), R"({"clouds":[]})");
}

TEST_F(DrawingMethods, StoreNothingUnderANameThatIsTaken) {
  result("document.storeGroup", R"({"name":"g","points":[]})");
  EXPECT_EQ(result("document.storeGroup", R"({"name":"g","points":[{"name":"T","x":0,"y":0,"z":0,"w":0}]})"),
            R"({"result":false})");
  EXPECT_EQ(result("document.groups"), R"({"groups":[{"name":"g","points":[]}]})");
}

TEST_F(DrawingMethods, TellNamesApartThatDifferInCase) {
  result("document.storeGroup", R"({"name":"g","points":[]})");
  EXPECT_EQ(result("document.storeGroup", R"({"name":"G","points":[]})"), R"({"result":true})");
}

TEST_F(DrawingMethods, KeepGroupsInTheOrderOfEntry) {
  for (const char* name : {"b", "a", "c"}) {
    result("document.storeGroup", R"({"name":")" + std::string(name) + R"(","points":[]})");
  }
  result("document.removeGroup", R"({"name":"b"})");
  result("document.storeGroup", R"({"name":"b","points":[]})");
  EXPECT_EQ(result("document.groups"),
            R"({"groups":[{"name":"a","points":[]},{"name":"c","points":[]},{"name":"b","points":[]}]})");
}

TEST_F(DrawingMethods, RemoveAGroup) {
  result("document.storeGroup", R"({"name":"g","points":[]})");
  EXPECT_EQ(result("document.removeGroup", R"({"name":"g"})"), R"({"result":true})");
  EXPECT_EQ(result("document.groups"), R"({"groups":[]})");
}

TEST_F(DrawingMethods, RemoveNothingWhereThereIsNoSuchGroup) {
  EXPECT_EQ(result("document.removeGroup", R"({"name":"g"})"), R"({"result":false})");
  result("document.storeGroup", R"({"name":"g","points":[]})");
  EXPECT_EQ(result("document.removeGroup", R"({"name":"h"})"), R"({"result":false})");
}

TEST_F(DrawingMethods, RefusePointsThatAreNone) {
  for (const char* points :
       {"{}", "1", "[1]", "[[]]", R"([{"name":"T","x":0,"y":0,"z":0}])", R"([{"name":1,"x":0,"y":0,"z":0,"w":0}])",
        R"([{"name":"T","x":"0","y":0,"z":0,"w":0}])", R"([{"name":"T","x":0,"y":0,"z":0,"w":0,"v":0}])"}) {
    EXPECT_EQ(refusal("document.storeGroup", R"({"name":"g","points":)" + std::string(points) + "}"),
              R"({"code":-32602,"data":"points"})")
        << points;
  }
  EXPECT_EQ(result("document.groups"), R"({"groups":[]})");
}

TEST_F(DrawingMethods, SayWhichPointIsBad) {
  EXPECT_EQ(
      error("document.storeGroup",
            R"({"name":"g","points":[{"name":"T","x":0,"y":0,"z":0,"w":0},{"name":"T","x":0,"y":0,"z":true,"w":0}]})"),
      R"({"code":-32602,"message":"Invalid params: points has a bad point at index 1: )"
      R"(z must be a number, \"nan\", \"inf\" or \"-inf\"","data":"points"})");
}

TEST_F(DrawingMethods, AddACloudThatHasNotMoved) {
  EXPECT_EQ(result("document.addCloud", R"({"name":"hall","source":"/scans/\u0417\u0430\u043b.pts"})"),
            R"({"result":true})");
  EXPECT_EQ(result("document.clouds"),
            "{\"clouds\":[{\"name\":\"hall\",\"source\":\"/scans/\xD0\x97\xD0\xB0\xD0\xBB.pts\",\"matrix\":"
            "[1.0,0.0,0.0,0.0,0.0,1.0,0.0,0.0,0.0,0.0,1.0,0.0,0.0,0.0,0.0,1.0]}]}");
}

TEST_F(DrawingMethods, AddNoCloudUnderANameThatIsTaken) {
  result("document.addCloud", R"({"name":"hall","source":"a"})");
  EXPECT_EQ(result("document.addCloud", R"({"name":"hall","source":"b"})"), R"({"result":false})");
  EXPECT_NE(result("document.clouds").find(R"("source":"a")"), std::string::npos);
}

TEST_F(DrawingMethods, GiveTheMatrixRowAfterRow) {
  result("document.addCloud", R"({"name":"hall"})");
  OdGeMatrix3d motion;
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 4; ++column) motion(row, column) = 10.0 * row + column;
  }
  workbench.inTransaction([&] {
    const OdDbDatabasePtr database = workbench.requireActiveDocument().database();
    const OdDbDictionaryPtr clouds = hostDbPointCloudDefinition::pointCloudDictionary(*database).safeOpenObject();
    const hostDbPointCloudDefinitionPtr cloud = clouds->getAt(L"hall").safeOpenObject(OdDb::kForWrite);
    cloud->transformBy(motion);
  });
  EXPECT_NE(result("document.clouds")
                .find(R"("matrix":[0.0,1.0,2.0,3.0,10.0,11.0,12.0,13.0,20.0,21.0,22.0,23.0,0.0,0.0,0.0,1.0])"),
            std::string::npos);
}

TEST_F(DrawingMethods, RefuseASourceThatIsNoPath) {
  EXPECT_EQ(refusal("document.addCloud", R"({"name":"hall","source":null})"), R"({"code":-32602,"data":"source"})");
  EXPECT_EQ(refusal("document.addCloud", R"({"name":"hall","source":"a\u0000b"})"),
            R"({"code":-32602,"data":"source"})");
  EXPECT_EQ(result("document.clouds"), R"({"clouds":[]})");
}

TEST_F(DrawingMethods, NeedAnActiveDocument) {
  result("document.close");
  EXPECT_EQ(error("document.groups"), noDocument);
  EXPECT_EQ(error("document.storeGroup", R"({"name":"g","points":[]})"), noDocument);
  EXPECT_EQ(error("document.removeGroup", R"({"name":"g"})"), noDocument);
  EXPECT_EQ(error("document.addCloud", R"({"name":"g"})"), noDocument);
  EXPECT_EQ(error("document.clouds"), noDocument);
}

TEST_F(DrawingMethods, WorkOnTheActiveDocument) {
  workbench.openTemporaryDocument();
  result("document.storeGroup", R"({"name":"second","points":[]})");
  result("document.activate", R"({"document":1})");
  EXPECT_EQ(result("document.groups"), R"({"groups":[]})");
  result("document.activate", R"({"document":2})");
  EXPECT_EQ(result("document.groups"), R"({"groups":[{"name":"second","points":[]}]})");
}

TEST_F(DrawingMethods, ChangeNothingInADrawingForReadingOnly) {
  workbench.requireActiveDocument().database()->setReadOnly(true);
  EXPECT_EQ(refusal("document.storeGroup", R"({"name":"g","points":[]})"),
            R"({"code":-32000,"data":{"type":"OdError"}})");
  EXPECT_EQ(result("document.groups"), R"({"groups":[]})");
}

}  // namespace
}  // namespace tiepoint::workbench
