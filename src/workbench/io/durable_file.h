// Files that appear whole or not at all.
#pragma once

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace tiepoint::workbench {

/// The path to which a chain of symbolic links leads from this one, whether there is a file or not; the
/// path itself where it is no link. Both are UTF-8. Throws std::system_error for links in a circle.
std::string pathBehindLinks(const std::string& path);

/// A file that is written piece by piece: under a name of its own in the target's folder, which no other
/// file has, until it is put in the target's place. Without that nothing is left of it.
///
/// A symbolic link stays one, and a file that is replaced leaves its permissions. Every call throws
/// std::system_error with the system's reason, and the target is then as it was; one that is there and
/// isn't an ordinary file is refused.
class WholeFile {
 public:
  /// UTF-8.
  explicit WholeFile(const std::string& path);
  ~WholeFile();
  WholeFile(const WholeFile&) = delete;
  WholeFile& operator=(const WholeFile&) = delete;

  void write(std::string_view piece);
  /// Flushes what was written to the disk, and renames.
  void putInPlace();

 private:
  struct Close {
    void operator()(std::FILE* opened) const { std::fclose(opened); }
  };

  std::filesystem::path target;
  std::filesystem::path temporary;
  std::unique_ptr<std::FILE, Close> file;
};

/// Puts `content` into the file at `path` (UTF-8): written and flushed to the disk under a name of
/// its own in the same folder, then renamed, so that at every moment the file is the old one or the
/// new one. A symbolic link stays one, and the file keeps its permissions. Throws
/// std::runtime_error with one line that names the file, and then leaves it as it was.
void replaceFile(const std::string& path, const std::string& content);

}  // namespace tiepoint::workbench
