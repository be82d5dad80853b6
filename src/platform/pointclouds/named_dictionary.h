// The dictionaries that this library keeps in a drawing's dictionary of named objects.
#pragma once

#include "platform/sdk/od_db_database.h"

namespace ZOR {

/// The id of the dictionary under `name`, null when there is none.
OdDbObjectId namedDictionary(const OdDbDatabase& database, const wchar_t* name);

/// The id of the dictionary under `name`; makes it when it is missing. Null when the drawing can't
/// take it: it is for reading only, for one.
OdDbObjectId createNamedDictionary(OdDbDatabase& database, const wchar_t* name);

}  // namespace ZOR
