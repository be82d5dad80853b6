// The host's open-file dialog, with a user who knows beforehand what to choose.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/host/file_dialog.h"
#include "switchboard.h"

namespace foreign {

class FileDialog final : public HostFileDialog, public HostObject {
 public:
  explicit FileDialog(Switchboard& switchboard) : HostObject(switchboard, "file dialog") {}
  HostFileDialogAnswer open(const HostFileDialogRequest& request) override;

  /// The user's choice.
  std::vector<std::wstring> paths;
  int filterIndex = 0;
  /// What happens while the dialog is open.
  std::function<void()> whileOpen;

 private:
  void check(const HostFileDialogRequest& request);
  void fillBuffer(const HostFileDialogRequest& request) const;
};

}  // namespace foreign
