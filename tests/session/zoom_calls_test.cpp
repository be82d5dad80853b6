// What a zoom asks of its host.
#include <gtest/gtest.h>

#include <algorithm>

#include "session/recorded_session.h"

namespace {

using namespace ZOR::reg;
using namespace tiepoint::testing;

/// The order in which a view is read is of no consequence: each run of readings in the order of their
/// names.
Calls withReadingsSorted(Calls calls) {
  const auto isReading = [](const std::string& call) {
    return call.rfind("view.", 0) == 0 && call.rfind("view.set", 0) != 0;
  };
  for (auto from = calls.begin(); from != calls.end();) {
    const auto to = std::find_if_not(from, calls.end(), isReading);
    std::sort(from, to);
    from = to == calls.end() ? to : to + 1;
  }
  return calls;
}

class HostCallsOfAZoom : public ::testing::Test {
 protected:
  RecordedSession session{{{"A", {{"T1", 0, 0, 0}, {"T2", 20, 10, 0}}},
                           {"flat", {{"T1", 0, 5, 0}, {"T2", 20, 5, 0}}},
                           {"upright", {{"T1", 5, 0, 0}, {"T2", 5, 20, 0}}},
                           {"spot", {{"T1", 5, 5, 5}}}}};

  void look() { session.host.document().view().setState({{0, 0, 50}, {0, 0, 0}, {0, 1, 0}, 40, 20, 800, 600}); }
  template <class Action>
  Calls calls(Action&& action) {
    return withReadingsSorted(session.host.calls.during(action));
  }
};

TEST_F(HostCallsOfAZoom, ItSetsTheViewThenAppliesItThenRefreshes) {
  session.add({0});
  look();
  EXPECT_EQ(calls([&] { session->zoomToGroup(0); }),
            viewTaken +
                asked("view.upVector", "view.viewingMatrix",
                      "view.set((10 5 50), (10 5 49), (0 1 0), 22, 11, parallel)", "applyView(view, 0)") +
                refreshed);
}

TEST_F(HostCallsOfAZoom, AllGroupsAreLookedAtByTheSameCalls) {
  session.add({0, 1});
  look();
  EXPECT_EQ(calls([&] { session->zoomToAll(); }),
            viewTaken +
                asked("view.upVector", "view.viewingMatrix",
                      "view.set((10 5 50), (10 5 49), (0 1 0), 22, 11, parallel)", "applyView(view, 0)") +
                refreshed);
}

TEST_F(HostCallsOfAZoom, TheFieldIsReadOnlyForAFlatExtent) {
  session.add({1, 2});
  look();
  EXPECT_EQ(calls([&] { session->zoomToGroup(1); }),
            viewTaken +
                asked("view.fieldHeight", "view.fieldWidth", "view.upVector", "view.viewingMatrix",
                      "view.set((10 5 50), (10 5 49), (0 1 0), 22, 11, parallel)", "applyView(view, 0)") +
                refreshed);
  look();
  EXPECT_EQ(calls([&] { session->zoomToGroup(2); }),
            viewTaken +
                asked("view.fieldHeight", "view.fieldWidth", "view.upVector", "view.viewingMatrix",
                      "view.set((5 10 50), (5 10 49), (0 1 0), 44, 22, parallel)", "applyView(view, 0)") +
                refreshed);
}

TEST_F(HostCallsOfAZoom, ASpotIsMeasuredAndLeftAlone) {
  session.add({3});
  EXPECT_EQ(calls([&] { session->zoomToGroup(3); }), viewTaken + asked("view.viewingMatrix"));
}

TEST_F(HostCallsOfAZoom, WithoutADocumentItEndsThere) {
  session.add({0});
  session.host.closeDocument();
  const auto zooms = [&] {
    session->zoomToAll();
    session->zoomToGroup(0);
    session->zoomToPoint(0);
  };
  EXPECT_EQ(calls(zooms), documentTaken + documentTaken + documentTaken);
}

TEST_F(HostCallsOfAZoom, WithoutAServiceItEndsThere) {
  session.add({0});
  session.host.calls.failAt(5, Fault::givesNull);
  EXPECT_EQ(calls([&] { session->zoomToAll(); }), documentTaken + asked("document.transientService"));
}

TEST_F(HostCallsOfAZoom, WithoutAViewItEndsThere) {
  session.add({0});
  session.host.document().transientViews().removeView(session.host.document().view());
  EXPECT_EQ(calls([&] { session->zoomToAll(); }), viewTaken);
  EXPECT_EQ(calls([&] { session->zoomToPoint(0); }), viewTaken);
}

TEST_F(HostCallsOfAZoom, APointKeepsUpVectorAndFieldAndMovesTheEyeWithTheTarget) {
  session.add({0});
  look();
  EXPECT_EQ(calls([&] { session->zoomToPoint(1); }),
            viewTaken +
                asked("view.fieldHeight", "view.fieldWidth", "view.position", "view.target", "view.upVector",
                      "view.set((20 10 50), (20 10 0), (0 1 0), 40, 20, parallel)", "applyView(view, 0)") +
                refreshed);
}

TEST_F(HostCallsOfAZoom, APointOfAHiddenGroupIsNotAskedAbout) {
  session.add({0});
  session->setGroupsVisible({0}, false);
  EXPECT_EQ(calls([&] { session->zoomToPoint(1); }), viewTaken);
}

TEST_F(HostCallsOfAZoom, TheFirstGroupsAreShownThenLookedAt) {
  look();
  EXPECT_EQ(calls([&] { session.add({0}); }),
            refreshed + viewTaken +
                asked("view.upVector", "view.viewingMatrix",
                      "view.set((10 5 50), (10 5 49), (0 1 0), 22, 11, parallel)", "applyView(view, 0)") +
                refreshed);
}

}  // namespace
