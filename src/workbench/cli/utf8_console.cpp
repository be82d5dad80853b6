#include "workbench/cli/utf8_console.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace tiepoint::workbench::cli {

namespace {

#ifdef _WIN32
constexpr unsigned utf8 = CP_UTF8;
unsigned consoleCodePage() { return GetConsoleOutputCP(); }
void setConsoleCodePage(unsigned codePage) { SetConsoleOutputCP(codePage); }
#else
constexpr unsigned utf8 = 0;
unsigned consoleCodePage() { return utf8; }
void setConsoleCodePage(unsigned) {}
#endif

}  // namespace

Utf8Console::Utf8Console() : codePageBefore(consoleCodePage()) {
  if (codePageBefore != 0) setConsoleCodePage(utf8);
}

Utf8Console::~Utf8Console() {
  if (codePageBefore != 0) setConsoleCodePage(codePageBefore);
}

}  // namespace tiepoint::workbench::cli
