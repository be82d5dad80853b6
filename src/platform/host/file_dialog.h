// The host platform's open-file dialog.
#pragma once

#include <string>
#include <vector>

/// Flags of the dialog.
enum HostFileDialogFlags : unsigned { hideReadOnly = 0x4, overwritePrompt = 0x2, allowMultiSelect = 0x200 };

struct HostFileFilter {
  std::wstring label;
  std::wstring pattern;
};

struct HostFileDialogRequest {
  std::wstring title;
  unsigned flags = 0;
  std::vector<HostFileFilter> filters;
  /// Receives the chosen names; `bufferLength` wide characters, owned by the caller.
  wchar_t* buffer = nullptr;
  unsigned bufferLength = 0;
};

struct HostFileDialogAnswer {
  bool accepted = false;
  /// In the order in which the dialog returns them.
  std::vector<std::wstring> paths;
  /// The row of the filter list that was left selected, counted from 1.
  int filterIndex = 0;
};

class HostFileDialog {
 public:
  virtual ~HostFileDialog() = default;

  /// Asks the user for files to open.
  virtual HostFileDialogAnswer open(const HostFileDialogRequest& request) = 0;
};
