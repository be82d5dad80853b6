// Hosts that draw at once, that fail in the middle, and that have no document.
#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

#include "display/ref_points_transient.h"
#include "platform/sdk/od_gi_viewport_draw.h"
#include "support/session_host.h"
#include "workbench/view/recording_draw.h"

namespace {

using namespace ZOR::reg;
using namespace tiepoint::testing;

DisplayGroups onePoint() {
  DisplayGroups groups;
  groups[0] = {OdString(L"A"), 1, {{{1, 2, 3}, OdString(L"T1"), 0}}};
  return groups;
}

/// How many lines and texts a draw gives.
std::size_t drawnBy(const OdGiDrawable& drawable) {
  tiepoint::workbench::RecordingDraw draw{tiepoint::workbench::View()};
  draw.draw(drawable);
  return draw.lines().size() + draw.texts().size();
}

/// A service over a real one, which does something of its own before or after.
class UnkindService : public HostTransientService {
 public:
  explicit UnkindService(HostTransientService& kind_) : kind(kind_) {}

  std::function<void(OdGiDrawable&)> beforeAdding = nothing, afterAdding = nothing;
  std::function<void(OdGiDrawable&)> beforeRemoving = nothing, afterRemoving = nothing;

 private:
  static void nothing(OdGiDrawable&) {}

  void addTransient(OdGiDrawable* drawable, int mode, int subMode, int viewGroup, int flags) override {
    beforeAdding(*drawable);
    kind.addTransient(drawable, mode, subMode, viewGroup, flags);
    afterAdding(*drawable);
  }
  void removeTransient(OdGiDrawable* drawable) override {
    beforeRemoving(*drawable);
    kind.removeTransient(drawable);
    afterRemoving(*drawable);
  }
  HostView* activeView() override { return nullptr; }
  void applyView(HostView*, int) override {}

  HostTransientService& kind;
};

class UnkindDocument : public HostDocument {
 public:
  explicit UnkindDocument(TestDocument& kind_) : kind(kind_), service(*kind.transientService()) {}

  OdDbDatabasePtr database() override { return kind.database(); }
  HostTransientService* transientService() override { return hasService ? &service : nullptr; }
  bool isReady() const override { return true; }

 private:
  TestDocument& kind;

 public:
  bool hasService = true;
  UnkindService service;
};

class UnkindHost : public SessionHost {
 public:
  UnkindHost() : unkind(document()) {}

  std::function<void()> afterReactorCame = [] {};
  std::function<void()> beforeReactorGoes = [] {};
  bool hasDocument = true;
  UnkindDocument unkind;

  HostDocument* activeDocument() override { return hasDocument ? &unkind : nullptr; }
  void addReactor(HostApDocManagerReactor* reactor) override {
    SessionHost::addReactor(reactor);
    afterReactorCame();
  }
  void removeReactor(HostApDocManagerReactor* reactor) override {
    beforeReactorGoes();
    SessionHost::removeReactor(reactor);
  }

  bool knowsNothing() { return reactors().empty() && document().drawables().empty(); }
};

/// Fails the first time it is called.
std::function<void()> failingOnce() {
  return [isFirst = true]() mutable {
    if (std::exchange(isFirst, false)) throw std::runtime_error("the host fails");
  };
}

TEST(TransientInAHostThatFails, IsKnownToNobodyWhenTheReactorIsTakenInWithAnError) {
  UnkindHost host;
  host.afterReactorCame = failingOnce();
  const DisplayGroups groups;
  EXPECT_THROW(RefPointsTransient transient(&groups), std::runtime_error);
  EXPECT_TRUE(host.knowsNothing());
}

TEST(TransientInAHostThatFails, IsKnownToNobodyWhenTheDrawableIsTakenInWithAnError) {
  UnkindHost host;
  host.unkind.service.afterAdding = [](OdGiDrawable&) { throw std::runtime_error("the host fails"); };
  const DisplayGroups groups;
  EXPECT_THROW(RefPointsTransient transient(&groups), std::runtime_error);
  EXPECT_TRUE(host.knowsNothing());
}

TEST(TransientInAHostThatFails, IsKnownToNobodyWhenTheDrawableIsRefusedWithAnError) {
  UnkindHost host;
  host.unkind.service.beforeAdding = [](OdGiDrawable&) { throw std::runtime_error("the host fails"); };
  const DisplayGroups groups;
  EXPECT_THROW(RefPointsTransient transient(&groups), std::runtime_error);
  EXPECT_TRUE(host.knowsNothing());
}

/// A node of another graphics system.
class StrangeNode : public OdGsCache {
 public:
  void setDrawableNull() override { isTold = true; }
  bool isTold = false;
};

TEST(TransientInAHostThatFails, TellsTheNodeOnItWhenItIsNotMadeAfterAll) {
  UnkindHost host;
  StrangeNode node;
  host.unkind.service.beforeAdding = [&](OdGiDrawable& drawable) { drawable.setGsNode(&node); };
  host.unkind.service.afterAdding = [](OdGiDrawable&) { throw std::runtime_error("the host fails"); };
  const DisplayGroups groups;
  EXPECT_THROW(RefPointsTransient transient(&groups), std::runtime_error);
  EXPECT_TRUE(node.isTold);
}

TEST(TransientInAHostThatFails, LeavesAllTheSameWhenTheHostFailsOnceAsItGoes) {
  UnkindHost host;
  host.beforeReactorGoes = failingOnce();
  host.unkind.service.beforeRemoving = [fail = failingOnce()](OdGiDrawable&) mutable { fail(); };
  const DisplayGroups groups;
  { const RefPointsTransient transient(&groups); }
  EXPECT_TRUE(host.knowsNothing());
}

TEST(TransientInAHostThatFails, EndsEvenIfTheHostDoesNotLetItGo) {
  UnkindHost host;
  int reactorCalls = 0;
  int drawableCalls = 0;
  const DisplayGroups groups;
  {
    const RefPointsTransient transient(&groups);
    host.beforeReactorGoes = [&] {
      ++reactorCalls;
      throw std::runtime_error("the host fails");
    };
    host.unkind.service.beforeRemoving = [&](OdGiDrawable&) {
      ++drawableCalls;
      throw std::runtime_error("the host fails");
    };
  }
  EXPECT_EQ(reactorCalls, 2);
  EXPECT_EQ(drawableCalls, 2);
}

TEST(TransientInAHostWithoutDocuments, ShowsItselfInTheFirstOneThatComes) {
  UnkindHost host;
  host.hasDocument = false;
  const DisplayGroups groups;
  {
    RefPointsTransient transient(&groups);
    EXPECT_EQ(host.reactors().size(), 1u);
    EXPECT_TRUE(host.document().drawables().empty());
    transient.documentAdded(&host.unkind);
    EXPECT_EQ(host.document().drawables().size(), 1u);
  }
  EXPECT_TRUE(host.knowsNothing());
}

TEST(TransientInAHostWithoutDocuments, PassesOverADocumentWithoutAService) {
  UnkindHost host;
  host.unkind.hasService = false;
  const DisplayGroups groups;
  {
    RefPointsTransient transient(&groups);
    transient.documentAdded(&host.unkind);
    transient.documentToBeRemoved(&host.unkind);
  }
  EXPECT_TRUE(host.knowsNothing());
}

TEST(TransientInAHostThatDrawsAtOnce, DrawsOnlyWhileWhatItShowsIsThere) {
  UnkindHost host;
  const DisplayGroups groups = onePoint();
  std::vector<std::size_t> drawn;
  const auto draw = [&](OdGiDrawable& drawable) { drawn.push_back(drawnBy(drawable)); };
  host.unkind.service.afterAdding = draw;
  host.unkind.service.beforeRemoving = draw;
  host.unkind.service.afterRemoving = draw;
  {
    RefPointsTransient transient(&groups);
    drawn.push_back(drawnBy(transient));
    transient.beginDrawing();
    drawn.push_back(drawnBy(transient));
    transient.endDrawing();
    drawn.push_back(drawnBy(transient));
  }
  // As it comes, before, while and after it may draw; as it goes, twice.
  EXPECT_EQ(drawn, (std::vector<std::size_t>{0, 0, 4, 0, 0, 0}));
}

TEST(TransientInAHostThatDrawsAtOnce, DrawsNoMoreAsItGoesThoughNobodyHasSaidSo) {
  UnkindHost host;
  const DisplayGroups groups = onePoint();
  std::size_t drawn = 99;
  host.unkind.service.beforeRemoving = [&](OdGiDrawable& drawable) { drawn = drawnBy(drawable); };
  {
    RefPointsTransient transient(&groups);
    transient.beginDrawing();
  }
  EXPECT_EQ(drawn, 0u);
}

/// A draw that is no view of the graphics system.
class BareDraw : public OdGiViewportDraw, private OdGiViewportGeometry, private OdGiSubEntityTraits {
 public:
  int calls = 0;

  void addRef() override {}
  void release() override {}
  OdGiViewportGeometry& geometry() override { return *this; }
  OdGiSubEntityTraits& subEntityTraits() override { return *this; }

 private:
  void setColor(std::uint16_t) override { ++calls; }
  void setFillType(OdGiFillType) override { ++calls; }
  void worldLine(const OdGePoint3d*) override { ++calls; }
  void text(const OdGePoint3d&, const OdGeVector3d&, const OdGeVector3d&, double, double, double,
            const OdString&) override {
    ++calls;
  }
};

TEST(TransientInAHostOfOtherViews, DrawsNothingWhereThereAreNoPixels) {
  UnkindHost host;
  const DisplayGroups groups = onePoint();
  RefPointsTransient transient(&groups);
  transient.beginDrawing();
  BareDraw draw;
  transient.viewportDraw(&draw);
  EXPECT_EQ(draw.calls, 0);
}

}  // namespace
