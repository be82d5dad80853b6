#include "platform/sdk/od_gi_drawable.h"

#include <gtest/gtest.h>

#include "platform/sdk/od_gi_viewport_draw.h"

namespace {

class PlainDrawable : public OdGiDrawable {
 public:
  void addRef() override {}
  void release() override {}
  bool isPersistent() const override { return false; }
  OdDbObjectId id() const override { return {}; }
  void setGsNode(OdGsCache* node) override { attached = node; }
  OdGsCache* gsNode() const override { return attached; }

  mutable OdGiViewportDraw* drawnFor = nullptr;

 protected:
  std::uint32_t subSetAttributes(OdGiDrawableTraits*) const override { return 5; }
  bool subWorldDraw(OdGiWorldDraw*) const override { return true; }
  void subViewportDraw(OdGiViewportDraw* draw) const override { drawnFor = draw; }

 private:
  OdGsCache* attached = nullptr;
};

class PlainView : public OdGsViewImpl {
 public:
  void addRef() override {}
  void release() override {}
  OdGiViewportGeometry& geometry() override { throw OdError(eNotApplicable); }
  OdGiSubEntityTraits& subEntityTraits() override { throw OdError(eNotApplicable); }
  OdGeMatrix3d worldToEyeMatrix() const override { return {}; }
  OdGeMatrix3d worldToDeviceMatrix() const override { return {}; }
};

}  // namespace

TEST(OdGiDrawable, ItsOperationsGoOnToTheClassesOwn) {
  PlainDrawable drawable;
  PlainView view;
  EXPECT_EQ(drawable.setAttributes(nullptr), 5u);
  EXPECT_TRUE(drawable.worldDraw(nullptr));
  drawable.viewportDraw(&view);
  EXPECT_EQ(drawable.drawnFor, &view);
}

TEST(OdGiDrawable, IsAGeneralOneWithoutFlagsAndExtents) {
  const PlainDrawable drawable;
  OdGeExtents3d extents{{1.0, 2.0, 3.0}, {4.0, 5.0, 6.0}};
  EXPECT_EQ(drawable.drawableType(), 0);
  EXPECT_EQ(drawable.viewportDrawLogicalFlags(nullptr), 0u);
  EXPECT_EQ(drawable.regenSupportFlags(), 0u);
  EXPECT_FALSE(drawable.getGeomExtents(extents));
  EXPECT_EQ(extents.minPoint, OdGePoint3d(1.0, 2.0, 3.0));
}

TEST(OdGiDrawable, IsOfItsClass) {
  const PlainDrawable drawable;
  EXPECT_STREQ(drawable.isA()->name(), L"OdGiDrawable");
  EXPECT_EQ(drawable.queryX(OdGiDrawable::desc()), &drawable);
  EXPECT_EQ(drawable.queryX(OdGiViewportDraw::desc()), nullptr);
}

TEST(OdGsViewImpl, IsTheViewBehindItsViewportDraw) {
  PlainView view;
  OdGiViewportDraw* const draw = &view;
  EXPECT_EQ(OdSmartPtr<OdGsViewImpl>::cast(draw).get(), &view);
  EXPECT_EQ(view.viewDirection(), OdGeVector3d(0.0, 0.0, 1.0));
  EXPECT_EQ(view.xAxis(), OdGeVector3d(1.0, 0.0, 0.0));
}
