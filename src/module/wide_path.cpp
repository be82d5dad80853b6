#include "module/wide_path.h"

#include <algorithm>
#include <boost/filesystem/path.hpp>
#include <type_traits>

#include "files/path_of_text.h"

namespace ZOR::reg {
namespace {

namespace fs = boost::filesystem;

constexpr bool pathsAreWide = std::is_same_v<fs::path::value_type, wchar_t>;

/// The path with every character but the two that its division into elements rests on replaced:
/// narrow on every platform, and of the same length.
std::string shapeOf(const std::wstring& path) {
  std::string shape(path.size(), 'x');
  std::transform(path.begin(), path.end(), shape.begin(), [](wchar_t character) {
    if (character == L'/') return '/';
    if (character == L'.') return '.';
    return 'x';
  });
  return shape;
}

/// The stem, where the library's paths are narrow: its place is found on the path's shape.
std::wstring stemByShape(const std::wstring& path) {
  const std::string shape = shapeOf(path);
  const std::string element = fs::path(shape).filename().string();
  const std::string stem = fs::path(shape).stem().string();
  const bool isText =
      shape.size() >= element.size() && shape.compare(shape.size() - element.size(), element.size(), element) == 0;
  // The "." that the library sees behind a closing slash is no text of the path.
  if (!isText) return std::wstring(stem.begin(), stem.end());
  return path.substr(path.size() - element.size(), stem.size());
}

}  // namespace

std::wstring stemOf(const std::wstring& path) {
  if constexpr (pathsAreWide) return fs::path(path).stem().wstring();
  return stemByShape(path);
}

std::string narrowPath(const std::wstring& path) { return pathOfText(path).string(); }

}  // namespace ZOR::reg
