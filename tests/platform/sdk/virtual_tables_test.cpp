// The order of the virtual functions of the classes that cross the border between the module and the
// drawing SDK. Modules and hosts are built apart: what is called is the place, not the name.
#include "support/virtual_table.h"

#ifndef _MSC_VER

#include <gtest/gtest.h>

#include "platform/sdk/od_gi_drawable.h"
#include "platform/sdk/od_gi_viewport_draw.h"
#include "platform/sdk/od_rx_module.h"

namespace {

using namespace tiepoint::testing;

/// The number of the places that OdRxObject takes, its destructor's among them.
constexpr std::size_t behindObject = 12;

TEST(VirtualTables, OdRxObjectHasItsDestructorAndTenFunctions) {
  EXPECT_TRUE(std::has_virtual_destructor_v<OdRxObject>);
  EXPECT_EQ(placesOf(&OdRxObject::queryX, &OdRxObject::x, &OdRxObject::isA, &OdRxObject::addRef, &OdRxObject::release,
                     &OdRxObject::numRefs, &OdRxObject::clone, &OdRxObject::copyFrom, &OdRxObject::comparedTo,
                     &OdRxObject::isEqualTo),
            inTurn(behindDestructor, 10));
}

/// Opens what is protected.
class OpenDrawable : public OdGiDrawable {
 public:
  using OdGiDrawable::subRegenSupportFlags;
  using OdGiDrawable::subSetAttributes;
  using OdGiDrawable::subViewportDraw;
  using OdGiDrawable::subViewportDrawLogicalFlags;
  using OdGiDrawable::subWorldDraw;
};

TEST(VirtualTables, OdGiDrawableGoesOnWithItsFunctionsAndTheSubOperationsBehindThem) {
  EXPECT_EQ(placesOf(&OdGiDrawable::drawableType, &OdGiDrawable::setAttributes, &OdGiDrawable::worldDraw,
                     &OdGiDrawable::viewportDraw, &OdGiDrawable::isPersistent, &OdGiDrawable::id,
                     &OdGiDrawable::setGsNode, &OdGiDrawable::gsNode, &OdGiDrawable::viewportDrawLogicalFlags,
                     &OdGiDrawable::getGeomExtents, &OdGiDrawable::regenSupportFlags, &OpenDrawable::subSetAttributes,
                     &OpenDrawable::subWorldDraw, &OpenDrawable::subViewportDraw,
                     &OpenDrawable::subViewportDrawLogicalFlags, &OpenDrawable::subRegenSupportFlags),
            inTurn(behindObject, 16));
}

TEST(VirtualTables, OdGsCacheIsToldBehindItsDestructor) {
  EXPECT_TRUE(std::has_virtual_destructor_v<OdGsCache>);
  EXPECT_EQ(placeOf(&OdGsCache::setDrawableNull), behindDestructor);
}

TEST(VirtualTables, OdGiSubEntityTraitsHasItsFurtherSetterBehindTheColour) {
  EXPECT_TRUE(std::has_virtual_destructor_v<OdGiSubEntityTraits>);
  EXPECT_EQ(placesOf(&OdGiSubEntityTraits::setColor, &OdGiSubEntityTraits::setFillType), inTurn(behindDestructor, 2));
}

TEST(VirtualTables, OdGiViewportGeometryHasTheLineThenTheText) {
  EXPECT_TRUE(std::has_virtual_destructor_v<OdGiViewportGeometry>);
  EXPECT_EQ(placesOf(&OdGiViewportGeometry::worldLine, &OdGiViewportGeometry::text), inTurn(behindDestructor, 2));
}

TEST(VirtualTables, OdGsViewImplHasTheMatrixToTheEyeBeforeTheOneToTheDevice) {
  EXPECT_EQ(placesOf(&OdGsViewImpl::geometry, &OdGsViewImpl::subEntityTraits, &OdGsViewImpl::worldToEyeMatrix,
                     &OdGsViewImpl::worldToDeviceMatrix),
            inTurn(behindObject, 4));
}

TEST(VirtualTables, OdRxModuleGoesOnWithItsHandleItsEndItsStartItsStopAndItsFileName) {
  EXPECT_EQ(placesOf(&OdRxModule::moduleHandle, &OdRxModule::deleteModule, &OdRxModule::initApp, &OdRxModule::uninitApp,
                     &OdRxModule::moduleFileName),
            inTurn(behindObject, 5));
}

}  // namespace

#endif
