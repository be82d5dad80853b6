// Small objects and stores for the tests of databases.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <vector>

#include "platform/sdk/od_db_database.h"
#include "platform/sdk/od_db_dictionary.h"

/// An object of a database that holds one number.
class NumberObject : public OdDbObject {
 public:
  explicit NumberObject(int start = 0) : number(start) {}

  static const OdRxClass* desc() {
    static const OdRxClass descriptor(L"NumberObject", OdDbObject::desc(),
                                      []() -> OdRxObject* { return new NumberObject; });
    return &descriptor;
  }
  const OdRxClass* isA() const override { return desc(); }

  int value() const { return number; }
  void setValue(int value) {
    assertWriteEnabled();
    onUndo([this, before = number] { number = before; });
    number = value;
  }

 private:
  int number;
};
using NumberObjectPtr = OdSmartPtr<NumberObject>;

/// Keeps what it was given, or refuses.
class RecordingStore : public OdDbStore {
 public:
  struct Written {
    std::vector<std::uint64_t> written;
    std::vector<std::uint64_t> erased;
  };

  void write(const OdDbDatabase&, const OdDbChanges& changes) override {
    if (refuses) throw OdError(eDiskFull);
    Written call;
    for (const OdDbObject* object : changes.written) call.written.push_back(object->objectId().getHandle());
    call.erased = changes.erased;
    calls.push_back(call);
  }

  bool refuses = false;
  std::vector<Written> calls;
};

/// The code of the OdError that `action` throws, eOk when it throws none.
template <class Action>
OdResult codeOf(Action action) {
  try {
    action();
  } catch (const OdError& error) {
    return error.code();
  }
  return eOk;
}

inline OdDbDictionaryPtr openNamedObjects(const OdDbDatabase& database, OdDb::OpenMode mode) {
  return database.getNamedObjectsDictionaryId().safeOpenObject(mode);
}
