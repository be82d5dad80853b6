#include "workbench/host/message_line.h"

#include <cerrno>
#include <cstdarg>
#include <cwchar>
#include <utility>

namespace tiepoint::workbench {

namespace {

constexpr std::size_t firstBufferLength = 256;
/// A message that doesn't fit into this many characters is given up: vswprintf doesn't tell "too
/// long" from other errors everywhere, so growth needs an end. Some tell it by the length that the
/// message would have.
constexpr std::size_t lastBufferLength = std::size_t{1} << 24;

/// The end of flags, width and precision of the conversion that starts at `at`.
std::size_t endOfConversionOptions(const std::wstring& format, std::size_t at) {
  const std::size_t end = format.find_first_not_of(L"-+ #0123456789.*'", at);
  return end == std::wstring::npos ? format.size() : end;
}

/// Formats into a buffer that grows as needed. False when the arguments have no text.
bool formatWide(const std::wstring& format, std::va_list arguments, std::wstring& text) {
  for (std::size_t length = firstBufferLength; length <= lastBufferLength; length *= 2) {
    text.resize(length);
    std::va_list again;
    va_copy(again, arguments);
    errno = 0;
    const int written = std::vswprintf(text.data(), length, format.c_str(), again);
    va_end(again);
    if (written >= 0 && static_cast<std::size_t>(written) < length) {
      text.resize(static_cast<std::size_t>(written));
      return true;
    }
    if (errno == EILSEQ) return false;
  }
  return false;
}

}  // namespace

void MessageLine::print(const wchar_t* format, ...) {
  if (!format) return;
  const std::wstring portable = portableWideFormat(format);
  std::wstring text;
  std::va_list arguments;
  va_start(arguments, format);
  const bool formatted = formatWide(portable, arguments, text);
  va_end(arguments);
  messages.push_back(formatted ? std::move(text) : std::wstring(format));
}

std::vector<std::wstring> MessageLine::take() { return std::exchange(messages, {}); }

std::wstring portableWideFormat(const std::wstring& format) {
  std::wstring portable;
  portable.reserve(format.size() + 8);
  for (std::size_t at = 0; at < format.size();) {
    const wchar_t character = format[at++];
    portable += character;
    if (character != L'%') continue;
    const std::size_t conversion = endOfConversionOptions(format, at);
    portable.append(format, at, conversion - at);
    if (conversion == format.size()) break;
    if (format[conversion] == L's') portable += L'l';
    portable += format[conversion];
    at = conversion + 1;
  }
  return portable;
}

}  // namespace tiepoint::workbench
