#include "workbench/cli/utf8_console.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace tiepoint::workbench::cli {

#ifdef _WIN32

Utf8Console::Utf8Console() : codePageBefore(GetConsoleOutputCP()) {
  if (codePageBefore != 0) SetConsoleOutputCP(CP_UTF8);
}

Utf8Console::~Utf8Console() {
  if (codePageBefore != 0) SetConsoleOutputCP(codePageBefore);
}

#else

Utf8Console::Utf8Console() = default;
Utf8Console::~Utf8Console() = default;

#endif

}  // namespace tiepoint::workbench::cli
