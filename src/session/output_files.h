// Files that a session writes.
#pragma once

#include <boost/filesystem/path.hpp>
#include <filesystem>
#include <string>

namespace ZOR::reg {

/// True for a path of a folder that is there.
bool isFolder(const boost::filesystem::path& path);

/// The file name of a narrow name with the ending ".txt". The name is read in the code page of
/// names, whatever the one of paths is.
boost::filesystem::path textFileName(const std::string& name);

/// A file of text, opened for writing by the path's own characters: on Windows a file may bear a name
/// that the system's code page lacks.
template <class Stream>
Stream openForWriting(const boost::filesystem::path& path) {
  return Stream(std::filesystem::path(path.native()));
}

}  // namespace ZOR::reg
