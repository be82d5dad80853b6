#include <gtest/gtest.h>

#include <string>

#include "workbench/rpc/rpc_fixture.h"
#include "workbench/view/test_drawable.h"

namespace tiepoint::workbench {
namespace {

using ViewMethods = RpcTest;

constexpr const char* noDocument = R"({"code":-32001,"message":"there is no active document; open a drawing first"})";
constexpr const char* viewAtFirst =
    R"({"position":[0.0,0.0,1.0],"target":[0.0,0.0,0.0],"up":[0.0,1.0,0.0],"width":100.0,"height":75.0,"pixels":[800,600]})";

TEST_F(ViewMethods, GiveTheViewAtFirst) { EXPECT_EQ(result("view.get"), viewAtFirst); }

TEST_F(ViewMethods, SetAllOfTheView) {
  const std::string all =
      R"({"position":[1.0,2.0,9.0],"target":[1.0,2.0,-0.0],"up":[1.0,0.0,0.0],"width":4.0,"height":3.0,"pixels":[1,2147483647]})";
  EXPECT_EQ(result("view.set", all), all);
  EXPECT_EQ(result("view.get"), all);
}

TEST_F(ViewMethods, SetAPartAndLeaveTheRest) {
  EXPECT_EQ(
      result("view.set", R"({"width":8,"pixels":[10,20]})"),
      R"({"position":[0.0,0.0,1.0],"target":[0.0,0.0,0.0],"up":[0.0,1.0,0.0],"width":8.0,"height":75.0,"pixels":[10,20]})");
}

TEST_F(ViewMethods, SetNothing) { EXPECT_EQ(result("view.set"), viewAtFirst); }

TEST_F(ViewMethods, SetAViewPerDocument) {
  result("view.set", R"({"width":8})");
  workbench.openTemporaryDocument();
  EXPECT_EQ(result("view.get"), viewAtFirst);
}

struct BadView {
  const char* params;
  const char* parameter;
};

TEST_F(ViewMethods, NameTheParameterThatGivesNoView) {
  const BadView bad[] = {
      {R"({"position":[0,0,0]})", "position"},
      {R"({"target":[0,0,1]})", "target"},
      {R"({"position":[5,5,5],"target":[5,5,5]})", "position"},
      {R"({"position":[0,1,0]})", "position"},
      {R"({"up":[0,0,1]})", "up"},
      {R"({"up":[0,0,0]})", "up"},
      {R"({"position":[5,5,5],"up":[0,0,0]})", "up"},
      {R"({"width":8,"up":[0,0,-7]})", "up"},
      {R"({"position":[0,0]})", "position"},
      {R"({"position":[0,0,"1"]})", "position"},
      {R"({"target":{}})", "target"},
      {R"({"target":[0,0,"nan"]})", "target"},
      {R"({"up":["inf",0,0]})", "up"},
      {R"({"width":0})", "width"},
      {R"({"width":-1})", "width"},
      {R"({"width":"nan"})", "width"},
      {R"({"height":"inf"})", "height"},
      {R"({"height":0})", "height"},
      {R"({"pixels":[0,600]})", "pixels"},
      {R"({"pixels":[800,-1]})", "pixels"},
      {R"({"pixels":[800,0.5]})", "pixels"},
      {R"({"pixels":[800,2147483648]})", "pixels"},
      {R"({"pixels":[800]})", "pixels"},
      {R"({"pixels":800})", "pixels"},
      {R"({"size":1})", "size"},
  };
  for (const BadView& each : bad) {
    EXPECT_EQ(refusal("view.set", each.params), std::string(R"({"code":-32602,"data":")") + each.parameter + "\"}")
        << each.params;
    EXPECT_EQ(result("view.get"), viewAtFirst) << each.params;
  }
}

TEST_F(ViewMethods, NeedAnActiveDocument) {
  result("document.close");
  EXPECT_EQ(error("view.get"), noDocument);
  EXPECT_EQ(error("view.set"), noDocument);
  EXPECT_EQ(error("view.draw"), noDocument);
}

TEST_F(ViewMethods, CountRedrawsSinceTheStart) {
  EXPECT_EQ(result("view.redraws"), R"({"count":0})");
  result("session.begin");
  result("zoomToAll");
  result("zoomToAll");
  EXPECT_EQ(result("view.redraws"), R"({"count":2})");
}

TEST_F(ViewMethods, DrawNothingInAnEmptyView) {
  EXPECT_EQ(result("view.draw"), R"({"lines":[],"texts":[],"pixelSize":0.125})");
}

}  // namespace
}  // namespace tiepoint::workbench
