#include "display/ref_points_transient.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "platform/sdk/od_alloc.h"
#include "platform/sdk/od_gi_viewport_draw.h"
#include "support/session_host.h"
#include "workbench/view/recording_draw.h"

namespace {

using namespace ZOR::reg;
using namespace tiepoint::testing;
using tiepoint::workbench::RecordingDraw;
using tiepoint::workbench::View;
using tiepoint::workbench::ViewState;

DisplayGroups twoGroups() {
  DisplayGroups groups;
  groups[3] = {OdString(L"B"), 2, {{{5, 0, 0}, OdString(L"T9"), 7}}};
  groups[1] = {OdString(L"A"), 1, {{{1, 2, 3}, OdString(L"T1"), 5}, {{4, 5, 6}, OdString(L"T2"), 6}}};
  return groups;
}

/// One that what it shows is there for, as in a session that is whole.
class ReadyTransient : public RefPointsTransient {
 public:
  explicit ReadyTransient(const DisplayGroups* shown) : RefPointsTransient(shown) { beginDrawing(); }
};

/// A view whose pixels are `unit` drawing units wide.
View viewWithPixels(double unit) {
  View view;
  view.setState({{0, 0, 10}, {0, 0, 0}, {0, 1, 0}, 800 * unit, 600 * unit, 800, 600});
  return view;
}

RecordingDraw drawn(const RefPointsTransient& transient, double unit = 0.5) {
  RecordingDraw draw(viewWithPixels(unit));
  draw.draw(transient);
  return draw;
}

TEST(RefPointsTransient, ShowsItselfInTheActiveDocumentWithItsFourValues) {
  SessionHost host;
  const DisplayGroups groups;
  const RefPointsTransient transient(&groups);
  ASSERT_EQ(host.document().drawables().size(), 1u);
  const auto& entry = host.document().drawables().front();
  EXPECT_EQ(entry.drawable, &transient);
  EXPECT_EQ(entry.mode, 4);
  EXPECT_EQ(entry.subMode, 768);
  EXPECT_EQ(entry.viewGroup, 2);
  EXPECT_EQ(entry.flags, 0);
  EXPECT_EQ(host.reactors().size(), 1u);
}

/// Notes whether the drawable is shown when its reactor comes and goes.
class NotingHost : public SessionHost {
 public:
  std::vector<std::string> events;

  void addReactor(HostApDocManagerReactor* reactor) override {
    events.push_back("comes, " + std::to_string(document().drawables().size()) + " shown");
    SessionHost::addReactor(reactor);
  }
  void removeReactor(HostApDocManagerReactor* reactor) override {
    events.push_back("goes, " + std::to_string(document().drawables().size()) + " shown");
    SessionHost::removeReactor(reactor);
  }
};

TEST(RefPointsTransient, ListensBeforeItShowsAndUntilItHides) {
  NotingHost host;
  const DisplayGroups groups;
  { const RefPointsTransient transient(&groups); }
  EXPECT_EQ(host.events, (std::vector<std::string>{"comes, 0 shown", "goes, 1 shown"}));
}

TEST(RefPointsTransient, LeavesNothingBehind) {
  SessionHost host;
  const DisplayGroups groups;
  { const RefPointsTransient transient(&groups); }
  EXPECT_TRUE(host.document().drawables().empty());
  EXPECT_TRUE(host.reactors().empty());
}

TEST(RefPointsTransient, FollowsTheDocuments) {
  SessionHost host;
  const DisplayGroups groups;
  const RefPointsTransient transient(&groups);
  host.openDocument();
  EXPECT_EQ(host.document().drawables().size(), 1u);
  host.closeDocument();
  host.closeDocument();
  host.openDocument();
  EXPECT_EQ(host.document().drawables().size(), 1u);
}

TEST(RefPointsTransient, AnyDocumentThatGoesTakesItOutOfTheLatestOne) {
  SessionHost host;
  TestDocument& first = host.document();
  const DisplayGroups groups;
  RefPointsTransient transient(&groups);
  TestDocument& second = host.openDocument();
  transient.documentToBeRemoved(&first);
  EXPECT_EQ(first.drawables().size(), 1u);
  EXPECT_TRUE(second.drawables().empty());
  transient.documentToBeRemoved(&second);
  EXPECT_EQ(first.drawables().size(), 1u);
}

/// A document whose service counts its calls.
class CountingDocument : public HostDocument, private HostTransientService {
 public:
  int additions = 0;
  int removals = 0;

  OdDbDatabasePtr database() override { return {}; }
  HostTransientService* transientService() override { return this; }
  bool isReady() const override { return true; }

 private:
  void addTransient(OdGiDrawable*, int, int, int, int) override { ++additions; }
  void removeTransient(OdGiDrawable*) override { ++removals; }
  HostView* activeView() override { return nullptr; }
  void applyView(HostView*, int) override {}
};

TEST(RefPointsTransient, AsksADocumentThatHasGoneForNothingMore) {
  SessionHost host;
  const DisplayGroups groups;
  CountingDocument document;
  {
    RefPointsTransient transient(&groups);
    transient.documentAdded(&document);
    EXPECT_EQ(document.additions, 1);
    transient.documentToBeRemoved(&document);
    EXPECT_EQ(document.removals, 1);
    transient.documentToBeRemoved(&document);
  }
  EXPECT_EQ(document.removals, 1);
}

TEST(RefPointsTransient, DrawsThreeLinesAPointThenAllLabels) {
  SessionHost host;
  const DisplayGroups groups = twoGroups();
  const ReadyTransient transient(&groups);
  const RecordingDraw draw = drawn(transient);
  // Marker size 10 pixels of half a unit: the lines reach 5 units to either side.
  ASSERT_EQ(draw.lines().size(), 9u);
  EXPECT_EQ(draw.lines()[0].color, 1);
  EXPECT_EQ(draw.lines()[0].from, OdGePoint3d(6, 2, 3));
  EXPECT_EQ(draw.lines()[0].to, OdGePoint3d(-4, 2, 3));
  EXPECT_EQ(draw.lines()[1].from, OdGePoint3d(1, 7, 3));
  EXPECT_EQ(draw.lines()[1].to, OdGePoint3d(1, -3, 3));
  EXPECT_EQ(draw.lines()[2].from, OdGePoint3d(1, 2, 8));
  EXPECT_EQ(draw.lines()[2].to, OdGePoint3d(1, 2, -2));
  EXPECT_EQ(draw.lines()[6].color, 2);
  ASSERT_EQ(draw.texts().size(), 3u);
  EXPECT_EQ(draw.texts()[0].color, 7);
  EXPECT_EQ(draw.texts()[0].position, OdGePoint3d(1, 2, 3));
  EXPECT_EQ(draw.texts()[0].normal, OdGeVector3d(0, 0, 1));
  EXPECT_EQ(draw.texts()[0].direction, OdGeVector3d(1, 0, 0));
  EXPECT_EQ(draw.texts()[0].height, 5.0);
  EXPECT_EQ(draw.texts()[0].text, OdString(L"T1"));
  EXPECT_EQ(draw.texts()[2].text, OdString(L"T9"));
}

TEST(RefPointsTransient, KeepsItsSizeOnTheScreenAtAnyZoom) {
  SessionHost host;
  const DisplayGroups groups = twoGroups();
  const ReadyTransient transient(&groups);
  for (double unit : {0.25, 0.5, 4.0}) {
    const RecordingDraw draw = drawn(transient, unit);
    EXPECT_EQ(draw.lines()[0].from.x - draw.lines()[0].to.x, 20.0 * unit);
    EXPECT_EQ(draw.texts()[0].height, 10.0 * unit);
  }
}

TEST(RefPointsTransient, WithoutLabelsNoTextIsDrawn) {
  SessionHost host;
  host.profile().set("PointClouds\\Registration", "IsVisibleLabelText", 0);
  const DisplayGroups groups = twoGroups();
  const ReadyTransient transient(&groups);
  const RecordingDraw draw = drawn(transient);
  EXPECT_EQ(draw.lines().size(), 9u);
  EXPECT_TRUE(draw.texts().empty());
}

TEST(RefPointsTransient, AMarkerOfSizeZeroIsThreeLinesWithoutLength) {
  SessionHost host;
  host.profile().set("PointClouds\\Registration", "SizeLabel", 0);
  const DisplayGroups groups = twoGroups();
  const ReadyTransient transient(&groups);
  const RecordingDraw draw = drawn(transient);
  ASSERT_EQ(draw.lines().size(), 9u);
  EXPECT_EQ(draw.lines()[0].from, draw.lines()[0].to);
}

/// Writes down every call in words, in its order.
class SpellingDraw : public OdGsViewImpl, private OdGiViewportGeometry, private OdGiSubEntityTraits {
 public:
  explicit SpellingDraw(const View& seen) : eye(seen.viewingMatrix()), device(seen.deviceMatrix()) {
    direction = seen.direction();
    horizontal = seen.xAxis();
  }
  SpellingDraw(const OdGeMatrix3d& worldToEye, const OdGeMatrix3d& worldToDevice)
      : eye(worldToEye), device(worldToDevice) {}
  std::vector<std::string> calls;

  void addRef() override {}
  void release() override {}
  OdGiViewportGeometry& geometry() override { return *this; }
  OdGiSubEntityTraits& subEntityTraits() override { return *this; }
  OdGeMatrix3d worldToEyeMatrix() const override { return eye; }
  OdGeMatrix3d worldToDeviceMatrix() const override { return device; }

 private:
  template <class Triple>
  static std::string spelled(const Triple& t) {
    std::ostringstream words;
    words << '(' << t.x << ' ' << t.y << ' ' << t.z << ')';
    return words.str();
  }
  void setColor(std::uint16_t color) override { calls.push_back("color " + std::to_string(color)); }
  void setFillType(OdGiFillType type) override { calls.push_back("fill " + std::to_string(type)); }
  void worldLine(const OdGePoint3d points[2]) override {
    calls.push_back("line " + spelled(points[0]) + " " + spelled(points[1]));
  }
  void text(const OdGePoint3d& position, const OdGeVector3d& normal, const OdGeVector3d& textDirection, double height,
            double width, double oblique, const OdString& message) override {
    std::ostringstream words;
    words << "text " << spelled(position) << ' ' << spelled(normal) << ' ' << spelled(textDirection) << ' ' << height
          << ' ' << width << ' ' << oblique << ' ' << message.narrow();
    calls.push_back(words.str());
  }

  OdGeMatrix3d eye;
  OdGeMatrix3d device;
};

std::vector<std::string> callsOf(const RefPointsTransient& transient, const View& view) {
  SpellingDraw draw(view);
  transient.viewportDraw(&draw);
  return draw.calls;
}

View viewOf(const ViewState& state) {
  View view;
  view.setState(state);
  return view;
}

TEST(RefPointsTransient, SetsTheTraitsThenDrawsEveryMarkerThenEveryLabel) {
  SessionHost host;
  const DisplayGroups groups = twoGroups();
  const ReadyTransient transient(&groups);
  // Pixels of half a unit: the crosses reach 5 to either side, and the labels are 5 high.
  EXPECT_EQ(callsOf(transient, viewWithPixels(0.5)), (std::vector<std::string>{
                                                         "fill 2",
                                                         "color 1",
                                                         "line (6 2 3) (-4 2 3)",
                                                         "line (1 7 3) (1 -3 3)",
                                                         "line (1 2 8) (1 2 -2)",
                                                         "line (9 5 6) (-1 5 6)",
                                                         "line (4 10 6) (4 0 6)",
                                                         "line (4 5 11) (4 5 1)",
                                                         "color 2",
                                                         "line (10 0 0) (0 0 0)",
                                                         "line (5 5 0) (5 -5 0)",
                                                         "line (5 0 5) (5 0 -5)",
                                                         "color 7",
                                                         "text (1 2 3) (0 0 1) (1 0 0) 5 0 0 T1",
                                                         "text (4 5 6) (0 0 1) (1 0 0) 5 0 0 T2",
                                                         "text (5 0 0) (0 0 1) (1 0 0) 5 0 0 T9",
                                                     }));
}

TEST(RefPointsTransient, MeasuresAPixelAlongTheEyesXAndKeepsItsSign) {
  SessionHost host;
  host.profile().set("PointClouds\\Registration", "IsVisibleLabelText", 0);
  DisplayGroups groups;
  groups[0] = {OdString(L"A"), 1, {{{0, 0, 0}, OdString(L"T1"), 0}}};
  const ReadyTransient transient(&groups);
  OdGeMatrix3d device;
  device(0, 0) = -4.0;
  OdGeMatrix3d eye;
  eye(0, 0) = 3.0;
  SpellingDraw draw(eye, device);
  transient.viewportDraw(&draw);
  // A quarter backwards in the world, three quarters in the eye.
  EXPECT_EQ(draw.calls[2], "line (-7.5 0 0) (7.5 0 0)");
}

TEST(RefPointsTransient, TurnsItsLabelsToTheViewerAndLeavesTheCrossesAlongTheDrawingsAxes) {
  SessionHost host;
  DisplayGroups groups;
  groups[0] = {OdString(L"A"), 30, {{{1, 2, 3}, OdString(L"T1"), 0}}};
  const ReadyTransient transient(&groups);
  // From the front, and from above turned by a quarter; pixels of a quarter of a unit.
  EXPECT_EQ(
      callsOf(transient, viewOf({{0, -50, 0}, {0, 0, 0}, {0, 0, 1}, 200, 150, 800, 600})),
      (std::vector<std::string>{"fill 2", "color 30", "line (3.5 2 3) (-1.5 2 3)", "line (1 4.5 3) (1 -0.5 3)",
                                "line (1 2 5.5) (1 2 0.5)", "color 7", "text (1 2 3) (0 -1 0) (1 0 0) 2.5 0 0 T1"}));
  EXPECT_EQ(
      callsOf(transient, viewOf({{0, 0, 50}, {0, 0, 0}, {1, 0, 0}, 200, 150, 800, 600})),
      (std::vector<std::string>{"fill 2", "color 30", "line (3.5 2 3) (-1.5 2 3)", "line (1 4.5 3) (1 -0.5 3)",
                                "line (1 2 5.5) (1 2 0.5)", "color 7", "text (1 2 3) (0 0 1) (0 -1 0) 2.5 0 0 T1"}));
}

TEST(RefPointsTransient, DrawsTheSameCrossLongerInTheViewOfTheWiderField) {
  SessionHost host;
  const DisplayGroups groups = twoGroups();
  const ReadyTransient transient(&groups);
  View& near = host.document().view();
  View& far = host.document().transientViews().addView();
  near.setState({{0, 0, 10}, {0, 0, 0}, {0, 1, 0}, 100, 75, 800, 600});
  far.setState({{0, 0, 10}, {0, 0, 0}, {0, 1, 0}, 3200, 2400, 800, 600});
  EXPECT_EQ(callsOf(transient, near)[2], "line (2.25 2 3) (-0.25 2 3)");
  EXPECT_EQ(callsOf(transient, far)[2], "line (41 2 3) (-39 2 3)");
}

TEST(RefPointsTransient, HasItsSizesOfTheMomentInWhichItWasMade) {
  SessionHost host;
  const DisplayGroups groups = twoGroups();
  host.profile().set("PointClouds\\Registration", "SizeLabel", 4);
  host.profile().set("PointClouds\\Registration", "HeightLabelText", 6);
  const ReadyTransient transient(&groups);
  host.profile().set("PointClouds\\Registration", "SizeLabel", 40);
  host.profile().set("PointClouds\\Registration", "HeightLabelText", 60);
  host.profile().set("PointClouds\\Registration", "IsVisibleLabelText", 0);
  const std::vector<std::string> calls = callsOf(transient, viewWithPixels(0.5));
  ASSERT_EQ(calls.size(), 16u);
  EXPECT_EQ(calls[2], "line (3 2 3) (-1 2 3)");
  EXPECT_EQ(calls[13], "text (1 2 3) (0 0 1) (1 0 0) 3 0 0 T1");
}

TEST(RefPointsTransient, WithoutLabelsColourSevenIsNotSet) {
  SessionHost host;
  host.profile().set("PointClouds\\Registration", "IsVisibleLabelText", 0);
  DisplayGroups groups;
  groups[0] = {OdString(L"A"), 1, {{{0, 0, 0}, OdString(L"T1"), 0}}};
  const ReadyTransient transient(&groups);
  EXPECT_EQ(callsOf(transient, viewWithPixels(0.5)),
            (std::vector<std::string>{"fill 2", "color 1", "line (5 0 0) (-5 0 0)", "line (0 5 0) (0 -5 0)",
                                      "line (0 0 5) (0 0 -5)"}));
}

TEST(RefPointsTransient, ReadsWhatIsShownAtEveryDraw) {
  SessionHost host;
  DisplayGroups groups;
  const ReadyTransient transient(&groups);
  EXPECT_EQ(callsOf(transient, viewWithPixels(0.5)), (std::vector<std::string>{"fill 2", "color 7"}));
  groups[0] = {OdString(L"A"), 1, {}};
  EXPECT_EQ(callsOf(transient, viewWithPixels(0.5)), (std::vector<std::string>{"fill 2", "color 1", "color 7"}));
}

TEST(RefPointsTransient, IsNoObjectOfTheDrawing) {
  SessionHost host;
  const DisplayGroups groups;
  RefPointsTransient transient(&groups);
  OdGiDrawable& drawable = transient;
  EXPECT_EQ(drawable.drawableType(), 0);
  EXPECT_FALSE(drawable.isPersistent());
  EXPECT_TRUE(drawable.id().isNull());
  EXPECT_EQ(drawable.setAttributes(nullptr), 0u);
  EXPECT_FALSE(drawable.worldDraw(nullptr));
}

TEST(RefPointsTransient, HasTheColourZeroByTheMethod194) {
  SessionHost host;
  const DisplayGroups groups;
  const RefPointsTransient transient(&groups);
  EXPECT_EQ(static_cast<int>(transient.entityColor().colorMethod()), 194);
  // The method stands in the highest byte, the colour in the three below it.
  EXPECT_EQ(transient.entityColor().color(), 0xC2000000u);
}

TEST(RefPointsTransient, IsNotCounted) {
  SessionHost host;
  const DisplayGroups groups;
  {
    RefPointsTransient transient(&groups);
    transient.addRef();
    transient.release();
    transient.release();
    EXPECT_EQ(host.document().drawables().size(), 1u);
  }
  EXPECT_TRUE(host.document().drawables().empty());
}

/// The node of a graphics system, which notes what it is told.
class NotingNode : public OdGsCache {
 public:
  void setDrawableNull() override { ++timesTold; }
  int timesTold = 0;
};

TEST(RefPointsTransient, TellsTheNodeThatIsStillOnItThatItIsGone) {
  SessionHost host;
  const DisplayGroups groups;
  NotingNode node;
  {
    RefPointsTransient transient(&groups);
    transient.setGsNode(&node);
    EXPECT_EQ(transient.gsNode(), &node);
    EXPECT_EQ(node.timesTold, 0);
  }
  EXPECT_EQ(node.timesTold, 1);
}

TEST(RefPointsTransient, StaysWithTheDocumentThatItWasMadeInWhenAnotherIsActivated) {
  SessionHost host;
  const DisplayGroups groups;
  RefPointsTransient transient(&groups);
  TestDocument& first = host.document();
  transient.documentActivated(&first);
  transient.documentCreateStarted(&first);
  EXPECT_EQ(first.drawables().size(), 1u);
}

/// A view that counts calls and keeps nothing, so that all allocations seen are the drawable's.
class CountingDraw : public OdGsViewImpl, private OdGiViewportGeometry, private OdGiSubEntityTraits {
 public:
  int colors = 0;
  int fills = 0;
  int lines = 0;
  int texts = 0;
  std::uint16_t lastColor = 0;

  void addRef() override {}
  void release() override {}
  OdGiViewportGeometry& geometry() override { return *this; }
  OdGiSubEntityTraits& subEntityTraits() override { return *this; }
  OdGeMatrix3d worldToEyeMatrix() const override { return {}; }
  OdGeMatrix3d worldToDeviceMatrix() const override { return {}; }

 private:
  void setColor(std::uint16_t color) override {
    ++colors;
    lastColor = color;
  }
  void setFillType(OdGiFillType type) override { fills += type == kOdGiFillNever ? 1 : 100; }
  void worldLine(const OdGePoint3d*) override { ++lines; }
  void text(const OdGePoint3d&, const OdGeVector3d&, const OdGeVector3d&, double, double, double,
            const OdString&) override {
    ++texts;
  }
};

TEST(RefPointsTransient, AnEmptyDisplaySetsUpTheTraitsAndTheLabelColourAlone) {
  SessionHost host;
  const DisplayGroups groups;
  const ReadyTransient transient(&groups);
  CountingDraw draw;
  transient.viewportDraw(&draw);
  EXPECT_EQ(draw.fills, 1);
  EXPECT_EQ(draw.colors, 1);
  EXPECT_EQ(draw.lastColor, 7);
  EXPECT_EQ(draw.lines, 0);
  EXPECT_EQ(draw.texts, 0);
}

TEST(RefPointsTransient, AGroupWithoutPointsSetsItsColourAlone) {
  SessionHost host;
  DisplayGroups groups;
  groups[0] = {OdString(L"A"), 30, {}};
  host.profile().set("PointClouds\\Registration", "IsVisibleLabelText", 0);
  const ReadyTransient transient(&groups);
  CountingDraw draw;
  transient.viewportDraw(&draw);
  EXPECT_EQ(draw.colors, 1);
  EXPECT_EQ(draw.lastColor, 30);
  EXPECT_EQ(draw.lines, 0);
}

TEST(RefPointsTransient, ADrawAllocatesNothing) {
  SessionHost host;
  const DisplayGroups groups = twoGroups();
  const ReadyTransient transient(&groups);
  CountingDraw draw;
  const std::uint64_t before = odrxAllocationCount();
  transient.viewportDraw(&draw);
  EXPECT_EQ(odrxAllocationCount(), before);
  EXPECT_EQ(draw.lines, 9);
  EXPECT_EQ(draw.texts, 3);
}

}  // namespace
