#include <cstdio>
#include <exception>

#include "cases.h"
#include "exports.h"
#include "options.h"

int runForeignHost(int argumentCount, char** arguments) {
  try {
    const std::string figures = foreign::playCase(foreign::parseOptions(argumentCount, arguments));
    std::fputs(figures.c_str(), stdout);
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}
