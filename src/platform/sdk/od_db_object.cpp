#include "platform/sdk/od_db_object.h"

#include <utility>

#include "platform/sdk/od_db_database.h"

const OdRxClass* OdDbObject::desc() {
  static const OdRxClass descriptor(L"OdDbObject", OdRxObject::desc(), nullptr);
  return &descriptor;
}

const OdRxClass* OdDbObject::isA() const { return desc(); }

OdDbObject::~OdDbObject() = default;

void OdDbObject::addRef() { references.fetch_add(1, std::memory_order_relaxed); }

void OdDbObject::release() {
  const int before = references.fetch_sub(1, std::memory_order_acq_rel);
  if (before == 1) {
    delete this;
  } else if (before == 2 && owner) {
    // Only the database's own reference is left.
    writing = false;
  }
}

long OdDbObject::numRefs() const { return references.load(std::memory_order_acquire); }

OdDbObjectId OdDbObject::objectId() const { return owner ? OdDbObjectId(owner, handle) : OdDbObjectId(); }

bool OdDbObject::isWriteEnabled() const { return owner ? writing : !orphaned; }

OdResult OdDbObject::open(OdDb::OpenMode mode) {
  if (erased) return eWasErased;
  if (mode == OdDb::kNotOpen) return eNotOpenForRead;
  // Nobody outside holds it: a writing mode that is still set was left by a bare pointer.
  if (numRefs() == 1) writing = false;
  if (mode == OdDb::kForRead) return eOk;
  if (writing) return eWasOpenForWrite;
  writing = true;
  return eOk;
}

void OdDbObject::upgradeOpen() {
  if (orphaned) throw OdError(eNotInDatabase);
  if (!owner) return;
  if (erased) throw OdError(eWasErased);
  if (writing) throw OdError(eWasOpenForWrite);
  writing = true;
}

void OdDbObject::downgradeOpen() {
  if (!isWriteEnabled()) throw OdError(eNotOpenForWrite);
  writing = false;
}

void OdDbObject::assertWriteEnabled() {
  if (orphaned) throw OdError(eNotInDatabase);
  if (!owner) return;
  if (erased) throw OdError(eWasErased);
  if (!writing) throw OdError(eNotOpenForWrite);
  owner->assertChangeAllowed();
  owner->noteChange(*this);
}

void OdDbObject::onUndo(std::function<void()> action) {
  if (owner) owner->keepUndo(std::move(action));
}
