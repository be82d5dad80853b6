// Matrix files of the groups' transformations.
#include <boost/filesystem/path.hpp>
#include <fstream>

#include "session/multi_registrator.h"
#include "session/name_tables.h"
#include "session/output_files.h"

namespace ZOR::reg {

void MultiRegistrator::getMatrixFormats(std::map<std::uint64_t, std::string>& formats) {
  formats = matrixFormats.descriptions();
}

bool MultiRegistrator::saveGroupMatrices(GroupIdSet groups, std::string folder, std::uint64_t format) {
  if (!matrixFormats.has(format) || groups.empty() || folder.empty()) return false;
  const boost::filesystem::path folderPath(folder);
  if (!isFolder(folderPath)) return false;

  const NamesById names(groupNames);
  for (GroupId group : groups) {
    const std::string& name = names[group];
    if (!boost::filesystem::windows_name(name)) continue;
    const auto transform = results.groupTransforms.find(group);
    if (transform == results.groupTransforms.end()) continue;
    auto out = openForWriting<std::ofstream>(folderPath / textFileName(name));
    std::string text;
    if (out && matrixFormats.formatMatrixById(transform->second, format, text)) out << text;
  }
  return true;
}

bool MultiRegistrator::saveAllMatrices(std::string folder, std::uint64_t format) {
  return saveGroupMatrices(matrixFormats.groupsToWrite(), std::move(folder), format);
}

}  // namespace ZOR::reg
