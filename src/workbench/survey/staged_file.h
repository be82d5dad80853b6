// Survey files of other forms, brought into one that the module reads.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "workbench/session/staging_folder.h"
#include "workbench/survey/file_survey.h"
#include "workbench/values/layouts.h"
#include "workbench/values/reading_request.h"

namespace tiepoint::workbench {

struct SurveyFile {
  std::string path;
  /// The group's name, as the file's name gives it. UTF-8.
  std::string group;
  Layout layout = Layout::nxyz;
  /// The user has named the layout.
  bool layoutIsNamed = false;
  /// The module reads every line of it.
  bool moduleReadsAll = false;
  FileSurvey survey;
};

struct StagedFile {
  /// In the staging folder; its stem is the group's name for the module.
  std::string path;
  Layout layout = Layout::nxyz;
  FileReading reading;
};

/// A file of the same points in a layout of the module, when the file has to be read for it: the
/// module doesn't read all of it and the user didn't insist on a layout; or it would lose letters of
/// its names; or the user asks for columns, an encoding or a unit. Else nothing: the file goes to the
/// module as it is. `folder` is made when it is needed. Throws Refused for a file that can't
/// be read, or not in one way only.
std::optional<StagedFile> stageSurvey(const SurveyFile& file, const ReadingRequest& request,
                                      std::shared_ptr<StagingFolder>& folder);

}  // namespace tiepoint::workbench
