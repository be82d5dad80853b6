// A folder of a test's own, gone with the object.
#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

class TemporaryFolder {
 public:
  TemporaryFolder()
      : folder(std::filesystem::temp_directory_path() / ("tiepoint-test-" + std::to_string(std::random_device{}()))) {
    std::filesystem::create_directories(folder);
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& path() const { return folder; }
  /// The path of a file in the folder, UTF-8.
  std::string file(const std::string& name) const { return (folder / std::filesystem::u8path(name)).u8string(); }

  /// The names in the folder, ascending.
  std::vector<std::string> names() const {
    std::vector<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      found.push_back(entry.path().filename().u8string());
    }
    std::sort(found.begin(), found.end());
    return found;
  }

 private:
  std::filesystem::path folder;
};

inline void writeBytes(const std::string& file, const std::string& bytes) {
  std::ofstream stream(std::filesystem::u8path(file), std::ios::binary | std::ios::trunc);
  stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

inline std::string readBytes(const std::string& file) {
  std::ifstream stream(std::filesystem::u8path(file), std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}
