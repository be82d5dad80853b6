#include "options.h"

#include <stdexcept>

namespace foreign {

namespace {

constexpr int rowOfNxyz = 1;
constexpr int rowOfNxyzw = 4;

/// Takes one value of the option `name`.
void takeValue(Options& options, const std::string& name, const std::string& value) {
  if (name == "--module") {
    options.module = value;
  } else if (name == "--out") {
    options.folder = value;
  } else if (name == "--base") {
    options.base = value;
  } else if (name == "--call") {
    options.onlyCall = std::stoull(value);
  } else if (name == "--nxyz" || name == "--nxyzw") {
    options.imports.back().paths.emplace_back(value);
  } else {
    throw std::runtime_error("no such option: " + name);
  }
}

}  // namespace

Options parseOptions(int argumentCount, char** arguments) {
  Options options;
  std::string option;
  for (int i = 1; i < argumentCount; ++i) {
    const std::string word = arguments[i];
    if (i == 1) {
      options.caseName = word;
    } else if (word.rfind("--", 0) == 0) {
      option = word;
      if (option == "--nxyz") options.imports.push_back({rowOfNxyz, {}});
      if (option == "--nxyzw") options.imports.push_back({rowOfNxyzw, {}});
    } else {
      takeValue(options, option, word);
    }
  }
  if (options.module.empty() || options.folder.empty() || options.base.empty() || options.imports.empty()) {
    throw std::runtime_error("foreign_host CASE --module FILE --out FOLDER --base NAME --nxyz FILE...");
  }
  return options;
}

}  // namespace foreign
