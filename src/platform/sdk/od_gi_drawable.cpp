#include "platform/sdk/od_gi_drawable.h"

OdGsCache::~OdGsCache() = default;

const OdRxClass* OdGiDrawable::desc() {
  static const OdRxClass descriptor(L"OdGiDrawable", OdRxObject::desc(), nullptr);
  return &descriptor;
}

const OdRxClass* OdGiDrawable::isA() const { return desc(); }

OdRxObject* OdGiDrawable::queryX(const OdRxClass* type) const { return OdRxObject::queryX(type); }

int OdGiDrawable::drawableType() const { return 0; }

std::uint32_t OdGiDrawable::setAttributes(OdGiDrawableTraits* traits) const { return subSetAttributes(traits); }

bool OdGiDrawable::worldDraw(OdGiWorldDraw* draw) const { return subWorldDraw(draw); }

void OdGiDrawable::viewportDraw(OdGiViewportDraw* draw) const { subViewportDraw(draw); }

std::uint32_t OdGiDrawable::viewportDrawLogicalFlags(OdGiViewportDraw* draw) const {
  return subViewportDrawLogicalFlags(draw);
}

bool OdGiDrawable::getGeomExtents(OdGeExtents3d&) const { return false; }

std::uint32_t OdGiDrawable::regenSupportFlags() const { return subRegenSupportFlags(); }

std::uint32_t OdGiDrawable::subViewportDrawLogicalFlags(OdGiViewportDraw*) const { return 0; }

std::uint32_t OdGiDrawable::subRegenSupportFlags() const { return 0; }
