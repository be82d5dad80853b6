#include <gmock/gmock.h>

#include <string>

#include "support/platform.h"
#include "workbench/rpc/rpc_fixture.h"
#include "workbench/temporary_folder.h"

namespace tiepoint::workbench {
namespace {

using tiepoint::testing::pathInJson;

using ::testing::Contains;

/// Without any document.
class DocumentMethods : public RpcTest {
 protected:
  DocumentMethods() { workbench.closeDocument(1); }

  std::string open(const std::string& name) {
    return result("document.open", R"({"path":")" + pathInJson(folder.file(name)) + "\"}");
  }
  std::string entry(int number, const std::string& name, bool active) {
    return R"({"document":)" + std::to_string(number) + R"(,"path":")" + pathInJson(folder.file(name)) +
           R"(","active":)" + (active ? "true}" : "false}");
  }

  TemporaryFolder folder;
};

TEST_F(DocumentMethods, ListNothingWhenNothingIsOpen) { EXPECT_EQ(result("document.list"), R"({"documents":[]})"); }

TEST_F(DocumentMethods, OpenCreatesTheFileAndActivatesTheDocument) {
  EXPECT_EQ(open("hall.tpd"), R"({"document":2})");
  EXPECT_THAT(folder.names(), Contains("hall.tpd"));
  EXPECT_EQ(result("document.list"), R"({"documents":[)" + entry(2, "hall.tpd", true) + "]}");
}

TEST_F(DocumentMethods, OpenTakesAPathOutsideAscii) {
  EXPECT_EQ(open("\xD0\x97\xD0\xB0\xD0\xBB \xE6\x97\xA5.tpd"), R"({"document":2})");
  EXPECT_THAT(folder.names(), Contains("\xD0\x97\xD0\xB0\xD0\xBB \xE6\x97\xA5.tpd"));
}

TEST_F(DocumentMethods, ListGivesDocumentsInTheOrderOfTheirNumbers) {
  open("b.tpd");
  open("a.tpd");
  result("document.activate", R"({"document":2})");
  EXPECT_EQ(result("document.list"),
            R"({"documents":[)" + entry(2, "b.tpd", true) + "," + entry(3, "a.tpd", false) + "]}");
}

TEST_F(DocumentMethods, CloseActivatesTheNewestOfThoseStillOpen) {
  open("a.tpd");
  open("b.tpd");
  open("c.tpd");
  result("document.activate", R"({"document":2})");
  EXPECT_EQ(result("document.close"), "{}");
  EXPECT_EQ(result("document.list"),
            R"({"documents":[)" + entry(3, "b.tpd", false) + "," + entry(4, "c.tpd", true) + "]}");
}

TEST_F(DocumentMethods, CloseOfAnotherDocumentKeepsTheActiveOne) {
  open("a.tpd");
  open("b.tpd");
  EXPECT_EQ(result("document.close", R"({"document":2})"), "{}");
  EXPECT_EQ(result("document.list"), R"({"documents":[)" + entry(3, "b.tpd", true) + "]}");
}

TEST_F(DocumentMethods, CloseOfTheLastDocumentLeavesNoneActive) {
  open("a.tpd");
  EXPECT_EQ(result("document.close"), "{}");
  EXPECT_EQ(error("document.close"),
            R"({"code":-32001,"message":"there is no active document; open a drawing first"})");
}

TEST_F(DocumentMethods, RefuseANumberThatNamesNoDocument) {
  open("a.tpd");
  EXPECT_EQ(error("document.close", R"({"document":1})"), R"({"code":-32001,"message":"there is no document 1"})");
  EXPECT_EQ(error("document.activate", R"({"document":3})"), R"({"code":-32001,"message":"there is no document 3"})");
  EXPECT_EQ(error("document.activate", R"({"document":4294967298})"),
            R"({"code":-32001,"message":"there is no document 4294967298"})");
}

TEST_F(DocumentMethods, RefuseWhatIsNoNumber) {
  EXPECT_EQ(refusal("document.activate", "{}"), R"({"code":-32602,"data":"document"})");
  EXPECT_EQ(refusal("document.close", R"({"document":null})"), R"({"code":-32602,"data":"document"})");
}

TEST_F(DocumentMethods, OpenRefusesADrawingThatIsOpen) {
  open("a.tpd");
  EXPECT_EQ(refusal("document.open", R"({"path":")" + pathInJson(folder.file("a.tpd")) + "\"}"),
            R"({"code":-32000,"data":{"type":"OdError"}})");
  EXPECT_EQ(result("document.list"), R"({"documents":[)" + entry(2, "a.tpd", true) + "]}");
}

TEST_F(DocumentMethods, OpenRefusesAFileThatIsNoDrawing) {
  writeBytes(folder.file("notes.txt"), "not a drawing\n");
  EXPECT_EQ(refusal("document.open", R"({"path":")" + pathInJson(folder.file("notes.txt")) + "\"}"),
            R"({"code":-32000,"data":{"type":"OdError"}})");
  EXPECT_EQ(readBytes(folder.file("notes.txt")), "not a drawing\n");
}

TEST_F(DocumentMethods, OpenFindsWhatWasStored) {
  open("a.tpd");
  result("document.storeGroup", R"({"name":"g","points":[{"name":"T","x":0.1,"y":2,"z":3,"w":1}]})");
  result("document.addCloud", R"({"name":"g"})");
  result("document.close");
  open("a.tpd");
  EXPECT_EQ(result("document.groups"),
            R"({"groups":[{"name":"g","points":[{"name":"T","x":0.1,"y":2.0,"z":3.0,"w":1.0}]}]})");
  EXPECT_EQ(result("document.clouds"),
            R"({"clouds":[{"name":"g","source":"",)"
            R"("matrix":[1.0,0.0,0.0,0.0,0.0,1.0,0.0,0.0,0.0,0.0,1.0,0.0,0.0,0.0,0.0,1.0]}]})");
}

}  // namespace
}  // namespace tiepoint::workbench
