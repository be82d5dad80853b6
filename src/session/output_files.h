// Files that a session writes.
#pragma once

#include <boost/filesystem/path.hpp>
#include <filesystem>
#include <locale>
#include <string>

namespace ZOR::reg {

/// True for a path of a folder that is there.
bool isFolder(const boost::filesystem::path& path);

/// The file name of a narrow name with the ending ".txt". The name is read in the code page of
/// names, whatever the one of paths is, and so any name has a file name on any host.
boost::filesystem::path textFileName(const std::string& name);

/// A file of text, opened for writing by the path's own characters: on Windows a file may bear a name
/// that the system's code page lacks. What is written is of the classic locale, not the host's.
template <class Stream>
Stream openForWriting(const boost::filesystem::path& path) {
  Stream out;
  out.imbue(std::locale::classic());
  out.open(std::filesystem::path(path.native()), std::ios::out);
  return out;
}

}  // namespace ZOR::reg
