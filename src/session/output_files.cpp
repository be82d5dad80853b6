#include "session/output_files.h"

#include <boost/filesystem/operations.hpp>

#include "files/path_of_text.h"
#include "platform/sdk/od_string.h"

namespace ZOR::reg {

bool isFolder(const boost::filesystem::path& path) {
  boost::system::error_code failure;
  return boost::filesystem::status(path, failure).type() == boost::filesystem::directory_file;
}

boost::filesystem::path textFileName(const std::string& name) {
  return pathOfText(OdString(name + ".txt", CP_ANSI_1251).wideText());
}

}  // namespace ZOR::reg
