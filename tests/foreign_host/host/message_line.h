// The host's command line.
#pragma once

#include <string>
#include <vector>

#include "platform/host/message_line.h"
#include "switchboard.h"

namespace foreign {

class MessageLine final : public HostMessageLine, public HostObject {
 public:
  explicit MessageLine(Switchboard& switchboard) : HostObject(switchboard, "message line") {}
  void print(const wchar_t* format, ...) override;

  std::vector<std::wstring> lines;
};

}  // namespace foreign
