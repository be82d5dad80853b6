// What starting a process takes on Windows.
#pragma once

#include <windows.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace tiepoint::testing {

/// A file that the child inherits as one of its standard streams.
class InheritedFile {
 public:
  InheritedFile(const std::filesystem::path& path, DWORD access, DWORD disposition) {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    handle = CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited, disposition,
                         FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) throw std::runtime_error("no file for a standard stream: " + path.u8string());
  }
  ~InheritedFile() { CloseHandle(handle); }
  InheritedFile(const InheritedFile&) = delete;
  InheritedFile& operator=(const InheritedFile&) = delete;

  HANDLE get() const { return handle; }

 private:
  HANDLE handle;
};

/// As the C library of the child takes it apart: backslashes count only before quotation marks.
inline std::wstring quoted(const std::wstring& argument) {
  std::wstring text = L"\"";
  std::size_t backslashes = 0;
  for (const wchar_t character : argument) {
    if (character == L'"') text.append(backslashes + 1, L'\\');
    backslashes = character == L'\\' ? backslashes + 1 : 0;
    text += character;
  }
  return text.append(backslashes, L'\\') + L'"';
}

inline std::wstring commandLine(const std::filesystem::path& program, const std::vector<std::string>& arguments) {
  std::wstring line = quoted(program.wstring());
  for (const std::string& argument : arguments) line += L' ' + quoted(std::filesystem::u8path(argument).wstring());
  return line;
}

}  // namespace tiepoint::testing
