#include "platform/sdk/od_db_object_id.h"

#include "platform/sdk/od_db_database.h"

namespace {

OdDbObject* objectOf(const OdDbObjectId& id) {
  return id.isNull() ? nullptr : id.owningDatabase()->objectAt(id.getHandle());
}

}  // namespace

bool OdDbObjectId::isValid() const {
  const OdDbObject* const object = objectOf(*this);
  return object && !object->isErased();
}

OdDbObjectPtr OdDbObjectId::openObject(OdDb::OpenMode mode) const {
  OdDbObject* const object = objectOf(*this);
  return object && object->open(mode) == eOk ? OdDbObjectPtr(object) : OdDbObjectPtr();
}

OdDbObjectPtr OdDbObjectId::safeOpenObject(OdDb::OpenMode mode) const {
  if (isNull()) throw OdError(eNullObjectId);
  OdDbObject* const object = objectOf(*this);
  // Handles are never used twice: an object that isn't there any more has been erased.
  const OdResult result = object ? object->open(mode) : eWasErased;
  if (result != eOk) throw OdError(result);
  return OdDbObjectPtr(object);
}
