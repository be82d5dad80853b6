#include "platform/pointclouds/named_dictionary.h"

#include "platform/sdk/od_db_dictionary.h"

namespace ZOR {

OdDbObjectId namedDictionary(const OdDbDatabase& database, const wchar_t* name) {
  const OdDbDictionaryPtr namedObjects = database.getNamedObjectsDictionaryId().openObject();
  if (namedObjects.isNull()) return {};
  const OdDbObjectId id = namedObjects->getAt(name);
  return id.isValid() ? id : OdDbObjectId();
}

OdDbObjectId createNamedDictionary(OdDbDatabase& database, const wchar_t* name) {
  const OdDbObjectId present = namedDictionary(database, name);
  if (!present.isNull()) return present;
  try {
    const OdDbDictionaryPtr namedObjects = database.getNamedObjectsDictionaryId().safeOpenObject(OdDb::kForWrite);
    const OdDbDictionaryPtr made = OdDbDictionary::desc()->create();
    return namedObjects->setAt(name, made.get());
  } catch (const OdError&) {
    return {};
  }
}

}  // namespace ZOR
