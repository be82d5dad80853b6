// A registration, for programs.
#pragma once

#include <string>

#include "workbench/report/json_object_writer.h"
#include "workbench/report/json_parts.h"
#include "workbench/values/registration.h"

namespace tiepoint::workbench {

/// All that the summary in text form tells; lengths in drawing units, numbers with all their digits.
/// docs/register-json.md describes every key.
OrderedJson summaryJson(const Registration& registration);

/// The same as text, which goes to the sink in pieces: of a site of thousands of stations it is longer
/// than all that was read.
void writeSummaryJson(const Registration& registration, const TextSink& sink);

}  // namespace tiepoint::workbench
