// What a matching did, for the summary.
#pragma once

#include <string>

#include "workbench/report/json_parts.h"
#include "workbench/report/length_format.h"
#include "workbench/values/naming_report.h"
#include "workbench/values/registration.h"

namespace tiepoint::workbench {

/// The steps with how many points each named, and the reasons for what wasn't.
std::string matchText(const Registration& registration, const NamingReport& report, const LengthFormat& lengths);

OrderedJson jsonMatch(const Registration& registration, const NamingReport& report);

}  // namespace tiepoint::workbench
