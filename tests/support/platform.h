// Where the systems differ in what a test has to expect.
#pragma once

#include <filesystem>
#include <string>

namespace tiepoint::testing {

#ifdef _WIN32
inline constexpr bool onWindows = true;
#else
inline constexpr bool onWindows = false;
#endif

/// The text as a file holds it that was written in text mode.
inline std::string inTextMode(const std::string& text) {
  if (!onWindows) return text;
  std::string bytes;
  for (const char character : text) {
    if (character == '\n') bytes += '\r';
    bytes += character;
  }
  return bytes;
}

/// The absolute path as the system writes it: on Windows with its drive, and with backslashes.
inline std::string nativePath(const std::string& utf8) {
  return std::filesystem::absolute(std::filesystem::u8path(utf8)).make_preferred().u8string();
}

/// A path as it stands in JSON, without the quotes.
inline std::string pathInJson(const std::string& path) {
  std::string text;
  for (const char character : path) {
    if (character == '\\') text += '\\';
    text += character;
  }
  return text;
}

}  // namespace tiepoint::testing
