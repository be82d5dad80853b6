// How the loop of the iterative method ended, as a report tells it.
#pragma once

#include <optional>
#include <string>

#include "workbench/values/iteration_course.h"

namespace tiepoint::workbench {

/// Reads the settings of a results report. Nothing when they aren't there, as after another method,
/// or stand there in any other form.
std::optional<IterationCourse> iterationCourse(const std::wstring& resultsReport);

}  // namespace tiepoint::workbench
