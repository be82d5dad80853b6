#include "platform/sdk/od_rx_object.h"

#include "platform/sdk/od_smart_ptr.h"

OdRxClass::OdRxClass(const wchar_t* name, const OdRxClass* parentClass, Constructor makeObject)
    : className(name), parent(parentClass), constructor(makeObject) {}

bool OdRxClass::isDerivedFrom(const OdRxClass* other) const {
  if (!other) return false;
  for (const OdRxClass* type = this; type; type = type->parent) {
    if (type == other) return true;
  }
  return false;
}

OdSmartPtr<OdRxObject> OdRxClass::create() const {
  return constructor ? OdSmartPtr<OdRxObject>(constructor()) : OdSmartPtr<OdRxObject>();
}

const OdRxClass* OdRxObject::desc() {
  static const OdRxClass descriptor(L"OdRxObject", nullptr, nullptr);
  return &descriptor;
}

OdRxObject::~OdRxObject() = default;

OdRxObject* OdRxObject::queryX(const OdRxClass* type) const {
  OdRxObject* const object = x(type);
  if (object) object->addRef();
  return object;
}

OdRxObject* OdRxObject::x(const OdRxClass* type) const {
  // The answer is the object itself, which the caller may change; only the question is const.
  return isKindOf(type) ? const_cast<OdRxObject*>(this) : nullptr;
}

const OdRxClass* OdRxObject::isA() const { return desc(); }

long OdRxObject::numRefs() const { return 1; }

OdSmartPtr<OdRxObject> OdRxObject::clone() const { throw OdError(eNotApplicable, "This object cannot be copied"); }

void OdRxObject::copyFrom(const OdRxObject*) { throw OdError(eNotApplicable, "This object takes no copy"); }

OdRxOrdering OdRxObject::comparedTo(const OdRxObject* other) const {
  return other == this ? OdRxOrdering::equal : OdRxOrdering::notOrdered;
}

bool OdRxObject::isEqualTo(const OdRxObject* other) const { return comparedTo(other) == OdRxOrdering::equal; }
