// Opening a drawing file: what it is, whether it can be written, and that nobody else has it.
#pragma once

#include <memory>
#include <string>

#include "workbench/drawing/sqlite_connection.h"

namespace tiepoint::workbench {

/// A connection to the drawing at `path`, with the tables of a drawing in it and locked until it is
/// closed: for all others when it can be written, else against writers. Refuses as Drawing::open.
///
/// A file without a single byte is what a crash leaves at the very start of a creation: it counts
/// as missing, and holds nothing that could be lost.
std::unique_ptr<SqliteConnection> openDrawingFile(const std::string& path, bool createWhenMissing);

}  // namespace tiepoint::workbench
