// Text at the workbench's doors: UTF-8 outside, narrow names and wide text inside.
#pragma once

#include <stdexcept>
#include <string>

namespace tiepoint::workbench {

/// Text that has no form in the encoding that is asked for; what() names the first offending
/// character.
class EncodingError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Throws EncodingError for bytes that aren't UTF-8.
std::wstring wideFromUtf8(const std::string& utf8);
/// A code point that isn't a character (a lone surrogate) becomes U+FFFD.
std::string utf8FromWide(const std::wstring& wide);

/// A name in windows-1251, as the module takes it. Throws EncodingError for a character outside it.
std::string nameFromUtf8(const std::string& utf8);
std::string utf8FromName(const std::string& name);

/// The path of a file in a folder, all UTF-8. Throws EncodingError.
std::string joinedPath(const std::string& folder, const std::string& file);

}  // namespace tiepoint::workbench
