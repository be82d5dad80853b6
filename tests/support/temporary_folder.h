// A folder that goes with the test.
#pragma once

#include <boost/filesystem/fstream.hpp>
#include <boost/filesystem/operations.hpp>
#include <codecvt>
#include <iterator>
#include <locale>
#include <set>
#include <string>

namespace tiepoint::testing {

/// While it stands, narrow paths are UTF-8 as in the workbench.
class TemporaryFolder {
 public:
  TemporaryFolder()
      : before(boost::filesystem::path::imbue(std::locale(std::locale::classic(), new std::codecvt_utf8<wchar_t>))),
        folder(boost::filesystem::temp_directory_path() / boost::filesystem::unique_path("tiepoint-%%%%%%%%%%%%")) {
    boost::filesystem::create_directory(folder);
  }
  ~TemporaryFolder() {
    boost::filesystem::remove_all(folder);
    boost::filesystem::path::imbue(before);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const boost::filesystem::path& path() const { return folder; }
  std::string narrow() const { return folder.string(); }

  /// UTF-8.
  std::set<std::string> fileNames() const {
    std::set<std::string> names;
    for (const auto& entry : boost::filesystem::directory_iterator(folder)) {
      names.insert(entry.path().filename().string());
    }
    return names;
  }
  std::string textOf(const std::string& name) const {
    boost::filesystem::ifstream in(folder / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }
  void write(const std::string& name, const std::string& text) const {
    boost::filesystem::ofstream(folder / name, std::ios::binary) << text;
  }

 private:
  std::locale before;
  boost::filesystem::path folder;
};

}  // namespace tiepoint::testing
