// The text file of merged targets.
#include <boost/filesystem/path.hpp>
#include <fstream>
#include <iomanip>

#include "session/multi_registrator.h"
#include "session/name_tables.h"
#include "session/output_files.h"

namespace ZOR::reg {

namespace {

constexpr int coordinateDecimals = 6;
constexpr int weightDecimals = 2;

void writeLine(std::ostream& out, const std::string& name, const CommonPoint& point) {
  out << name << std::setprecision(coordinateDecimals) << ' ' << point.position.x << ' ' << point.position.y << ' '
      << point.position.z << ' ' << std::setprecision(weightDecimals) << point.weight << '\n';
}

}  // namespace

bool MultiRegistrator::saveCommonPointsFile(std::string name, std::string folder) {
  if (name.empty() || folder.empty() || results.commonPoints.empty()) return false;
  const boost::filesystem::path folderPath(folder);
  if (!isFolder(folderPath) || !boost::filesystem::windows_name(name)) return false;

  auto out = openForWriting<std::ofstream>(folderPath / textFileName(name));
  if (!out) return false;
  out << std::fixed;
  const NamesById nameOf(commonNames);
  for (const auto& [id, point] : results.commonPoints) writeLine(out, nameOf[id], point);
  return true;
}

}  // namespace ZOR::reg
