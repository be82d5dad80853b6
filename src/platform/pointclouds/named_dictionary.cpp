#include "platform/pointclouds/named_dictionary.h"

#include <memory>

#include "platform/sdk/od_db_dictionary.h"

namespace ZOR {

OdDbObjectId namedDictionary(const OdDbDatabase& database, const wchar_t* name) {
  const OdDbDictionaryPtr namedObjects = database.getNamedObjectsDictionaryId().openObject();
  if (namedObjects.isNull()) return {};
  const OdDbObjectId id = namedObjects->getAt(name);
  return id.isValid() ? id : OdDbObjectId();
}

namespace {

/// Lowers the dictionary again whatever happens: somebody else may hold it open for reading.
OdDbObjectId addEntry(OdDbDictionary& dictionary, const wchar_t* name, OdDbObject& object) {
  const auto lower = [](OdDbDictionary* raised) {
    if (raised->isWriteEnabled()) raised->downgradeOpen();
  };
  dictionary.upgradeOpen();
  const std::unique_ptr<OdDbDictionary, decltype(lower)> raised(&dictionary, lower);
  return dictionary.setAt(name, &object);
}

}  // namespace

OdDbObjectId createNamedDictionary(OdDbDatabase& database, const wchar_t* name) {
  const OdDbObjectId present = namedDictionary(database, name);
  if (!present.isNull()) return present;
  try {
    const OdDbDictionaryPtr namedObjects = database.getNamedObjectsDictionaryId().safeOpenObject();
    const OdDbDictionaryPtr made = OdDbDictionary::desc()->create();
    return addEntry(*namedObjects, name, *made);
  } catch (const OdError&) {
    return {};
  }
}

}  // namespace ZOR
