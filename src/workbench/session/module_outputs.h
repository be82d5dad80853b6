// What the module writes of its results, read back whole.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "session/i_multi_registrator.h"
#include "workbench/values/registration.h"
#include "workbench/values/session_state.h"

namespace tiepoint::workbench {

/// The merged targets, a line each. `name` is narrow and bears no ending; `path` is for the refusal.
/// Throws Refused: (commonPointsNotOpened) or (commonPointsCutShort).
std::string commonPointsContent(ZOR::reg::iMultiRegistrator& session, const std::string& name, const std::string& path,
                                const std::vector<MergedTarget>& targets);

/// The matrices of the groups that have one, in a format of the module's (not `plain`), by group name;
/// a file that the module hasn't written is empty.
std::map<std::string, std::string> matrixContents(ZOR::reg::iMultiRegistrator& session, MatrixFormat format,
                                                  const std::vector<std::string>& groups);
/// The module has written such a matrix to its end.
bool isWholeMatrix(const std::string& content);

/// A report as HTML. Throws Refused (reportCutShort); `path` is for the refusal.
std::string reportContent(ZOR::reg::iMultiRegistrator& session, ReportKind kind, const SessionState& state,
                          const std::string& path);

}  // namespace tiepoint::workbench
