// Reads a drawing file into a database.
#pragma once

#include "platform/sdk/od_db_database.h"
#include "workbench/drawing/sqlite_connection.h"

namespace tiepoint::workbench {

/// Fills a database that is as its constructor makes it. Throws OdError(eNotADrawing) for content
/// that no drawing has.
void loadDrawing(SqliteConnection& connection, OdDbDatabase& database);

}  // namespace tiepoint::workbench
