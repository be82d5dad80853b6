#include "module/point_file.h"

#include <fstream>
#include <locale>
#include <stdexcept>

#include "files/line_grammar.h"
#include "module/wide_path.h"

namespace ZOR::reg {
namespace {

using LineParser = bool (*)(const std::string& line, ParsedPoint& point);

/// Null for a row that the filter list doesn't have.
LineParser parserOf(int layout) {
  switch (layout) {
    case 1:
      return &parseLineNXYZ;
    case 2:
      return &parseLineXYZ;
    case 3:
      return &parseLineXYZW;
    case 4:
      return &parseLineNXYZW;
    default:
      return nullptr;
  }
}

std::ifstream openForReading(const std::wstring& path) {
  std::ifstream file;
  // The bytes as they stand, whatever conversion the host's locale has.
  file.imbue(std::locale::classic());
  try {
    file.open(narrowPath(path), std::ios::in);
  } catch (const std::runtime_error&) {
    // The path has no narrow form: no file can be opened by it.
  }
  return file;
}

_StoredPoint storedForm(const ParsedPoint& point) {
  _StoredPoint stored;
  stored.name = point.name;
  stored.x = point.x;
  stored.y = point.y;
  stored.z = point.z;
  stored.w = point.w;
  return stored;
}

}  // namespace

bool readPointFile(const std::wstring& path, int layout, StoredPointArray& points) {
  std::ifstream file = openForReading(path);
  if (!file.is_open()) return false;
  const LineParser parse = parserOf(layout);
  if (!parse) return true;
  ParsedPoint point;
  std::string line;
  while (std::getline(file, line) && parse(line, point)) points.push_back(storedForm(point));
  return true;
}

}  // namespace ZOR::reg
