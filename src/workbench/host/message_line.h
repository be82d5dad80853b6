// The workbench's command line: it keeps what is printed on it.
#pragma once

#include <string>
#include <vector>

#include "platform/host/message_line.h"

namespace tiepoint::workbench {

class MessageLine : public HostMessageLine {
 public:
  void print(const wchar_t* format, ...) override;

  /// What was printed since the last call, one text a message, in order.
  std::vector<std::wstring> take();

 private:
  std::vector<std::wstring> messages;
};

/// The format with every "%s" that names no length turned into "%ls", which takes wide text in the
/// standard library of every platform.
std::wstring portableWideFormat(const std::wstring& format);

}  // namespace tiepoint::workbench
