#include "support/recording_host.h"

#include <gtest/gtest.h>

#include "host_access/host_function.h"
#include "platform/host/exports.h"
#include "platform/sdk/od_gi_drawable.h"
#include "session/multi_registrator.h"

namespace {

using namespace tiepoint::testing;
using ZOR::reg::MultiRegistrator;
using Words = std::vector<std::string>;

TEST(RecordingHost, TellsTheCallsOfAnOperationInTheirOrder) {
  RecordingHost host;
  MultiRegistrator session;
  EXPECT_EQ(host.calls.during([&] { session.clearResults(); }),
            (Words{"GetMainDllInstance", "get_host_funcptr(12)", "refresh(0)"}));
  EXPECT_EQ(host.calls.count(), 3u);
}

TEST(RecordingHost, HearsNothingOfWhatTheTestAsksTheParts) {
  RecordingHost host;
  host.document().storeGroup("A", {{"T1", 1, 2, 3}});
  host.document().view().setState({});
  EXPECT_EQ(host.document().storedGroup("A").size(), 1u);
  EXPECT_EQ(host.calls.words(), Words{});
}

TEST(RecordingHost, ThrowsAtTheCallThatIsToThrowBeforeItTakesEffect) {
  RecordingHost host;
  host.calls.failAt(2, Fault::throws);
  EXPECT_NE(host.application().activeDocument(), nullptr);
  EXPECT_THROW(host.application().addReactor(nullptr), HostFault);
  EXPECT_TRUE(host.calls.hasFailed());
  EXPECT_TRUE(host.reactors().empty());
  host.application().addReactor(nullptr);
  EXPECT_EQ(host.reactors().size(), 1u);
}

TEST(RecordingHost, GivesNothingAtTheCallThatIsToGiveNothing) {
  RecordingHost host;
  host.dialogAnswer.accepted = true;
  host.calls.failAt(1, Fault::givesNull);
  EXPECT_EQ(host.application().activeDocument(), nullptr);
  HostDocument& document = *host.application().activeDocument();
  host.calls.failAt(1, Fault::givesNull);
  EXPECT_TRUE(document.database().isNull());
  EXPECT_FALSE(document.database().isNull());
  host.calls.failAt(2, Fault::givesNull);
  EXPECT_FALSE(host.application().fileDialog()->open({}).accepted);
  EXPECT_TRUE(host.application().fileDialog()->open({}).accepted);
}

TEST(RecordingHost, NeverFailsWhenTheOrderIsTakenBack) {
  RecordingHost host;
  host.calls.failAt(1, Fault::throws);
  host.calls.stopFailing();
  EXPECT_NO_THROW(host.application().activeDocument());
  EXPECT_FALSE(host.calls.hasFailed());
}

TEST(RecordingHost, KnowsWhatIsLeftWithIt) {
  RecordingHost host;
  {
    const MultiRegistrator session;
    EXPECT_EQ(host.reactors().size(), 1u);
    EXPECT_EQ(host.drawables().size(), 1u);
    EXPECT_EQ(host.livingObjects(), 2u);
  }
  EXPECT_TRUE(host.reactors().empty());
  EXPECT_TRUE(host.drawables().empty());
  EXPECT_EQ(host.livingObjects(), 0u);
}

TEST(RecordingHost, CountsAFactoryAmongTheLivingUntilItIsReleased) {
  RecordingHost host;
  ICmdFactory* factory = host.newCommandFactory();
  EXPECT_EQ(host.livingObjects(), 1u);
  factory->addCommand(L"G", L"N", L"L", 4, nullptr);
  factory->release();
  EXPECT_EQ(host.livingObjects(), 0u);
  EXPECT_EQ(host.calls.words(), (Words{"addCommand(G, N, L, 4, no body)", "factory.release"}));
}

/// Draws one line.
class Stroke : public OdGiDrawable {
 public:
  void addRef() override {}
  void release() override {}
  bool isPersistent() const override { return false; }
  OdDbObjectId id() const override { return {}; }
  void setGsNode(OdGsCache* newNode) override { node = newNode; }
  OdGsCache* gsNode() const override { return node; }

 protected:
  std::uint32_t subSetAttributes(OdGiDrawableTraits*) const override { return 0; }
  bool subWorldDraw(OdGiWorldDraw*) const override { return false; }
  void subViewportDraw(OdGiViewportDraw* draw) const override {
    const OdGePoint3d ends[2] = {{0, 0, 0}, {1, 2, 3}};
    draw->geometry().worldLine(ends);
  }

 private:
  OdGsCache* node = nullptr;
};

class DrawingHost : public ::testing::Test {
 protected:
  RecordingHost host;
  Stroke stroke;
  HostTransientService& service = *host.application().activeDocument()->transientService();
};

TEST_F(DrawingHost, DrawsWithinTheAdditionAndBeforeTheRemovalWhenItIsToDrawAtOnce) {
  host.drawsAtOnce = true;
  service.addTransient(&stroke, 4, 768, 2, 0);
  ASSERT_EQ(host.draws.size(), 1u);
  EXPECT_EQ(host.draws.front().lines().size(), 1u);
  service.removeTransient(&stroke);
  EXPECT_EQ(host.draws.size(), 2u);
}

TEST_F(DrawingHost, DrawsAtTheRefreshWhenItIsToldTo) {
  service.addTransient(&stroke, 4, 768, 2, 0);
  const auto refresh = reinterpret_cast<HostRefreshFunction>(ZOR::reg::hostFunction(hostRefreshEntry));
  refresh(0);
  EXPECT_TRUE(host.draws.empty());
  host.drawsAtRefresh = true;
  refresh(0);
  EXPECT_EQ(host.draws.size(), 1u);
  service.removeTransient(&stroke);
}

TEST(RecordingHost, NamesTheFurtherDocumentsInTheirCalls) {
  RecordingHost host;
  host.openDocument();
  host.application().activeDocument()->transientService();
  host.openDocument();
  host.application().activeDocument()->transientService()->activeView()->fieldWidth();
  EXPECT_EQ(host.calls.words(),
            (Words{"activeDocument", "document 2: document.transientService", "activeDocument",
                   "document 3: document.transientService", "document 3: activeView", "document 3: view.fieldWidth"}));
}

}  // namespace
