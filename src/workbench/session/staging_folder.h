// A folder of the command's own, for files that a module writes.
#pragma once

#include <string>

namespace tiepoint::workbench {

/// The module doesn't tell which of its files it could write, or whether to their end. So it writes
/// them here, and what is found whole goes on to the user's folder. Gone with the object.
class StagingFolder {
 public:
  /// Throws Refused (noTemporaryFolder) when the system's folder for temporary files takes none.
  StagingFolder();
  ~StagingFolder();
  StagingFolder(const StagingFolder&) = delete;
  StagingFolder& operator=(const StagingFolder&) = delete;

  /// UTF-8.
  const std::string& path() const { return folder; }
  std::string file(const std::string& name) const;
  /// The bytes of a file in it; empty when it isn't there.
  std::string content(const std::string& name) const;

 private:
  std::string folder;
};

}  // namespace tiepoint::workbench
