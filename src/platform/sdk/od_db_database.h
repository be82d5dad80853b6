// The in-memory face of a drawing.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

#include "platform/sdk/od_db_object.h"

class OdDbDictionary;

/// What one transaction changed, in the order of the first change of each object.
struct OdDbChanges {
  /// Objects that are new or changed, and not erased.
  std::vector<OdDbObject*> written;
  /// Handles of objects that the store knows and that are erased now.
  std::vector<std::uint64_t> erased;
};

/// Where a database is kept beyond the process.
class DRAWING_SDK_EXPORT OdDbStore {
 public:
  virtual ~OdDbStore();

  /// Writes all of it or nothing; on failure throws OdError.
  virtual void write(const OdDbDatabase& database, const OdDbChanges& changes) = 0;
};

/// A drawing in memory: objects under handles, and the dictionary of named objects as the root.
///
/// Changes run inside a transaction. endTransaction hands all that was changed to the store in one
/// piece, abortTransaction undoes it in memory. When the store refuses, endTransaction undoes
/// everything and passes the error on: memory and file always agree. A database without a store can
/// be changed without a transaction too; then nothing can be undone.
class DRAWING_SDK_EXPORT OdDbDatabase : public OdRxObjectImpl<OdRxObject> {
 public:
  static const OdRxClass* desc();
  const OdRxClass* isA() const override;

  /// A drawing with an empty dictionary of named objects under handle 1.
  OdDbDatabase();
  ~OdDbDatabase() override;

  OdDbObjectId getNamedObjectsDictionaryId() const;

  /// Takes a new object in, under the next free handle; it stays open for writing. An object that
  /// is in already keeps its handle. Throws OdError(eInvalidInput) for null and for an object of
  /// another database, (eNotInDatabase) for one whose database has been closed, (eWasErased), and
  /// as every change (eWriteProtected) and (eNoActiveTransaction).
  OdDbObjectId addOdDbObject(OdDbObject* object);
  /// Takes a closed object in under a handle that a store gives; for loading, before setStore.
  /// Throws OdError(eInvalidInput) for null, an object of a database, and a handle that is taken,
  /// 0, or the last there is.
  OdDbObjectId restoreObject(OdDbObject* object, std::uint64_t handle);
  /// Marks the object as erased, whoever has it open. Throws OdError(eNullObjectId), (eInvalidInput)
  /// for an id of another database, (eWasErased), (eNotApplicable) for the dictionary of named
  /// objects, and as every change (eWriteProtected) and (eNoActiveTransaction).
  void eraseObject(const OdDbObjectId& id);

  /// The object under a handle, or null; without opening it.
  OdDbObject* objectAt(std::uint64_t handle) const;

  /// From now on changes go to `store` at the end of each transaction. Not owned. What stands in
  /// the database at that moment counts as kept there.
  void setStore(OdDbStore* store);
  /// Reading only: every attempt to write throws OdError(eWriteProtected).
  void setReadOnly(bool readOnly);
  bool isReadOnly() const { return readOnly; }

  /// Transactions don't nest: throws OdError(eNotApplicable) when one is running.
  void startTransaction();
  /// Hands the changes to the store; without any, the store isn't called. Throws
  /// OdError(eNoActiveTransaction), and whatever the store throws, after undoing everything.
  void endTransaction();
  /// Undoes everything. An object that the transaction took in is in no database again. Throws
  /// OdError(eNoActiveTransaction).
  void abortTransaction();
  bool hasActiveTransaction() const { return transactionActive; }

 private:
  friend class OdDbObject;

  /// Throws when nothing can be changed now, whatever the object.
  void assertChangeAllowed() const;
  void noteChange(OdDbObject& object);
  void keepUndo(std::function<void()> action);
  OdDbChanges changes() const;
  /// Ends it without a word to anybody; the objects that it changed, in order.
  std::vector<OdDbObject*> closeTransaction();
  void undoAll();
  void dropErased(const std::vector<OdDbObject*>& candidates);
  void detach(std::uint64_t handle);

  std::unordered_map<std::uint64_t, OdSmartPtr<OdDbObject>> objects;
  std::uint64_t nextHandle = 1;
  OdDbStore* store = nullptr;
  bool readOnly = false;
  bool transactionActive = false;
  std::vector<OdDbObject*> changed;
  std::vector<std::function<void()>> undoActions;
};
using OdDbDatabasePtr = OdSmartPtr<OdDbDatabase>;
