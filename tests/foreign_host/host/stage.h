// What the cases share: the host, its profile library, and surveys that must go well.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host.h"
#include "module.h"
#include "options.h"
#include "steps.h"
#include "survey_run.h"

namespace foreign {

/// Throws std::runtime_error with all sentences when there is one.
void requireNone(const std::string& when, const std::vector<std::string>& sentences);

/// The complaints of the host, and what a module has left behind; both empty a moment later.
std::vector<std::string> audit(Host& host);

/// Nothing was refused, nothing was thrown, the module behaved and has left nothing behind.
void requireGood(const std::string& when, const Steps& steps, Host& host);

/// One survey in a new document, which is closed then; everything in it must go well.
std::string goodSurvey(const std::string& when, Host& host, const Module& module, const Options& options);

/// The library by which a module finds the profile, loaded as long as this object stands.
class ProfileLibrary {
 public:
  ProfileLibrary();
  ~ProfileLibrary();
  ProfileLibrary(const ProfileLibrary&) = delete;
  ProfileLibrary& operator=(const ProfileLibrary&) = delete;

 private:
  LibraryHandle library;
};

}  // namespace foreign
