// The host that this test program is.
#pragma once

#include <map>
#include <string>

#include "platform/host/application.h"
#include "platform/host/document.h"
#include "platform/host/profile.h"

namespace tiepoint::testing {

/// What the program's exports answer with; each test begins with a new one.
struct HostOfTest {
  // Entries of the table.
  bool hasApplicationEntry = true;
  bool hasRefreshEntry = true;
  HostApplication* application = nullptr;
  int refreshes = 0;
  int lastRefreshArgument = -1;

  // The profile.
  bool hasService = true;
  bool hasProfile = true;
  bool hasSection = true;
  // Its calls that fail with an error.
  bool failsAtQuery = false;
  bool failsAtOpening = false;
  bool failsAtRelease = false;
  std::map<std::wstring, CZorVariant> values;
  int livingObjects = 0;
  int reads = 0;

  static HostOfTest& current();
  static void renew();
};

}  // namespace tiepoint::testing
