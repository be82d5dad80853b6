#include "message_line.h"

#include <array>
#include <cstdarg>
#include <cwchar>

namespace foreign {

namespace {

/// "%s" takes wide text here; the standard library's word for that is "%ls".
std::wstring standardForm(std::wstring format) {
  for (std::size_t at = format.find(L"%s"); at != std::wstring::npos; at = format.find(L"%s", at)) {
    format.replace(at, 2, L"%ls");
  }
  return format;
}

}  // namespace

void MessageLine::print(const wchar_t* format, ...) {
  std::array<wchar_t, 1024> text{};
  std::va_list arguments;
  va_start(arguments, format);
  std::vswprintf(text.data(), text.size(), standardForm(format).c_str(), arguments);
  va_end(arguments);
  answer("MessageLine::print", [&] { lines.emplace_back(text.data()); });
}

}  // namespace foreign
