// The drawing SDK's string: wide text that takes and gives narrow bytes by a code page.
#pragma once

#include <string>
#include <string_view>

#include "platform/sdk/od_code_page.h"

class DRAWING_SDK_EXPORT OdString {
 public:
  OdString() = default;
  OdString(const wchar_t* text);
  OdString(std::wstring text);
  /// From narrow bytes; the system code page unless told otherwise.
  OdString(const char* bytes, OdCodePageId codePage = CP_ANSI_1251);
  OdString(const std::string& bytes, OdCodePageId codePage = CP_ANSI_1251);

  OdString& operator=(const wchar_t* text);
  /// Narrow-to-wide assignment by the system code page.
  OdString& operator=(const char* bytes);
  OdString& operator=(const std::string& bytes);

  const wchar_t* c_str() const { return wide.c_str(); }
  const std::wstring& wideText() const { return wide; }
  int getLength() const { return static_cast<int>(wide.size()); }
  bool isEmpty() const { return wide.empty(); }

  /// The narrow form by the system code page; characters that it lacks become '?'.
  std::string narrow() const;

  friend bool operator==(const OdString& a, const OdString& b) { return a.wide == b.wide; }
  friend bool operator!=(const OdString& a, const OdString& b) { return a.wide != b.wide; }
  friend bool operator<(const OdString& a, const OdString& b) { return a.wide < b.wide; }

 private:
  std::wstring wide;
};
