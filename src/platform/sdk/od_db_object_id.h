// Identity of an object in a database.
#pragma once

#include <cstdint>

#include "drawing_sdk_export.h"
#include "platform/sdk/od_smart_ptr.h"

class OdDbDatabase;
class OdDbObject;
using OdDbObjectPtr = OdSmartPtr<OdDbObject>;

namespace OdDb {
enum OpenMode { kNotOpen = -1, kForRead = 0, kForWrite = 1 };
}

/// Names an object of one database; null by default. Valid as long as the database lives.
class DRAWING_SDK_EXPORT OdDbObjectId {
 public:
  OdDbObjectId() = default;
  OdDbObjectId(OdDbDatabase* owner, std::uint64_t handleInOwner) : database(owner), handle(handleInOwner) {}

  bool isNull() const { return database == nullptr; }
  /// True when the id names an object that is there (not null, not erased).
  bool isValid() const;

  /// Opens the object, or gives null when there is none or it can't be opened in that mode.
  OdDbObjectPtr openObject(OdDb::OpenMode mode = OdDb::kForRead) const;
  /// Opens the object; throws OdError(eNullObjectId), (eWasErased) or (eWasOpenForWrite).
  OdDbObjectPtr safeOpenObject(OdDb::OpenMode mode = OdDb::kForRead) const;

  OdDbDatabase* owningDatabase() const { return database; }
  /// The number that the database files the object under; 0 for a null id.
  std::uint64_t getHandle() const { return handle; }

  friend bool operator==(const OdDbObjectId& a, const OdDbObjectId& b) {
    return a.database == b.database && a.handle == b.handle;
  }
  friend bool operator!=(const OdDbObjectId& a, const OdDbObjectId& b) { return !(a == b); }

 private:
  OdDbDatabase* database = nullptr;
  std::uint64_t handle = 0;
};
