// An object of a database, with open modes.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>

#include "platform/sdk/od_db_object_id.h"
#include "platform/sdk/od_rx_object.h"

/// Base of what a database holds.
///
/// An object is open as long as a smart pointer outside its database holds it, for reading unless
/// it was opened for writing or raised with upgradeOpen. Any number may read; one may write. When
/// the last outside pointer goes, the object is closed: the database's own reference doesn't keep
/// it open. An object that is in no database yet can be changed freely, and its open modes mean
/// nothing. An object that is held when its database goes lives on, for reading.
class DRAWING_SDK_EXPORT OdDbObject : public OdRxObject {
 public:
  static const OdRxClass* desc();
  const OdRxClass* isA() const override;
  ~OdDbObject() override;

  void addRef() override;
  void release() override;
  long numRefs() const override;

  OdDbObjectId objectId() const;
  /// Null when the object is in no database, or its database has been closed.
  OdDbDatabase* database() const { return owner; }
  bool isWriteEnabled() const;
  bool isErased() const { return erased; }

  /// From reading to writing. Throws OdError(eWasOpenForWrite) when somebody is writing already,
  /// (eWasErased), (eNotInDatabase) when the database has been closed.
  void upgradeOpen();
  /// From writing to reading. Throws OdError(eNotOpenForWrite).
  void downgradeOpen();

 protected:
  OdDbObject() = default;

  /// To be called at the head of every change. Throws OdError(eNotOpenForWrite) when the object is
  /// in a database and isn't open for writing, OdError(eNotInDatabase) when its database has been
  /// closed, (eWasErased), (eWriteProtected) when the database is for reading only,
  /// (eNoActiveTransaction) when the database has a store and no transaction runs. Notes the object
  /// as changed.
  void assertWriteEnabled();

  /// To be called for every change, before it is made: `action` takes this one change back, throws
  /// nothing, and does no harm when the change didn't come about. Kept until the transaction ends;
  /// run in reverse order when it is aborted. Without a transaction nothing is kept.
  void onUndo(std::function<void()> action);

 private:
  friend class OdDbDatabase;
  friend class OdDbObjectId;

  /// eOk when the object can be opened in that mode, else what stands against it.
  OdResult open(OdDb::OpenMode mode);

  OdDbDatabase* owner = nullptr;
  std::uint64_t handle = 0;
  std::atomic<int> references{0};
  bool writing = false;
  bool erased = false;
  /// True while the running transaction counts the object among the changed ones.
  bool noted = false;
  /// True while the transaction runs that took the object in.
  bool fresh = false;
  /// True once the object was in a database that has been closed since.
  bool orphaned = false;
};
