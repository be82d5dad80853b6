#include "platform/sdk/od_db_database.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "platform/sdk/od_db_dictionary.h"

namespace {

constexpr std::uint64_t namedObjectsHandle = 1;
constexpr std::uint64_t lastHandle = std::numeric_limits<std::uint64_t>::max();

void clearNotes(OdDbObject& object) {
  if (object.isKindOf(OdDbDictionary::desc())) static_cast<OdDbDictionary&>(object).clearChanges();
}

}  // namespace

OdDbStore::~OdDbStore() = default;

const OdRxClass* OdDbDatabase::desc() {
  static const OdRxClass descriptor(L"OdDbDatabase", OdRxObject::desc(), nullptr);
  return &descriptor;
}

const OdRxClass* OdDbDatabase::isA() const { return desc(); }

OdDbDatabase::OdDbDatabase() {
  const OdDbDictionaryPtr namedObjects(new OdDbDictionary);
  restoreObject(namedObjects.get(), namedObjectsHandle);
}

OdDbDatabase::~OdDbDatabase() {
  for (auto& [handle, object] : objects) {
    object->owner = nullptr;
    object->orphaned = true;
  }
}

OdDbObjectId OdDbDatabase::getNamedObjectsDictionaryId() const {
  // An id opens objects for writing as well; whether that is allowed is asked at the change.
  return {const_cast<OdDbDatabase*>(this), namedObjectsHandle};
}

OdDbObjectId OdDbDatabase::addOdDbObject(OdDbObject* object) {
  if (!object || (object->owner && object->owner != this)) throw OdError(eInvalidInput);
  if (object->orphaned) throw OdError(eNotInDatabase);
  if (object->erased) throw OdError(eWasErased);
  if (object->owner == this) return object->objectId();
  assertChangeAllowed();

  const std::uint64_t handle = nextHandle;
  keepUndo([this, handle] { detach(handle); });
  objects.emplace(handle, OdSmartPtr<OdDbObject>(object));
  try {
    noteChange(*object);
  } catch (...) {
    objects.erase(handle);
    throw;
  }
  ++nextHandle;
  object->owner = this;
  object->handle = handle;
  object->writing = true;
  object->fresh = transactionActive;
  return object->objectId();
}

OdDbObjectId OdDbDatabase::restoreObject(OdDbObject* object, std::uint64_t handle) {
  if (!object || object->owner || object->orphaned) throw OdError(eInvalidInput);
  if (handle == 0 || handle == lastHandle || objects.count(handle) != 0) throw OdError(eInvalidInput);
  objects.emplace(handle, OdSmartPtr<OdDbObject>(object));
  nextHandle = std::max(nextHandle, handle + 1);
  object->owner = this;
  object->handle = handle;
  object->writing = false;
  return object->objectId();
}

void OdDbDatabase::eraseObject(const OdDbObjectId& id) {
  if (id.isNull()) throw OdError(eNullObjectId);
  if (id.owningDatabase() != this) throw OdError(eInvalidInput);
  if (!id.isValid()) throw OdError(eWasErased);
  if (id.getHandle() == namedObjectsHandle) throw OdError(eNotApplicable);
  assertChangeAllowed();

  OdDbObject& object = *objectAt(id.getHandle());
  noteChange(object);
  keepUndo([&object] { object.erased = false; });
  object.erased = true;
}

OdDbObject* OdDbDatabase::objectAt(std::uint64_t handle) const {
  const auto found = objects.find(handle);
  return found == objects.end() ? nullptr : found->second.get();
}

void OdDbDatabase::setStore(OdDbStore* newStore) {
  store = newStore;
  for (auto& [handle, object] : objects) clearNotes(*object);
}

void OdDbDatabase::setReadOnly(bool forReadingOnly) { readOnly = forReadingOnly; }

void OdDbDatabase::startTransaction() {
  if (transactionActive) throw OdError(eNotApplicable, "A transaction is running already");
  transactionActive = true;
}

void OdDbDatabase::endTransaction() {
  if (!transactionActive) throw OdError(eNoActiveTransaction);
  try {
    const OdDbChanges toFile = changes();
    if (store && (!toFile.written.empty() || !toFile.erased.empty())) store->write(*this, toFile);
  } catch (...) {
    undoAll();
    throw;
  }
  const std::vector<OdDbObject*> filed = closeTransaction();
  undoActions.clear();
  for (OdDbObject* object : filed) clearNotes(*object);
  dropErased(filed);
}

void OdDbDatabase::abortTransaction() {
  if (!transactionActive) throw OdError(eNoActiveTransaction);
  undoAll();
}

void OdDbDatabase::assertChangeAllowed() const {
  if (readOnly) throw OdError(eWriteProtected);
  if (store && !transactionActive) throw OdError(eNoActiveTransaction);
}

void OdDbDatabase::noteChange(OdDbObject& object) {
  if (!transactionActive || object.noted) return;
  changed.push_back(&object);
  object.noted = true;
}

void OdDbDatabase::keepUndo(std::function<void()> action) {
  if (transactionActive) undoActions.push_back(std::move(action));
}

OdDbChanges OdDbDatabase::changes() const {
  OdDbChanges result;
  for (OdDbObject* object : changed) {
    if (!object->erased) {
      result.written.push_back(object);
    } else if (!object->fresh) {
      result.erased.push_back(object->handle);
    }
  }
  return result;
}

std::vector<OdDbObject*> OdDbDatabase::closeTransaction() {
  for (OdDbObject* object : changed) {
    object->noted = false;
    object->fresh = false;
  }
  transactionActive = false;
  return std::exchange(changed, {});
}

void OdDbDatabase::undoAll() {
  // First, as the undoing of an object's coming in may be its end.
  closeTransaction();
  const std::vector<std::function<void()>> actions = std::exchange(undoActions, {});
  for (auto action = actions.rbegin(); action != actions.rend(); ++action) (*action)();
}

void OdDbDatabase::dropErased(const std::vector<OdDbObject*>& candidates) {
  for (OdDbObject* object : candidates) {
    // One that is still held stays until the database goes, so that it learns of that.
    if (object->erased && object->numRefs() == 1) objects.erase(object->handle);
  }
}

void OdDbDatabase::detach(std::uint64_t handle) {
  const auto found = objects.find(handle);
  if (found == objects.end()) return;
  OdDbObject& object = *found->second;
  object.owner = nullptr;
  object.handle = 0;
  object.writing = false;
  objects.erase(found);
}
