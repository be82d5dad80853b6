// The file dialog of a host without a screen: it answers what it was told to.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/host/file_dialog.h"
#include "workbench/values/layouts.h"

namespace tiepoint::workbench {

/// What the file dialog is to answer when the command asks it.
struct DialogAnswer {
  bool cancel = false;
  Layout layout = Layout::nxyz;
  /// UTF-8.
  std::vector<std::string> paths;
};

class PreparedFileDialog : public HostFileDialog {
 public:
  /// The answer from now on. Throws EncodingError for a path that isn't UTF-8.
  void prepare(const DialogAnswer& answer);
  /// From now on it is cancelled whenever it is opened.
  void forget() { prepared.reset(); }

  /// Gives all paths; the request's buffer receives those that fit as a whole, each ended by a
  /// zero, and a zero behind the last.
  HostFileDialogAnswer open(const HostFileDialogRequest& request) override;

 private:
  std::optional<HostFileDialogAnswer> prepared;
};

}  // namespace tiepoint::workbench
