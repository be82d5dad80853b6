// What a session asks of its host when it comes and goes, and with the documents.
#include <gtest/gtest.h>

#include "platform/sdk/od_gi_drawable.h"
#include "session/recorded_session.h"

namespace {

using namespace ZOR::reg;
using namespace tiepoint::testing;

TEST(HostCallsOfASession, ItIsMadeOfADrawableThatKnowsItsDocumentBeforeTheHostKnowsItAndReadsItsSizesLast) {
  RecordingHost host;
  std::unique_ptr<MultiRegistrator> session;
  EXPECT_EQ(host.calls.during([&] { session = std::make_unique<MultiRegistrator>(); }),
            documentTaken + asked("document.transientService") + sectionOpened + applicationTaken +
                asked("addReactor", "addTransient(4, 768, 2, 0)", "section.readValue(SizeLabel)",
                      "section.readValue(HeightLabelText)", "section.readValue(IsVisibleLabelText)") +
                sectionOpened + asked("section.readValue(MaxIterations)", "section.readValue(ConvergenceCriteria)"));
}

/// The node of a graphics system, which notes among the host's calls that its drawable has gone.
class NotingNode : public OdGsCache {
 public:
  explicit NotingNode(HostCalls& heard) : calls(heard) {}
  void setDrawableNull() override { calls.note("node told"); }

 private:
  HostCalls& calls;
};

TEST(HostCallsOfASession, ItGoesInTheReverseOrderAndItsNodeIsToldLast) {
  RecordingHost host;
  NotingNode node(host.calls);
  auto session = std::make_unique<MultiRegistrator>();
  host.drawables().front()->setGsNode(&node);
  EXPECT_EQ(host.calls.during([&] { session.reset(); }),
            asked("section.release") + applicationTaken +
                (asked("removeReactor", "removeTransient", "section.release", "node told")));
}

TEST(HostCallsOfASession, ADocumentThatComesInIsAskedForItsServiceAndGetsTheDrawable) {
  RecordingHost host;
  const MultiRegistrator session;
  EXPECT_EQ(host.calls.during([&] { host.openDocument(); }),
            (asked("document 2: document.transientService", "document 2: addTransient(4, 768, 2, 0)")));
}

TEST(HostCallsOfASession, ADocumentThatGoesLosesTheDrawableOnce) {
  RecordingHost host;
  const MultiRegistrator session;
  host.openDocument();
  EXPECT_EQ(host.calls.during([&] { host.closeDocument(); }), asked("document 2: removeTransient"));
  EXPECT_EQ(host.calls.during([&] { host.closeDocument(); }), nothing);
}

TEST(HostCallsOfASession, WithoutADocumentItGoesWithoutAskingForOne) {
  RecordingHost host;
  auto session = std::make_unique<MultiRegistrator>();
  host.closeDocument();
  EXPECT_EQ(host.calls.during([&] { session.reset(); }),
            asked("section.release") + applicationTaken + (asked("removeReactor", "section.release")));
}

}  // namespace
