#include "platform/sdk/od_gi_viewport_draw.h"

OdGiSubEntityTraits::~OdGiSubEntityTraits() = default;

OdGiViewportGeometry::~OdGiViewportGeometry() = default;

const OdRxClass* OdGiViewportDraw::desc() {
  static const OdRxClass descriptor(L"OdGiViewportDraw", OdRxObject::desc(), nullptr);
  return &descriptor;
}

const OdRxClass* OdGiViewportDraw::isA() const { return desc(); }

const OdRxClass* OdGsViewImpl::desc() {
  static const OdRxClass descriptor(L"OdGsViewImpl", OdGiViewportDraw::desc(), nullptr);
  return &descriptor;
}

const OdRxClass* OdGsViewImpl::isA() const { return desc(); }
