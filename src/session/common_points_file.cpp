// The text file of merged targets.
#include <boost/filesystem/fstream.hpp>
#include <boost/filesystem/operations.hpp>
#include <boost/filesystem/path.hpp>
#include <iomanip>
#include <locale>

#include "session/multi_registrator.h"
#include "session/name_tables.h"

namespace ZOR::reg {

namespace {

constexpr int coordinateDecimals = 6;
constexpr int weightDecimals = 2;

bool isFolder(const boost::filesystem::path& path) {
  boost::system::error_code failure;
  return boost::filesystem::status(path, failure).type() == boost::filesystem::directory_file;
}

void writeLine(std::ostream& out, const std::string& name, const CommonPoint& point) {
  out << name << std::setprecision(coordinateDecimals) << ' ' << point.position.x << ' ' << point.position.y << ' '
      << point.position.z << ' ' << std::setprecision(weightDecimals) << point.weight << '\n';
}

}  // namespace

bool MultiRegistrator::saveCommonPointsFile(std::string name, std::string folder) {
  if (name.empty() || folder.empty() || commonPoints.empty()) return false;
  const boost::filesystem::path folderPath(folder);
  if (!isFolder(folderPath) || !boost::filesystem::windows_name(name)) return false;

  // The name is narrow in the code page of names, whatever the one of paths is.
  const boost::filesystem::path fileName(OdString(name + ".txt", CP_ANSI_1251).wideText());
  boost::filesystem::ofstream out(folderPath / fileName);
  if (!out) return false;
  out.imbue(std::locale::classic());
  out << std::fixed;
  const NamesById nameOf(commonNames);
  for (const auto& [id, point] : commonPoints) writeLine(out, nameOf[id], point);
  out.close();
  return out.good();
}

}  // namespace ZOR::reg
