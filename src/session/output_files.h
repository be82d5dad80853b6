// Files that a session writes.
#pragma once

#include <boost/filesystem/path.hpp>
#include <string>

namespace ZOR::reg {

/// True for a path of a folder that is there.
bool isFolder(const boost::filesystem::path& path);

/// The file name of a narrow name with the ending ".txt". The name is read in the code page of
/// names, whatever the one of paths is.
boost::filesystem::path textFileName(const std::string& name);

}  // namespace ZOR::reg
