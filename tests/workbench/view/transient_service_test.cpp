#include "workbench/view/transient_service.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <memory>
#include <new>
#include <stdexcept>

#include "platform/sdk/od_alloc.h"
#include "workbench/view/test_drawable.h"

using namespace tiepoint::workbench;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

MATCHER_P5(IsEntry, drawable, mode, subMode, viewGroup, flags, "") {
  return arg.drawable == drawable && arg.mode == mode && arg.subMode == subMode && arg.viewGroup == viewGroup &&
         arg.flags == flags;
}

/// A drawable that keeps no node.
class NodelessDrawable : public TestDrawable {
 public:
  void setGsNode(OdGsCache*) override {}
};

class ForeignNode : public OdGsCache {
 public:
  void setDrawableNull() override { told = true; }
  bool told = false;
};

}  // namespace

TEST(TransientService, ShowsNothingAtFirst) { EXPECT_THAT(TransientService().drawables(), IsEmpty()); }

TEST(TransientService, KeepsDrawablesInTheOrderInWhichTheyComeWithTheirFourValues) {
  TestDrawable first;
  TestDrawable second;
  TransientService service;
  service.addTransient(&second, 4, 768, 2, 0);
  service.addTransient(&first, 1, 2, 3, 5);
  EXPECT_THAT(service.drawables(), ElementsAre(IsEntry(&second, 4, 768, 2, 0), IsEntry(&first, 1, 2, 3, 5)));
}

TEST(TransientService, ShowsADrawableOnceAtItsFirstPlaceWithItsLastValues) {
  TestDrawable first;
  TestDrawable second;
  TransientService service;
  service.addTransient(&first, 1, 1, 1, 1);
  service.addTransient(&second, 2, 2, 2, 2);
  service.addTransient(&first, 4, 768, 2, 0);
  EXPECT_THAT(service.drawables(), ElementsAre(IsEntry(&first, 4, 768, 2, 0), IsEntry(&second, 2, 2, 2, 2)));
}

TEST(TransientService, RemovesOnlyTheDrawableThatIsMeant) {
  TestDrawable first;
  TestDrawable second;
  TransientService service;
  service.addTransient(&first, 1, 1, 1, 1);
  service.addTransient(&second, 2, 2, 2, 2);
  service.removeTransient(&first);
  EXPECT_THAT(service.drawables(), ElementsAre(IsEntry(&second, 2, 2, 2, 2)));
}

TEST(TransientService, DoesNothingForTheRemovalOfADrawableThatIsNotShown) {
  TestDrawable shown;
  TestDrawable stranger;
  TransientService service;
  service.addTransient(&shown, 1, 1, 1, 1);
  service.removeTransient(&stranger);
  service.removeTransient(nullptr);
  EXPECT_THAT(service.drawables(), ElementsAre(IsEntry(&shown, 1, 1, 1, 1)));
}

TEST(TransientService, ShowsNoNullDrawable) {
  TransientService service;
  service.addTransient(nullptr, 4, 768, 2, 0);
  EXPECT_THAT(service.drawables(), IsEmpty());
}

TEST(TransientService, ForgetsADrawableThatGoesWithoutHavingBeenRemoved) {
  TransientService service;
  TestDrawable lasting;
  service.addTransient(&lasting, 1, 1, 1, 1);
  {
    TestDrawable passing;
    service.addTransient(&passing, 2, 2, 2, 2);
  }
  EXPECT_THAT(service.drawables(), ElementsAre(IsEntry(&lasting, 1, 1, 1, 1)));
}

TEST(TransientService, ForgetsAVanishedDrawableInEveryServiceThatShowsIt) {
  TransientService first;
  TransientService second;
  auto drawable = std::make_unique<TestDrawable>();
  first.addTransient(drawable.get(), 4, 768, 2, 0);
  second.addTransient(drawable.get(), 4, 768, 2, 0);
  second.removeTransient(drawable.get());
  second.addTransient(drawable.get(), 4, 768, 2, 0);
  drawable.reset();
  EXPECT_THAT(first.drawables(), IsEmpty());
  EXPECT_THAT(second.drawables(), IsEmpty());
}

TEST(TransientService, LeavesADrawableToTheOthersWhenOneServiceRemovesIt) {
  TransientService first;
  TransientService second;
  auto drawable = std::make_unique<TestDrawable>();
  first.addTransient(drawable.get(), 4, 768, 2, 0);
  second.addTransient(drawable.get(), 4, 768, 2, 0);
  second.removeTransient(drawable.get());
  EXPECT_THAT(first.drawables(), ElementsAre(IsEntry(drawable.get(), 4, 768, 2, 0)));
  drawable.reset();
  EXPECT_THAT(first.drawables(), IsEmpty());
}

TEST(TransientService, TakesItsNodeOffADrawableThatNoServiceShowsAnyMore) {
  TestDrawable drawable;
  TransientService service;
  service.addTransient(&drawable, 4, 768, 2, 0);
  EXPECT_NE(drawable.gsNode(), nullptr);
  service.removeTransient(&drawable);
  EXPECT_EQ(drawable.gsNode(), nullptr);
}

TEST(TransientService, LetsGoOfItsDrawablesWhenItGoesFirst) {
  TestDrawable drawable;
  {
    TransientService service;
    service.addTransient(&drawable, 4, 768, 2, 0);
  }
  EXPECT_EQ(drawable.gsNode(), nullptr);
}

TEST(TransientService, IsNotToldOfADrawableAfterItHasGone) {
  TransientService lasting;
  auto drawable = std::make_unique<TestDrawable>();
  lasting.addTransient(drawable.get(), 4, 768, 2, 0);
  {
    TransientService passing;
    passing.addTransient(drawable.get(), 4, 768, 2, 0);
  }
  drawable.reset();
  EXPECT_THAT(lasting.drawables(), IsEmpty());
}

TEST(TransientService, TakesDrawablesThatKeepNoNode) {
  NodelessDrawable drawable;
  TransientService service;
  service.addTransient(&drawable, 4, 768, 2, 0);
  EXPECT_THAT(service.drawables(), ElementsAre(IsEntry(&drawable, 4, 768, 2, 0)));
  service.removeTransient(&drawable);
  EXPECT_THAT(service.drawables(), IsEmpty());
}

TEST(TransientService, LeavesTheNodeOfAnotherGraphicsSystemWhereItIs) {
  ForeignNode foreign;
  {
    TestDrawable drawable;
    drawable.setGsNode(&foreign);
    TransientService service;
    service.addTransient(&drawable, 4, 768, 2, 0);
    EXPECT_EQ(drawable.gsNode(), &foreign);
    service.removeTransient(&drawable);
    EXPECT_EQ(drawable.gsNode(), &foreign);
  }
  EXPECT_TRUE(foreign.told);
}

TEST(TransientService, LeavesANodeThatCameInPlaceOfItsOwnWhereItIs) {
  ForeignNode foreign;
  TestDrawable drawable;
  TransientService service;
  service.addTransient(&drawable, 4, 768, 2, 0);
  drawable.setGsNode(&foreign);
  service.removeTransient(&drawable);
  EXPECT_EQ(drawable.gsNode(), &foreign);
}

TEST(TransientService, GivesItsOneViewAsTheActiveView) {
  TransientService service;
  EXPECT_EQ(service.activeView(), &service.view());
}

TEST(TransientService, LeavesTheViewAsItWasSetWhenItIsApplied) {
  TransientService service;
  service.view().set({1.0, 2.0, 3.0}, {1.0, 2.0, 2.0}, {0.0, 1.0, 0.0}, 8.0, 6.0, HostProjection::parallel);
  service.applyView(service.activeView(), 0);
  EXPECT_EQ(service.view().position(), OdGePoint3d(1.0, 2.0, 3.0));
  EXPECT_EQ(service.view().fieldWidth(), 8.0);
}

TEST(TransientService, KeepsTheFirstViewActiveWhenFurtherOnesCome) {
  TransientService service;
  View& first = service.view();
  service.addView();
  EXPECT_EQ(service.activeView(), &first);
  EXPECT_EQ(service.views().size(), 2u);
}

TEST(TransientService, HandsOutTheViewThatWasMadeActive) {
  TransientService service;
  View& second = service.addView();
  service.activate(second);
  EXPECT_EQ(service.activeView(), &second);
  EXPECT_EQ(&service.view(), &second);
}

TEST(TransientService, SetsOneViewAndLeavesTheOthers) {
  TransientService service;
  View& second = service.addView();
  second.set({1.0, 2.0, 3.0}, {1.0, 2.0, 2.0}, {0.0, 1.0, 0.0}, 8.0, 6.0, HostProjection::parallel);
  EXPECT_EQ(service.view().fieldWidth(), 100.0);
  EXPECT_EQ(second.fieldWidth(), 8.0);
}

TEST(TransientService, ActivatesTheNewestOfTheOtherViewsWhenTheActiveOneGoes) {
  TransientService service;
  service.addView();
  View& third = service.addView();
  service.removeView(service.view());
  EXPECT_EQ(service.activeView(), &third);
  EXPECT_EQ(service.views().size(), 2u);
}

TEST(TransientService, KeepsTheActiveViewWhenAnotherGoes) {
  TransientService service;
  View& first = service.view();
  service.removeView(service.addView());
  EXPECT_EQ(service.activeView(), &first);
}

TEST(TransientService, HasNoActiveViewWhenTheLastOneIsGone) {
  TransientService service;
  service.removeView(service.view());
  EXPECT_EQ(service.activeView(), nullptr);
  View& next = service.addView();
  EXPECT_EQ(service.activeView(), nullptr);
  service.activate(next);
  EXPECT_EQ(service.activeView(), &next);
}

TEST(TransientService, RefusesAViewOfAnotherDocument) {
  TransientService service;
  TransientService other;
  EXPECT_THROW(service.activate(other.view()), std::invalid_argument);
  EXPECT_THROW(service.removeView(other.view()), std::invalid_argument);
  EXPECT_EQ(service.views().size(), 1u);
  EXPECT_EQ(other.views().size(), 1u);
}

namespace {

/// Shows the drawable with the first allocations succeeding and all after them failing. True when
/// that many were enough.
bool addsWithAllocations(std::uint64_t count, TransientService& service, OdGiDrawable& drawable) {
  odrxFailAllocationsAfter(count);
  try {
    service.addTransient(&drawable, 4, 768, 2, 0);
  } catch (const std::bad_alloc&) {
    odrxStopFailingAllocations();
    return false;
  }
  odrxStopFailingAllocations();
  return true;
}

}  // namespace

TEST(TransientService, KeepsNothingOfADrawableThatThereIsNoMemoryFor) {
  std::uint64_t failures = 0;
  for (bool isAdded = false; !isAdded; ++failures) {
    TransientService service;
    TestDrawable drawable;
    isAdded = addsWithAllocations(failures, service, drawable);
    if (isAdded) break;
    EXPECT_THAT(service.drawables(), IsEmpty()) << failures;
    EXPECT_EQ(drawable.gsNode(), nullptr) << failures;
    service.addTransient(&drawable, 4, 768, 2, 0);
    EXPECT_THAT(service.drawables(), ElementsAre(IsEntry(&drawable, 4, 768, 2, 0))) << failures;
  }
  // The node, its place among the holders, its place here, the entry.
  EXPECT_GE(failures, 4u);
}

TEST(TransientService, IsNoHolderOfASharedNodeWhenThereWasNoMemoryForTheDrawable) {
  bool isAdded = false;
  for (std::uint64_t allocations = 0; !isAdded; ++allocations) {
    TransientService first;
    TestDrawable drawable;
    first.addTransient(&drawable, 1, 2, 3, 5);
    {
      // It goes without having been told to forget the drawable: as a holder it would be told later.
      TransientService second;
      isAdded = addsWithAllocations(allocations, second, drawable);
    }
    if (isAdded) break;
    drawable.gsNode()->setDrawableNull();
    EXPECT_THAT(first.drawables(), IsEmpty()) << allocations;
    drawable.setGsNode(nullptr);
  }
}
