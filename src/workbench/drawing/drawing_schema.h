// The tables of a drawing file.
#pragma once

#include <cstdint>

#include "workbench/drawing/sqlite_connection.h"

namespace tiepoint::workbench {

/// "tieP": marks an SQLite file as a drawing.
inline constexpr std::uint32_t drawingApplicationId = 0x74696550;
inline constexpr std::uint64_t drawingSchemaVersion = 1;

/// How the table `object` calls the classes; names of the file, whatever the program calls them.
namespace kept_class {
inline constexpr const wchar_t* dictionary = L"dictionary";
inline constexpr const wchar_t* points = L"points";
inline constexpr const wchar_t* cloud = L"cloud";
}  // namespace kept_class

/// What the first bytes of a file tell, before anything of it is locked or put right.
enum class FileKind { empty, drawing, foreign };
FileKind kindOfFile(const SqliteConnection& connection);

/// Makes the tables of a new drawing in the running transaction.
void createDrawingSchema(SqliteConnection& connection);

/// Throws OdError(eNotADrawing) and (eNewerFormat).
void requireKnownSchema(SqliteConnection& connection);

}  // namespace tiepoint::workbench
